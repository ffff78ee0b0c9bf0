// Databases in files through the SQLite library: those of its own, and tables of other makers as virtual
// tables of an empty database.
#pragma once

#include "sources/database/connection/sql_session.h"

namespace lumoplot {

/// Whether the program was built with the library.
bool IsSqliteBuiltIn();
std::unique_ptr<TSqlSession> OpenSqlite(const TConnection& connection);

} // namespace lumoplot
