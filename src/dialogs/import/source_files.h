// Which files can be sources of data.
#pragma once

#include "controls/file_filter.h"
#include "data/series/ds_info.h"
#include "sources/database/connection/connection.h"

#include <QFileInfo>

namespace lumoplot {

/// The filter for files that can be sources of data.
inline QString SourceFilter() {
    return ToolkitFilter(QStringLiteral(
        "ASCII Data Files (*.dat; *.txt)|*.dat; *.txt; *.DAT; *.TXT|LumoPlot DataSets (*.lds)|*.lds; *.LDS|"
        "Database Files (*.dbf; *.db; *.mdb)|*.dbf; *.db; *.mdb|All Files (*.*)|*.*"));
}

/// What kind of source a file is: databases by their content, others by their name.
inline TSourceKind KindOfFile(const QString& name) {
    if (IsDatabaseFile(name.toStdString())) return TSourceKind::Database;
    return QFileInfo(name).suffix().toLower() == QStringLiteral("lds") ? TSourceKind::DataFile
                                                                       : TSourceKind::TextFile;
}

} // namespace lumoplot
