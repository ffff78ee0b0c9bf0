// Databases behind the toolkit's drivers: a PostgreSQL server of the test's own, and ODBC over a file.
#include "common/cancelling_progress.h"
#include "common/thrown_text.h"
#include "sources/database/connection/password_asker.h"
#include "sources/database/connection/qt_session.h"
#include "sources/database/database_files.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <algorithm>
#include <chrono>
#include <memory>
#include <thread>
#if defined(Q_OS_UNIX)
#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace lumoplot {
namespace {

constexpr const char* kSecret = "pa:ss@w%rd";

#if defined(Q_OS_UNIX)

bool Run(const QString& program, const QStringList& arguments, const QByteArray& input = {}) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    return process.waitForFinished(60'000) && process.exitCode() == 0;
}

int FreePort() {
    const int probe = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (bind(probe, reinterpret_cast<sockaddr*>(&address), size) == 0)
        getsockname(probe, reinterpret_cast<sockaddr*>(&address), &size);
    close(probe);
    return ntohs(address.sin_port);
}

// A server in a scratch folder, which goes with the object. PostgreSQL does not run as root.
class TPostgresServer {
public:
    static std::unique_ptr<TPostgresServer> Start() {
        const QStringList versions =
            QDir(QStringLiteral("/usr/lib/postgresql")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        if (versions.isEmpty() || !MissingDriver(TDatabaseKind::PostgreSql).empty()) return nullptr;
        std::unique_ptr<TPostgresServer> server(
            new TPostgresServer("/usr/lib/postgresql/" + versions.last() + "/bin/"));
        return server->Begin() ? std::move(server) : nullptr;
    }

    ~TPostgresServer() { Stop(); }
    void Stop() { As({m_programs + "pg_ctl", "-D", m_data, "-m", "immediate", "stop"}); }

    std::string Url(const std::string& user, const std::string& password = "") const {
        return "postgresql://" + user + (password.empty() ? "" : ":" + password) +
               "@127.0.0.1:" + std::to_string(m_port) + "/postgres";
    }
    bool Sql(const QByteArray& statements) const {
        return Run(m_programs + "psql",
                   {"-h", "127.0.0.1", "-p", QString::number(m_port), "-U", "owner", "-d", "postgres", "-q",
                    "-v", "ON_ERROR_STOP=1"},
                   statements);
    }

private:
    explicit TPostgresServer(const QString& programs)
        : m_programs(programs), m_data(m_folder.filePath("data")) {}

    bool Begin() {
        m_port = FreePort();
        if (geteuid() == 0 && !Run("chown", {"postgres", m_folder.path()})) return false;
        if (!As({m_programs + "initdb", "-D", m_data, "-U", "owner", "-A", "trust", "--no-sync"}))
            return false;
        QFile rules(m_data + "/pg_hba.conf");
        if (!rules.open(QIODevice::WriteOnly)) return false;
        rules.write("host all owner 127.0.0.1/32 trust\nhost all all 127.0.0.1/32 scram-sha-256\n");
        rules.close();
        const QString options = QStringLiteral("-p %1 -c listen_addresses=127.0.0.1 -c fsync=off -k %2")
                                    .arg(m_port)
                                    .arg(m_folder.path());
        return As({m_programs + "pg_ctl", "-D", m_data, "-w", "-l", m_folder.filePath("log"), "-o", options,
                   "start"});
    }

    static bool As(QStringList command) {
        if (geteuid() == 0) command = QStringList{"runuser", "-u", "postgres", "--"} + command;
        const QString program = command.takeFirst();
        return Run(program, command);
    }

    QTemporaryDir m_folder;
    QString m_programs;
    QString m_data;
    int m_port = 0;
};

class PostgresTest : public TDatabaseTest {
protected:
    static void SetUpTestSuite() { s_server = TPostgresServer::Start(); }
    static void TearDownTestSuite() { s_server.reset(); }
    void SetUp() override {
        LUMOPLOT_NEED(s_server, "no PostgreSQL server can be started here, or its driver is missing "
                                "(Debian: postgresql, libqt6sql6-psql)");
    }

    static std::unique_ptr<TPostgresServer> s_server;
};

std::unique_ptr<TPostgresServer> PostgresTest::s_server;

TEST_F(PostgresTest, EveryTypeAndNameIsRead) {
    ASSERT_TRUE(s_server->Sql(
        "create schema \"odd.one\";"
        "create table \"odd.one\".\"T\"\"x.y\"(at timestamptz, n numeric, big bigint, \"Se.lect\" float8);"
        "insert into \"odd.one\".\"T\"\"x.y\" values"
        "('2024-01-05 14:00+02', 0.1, 9007199254740993, 1.5), ('2024-01-06', 12345678901234567.89, 2, null),"
        "(null, 3, 3, 3);"));
    const std::string url = s_server->Url("owner");
    const std::string table = "odd.one.T\"x.y";
    ASSERT_EQ(DatabaseTables(url).size(), 1u);
    EXPECT_EQ(DatabaseTables(url)[0].Shown(), table);
    TTextReport report = Load(url, table, "at", "n");
    EXPECT_EQ(X(), (std::vector<double>{45296.5, 45297}));
    EXPECT_EQ(Y(), (std::vector<double>{0.1, 12345678901234567.89}));
    EXPECT_EQ(report.notes.size(), 2u) << "one value was rounded, one row has none";
    report = Load(url, table, "big", "Se.lect");
    EXPECT_EQ(Y(), (std::vector<double>{3, 1.5}));
    Info().SetAutoRowHitFreq(true);
    Options.budget = 2;
    EXPECT_EQ((Load(url, table, "at", "n"), Series.Count()), 2);
}

TEST_F(PostgresTest, TheServerThinsAndChooses) {
    ASSERT_TRUE(
        s_server->Sql("create table peaks as select i/10.0::float8 t, case i when 1234 then 50 else 0 "
                      "end::float8 v from generate_series(0,99999) i;"));
    const std::string url = s_server->Url("owner");
    Info().SetAutoRowHitFreq(true);
    Options.budget = 200;
    const TTextReport report = Load(url, "peaks");
    EXPECT_EQ(report.rowsChosen, 100'000);
    EXPECT_LE(Series.Count(), 200);
    EXPECT_EQ(std::ranges::count(Y(), 50), 1);
    Info().SetAutoRowHitFreq(false);
    Info().SetRowSamplingFrequency(1000);
    EXPECT_EQ((Load(url, "peaks"), Series.Count()), 100);
}

TEST_F(PostgresTest, NothingCanBeChanged) {
    ASSERT_TRUE(s_server->Sql("create table keep(t int, v int); insert into keep values(1,2);"
                              "create function hurt() returns int language plpgsql as $$ begin delete from "
                              "keep; return 1; end $$;"));
    const std::string url = s_server->Url("owner");
    for (const char* query :
         {"delete from keep", "select hurt() a, 1 b",
          "with d as (delete from keep returning *) select * from d", "select 1 a, 2 b; delete from keep"})
        ThrownText<EFileError>([&] { LoadQuery(url, query); });
    Info().SetDatabase({});
    EXPECT_EQ((Load(url, "keep"), Series.Count()), 1);
}

TEST_F(PostgresTest, APasswordIsNeverShown) {
    ASSERT_TRUE(s_server->Sql(
        QByteArray("create role guest login password '") + kSecret +
        "';"
        "create table open(t int, v int); insert into open values(1,2); grant select on open to guest;"));
    const std::string text =
        ThrownText<EFileError>([&] { Load(s_server->Url("guest", "wrong_secret"), "open"); });
    EXPECT_EQ(text.find("wrong_secret"), std::string::npos) << text;
    EXPECT_NE(text.find("guest"), std::string::npos) << text;
    KeepPassword(s_server->Url("guest"), kSecret);
    Load(s_server->Url("guest"), "open");
    EXPECT_EQ(Series.Count(), 1);
    Info().SetDatabase({s_server->Url("guest", "p@ss"), "", "", ""});
    EXPECT_EQ(Info().Database().connection, s_server->Url("guest"));
}

TEST_F(PostgresTest, AMissingPasswordIsAskedFor) {
    ASSERT_TRUE(s_server->Sql(QByteArray("create role visitor login password '") + kSecret +
                              "';"
                              "create table shown(t int, v int); insert into shown values(1,2); grant select "
                              "on shown to visitor;"));
    std::vector<std::string> answers = {"wrong_secret", kSecret};
    int asked = 0;
    {
        const TPasswordAskerScope nobody(
            [&](const std::string&, const std::string&) { return std::nullopt; });
        ThrownText<EFileError>([&] { Load(s_server->Url("visitor"), "shown"); });
    }
    const TPasswordAskerScope user([&](const std::string& connection, const std::string& reason) {
        EXPECT_EQ(connection, s_server->Url("visitor"));
        EXPECT_EQ(reason.find("secret"), std::string::npos) << reason;
        return std::optional(answers.at(static_cast<std::size_t>(asked++)));
    });
    EXPECT_EQ((Load(s_server->Url("visitor"), "shown"), Series.Count()), 1);
    EXPECT_EQ(asked, 2);
    Load(s_server->Url("visitor"), "shown"); // it is kept
    EXPECT_EQ(asked, 2);
}

TEST_F(PostgresTest, ARenamedTableIsToldOf) {
    ASSERT_TRUE(s_server->Sql("create table before(t int, v int); insert into before values(1,2);"));
    Load(s_server->Url("owner"), "before");
    ASSERT_TRUE(s_server->Sql("alter table before rename to after;"));
    const std::string text = ThrownText<EFileError>([&] { Load(s_server->Url("owner"), "before"); });
    EXPECT_NE(text.find("there is no table 'before'"), std::string::npos) << text;
    EXPECT_EQ(Series.Count(), 1);
}

TEST_F(PostgresTest, CancelDoesNotWaitForTheServer) {
    Info().SetKind(TSourceKind::Database);
    Info().SetDatabase({"", "select 1 t, count(*) v from generate_series(1, 1000000000000)", "", ""});
    TCancellingProgress progress(10);
    QElapsedTimer time;
    time.start();
    EXPECT_TRUE(Load(s_server->Url("owner"), progress).cancelled);
    EXPECT_LT(time.elapsed(), 5'000); // the statement would take hours
}

// The last one of them, as the server does not come back.
TEST_F(PostgresTest, ZTheServerMayGoAwayWhileItIsRead) {
    ASSERT_TRUE(s_server->Sql("create table slow as select i t, i v from generate_series(1,1000) i;"));
    Load(s_server->Url("owner"), "slow");
    std::thread stopping([] {
        std::this_thread::sleep_for(std::chrono::milliseconds(700));
        s_server->Stop();
    });
    const std::string text = ThrownText<EFileError>([&] {
        LoadQuery(s_server->Url("owner"),
                  "select t, v from slow, pg_sleep(case when t > 500 then 0.1 else 0 end)");
    });
    stopping.join();
    EXPECT_NE(text.find("127.0.0.1"), std::string::npos) << text;
    EXPECT_EQ(Series.Count(), 1000);
}

class OdbcTest : public TDatabaseTest {};

TEST_F(OdbcTest, AFileIsReadThroughItsDriver) {
    LUMOPLOT_NEED(MissingDriver(TDatabaseKind::Odbc).empty(), MissingDriver(TDatabaseKind::Odbc));
    LUMOPLOT_NEED(QFile::exists("/usr/lib/x86_64-linux-gnu/odbc/libsqlite3odbc.so"),
                  "libsqliteodbc is missing");
    const std::string file = Sqlite(
        "a.db", "create table m(t double, v double); insert into m values(1,2),(2,null),(3,4),(4,5),(5,6);");
    LUMOPLOT_NEED(!file.empty(), "the program sqlite3 is missing");
    const std::string url =
        "odbc:DRIVER=/usr/lib/x86_64-linux-gnu/odbc/libsqlite3odbc.so;Database=" + file + ";PWD={s;ecret}";
    EXPECT_EQ(DatabaseTables(url).size(), 1u);
    const TTextReport report = Load(url, "m");
    EXPECT_EQ(Y(), (std::vector<double>{2, 4, 5, 6}));
    EXPECT_EQ(report.rowsSkipped, 1);
    Info().SetRowSamplingFrequency(2);
    EXPECT_EQ((Load(url, "m"), X()), (std::vector<double>{1, 3, 5}));
    Info().SetRowChoiceMode(TRowChoice::ByNumber);
    Info().SetRowChoiceValue1(3);
    Info().SetRowChoiceValue2(4);
    EXPECT_EQ((Load(url, "m"), X()), (std::vector<double>{3}));
    const std::string text = ThrownText<EFileError>([&] { Load(url, "none"); });
    EXPECT_EQ(text.find("ecret"), std::string::npos) << text;
}

#endif

TEST(ConnectionTest, PasswordsAreTakenOutOfEveryForm) {
    const std::pair<const char*, const char*> cases[] = {
        {"postgresql://me:a:b@c@host:5432/x", "postgresql://me@host:5432/x"},
        {"postgresql://me@host/x", "postgresql://me@host/x"},
        {"mysql://host/x", "mysql://host/x"},
        {"odbc:DSN=a;UID=b;PWD=c;X=1", "odbc:DSN=a;UID=b;X=1"},
        {"odbc:DSN=a;pwd={c;d};X=1", "odbc:DSN=a;X=1"},
        {"postgresql://h/x?user=a&password=b", "postgresql://h/x?user=a&"},
        {"/data/a.db", "/data/a.db"},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(WithoutPassword(text), expected);
}

} // namespace
} // namespace lumoplot
