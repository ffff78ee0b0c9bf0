// Which files can be sources of data.
#pragma once

#include "controls/file_filter.h"
#include "data/series/ds_info.h"
#include "sources/database/connection/connection.h"
#include "sources/spreadsheet/sheet_place.h"

#include <QFileInfo>

namespace lumoplot {

/// The filter for files that can be sources of data.
inline QString SourceFilter() {
    return ToolkitFilter(QStringLiteral(
        "ASCII Data Files (*.dat; *.txt)|*.dat; *.txt; *.DAT; *.TXT|LumoPlot DataSets (*.lds)|*.lds; *.LDS|"
        "Spreadsheets (*.xlsx; *.xlsm; *.ods)|*.xlsx; *.xlsm; *.ods|"
        "Database Files (*.dbf; *.db; *.mdb)|*.dbf; *.db; *.mdb|All Files (*.*)|*.*"));
}

/// What kind of source a file is: databases by their content, others by their name.
inline TSourceKind KindOfFile(const QString& name) {
    if (IsDatabaseFile(name.toStdString())) return TSourceKind::Database;
    return QFileInfo(name).suffix().toLower() == QStringLiteral("lds") ? TSourceKind::DataFile
                                                                       : TSourceKind::TextFile;
}

/// The name of the sheet that is read of a spreadsheet, where it is named, else of the file without its
/// ending.
inline std::string BaseNameOf(const std::string& sourceName) {
    const TSheetPlace place = SheetPlaceOf(sourceName);
    const QFileInfo file(QString::fromStdString(place.file));
    return place.sheet.empty() ? file.completeBaseName().toStdString() : place.sheet;
}

} // namespace lumoplot
