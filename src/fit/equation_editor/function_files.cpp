#include "fit/equation_editor/function_files.h"

#include "support/replace_file.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace lumoplot {
namespace {

const QString kFolderName = QStringLiteral("LFN");
const QString kExtension = QStringLiteral(".lfn");
const QString kReadyFunctions = QStringLiteral(":/lumoplot/functions");

bool CanWriteInto(const QString& folder) {
    return QDir().mkpath(folder) && QTemporaryFile(folder + QStringLiteral("/probe")).open();
}

} // namespace

QString FunctionFolder() {
    const QString beside = QDir(QCoreApplication::applicationDirPath()).filePath(kFolderName);
    if (CanWriteInto(beside)) return beside;
    const QString own =
        QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)).filePath(kFolderName);
    QDir().mkpath(own);
    return own;
}

void OfferReadyFunctions(const QString& folder) {
    const QDir target(folder);
    if (!target.entryList({QStringLiteral("*.lfn")}, QDir::Files).isEmpty()) return;
    const QDir ready(kReadyFunctions);
    for (const QString& name : ready.entryList()) {
        QFile file(ready.filePath(name));
        if (!file.open(QIODevice::ReadOnly)) continue;
        const QByteArray bytes = file.readAll();
        ReplaceFile(target.filePath(name).toStdString(),
                    {reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                     static_cast<std::size_t>(bytes.size())});
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
