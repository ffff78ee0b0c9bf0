// A MariaDB server of the test's own, in a scratch folder.
#include "common/cancelling_progress.h"
#include "common/thrown_text.h"
#include "sources/database/connection/qt_session.h"
#include "sources/database/database_files.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>
#include <memory>
#if defined(Q_OS_UNIX)
#include <QTcpServer>
#include <unistd.h>
#endif

namespace lumoplot {
namespace {

#if defined(Q_OS_UNIX)

QString ServerProgram(const QString& name) {
    return QStandardPaths::findExecutable(name, {"/usr/sbin", "/usr/bin", "/usr/local/bin"});
}

class TMariaServer {
public:
    static std::unique_ptr<TMariaServer> Start() {
        if (ServerProgram("mariadbd").isEmpty() || !MissingDriver(TDatabaseKind::MySql).empty())
            return nullptr;
        std::unique_ptr<TMariaServer> server(new TMariaServer);
        return server->Begin() ? std::move(server) : nullptr;
    }
    ~TMariaServer() { Stop(); }

    void Stop() {
        m_server.kill();
        m_server.waitForFinished();
    }
    std::string Url(const std::string& user, const std::string& password = "") const {
        return "mysql://" + user + (password.empty() ? "" : ":" + password) +
               "@127.0.0.1:" + std::to_string(m_port) + "/lab";
    }
    bool Sql(const QByteArray& statements, const QString& database = "lab") const {
        QProcess client;
        client.setStandardErrorFile(QProcess::nullDevice());
        client.start("mariadb", {"--no-defaults", "-S", m_folder.filePath("s"), "-u", "root", database});
        client.write(statements);
        client.closeWriteChannel();
        return client.waitForFinished(60'000) && client.exitCode() == 0;
    }

private:
    TMariaServer() = default;

    bool Begin() {
        QTcpServer probe;
        if (!probe.listen(QHostAddress::LocalHost)) return false;
        m_port = probe.serverPort();
        probe.close();
        QStringList user;
        if (geteuid() == 0) user = QStringList{"--user=mysql"};
        if (geteuid() == 0 && QProcess::execute("chown", {"mysql", m_folder.path()}) != 0) return false;
        const QString data = "--datadir=" + m_folder.filePath("data");
        QProcess install;
        install.setProcessChannelMode(QProcess::MergedChannels);
        install.setStandardOutputFile(QProcess::nullDevice());
        install.start(
            ServerProgram("mariadb-install-db"),
            QStringList{"--no-defaults", data, "--auth-root-authentication-method=normal", "--skip-test-db"} +
                user);
        if (!install.waitForFinished(60'000) || install.exitCode() != 0) return false;
        m_server.setProcessChannelMode(QProcess::MergedChannels);
        m_server.setStandardOutputFile(QProcess::nullDevice());
        m_server.start(ServerProgram("mariadbd"),
                       QStringList{"--no-defaults", data, "--socket=" + m_folder.filePath("s"),
                                   "--port=" + QString::number(m_port), "--bind-address=127.0.0.1"} +
                           user);
        constexpr int kTries = 100;
        for (int i = 0; i < kTries; ++i) {
            if (Sql("create database lab; create user owner@'127.0.0.1'; grant all on *.* to "
                    "owner@'127.0.0.1';",
                    "mysql"))
                return true;
            QThread::msleep(100);
        }
        return false;
    }

    QTemporaryDir m_folder;
    QProcess m_server;
    int m_port = 0;
};

class MariaTest : public TDatabaseTest {
protected:
    static void SetUpTestSuite() { s_server = TMariaServer::Start(); }
    static void TearDownTestSuite() { s_server.reset(); }
    void SetUp() override {
        LUMOPLOT_NEED(s_server, "no MariaDB server can be started here, or its driver is missing "
                                "(Debian: mariadb-server, libqt6sql6-mysql)");
    }

    static std::unique_ptr<TMariaServer> s_server;
};

std::unique_ptr<TMariaServer> MariaTest::s_server;

TEST_F(MariaTest, EveryTypeAndNameIsReadFromMariaDb) {
    ASSERT_TRUE(
        s_server->Sql("create table `T``x.y`(at datetime, n decimal(30,10), big bigint, `Se.lect` double);"
                      "insert into `T``x.y` values('2024-01-05 12:00', 0.1, 9007199254740993, 1.5),"
                      "('2024-01-06', 12345678901234567.89, 2, null),(null, 3, 3, 3);"));
    const std::string url = s_server->Url("owner");
    ASSERT_EQ(DatabaseTables(url).size(), 1u);
    const std::string table = DatabaseTables(url)[0].Shown();
    EXPECT_EQ(table, "T`x.y");
    TTextReport report = Load(url, table, "at", "n");
    EXPECT_EQ(X(), (std::vector<double>{45296.5, 45297}));
    EXPECT_EQ(Y(), (std::vector<double>{0.1, 12345678901234567.89}));
    EXPECT_EQ(report.notes.size(), 2u) << "one value was rounded, one row has none";
    EXPECT_EQ((Load(url, table, "big", "Se.lect"), Y()), (std::vector<double>{3, 1.5}));
}

TEST_F(MariaTest, MariaDbThinsAndChooses) {
    ASSERT_TRUE(s_server->Sql("create table peaks as select cast(seq/10 as double) t, if(seq=1234,50,0) v "
                              "from seq_0_to_99999;"));
    const std::string url = s_server->Url("owner");
    Info().SetAutoRowHitFreq(true);
    Options.budget = 200;
    EXPECT_EQ(Load(url, "peaks").rowsChosen, 100'000);
    EXPECT_LE(Series.Count(), 200);
    EXPECT_EQ(std::ranges::count(Y(), 50), 1);
    Info().SetAutoRowHitFreq(false);
    Info().SetRowSamplingFrequency(1000);
    EXPECT_EQ((Load(url, "peaks"), Series.Count()), 100);
}

TEST_F(MariaTest, NothingCanBeChangedInMariaDb) {
    ASSERT_TRUE(s_server->Sql("create table keepit(t int, v int); insert into keepit values(1,2);"
                              "create function hurt() returns int deterministic begin delete from keepit; "
                              "return 1; end;") ||
                s_server->Sql("select 1"));
    const std::string url = s_server->Url("owner");
    for (const char* query : {"delete from keepit", "select 1 a, 2 b; delete from keepit",
                              "select t, v from keepit into outfile '/tmp/lumoplot_stolen'"})
        ThrownText<EFileError>([&] { LoadQuery(url, query); });
    Info().SetDatabase({});
    EXPECT_EQ((Load(url, "keepit"), Series.Count()), 1);
}

TEST_F(MariaTest, MariaDbPasswordIsNeverShown) {
    ASSERT_TRUE(s_server->Sql("create table secret(t int, v int); insert into secret values(1,2);"
                              "create user guest@'127.0.0.1' identified by 'pa:ss'; "
                              "grant select on lab.* to guest@'127.0.0.1';"));
    const std::string text =
        ThrownText<EFileError>([&] { Load(s_server->Url("guest", "wrong_word"), "secret"); });
    EXPECT_EQ(text.find("wrong_word"), std::string::npos) << text;
    EXPECT_NE(text.find("guest"), std::string::npos) << text;
    KeepPassword(s_server->Url("guest"), "pa:ss");
    EXPECT_EQ((Load(s_server->Url("guest"), "secret"), Series.Count()), 1);
}

TEST_F(MariaTest, CancelDoesNotWaitForMariaDb) {
    Info().SetKind(TSourceKind::Database);
    Info().SetDatabase({"", "select 1 t, sleep(600) v", "", ""});
    TCancellingProgress progress(10);
    QElapsedTimer time;
    time.start();
    EXPECT_TRUE(Load(s_server->Url("owner"), progress).cancelled);
    EXPECT_LT(time.elapsed(), 5'000); // the statement would take minutes
}

#endif

} // namespace
} // namespace lumoplot
