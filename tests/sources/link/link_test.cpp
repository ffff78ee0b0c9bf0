#include "sources/link/link.h"

#include "common/dde_server.h"
#include "support/errors.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>
#include <thread>

#if __has_include(<QTcpServer>)
#include <QTcpServer>
#include <QTcpSocket>
#endif
#if defined(_WIN32)
#include <windows.h>
#else
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

TEST_F(LinkTest, ItemsOfWindowsProgramsAreSaidToBeOfWindows) {
    try {
        TFollower follower("dde:Lab|data!table");
        FAIL();
    } catch (const EFileError& error) {
        EXPECT_NE(std::string(error.what()).find("Windows"), std::string::npos);
    }
}
#else
TEST_F(LinkTest, PipeHasOneWriterAfterTheOther) {
    const std::string name = "lumoplot-test-" + std::to_string(GetCurrentProcessId());
    const std::string path = R"(\\.\pipe\)" + name;
    TFollower byName("pipe:" + name);
    TFollower byPath(path); // a pipe is known as one without being called so
    byName.Poll();
    EXPECT_NE(byName.Link().Trouble().find("There is no pipe"), std::string::npos);
    for (const char* text : {"1 10\n2 20\n3 3", "4 40\n"}) {
        const HANDLE writer = CreateNamedPipeA(path.c_str(), PIPE_ACCESS_OUTBOUND,
                                               PIPE_TYPE_BYTE | PIPE_NOWAIT, 1, 4096, 4096, 0, nullptr);
        ASSERT_NE(writer, INVALID_HANDLE_VALUE);
        byName.Link().TryNow();
        byName.Poll();
        byPath.Link().TryNow();
        byPath.Poll();
        EXPECT_NE(byPath.Link().Trouble().find("Another program reads"), std::string::npos);
        DWORD written = 0;
        EXPECT_TRUE(WriteFile(writer, text, static_cast<DWORD>(std::strlen(text)), &written, nullptr));
        byName.Poll();
        CloseHandle(writer);
        byName.Poll(); // the line that has not ended will not go on
    }
    EXPECT_EQ(byName.Y(), Ys({10, 20, 40}));
    EXPECT_FALSE(byName.Link().HasEnded());
    TFollower file("pipe:" + Name()); // is none
    file.Poll();
    EXPECT_NE(file.Link().Trouble().find("There is no pipe"), std::string::npos);
}

class DdeLinkTest : public LinkTest {
protected:
    // Until the program has been asked and has told everything.
    static bool Becomes(TFollower& follower, const std::vector<double>& ys) {
        QElapsedTimer clock;
        for (clock.start(); clock.elapsed() < 5000 && follower.Y() != ys;) {
            QTest::qWait(5);
            follower.Link().TryNow();
            follower.Poll();
        }
        EXPECT_EQ(follower.Y(), ys);
        return follower.Y() == ys;
    }
    std::string Trouble(TFollower& follower) const {
        QElapsedTimer clock;
        for (clock.start(); clock.elapsed() < 5000 && follower.Link().Trouble().empty(); follower.Poll())
            QTest::qWait(5);
        return follower.Link().Trouble();
    }
    std::string m_service = "LumoTest" + std::to_string(GetCurrentProcessId());
};

TEST_F(DdeLinkTest, EachValueTakesThePlaceOfTheOneBefore) {
    for (const char* kind : {"dde:", "dde-warm:"}) {
        SCOPED_TRACE(kind);
        TDdeServer program(m_service);
        program.SetText("t\tU\r\n1\t10\r\n2\t20\r\n");
        TFollower follower(kind + m_service + "|data!table");
        ASSERT_TRUE(Becomes(follower, {10, 20}));
        program.SetText("t\tU\r\n1\t11\r\n2\t21\r\n3\t31"); // the last row has no end
        ASSERT_TRUE(Becomes(follower, {11, 21, 31}));
        std::string many;
        std::vector<double> ys;
        for (int i = 0; i < 20'000; ++i) {
            many += std::to_string(i) + "\t" + std::to_string(i % 97) + "\r\n";
            ys.push_back(i % 97);
        }
        program.SetText(many);
        ASSERT_TRUE(Becomes(follower, ys));
        program.SetText("");
        ASSERT_TRUE(Becomes(follower, {}));
        EXPECT_EQ(follower.Link().Trouble(), "");
    }
}

// A hot link has every value sent, a warm one asks for one of them at its next look.
TEST_F(DdeLinkTest, WarmLinkAsksOnceForSeveralChanges) {
    for (const bool isWarm : {false, true}) {
        TDdeServer program(m_service);
        program.SetText("1 1\n");
        TFollower follower((isWarm ? "dde-warm:" : "dde:") + m_service + "|data!table");
        ASSERT_TRUE(Becomes(follower, {1}));
        const int before = program.TimesAsked();
        for (const char* text : {"1 2\n", "1 3\n", "1 4\n"}) {
            program.SetText(text);
            QTest::qWait(20);
        }
        ASSERT_TRUE(Becomes(follower, {4}));
        EXPECT_EQ(program.TimesAsked() - before, isWarm ? 1 : 0);
    }
}

TEST_F(DdeLinkTest, ProgramThatIsMissingIsCalledAgain) {
    TFollower follower("dde:" + m_service + "|data!table");
    EXPECT_EQ(Trouble(follower), "No program answers to " + m_service + "|data");
    {
        TDdeServer program(m_service);
        program.SetText("1 10\n2 20\n");
        ASSERT_TRUE(Becomes(follower, {10, 20}));
        EXPECT_EQ(follower.Link().Trouble(), "");
        TFollower other("dde:" + m_service + "|data!other");
        EXPECT_NE(Trouble(other).find("other"), std::string::npos);
    }
    EXPECT_EQ(Trouble(follower), m_service + "|data has ended the conversation");
    EXPECT_EQ(follower.Y(), Ys({10, 20})); // what was read stays
    TDdeServer again(m_service);
    again.SetText("1 30\n");
    ASSERT_TRUE(Becomes(follower, {30}));
}
#endif

#if __has_include(<QTcpServer>)
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
#else
TEST_F(LinkTest, LinesOfTheNetworkAreNotInThisBuild) {
    EXPECT_THROW(TFollower("tcp://127.0.0.1:5000"), EFileError);
}
#endif

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
