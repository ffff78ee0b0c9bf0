#include "fit/equation_editor/function_files.h"

#include "fit/functions/ready_functions.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace lumoplot {
namespace {

const QString kFolderName = QStringLiteral("LFN");
const QString kExtension = QStringLiteral(".lfn");

bool CanWriteInto(const QString& folder) {
    return QDir().mkpath(folder) && QTemporaryFile(folder + QStringLiteral("/probe")).open();
}

} // namespace

QString FunctionFolder(const QString& programFolder) {
    const QString beside = QDir(programFolder).filePath(kFolderName);
    if (CanWriteInto(beside)) return beside;
    const QString own =
        QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)).filePath(kFolderName);
    QDir().mkpath(own);
    return own;
}

void OfferReadyFunctions(const QString& folder) {
    const QDir target(folder);
    if (!target.entryList({QStringLiteral("*.lfn")}, QDir::Files).isEmpty()) return;
    for (const TReadyFunction& function : ReadyFunctions()) {
        TCurFit fit;
        UseReadyFunction(function, fit);
        fit.SetStatus(TFitStatus::Function);
        fit.SaveToFile(target.filePath(QString::fromUtf8(function.Name) + kExtension).toStdString());
    }
}

QString WithFunctionExtension(const QString& fileName) {
    static const QRegularExpression extension(QStringLiteral("(?<=[^/\\\\])\\.[A-Za-z][A-Za-z0-9]{0,3}$"));
    return QString(fileName).remove(extension) + kExtension;
}

QString FunctionFileToOpen(const QString& chosen) {
    const QFileInfo info(chosen);
    if (info.isFile()) return chosen;
    return info.dir().filePath(WithFunctionExtension(info.fileName().toLower()));
}

void LoadFunction(TCurFit& fit, const QString& fileName) {
    try {
        fit.LoadFromFile(fileName.toStdString(), true);
    } catch (const EFileError&) {
        throw;
    } catch (const std::exception&) {
        throw EFileError("Wrong File Format!");
    }
}

} // namespace lumoplot
