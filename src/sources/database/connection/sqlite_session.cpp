#include "sources/database/connection/sqlite_session.h"

#include "support/errors.h"

#ifdef LUMOPLOT_HAVE_SQLITE

#include "sources/database/connection/file_table_module.h"
#include "support/number_text.h"

#include <cmath>
#include <functional>
#include <sqlite3.h>
#include <utility>

namespace lumoplot {
namespace {

constexpr std::int64_t kLargestExact = std::int64_t{1} << 53;

bool IsExact(std::int64_t value) {
    return (value >= -kLargestExact && value <= kLargestExact) ||
           (value < INT64_MAX - 1024 && static_cast<std::int64_t>(static_cast<double>(value)) == value);
}

struct TCloseStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using TStatement = std::unique_ptr<sqlite3_stmt, TCloseStatement>;

using TFailure = std::function<void(const std::string&)>;

class TSqliteRows final : public TSqlRows {
public:
    TSqliteRows(sqlite3* database, TStatement statement, TFailure fail)
        : m_database(database), m_statement(std::move(statement)), m_fail(std::move(fail)) {}

    int ColumnCount() const override { return sqlite3_column_count(m_statement.get()); }

    std::string ColumnName(int column) const override {
        const char* name = sqlite3_column_name(m_statement.get(), column);
        return name ? name : "";
    }

    bool Next() override {
        const int result = sqlite3_step(m_statement.get());
        if (result == SQLITE_ROW) return true;
        if (result != SQLITE_DONE) m_fail(sqlite3_errmsg(m_database));
        return false;
    }

    TSqlCell Cell(int column) override {
        using TKind = TSqlCell::TKind;
        sqlite3_stmt* row = m_statement.get();
        switch (sqlite3_column_type(row, column)) {
        case SQLITE_INTEGER: {
            const std::int64_t value = sqlite3_column_int64(row, column);
            return {IsExact(value) ? TKind::Number : TKind::Rounded, static_cast<double>(value), {}};
        }
        case SQLITE_FLOAT: return {TKind::Number, sqlite3_column_double(row, column), {}};
        case SQLITE_TEXT: return {TKind::Text, 0, Text(column)};
        case SQLITE_BLOB: return {TKind::Binary, 0, {}};
        default: return {};
        }
    }

    std::string ShownText(int column) override {
        sqlite3_stmt* row = m_statement.get();
        if (sqlite3_column_type(row, column) != SQLITE_BLOB) return std::string(Text(column));
        return "<" + std::to_string(sqlite3_column_bytes(row, column)) + " bytes>";
    }

private:
    std::string_view Text(int column) {
        const unsigned char* text = sqlite3_column_text(m_statement.get(), column);
        const int length = sqlite3_column_bytes(m_statement.get(), column);
        return text ? std::string_view(reinterpret_cast<const char*>(text), static_cast<std::size_t>(length))
                    : std::string_view();
    }

    sqlite3* m_database;
    TStatement m_statement;
    TFailure m_fail;
};

class TSqliteSession final : public TSqlSession {
public:
    explicit TSqliteSession(const TConnection& connection) : TSqlSession(connection) {
        const bool isOwn = connection.kind == TDatabaseKind::Sqlite;
        const std::string name = isOwn ? connection.file : ":memory:";
        const int flags = isOwn ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
        const int result = sqlite3_open_v2(name.c_str(), &m_database, flags, nullptr);
        if (result != SQLITE_OK) FailAndClose(m_database ? sqlite3_errmsg(m_database) : "no memory");
        sqlite3_extended_result_codes(m_database, 1);
        sqlite3_busy_timeout(m_database, kBusyMs);
        try {
            if (!isOwn) AddTables(connection);
            Run("PRAGMA query_only=ON");
            CountTables();
        } catch (...) {
            sqlite3_close_v2(std::exchange(m_database, nullptr));
            throw;
        }
    }

    ~TSqliteSession() override { sqlite3_close_v2(m_database); }

    std::vector<TSqlTable> Tables() override {
        const auto rows =
            Query("SELECT name, type FROM sqlite_master WHERE type IN ('table','view') AND name NOT LIKE "
                  "'sqlite\\_%' ESCAPE '\\' ORDER BY name");
        std::vector<TSqlTable> tables;
        while (rows->Next()) tables.push_back({rows->ShownText(0), {}, rows->ShownText(1) == "view"});
        return tables;
    }

    std::unique_ptr<TSqlRows> Query(const std::string& select) override {
        sqlite3_stmt* statement = nullptr;
        const int result = sqlite3_prepare_v2(m_database, select.data(), static_cast<int>(select.size()),
                                              &statement, nullptr);
        TStatement owned(statement);
        if (result != SQLITE_OK) Fail(sqlite3_errmsg(m_database));
        if (!statement || !sqlite3_stmt_readonly(statement)) Fail("only a SELECT can be run");
        return std::make_unique<TSqliteRows>(m_database, std::move(owned),
                                             [this](const std::string& reason) { Fail(reason); });
    }

    void Interrupt() override { sqlite3_interrupt(m_database); }

    std::string Quoted(const std::string& name) const override {
        std::string quoted = "\"";
        for (const char c : name) quoted.append(c == '"' ? 2 : 1, c);
        return quoted + '"';
    }

private:
    static constexpr int kBusyMs = 2000; ///< another program may be writing

    void Run(const char* statement) {
        if (sqlite3_exec(m_database, statement, nullptr, nullptr, nullptr) != SQLITE_OK)
            Fail(sqlite3_errmsg(m_database));
    }

    // The file is first read here: it may be locked, damaged or encrypted.
    void CountTables() { Run("SELECT COUNT(*) FROM sqlite_master"); }

    void AddTables(const TConnection& connection) {
        try {
            const bool isDBase = connection.kind == TDatabaseKind::DBase;
            AddFileTables(m_database, isDBase ? DBaseTables(connection.file) : AccessTables(connection.file));
        } catch (const ELumoError& error) {
            Fail(error.what());
        }
    }

    [[noreturn]] void FailAndClose(const std::string& reason) {
        sqlite3_close_v2(std::exchange(m_database, nullptr));
        Fail(reason);
    }

    sqlite3* m_database = nullptr;
};

} // namespace

bool IsSqliteBuiltIn() {
    return true;
}

std::unique_ptr<TSqlSession> OpenSqlite(const TConnection& connection) {
    return std::make_unique<TSqliteSession>(connection);
}

} // namespace lumoplot

#else

namespace lumoplot {

bool IsSqliteBuiltIn() {
    return false;
}

std::unique_ptr<TSqlSession> OpenSqlite(const TConnection& connection) {
    throw EFileError(connection.shown + ": this program was built without SQLite");
}

} // namespace lumoplot

#endif
