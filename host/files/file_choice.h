// Asks for files. The folder that was used last is kept in the program's settings and shown first.
#pragma once

#include <QStringList>

class QWidget;

namespace lumoplot {

struct TFileQuestion {
    QString title;
    QString filters;  ///< as a file dialog takes them: "Graphs (*.ltp);;All files (*)"
    QString suffix;   ///< added to a name to save that has none
    QString proposal; ///< a name, or a path whose folder is shown in place of the last one
};

// Empty when the user cancels.
QString AskFileToOpen(QWidget* parent, const TFileQuestion& question);
QStringList AskFilesToOpen(QWidget* parent, const TFileQuestion& question);
/// The user has agreed to replace the file when it exists.
QString AskFileToSave(QWidget* parent, const TFileQuestion& question);

QString GraphFilters();
QString DataFilters();

QString LastFolder();
void RememberFolderOf(const QString& fileName);

} // namespace lumoplot
