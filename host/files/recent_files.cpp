#include "host/files/recent_files.h"

#include "host/files/shown_text.h"

#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QSettings>

namespace lumoplot {
namespace {

const QString kSettingsKey = QStringLiteral("recentFiles");

QString MenuText(int place, const QString& fileName) {
    QString name = Shown(QFileInfo(fileName).fileName());
    name.replace(QLatin1Char('&'), QStringLiteral("&&"));
    return place <= 9 ? QStringLiteral("&%1  %2").arg(place).arg(name) : name;
}

} // namespace

TRecentFiles::TRecentFiles(QMenu& menu) : m_menu(menu) {
    menu.setToolTipsVisible(true);
    connect(&menu, &QMenu::aboutToShow, this, &TRecentFiles::FillMenu);
    FillMenu();
}

QStringList TRecentFiles::Files() const {
    return QSettings().value(kSettingsKey).toStringList();
}

void TRecentFiles::Add(const QString& fileName) {
    const QFileInfo added(fileName);
    const QString path = added.absoluteFilePath();
    QStringList files = Files();
    files.removeIf([&](const QString& file) {
        return file == path || (QFileInfo::exists(file) && QFileInfo(file) == added);
    });
    files.prepend(path);
    QSettings().setValue(kSettingsKey, files.mid(0, kMaxFiles));
    m_menu.setEnabled(true);
}

void TRecentFiles::Clear() {
    QSettings().remove(kSettingsKey);
    m_menu.setEnabled(false);
}

void TRecentFiles::FillMenu() {
    m_menu.clear();
    int place = 0;
    for (const QString& file : Files()) {
        if (!QFileInfo::exists(file)) continue;
        QAction* action = m_menu.addAction(MenuText(++place, file));
        action->setToolTip(ShownPath(file));
        action->setStatusTip(ShownPath(file));
        connect(action, &QAction::triggered, this, [this, file] { Q_EMIT Chosen(file); });
    }
    m_menu.setEnabled(place > 0);
    if (place == 0) return;
    m_menu.addSeparator();
    connect(m_menu.addAction(tr("&Clear List")), &QAction::triggered, this, &TRecentFiles::Clear);
}

} // namespace lumoplot
