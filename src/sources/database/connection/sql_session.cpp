#include "sources/database/connection/sql_session.h"

#include "sources/database/connection/password_asker.h"
#include "sources/database/connection/qt_session.h"
#include "sources/database/connection/sqlite_session.h"
#include "support/errors.h"

#include <algorithm>

namespace lumoplot {

std::string TSqlSession::CleanText(const std::string& reason) const {
    std::string text = reason;
    const std::string& password = m_connection.password;
    for (std::size_t at; !password.empty() && (at = text.find(password)) != std::string::npos;)
        text.replace(at, password.size(), "…");
    for (char& c : text)
        if (static_cast<unsigned char>(c) < ' ') c = ' ';
    while (!text.empty() && text.back() == ' ') text.pop_back();
    return m_connection.shown + ": " + text;
}

void TSqlSession::Fail(const std::string& reason) const {
    throw EFileError(CleanText(reason));
}

void TSqlSession::FailForPassword(const std::string& reason) const {
    throw EPasswordNeeded(CleanText(reason));
}

std::unique_ptr<TSqlSession> OpenSession(const TConnection& connection) {
    const bool isSqlite = connection.kind == TDatabaseKind::Sqlite;
    if (connection.IsFile() && IsSqliteBuiltIn()) return OpenSqlite(connection);
    if (isSqlite || !connection.IsFile()) return OpenQtSession(connection);
    throw EFileError(connection.shown +
                     ": this program was built without what reads such a database (Debian: libsqlite3-dev)");
}

} // namespace lumoplot
