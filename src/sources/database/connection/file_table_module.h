// Tables in files as virtual tables of SQLite.
#pragma once

#include "sources/database/connection/file_table.h"

struct sqlite3;

namespace lumoplot {

/// Makes each of the tables known to the database under its name, which owns them from then on. Throws
/// EFileError.
void AddFileTables(sqlite3* database, TFileTables tables);

} // namespace lumoplot
