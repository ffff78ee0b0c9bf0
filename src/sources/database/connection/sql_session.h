// A connection that is open, and the rows that its queries give. It belongs to the thread that opened it;
// only Interrupt may be called from another one. Nothing can be changed through it.
#pragma once

#include "sources/database/connection/connection.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace lumoplot {

struct TSqlCell {
    enum class TKind {
        Null,
        Number,
        Rounded, ///< a number that doubles do not hold exactly
        Date,    ///< days since 1899-12-30
        Text,
        Binary
    };
    TKind kind = TKind::Null;
    double number = 0;
    std::string_view text; ///< of Text; valid until the next row
};

/// Rows from the first to the last, each seen once.
class TSqlRows {
public:
    virtual ~TSqlRows() = default;
    virtual int ColumnCount() const = 0;
    virtual std::string ColumnName(int column) const = 0;
    /// False behind the last row. Throws EFileError; also after an interrupt.
    virtual bool Next() = 0;
    virtual TSqlCell Cell(int column) = 0;
    /// What a person sees in the cell.
    virtual std::string ShownText(int column) = 0;
};

/// A table as it is found again: "name", or "schema.name" where it is in no schema that is searched anyway.
struct TSqlTable {
    std::string name;
    std::string schema; ///< empty: that which is searched anyway
    bool isView = false;

    std::string Shown() const { return schema.empty() ? name : schema + "." + name; }
};

class TSqlSession {
public:
    explicit TSqlSession(TConnection connection) : m_connection(std::move(connection)) {}
    virtual ~TSqlSession() = default;
    TSqlSession(const TSqlSession&) = delete;
    TSqlSession& operator=(const TSqlSession&) = delete;

    const TConnection& Connection() const { return m_connection; }
    /// The language that the engine speaks; of files that of SQLite.
    TDatabaseKind Dialect() const {
        return m_connection.IsFile() ? TDatabaseKind::Sqlite : m_connection.kind;
    }
    virtual std::vector<TSqlTable> Tables() = 0;
    /// Throws EFileError with the connection's name and the engine's reason.
    virtual std::unique_ptr<TSqlRows> Query(const std::string& select) = 0;
    /// Ends what runs in the other thread soon, or does nothing where the engine has no way.
    virtual void Interrupt() = 0;
    /// The name between the engine's quotes, whatever characters it has.
    virtual std::string Quoted(const std::string& name) const = 0;

protected:
    /// "CONNECTION: REASON", without a password and line ends that an engine may have put into it.
    [[noreturn]] void Fail(const std::string& reason) const;
    /// As Fail, for a server that has refused the password: an EPasswordNeeded.
    [[noreturn]] void FailForPassword(const std::string& reason) const;

private:
    std::string CleanText(const std::string& reason) const;

    TConnection m_connection;
};

/// Opens it for reading. Throws EFileError: why it can not be opened, or which package would have to be
/// installed for that.
std::unique_ptr<TSqlSession> OpenSession(const TConnection& connection);

} // namespace lumoplot
