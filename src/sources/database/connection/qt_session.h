// Databases through the toolkit's drivers: servers, ODBC, and SQLite where the library is not built in.
#pragma once

#include "sources/database/connection/sql_session.h"

namespace lumoplot {

std::unique_ptr<TSqlSession> OpenQtSession(const TConnection& connection);

/// Why a server can not be reached from here for want of a driver, with the name of the package; empty where
/// its driver is installed.
std::string MissingDriver(TDatabaseKind kind);

} // namespace lumoplot
