// The graph and data files that were opened or saved last, newest first, kept in the program's settings and
// shown in a menu.
#pragma once

#include <QObject>
#include <QStringList>

class QMenu;

namespace lumoplot {

class TRecentFiles : public QObject {
    Q_OBJECT

public:
    static constexpr int kMaxFiles = 10;

    /// The menu is filled each time it opens, without files that are gone by then.
    explicit TRecentFiles(QMenu& menu);

    QStringList Files() const;
    /// Puts the file at the front; a file that is there already moves.
    void Add(const QString& fileName);
    void Clear();

Q_SIGNALS:
    void Chosen(const QString& fileName);

private:
    void FillMenu();

    QMenu& m_menu;
};

} // namespace lumoplot
