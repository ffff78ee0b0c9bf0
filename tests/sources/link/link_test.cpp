#include "sources/link/link.h"

#include "support/errors.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>
#include <thread>

#if !defined(_WIN32)
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace lumoplot {
namespace {

using namespace std::chrono_literals;

// A link and what it has brought.
class TFollower {
public:
    explicit TFollower(const std::string& text) : m_link(ParseLink(text), {}) {}

    void Poll() {
        TFedPoints points;
        while (m_link.Poll(TLink::TClock::now() + 5ms, points)) Take(points);
        Take(points);
    }
    /// Polls until there are so many points, or for so long.
    bool PollFor(std::size_t count, int mostMs = 5000) {
        QElapsedTimer clock;
        for (clock.start(); clock.elapsed() < mostMs && m_y.size() != count;) {
            QTest::qWait(5);
            m_link.TryNow();
            Poll();
        }
        return m_y.size() == count;
    }

    TLink& Link() { return m_link; }
    const std::vector<double>& Y() const { return m_y; }

private:
    void Take(TFedPoints& points) {
        if (points.isAnew) m_y.clear();
        m_y.insert(m_y.end(), points.y.begin(), points.y.end());
        points = TFedPoints();
    }

    TLink m_link;
    std::vector<double> m_y;
};

class LinkTest : public testing::Test {
protected:
    std::string Name(const char* name = "log.csv") const { return m_folder.filePath(name).toStdString(); }
    static void Write(const std::string& name, const QByteArray& text, QIODevice::OpenMode mode) {
        QFile file(QString::fromStdString(name));
        ASSERT_TRUE(file.open(mode));
        file.write(text);
    }
    void Append(const QByteArray& text) const { Write(Name(), text, QIODevice::Append); }
    void Replace(const QByteArray& text) const {
        Write(Name("new"), text, QIODevice::WriteOnly);
        QFile::remove(QString::fromStdString(Name()));
        ASSERT_TRUE(QFile::rename(QString::fromStdString(Name("new")), QString::fromStdString(Name())));
    }

    QTemporaryDir m_folder;
};

std::vector<double> Ys(std::initializer_list<double> values) {
    return values;
}

TEST_F(LinkTest, OnlyWhatIsNewOfAFileIsRead) {
    Append("t U\n1 10\n2 20\n");
    TFollower follower(Name());
    follower.Poll();
    EXPECT_EQ(follower.Y(), Ys({10, 20}));
    Append("3 30\n4 4");
    follower.Poll();
    EXPECT_EQ(follower.Y(), Ys({10, 20, 30}));
    Append("0\n");
    follower.Poll();
    EXPECT_EQ(follower.Y(), Ys({10, 20, 30, 40}));
}

TEST_F(LinkTest, FileThatIsReplacedIsReadAgain) {
    Append("t U\n1 10\n2 20\n3 30\n");
    TFollower follower(Name());
    follower.Poll();
    Replace("t U\n1 10\n2 20\n3 30\n4 40\n"); // the same, and more
    follower.Poll();
    EXPECT_EQ(follower.Y(), Ys({10, 20, 30, 40}));
    Replace("t U\n1 11\n2 22\n3 33\n4 44\n5 55\n"); // as long, and longer, but another one
    follower.Poll();
    EXPECT_EQ(follower.Y(), Ys({11, 22, 33, 44, 55}));
    Write(Name(), "t U\n7 70\n", QIODevice::WriteOnly | QIODevice::Truncate);
    follower.Poll();
    EXPECT_EQ(follower.Y(), Ys({70}));
    Replace("t,U\n7,71\n");
    follower.Poll();
    EXPECT_EQ(follower.Y(), Ys({71}));
}

TEST_F(LinkTest, FileThatIsGoneIsWaitedFor) {
    TFollower follower(Name());
    follower.Poll();
    EXPECT_NE(follower.Link().Trouble().find("log.csv"), std::string::npos);
    const auto first = follower.Link().NextTry();
    Append("1 10\n2 20\n");
    follower.Poll(); // too early
    EXPECT_TRUE(follower.Y().empty());
    EXPECT_EQ(follower.Link().NextTry(), first);
    follower.Link().TryNow();
    follower.Poll();
    EXPECT_EQ(follower.Y(), Ys({10, 20}));
    EXPECT_EQ(follower.Link().Trouble(), "");
    QFile::remove(QString::fromStdString(Name()));
    auto pause = 0ms;
    for (int i = 0; i < 9; ++i) {
        follower.Link().TryNow();
        const auto before = TLink::TClock::now();
        follower.Poll();
        const auto next =
            std::chrono::duration_cast<std::chrono::milliseconds>(follower.Link().NextTry() - before);
        EXPECT_GE(next, pause);
        pause = next;
    }
    EXPECT_GE(pause, TLink::kLongestPause);
    EXPECT_LT(pause, TLink::kLongestPause + 1s);
    EXPECT_EQ(follower.Y(), Ys({10, 20})); // what was read stays
}

TEST_F(LinkTest, PollEndsInTimeAndGoesOn) {
    constexpr int kRows = 1'000'000;
    QByteArray rows;
    for (int i = 0; i < kRows; ++i) rows += QByteArray::number(i) + ',' + QByteArray::number(i % 97) + '\n';
    Append(rows);
    TLink link(ParseLink(Name()), {});
    std::size_t count = 0;
    int polls = 1;
    for (bool isMore = true; isMore; ++polls) {
        TFedPoints points;
        isMore = link.Poll(TLink::TClock::now() + 2ms, points);
        if (points.isAnew) count = 0;
        count += points.x.size();
        EXPECT_LT(points.x.size(), kRows / 5u);
    }
    EXPECT_EQ(count, static_cast<std::size_t>(kRows));
    EXPECT_GT(polls, 5);
}

#if !defined(_WIN32)
TEST_F(LinkTest, PipeHasOneWriterAfterTheOther) {
    const std::string name = Name("feed");
    ASSERT_EQ(mkfifo(name.c_str(), 0600), 0);
    TFollower follower(name); // a pipe is known as one without being called so
    follower.Poll();
    EXPECT_EQ(follower.Link().Trouble(), "");
    for (const char* text : {"1 10\n2 20\n3 3", "4 40\n"}) {
        const int writer = open(name.c_str(), O_WRONLY | O_NONBLOCK);
        ASSERT_GE(writer, 0);
        ASSERT_GT(write(writer, text, std::strlen(text)), 0);
        follower.Poll();
        close(writer);
        follower.Poll(); // the line that has not ended will not go on
        follower.Poll();
    }
    EXPECT_EQ(follower.Y(), Ys({10, 20, 40}));
    EXPECT_FALSE(follower.Link().HasEnded());
}
#endif

TEST_F(LinkTest, ServerThatGoesAwayIsCalledAgain) {
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    const quint16 port = server.serverPort();
    TFollower follower("tcp://127.0.0.1:" + std::to_string(port));
    follower.Poll();
    ASSERT_TRUE(server.waitForNewConnection(5000));
    std::unique_ptr<QTcpSocket> line(server.nextPendingConnection());
    line->write("1 10\n2 20\n3 3");
    line->flush();
    ASSERT_TRUE(follower.PollFor(2));
    line->disconnectFromHost();
    server.close();
    QElapsedTimer clock;
    for (clock.start(); clock.elapsed() < 5000 && follower.Link().Trouble().empty();) {
        QTest::qWait(5);
        follower.Poll();
    }
    EXPECT_NE(follower.Link().Trouble().find(std::to_string(port)), std::string::npos);
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost, port));
    follower.Link().TryNow();
    follower.Poll();
    ASSERT_TRUE(server.waitForNewConnection(5000));
    line.reset(server.nextPendingConnection());
    line->write("4 40\n");
    line->flush();
    EXPECT_TRUE(follower.PollFor(3));
    EXPECT_EQ(follower.Y(), Ys({10, 20, 40}));
    EXPECT_EQ(follower.Link().Trouble(), "");
}

TEST_F(LinkTest, LineIsListenedToOnThisMachineAlone) {
    QTcpServer free;
    ASSERT_TRUE(free.listen(QHostAddress::LocalHost));
    const quint16 port = free.serverPort();
    free.close();
    TFollower follower("tcp-listen://:" + std::to_string(port));
    follower.Poll();
    QTcpSocket first;
    QTcpSocket second;
    for (QTcpSocket* socket : {&first, &second}) {
        socket->connectToHost(QHostAddress::LocalHost, port);
        ASSERT_TRUE(socket->waitForConnected(5000));
    }
    second.write("3 30\n");
    second.flush();
    first.write("1 10\n2 20\n");
    first.flush();
    ASSERT_TRUE(follower.PollFor(2));
    first.disconnectFromHost();
    EXPECT_TRUE(follower.PollFor(3));
    EXPECT_EQ(follower.Y(), Ys({10, 20, 30}));
    QTcpServer other; // whoever else may listen beyond this machine
    EXPECT_FALSE(other.listen(QHostAddress::LocalHost, port));
}

TEST_F(LinkTest, PortThatIsTakenIsSaid) {
    QTcpServer taken;
    ASSERT_TRUE(taken.listen(QHostAddress::LocalHost));
    TFollower follower("tcp-listen://:" + std::to_string(taken.serverPort()));
    follower.Poll();
    EXPECT_NE(follower.Link().Trouble(), "");
    TFollower nobody("tcp-listen://nowhere:5000");
    nobody.Poll();
    EXPECT_NE(nobody.Link().Trouble().find("no such address"), std::string::npos);
}

TEST_F(LinkTest, SerialLineThatIsMissingIsSaid) {
    try {
        TFollower follower("serial:/dev/no_such_line@9600");
        follower.Poll();
        EXPECT_NE(follower.Link().Trouble().find("no_such_line"), std::string::npos);
    } catch (const EFileError& error) { // a build without them
        EXPECT_NE(std::string(error.what()).find("serialport"), std::string::npos);
    }
}

} // namespace
} // namespace lumoplot
