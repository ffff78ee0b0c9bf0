#include "sources/database/connection/qt_session.h"

#include "data/series/ds_info.h"
#include "sources/database/connection/decimal_text.h"
#include "support/errors.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QVariant>
#include <atomic>
#include <functional>
#include <mutex>
#include <thread>

namespace lumoplot {
namespace {

constexpr std::int64_t kLargestExactInteger = std::int64_t{1} << 53;
constexpr int kConnectSeconds = 15;

struct TDriver {
    const char* name;
    const char* what;
    const char* package;
};

TDriver DriverOf(TDatabaseKind kind) {
    switch (kind) {
    case TDatabaseKind::PostgreSql: return {"QPSQL", "PostgreSQL", "libqt6sql6-psql"};
    case TDatabaseKind::MySql: return {"QMYSQL", "MySQL and MariaDB", "libqt6sql6-mysql"};
    case TDatabaseKind::Odbc: return {"QODBC", "ODBC", "libqt6sql6-odbc"};
    default: return {"QSQLITE", "SQLite", "libqt6sql6-sqlite"};
    }
}

double DaysOf(QDate date) {
    return static_cast<double>(date.toJulianDay() - 2'415'019);
}

double DaysOf(QTime time) {
    return time.msecsSinceStartOfDay() / 86'400'000.0;
}

TSqlCell IntegerCell(std::int64_t value) {
    const bool isExact = (value >= -kLargestExactInteger && value <= kLargestExactInteger);
    return {isExact ? TSqlCell::TKind::Number : TSqlCell::TKind::Rounded, static_cast<double>(value), {}};
}

class TQtRows final : public TSqlRows {
public:
    TQtRows(QSqlQuery query, std::function<void(const std::string&)> fail)
        : m_query(std::move(query)), m_record(m_query.record()), m_fail(std::move(fail)) {
        for (int i = 0; i < m_record.count(); ++i)
            m_isDecimal.push_back(m_record.field(i).metaType().id() != QMetaType::QString);
    }

    int ColumnCount() const override { return m_record.count(); }
    std::string ColumnName(int column) const override { return m_record.fieldName(column).toStdString(); }

    bool Next() override {
        if (m_query.next()) return true;
        const QSqlError error = m_query.lastError();
        if (error.type() != QSqlError::NoError) m_fail(error.text().toStdString());
        return false;
    }

    TSqlCell Cell(int column) override {
        using TKind = TSqlCell::TKind;
        const QVariant value = m_query.value(column);
        if (value.isNull()) return {};
        switch (value.typeId()) {
        case QMetaType::Double:
        case QMetaType::Float: return {TKind::Number, value.toDouble(), {}};
        case QMetaType::Bool:
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::LongLong:
        case QMetaType::Short:
        case QMetaType::UShort:
        case QMetaType::SChar:
        case QMetaType::UChar: return IntegerCell(value.toLongLong());
        case QMetaType::ULongLong: {
            const quint64 number = value.toULongLong();
            return {
                number <= quint64{1} << 53 ? TKind::Number : TKind::Rounded, static_cast<double>(number), {}};
        }
        case QMetaType::QDate: return {TKind::Date, DaysOf(value.toDate()), {}};
        case QMetaType::QTime: return {TKind::Date, DaysOf(value.toTime()), {}};
        case QMetaType::QDateTime: {
            const QDateTime moment = value.toDateTime();
            return {TKind::Date, DaysOf(moment.date()) + DaysOf(moment.time()), {}};
        }
        case QMetaType::QByteArray: return {TKind::Binary, 0, {}};
        default: return TextCellOf(column, value);
        }
    }

    std::string ShownText(int column) override {
        const QVariant value = m_query.value(column);
        if (value.typeId() == QMetaType::QByteArray)
            return "<" + std::to_string(value.toByteArray().size()) + " bytes>";
        if (value.typeId() == QMetaType::QDateTime)
            return value.toDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")).toStdString();
        return value.toString().toStdString();
    }

private:
    // Decimals come as texts, too, of columns that hold no texts.
    TSqlCell TextCellOf(int column, const QVariant& value) {
        m_text = value.toString().toStdString();
        if (m_isDecimal[static_cast<std::size_t>(column)])
            if (const auto decimal = DecimalOf(m_text))
                return {decimal->isRounded ? TSqlCell::TKind::Rounded : TSqlCell::TKind::Number,
                        decimal->value,
                        {}};
        return {TSqlCell::TKind::Text, 0, m_text};
    }

    QSqlQuery m_query;
    QSqlRecord m_record;
    std::function<void(const std::string&)> m_fail;
    std::vector<bool> m_isDecimal; ///< a text in the column would be the digits of a number
    std::string m_text;
};

// The toolkit puts "DSN=" in front of what names no driver.
std::string OdbcName(const std::string& options) {
    constexpr std::string_view kSource = "DSN=";
    return options.starts_with(kSource) ? options.substr(kSource.size()) : options;
}

std::string OdbcValue(const std::string& value) {
    if (value.find_first_of(";{}=") == std::string::npos) return value;
    std::string quoted = "{";
    for (const char c : value) quoted.append(c == '}' ? 2 : 1, c);
    return quoted + "}";
}

std::string NextName() {
    static std::atomic<int> count = 0;
    return "lumoplot" + std::to_string(++count);
}

class TQtSession final : public TSqlSession {
public:
    explicit TQtSession(const TConnection& connection) : TSqlSession(connection), m_name(NextName()) {
        m_database = QSqlDatabase::addDatabase(QLatin1String(DriverOf(connection.kind).name),
                                               QString::fromStdString(m_name));
        try {
            Describe(connection);
            if (!m_database.open()) FailToOpen(connection);
            MakeReadOnly();
        } catch (...) {
            Close();
            throw;
        }
    }

    ~TQtSession() override { Close(); }

    std::vector<TSqlTable> Tables() override {
        if (Dialect() == TDatabaseKind::PostgreSql) return PostgreSqlTables();
        std::vector<TSqlTable> tables;
        for (const QString& name : m_database.tables(QSql::Tables))
            tables.push_back({name.toStdString(), {}, false});
        for (const QString& name : m_database.tables(QSql::Views))
            tables.push_back({name.toStdString(), {}, true});
        return tables;
    }

    std::unique_ptr<TSqlRows> Query(const std::string& select) override {
        QSqlQuery query(m_database);
        query.setForwardOnly(true);
        query.setNumericalPrecisionPolicy(QSql::HighPrecision);
        if (!query.exec(QString::fromStdString(select))) Fail(query.lastError().text().toStdString());
        return std::make_unique<TQtRows>(std::move(query),
                                         [this](const std::string& reason) { Fail(reason); });
    }

    // Another connection asks the server to end what this one runs. It may take as long as it takes; nobody
    // waits for it.
    void Interrupt() override {
        const std::scoped_lock lock(m_lock);
        if (m_process.empty()) return;
        std::thread([connection = Connection(), process = m_process] {
            try {
                const auto session = std::make_unique<TQtSession>(connection);
                const bool isPostgres = connection.kind == TDatabaseKind::PostgreSql;
                session->Ask((isPostgres ? "SELECT pg_cancel_backend(" : "KILL QUERY (") + process + ")");
            } catch (const std::exception&) {
                // Then the statement runs to its end, and what it gives is thrown away.
            }
        }).detach();
    }

    std::string Quoted(const std::string& name) const override {
        const QString example =
            m_database.driver()->escapeIdentifier(QStringLiteral("a"), QSqlDriver::FieldName);
        const std::string marks = example.size() == 3 ? example.toStdString() : "\"a\"";
        std::string quoted(1, marks.front());
        for (const char c : name) quoted.append(c == marks.back() ? 2 : 1, c);
        return quoted + marks.back();
    }

private:
    // What PostgreSQL, MariaDB and drivers of ODBC say of a password that is missing or wrong.
    [[noreturn]] void FailToOpen(const TConnection& connection) const {
        const QSqlError error = m_database.lastError();
        const QString text = error.text();
        const QString code = error.nativeErrorCode();
        const bool isRefused = text.contains(QStringLiteral("password"), Qt::CaseInsensitive) ||
                               code == QLatin1String("1045") || code.startsWith(QLatin1String("28"));
        if (isRefused && !connection.IsFile()) FailForPassword(text.toStdString());
        Fail(text.toStdString());
    }

    void Describe(const TConnection& connection) {
        const auto text = [](const std::string& value) { return QString::fromStdString(value); };
        m_database.setUserName(text(connection.user));
        m_database.setPassword(text(connection.password));
        if (connection.IsFile()) {
            m_database.setDatabaseName(text(connection.file));
            m_database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_BUSY_TIMEOUT=2000"));
        } else if (connection.kind == TDatabaseKind::Odbc) {
            m_database.setDatabaseName(text(OdbcName(connection.options)));
            m_database.setPassword(text(OdbcValue(connection.password)));
            m_database.setConnectOptions(
                QStringLiteral("SQL_ATTR_ACCESS_MODE=SQL_MODE_READ_ONLY;SQL_ATTR_LOGIN_TIMEOUT=%1")
                    .arg(kConnectSeconds));
        } else {
            m_database.setHostName(text(connection.host));
            m_database.setDatabaseName(text(connection.database));
            if (connection.port > 0) m_database.setPort(connection.port);
            const bool isPostgres = connection.kind == TDatabaseKind::PostgreSql;
            m_database.setConnectOptions((isPostgres ? QStringLiteral("connect_timeout=%1")
                                                     : QStringLiteral("MYSQL_OPT_CONNECT_TIMEOUT=%1"))
                                             .arg(kConnectSeconds));
        }
    }

    void MakeReadOnly() {
        switch (Dialect()) {
        case TDatabaseKind::PostgreSql:
            Require("SET SESSION CHARACTERISTICS AS TRANSACTION READ ONLY");
            Require("SET TIME ZONE 'UTC'");
            m_process = Ask("SELECT pg_backend_pid()");
            break;
        case TDatabaseKind::MySql:
            Require("SET SESSION TRANSACTION READ ONLY");
            Require("SET time_zone='+00:00'");
            m_process = Ask("SELECT CONNECTION_ID()");
            break;
        case TDatabaseKind::Sqlite: Require("PRAGMA query_only=ON"); break;
        default: break;
        }
    }

    void Require(const char* statement) {
        QSqlQuery query(m_database);
        if (!query.exec(QLatin1String(statement))) Fail(query.lastError().text().toStdString());
    }

    std::string Ask(const std::string& select) {
        QSqlQuery query(m_database);
        return query.exec(QString::fromStdString(select)) && query.next()
                   ? query.value(0).toString().toStdString()
                   : std::string();
    }

    std::vector<TSqlTable> PostgreSqlTables() {
        const auto rows =
            Query("SELECT c.relname, n.nspname, c.relkind::text, pg_table_is_visible(c.oid)::int "
                  "FROM pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace WHERE c.relkind "
                  "IN ('r','v','m','f','p') AND n.nspname NOT IN ('pg_catalog', "
                  "'information_schema') AND n.nspname NOT LIKE 'pg\\_%' ORDER BY 2, 1");
        std::vector<TSqlTable> tables;
        while (rows->Next()) {
            const bool isVisible = rows->ShownText(3) == "1";
            const std::string kind = rows->ShownText(2);
            tables.push_back(
                {rows->ShownText(0), isVisible ? "" : rows->ShownText(1), kind == "v" || kind == "m"});
        }
        return tables;
    }

    void Close() {
        m_database.close();
        m_database = QSqlDatabase();
        QSqlDatabase::removeDatabase(QString::fromStdString(m_name));
    }

    std::string m_name;
    QSqlDatabase m_database;
    std::mutex m_lock;
    std::string m_process; ///< the server's number for this connection
};

} // namespace

std::string MissingDriver(TDatabaseKind kind) {
    const TDriver driver = DriverOf(kind);
    if (QSqlDatabase::isDriverAvailable(QLatin1String(driver.name))) return {};
    return std::string("the driver for ") + driver.what + " is not installed (Debian: " + driver.package +
           ")";
}

std::unique_ptr<TSqlSession> OpenQtSession(const TConnection& connection) {
    if (!QCoreApplication::instance()) throw EFileError(connection.shown + ": databases need an application");
    if (const std::string missing = MissingDriver(connection.kind); !missing.empty())
        throw EFileError(connection.shown + ": " + missing);
    return std::make_unique<TQtSession>(connection);
}

} // namespace lumoplot
