// File dialogs' filters in the form "Caption|pattern; pattern|Caption|…", as the system's texts have them.
#pragma once

#include "data/ds_info.h"

#include <QFileInfo>
#include <QString>

namespace lumoplot {

/// The toolkit's form: each caption with all of its patterns in brackets behind it.
inline QString ToolkitFilter(const QString& filter) {
    QStringList result;
    const QStringList parts = filter.split(QLatin1Char('|'));
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString caption = parts[i].section(QLatin1Char('('), 0, 0).trimmed();
        QStringList patterns = parts[i + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts);
        for (QString& pattern : patterns) pattern = pattern.trimmed();
        result << QStringLiteral("%1 (%2)").arg(caption, patterns.join(QLatin1Char(' ')));
    }
    return result.join(QStringLiteral(";;"));
}

/// The filter for files that can be sources of data.
inline QString SourceFilter() {
    return ToolkitFilter(QStringLiteral(
        "ASCII Data Files (*.dat; *.txt)|*.dat; *.txt; *.DAT; *.TXT|LumoPlot DataSets (*.lds)|*.lds; *.LDS|"
        "Database Files (*.dbf; *.db; *.mdb)|*.dbf; *.db; *.mdb|All Files (*.*)|*.*"));
}

/// What kind of source a file is, by its name.
inline TSourceKind KindOfFile(const QString& name) {
    return QFileInfo(name).suffix().toLower() == QStringLiteral("lds") ? TSourceKind::DataFile
                                                                       : TSourceKind::TextFile;
}

} // namespace lumoplot
