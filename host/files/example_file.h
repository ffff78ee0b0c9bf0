// The data that come with the program.
#pragma once

#include <QCoreApplication>
#include <QDir>

namespace lumoplot {

/// The example beside the program (where all lies in one folder), below the same prefix as it, or in the
/// source folder of a build; empty when it is missing.
inline QString ExampleFile() {
    const QDir program(QCoreApplication::applicationDirPath());
    for (const char* folder : {"examples", "../share/lumoplot/examples", "../../../examples"}) {
        const QString file = program.filePath(QLatin1String(folder) + QStringLiteral("/enso.csv"));
        if (QFile::exists(file)) return QDir::cleanPath(file);
    }
    return {};
}

} // namespace lumoplot
