// A table in a file that no SQL engine reads, row by row; the engine sees it as a virtual table.
#pragma once

#include "sources/database/connection/connection.h"

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace lumoplot {

struct TFileColumn {
    std::string name;
    const char* type; ///< a type of SQL
};

/// No value, or one of SQLite's: dates are texts like "2024-01-31 12:30:05".
using TFileCell = std::variant<std::monostate, std::int64_t, double, std::string>;

/// A pass over the rows.
class TFileRows {
public:
    virtual ~TFileRows() = default;
    /// False behind the last row. Throws EFileError "row 7: …".
    virtual bool Next() = 0;
    virtual TFileCell Cell(int column) = 0;
};

class TFileTable {
public:
    virtual ~TFileTable() = default;
    virtual const std::string& Name() const = 0;
    virtual const std::vector<TFileColumn>& Columns() const = 0;
    virtual std::unique_ptr<TFileRows> Rows() const = 0;
};

using TFileTables = std::vector<std::unique_ptr<TFileTable>>;

/// The one table of a dBase file. Throws EFileError: truncated, no table, the package that is missing.
TFileTables DBaseTables(const std::string& file);
/// The tables of an Access database, without those of the system.
TFileTables AccessTables(const std::string& file);

} // namespace lumoplot
