#include "sources/database/connection/saved_connections.h"

#include "data/series/ds_info.h"

#include <QSettings>
#include <QUrl>

namespace lumoplot {
namespace {

// In one file for all programs; a name may hold any character.
struct TConnectionSettings : QSettings {
    TConnectionSettings()
        : QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("lumoplot"),
                    QStringLiteral("connections")) {}
};

QString KeyOf(const std::string& name) {
    return QStringLiteral("connections/") +
           QString::fromLatin1(QUrl::toPercentEncoding(QString::fromStdString(name)));
}

} // namespace

std::vector<std::string> SavedConnectionNames() {
    TConnectionSettings settings;
    settings.beginGroup(QStringLiteral("connections"));
    std::vector<std::string> names;
    for (const QString& key : settings.childKeys())
        names.push_back(QUrl::fromPercentEncoding(key.toLatin1()).toStdString());
    return names;
}

std::optional<std::string> SavedConnection(const std::string& name) {
    const QString text = TConnectionSettings().value(KeyOf(name)).toString();
    return text.isEmpty() ? std::nullopt : std::optional(text.toStdString());
}

void SaveConnection(const std::string& name, const std::string& connection) {
    TConnectionSettings settings;
    if (connection.empty())
        settings.remove(KeyOf(name));
    else
        settings.setValue(KeyOf(name), QString::fromStdString(WithoutPassword(connection)));
}

} // namespace lumoplot
