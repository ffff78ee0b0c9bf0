#include "host/files/file_choice.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

namespace lumoplot {
namespace {

const QString kFolderKey = QStringLiteral("folder");

QStringList Ask(QFileDialog& dialog, const TFileQuestion& question) {
    const QFileInfo proposal(question.proposal);
    const bool hasFolder = !question.proposal.isEmpty() && proposal.isAbsolute();
    dialog.setDirectory(hasFolder ? proposal.absolutePath() : LastFolder());
    dialog.setNameFilters(question.filters.split(QStringLiteral(";;")));
    dialog.setDefaultSuffix(question.suffix);
    if (!proposal.fileName().isEmpty()) dialog.selectFile(proposal.fileName());
    if (dialog.exec() != QDialog::Accepted) return {};
    const QStringList files = dialog.selectedFiles();
    if (!hasFolder && !files.isEmpty()) RememberFolderOf(files.first());
    return files;
}

} // namespace

QString AskFileToOpen(QWidget* parent, const TFileQuestion& question) {
    QFileDialog dialog(parent, question.title);
    dialog.setFileMode(QFileDialog::ExistingFile);
    return Ask(dialog, question).value(0);
}

QStringList AskFilesToOpen(QWidget* parent, const TFileQuestion& question) {
    QFileDialog dialog(parent, question.title);
    dialog.setFileMode(QFileDialog::ExistingFiles);
    return Ask(dialog, question);
}

QString AskFileToSave(QWidget* parent, const TFileQuestion& question) {
    QFileDialog dialog(parent, question.title);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    return Ask(dialog, question).value(0);
}

QString GraphFilters() {
    return QCoreApplication::translate("Files", "Graphs (*.ltp);;All files (*)");
}

QString DataFilters() {
    return QCoreApplication::translate(
        "Files", "Data (*.csv *.txt *.dat *.tsv *.asc *.prn *.xlsx *.xlsm *.ods *.gz *.zst *.lds);;"
                 "Databases (*.db *.sqlite *.sqlite3 *.db3 *.dbf *.mdb *.accdb);;All files (*)");
}

QString LastFolder() {
    const QString folder = QSettings().value(kFolderKey).toString();
    if (!folder.isEmpty() && QDir(folder).exists()) return folder;
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QDir(documents).exists() ? documents : QDir::homePath();
}

void RememberFolderOf(const QString& fileName) {
    QSettings().setValue(kFolderKey, QFileInfo(fileName).absolutePath());
}

} // namespace lumoplot
