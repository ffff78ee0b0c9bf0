#include "sources/database/connection/connection.h"

#include "data/series/ds_info.h"
#include "sources/database/connection/database_file_kind.h"
#include "support/errors.h"

#include <QUrl>
#include <map>
#include <mutex>
#include <optional>

namespace lumoplot {
namespace {

constexpr std::string_view kOdbc = "odbc:";

// Loading threads read what a window has asked for.
std::mutex g_passwordLock;
std::map<std::string, std::string>& Passwords() {
    static std::map<std::string, std::string> passwords;
    return passwords;
}

std::string KeptPassword(const std::string& connection) {
    const std::scoped_lock lock(g_passwordLock);
    const auto found = Passwords().find(connection);
    return found == Passwords().end() ? std::string() : found->second;
}

std::optional<TDatabaseKind> KindOfScheme(const std::string& text) {
    for (const char* scheme : {"postgresql://", "postgres://"})
        if (text.starts_with(scheme)) return TDatabaseKind::PostgreSql;
    for (const char* scheme : {"mysql://", "mariadb://"})
        if (text.starts_with(scheme)) return TDatabaseKind::MySql;
    if (text.starts_with(kOdbc)) return TDatabaseKind::Odbc;
    return std::nullopt;
}

std::string TakePassword(const std::string& options) {
    for (const char* key : {"PWD=", "pwd=", "Pwd=", "PASSWORD=", "password=", "Password="}) {
        const std::size_t found = options.find(key);
        if (found == std::string::npos) continue;
        const std::size_t begin = found + std::string_view(key).size();
        const bool isBraced = options.compare(begin, 1, "{") == 0;
        const std::size_t end = options.find(isBraced ? '}' : ';', begin);
        const std::size_t from = begin + (isBraced ? 1 : 0);
        return options.substr(from, end == std::string::npos ? end : end - from);
    }
    return {};
}

void TakeOdbc(const std::string& text, TConnection& connection) {
    const std::string options = text.substr(kOdbc.size());
    connection.password = TakePassword(options);
    connection.options = WithoutPassword(options);
}

// The password may hold characters that a URL would escape; it ends at the last @.
void TakeServer(const std::string& text, TConnection& connection) {
    const QUrl url(QString::fromStdString(WithoutPassword(text)));
    if (!url.isValid()) throw EFileError(connection.shown + ": this is no address of a database");
    connection.host = url.host().toStdString();
    connection.port = std::max(0, url.port());
    connection.database = url.path().mid(1).toStdString();
    connection.user = url.userName().toStdString();
    const std::size_t begin = text.find("://") + 3;
    const std::size_t at = text.rfind('@');
    const std::size_t colon = text.find(':', begin);
    if (at != std::string::npos && colon < at)
        connection.password =
            QUrl::fromPercentEncoding(QByteArray::fromStdString(text.substr(colon + 1, at - colon - 1)))
                .toStdString();
}

} // namespace

bool IsServer(const std::string& connection) {
    return KindOfScheme(connection).has_value();
}

TConnection ParseConnection(const std::string& text) {
    TConnection connection;
    connection.shown = WithoutPassword(text);
    const auto kind = KindOfScheme(text);
    if (!kind) {
        connection.file = text;
        connection.kind = RequireDatabaseFile(text);
        return connection;
    }
    connection.kind = *kind;
    *kind == TDatabaseKind::Odbc ? TakeOdbc(text, connection) : TakeServer(text, connection);
    if (connection.password.empty())
        connection.password = KeptPassword(connection.shown);
    else
        KeepPassword(connection.shown, connection.password); // descriptions hold none
    return connection;
}

void KeepPassword(const std::string& connection, const std::string& password) {
    const std::scoped_lock lock(g_passwordLock);
    Passwords()[WithoutPassword(connection)] = password;
}

} // namespace lumoplot
