// Fills a data series from a table or a SELECT of a database. The engine chooses, orders and thins the rows;
// they are read in another thread, so that a slow server holds up nobody.
#pragma once

#include "data/series/data_series.h"
#include "sources/database/connection/sql_session.h"
#include "sources/database/table_columns.h"
#include "sources/text/loading/text_loader.h"

namespace lumoplot {

/// Loads what the series' DataSourceInfo describes from the connection (that of the description, with the
/// path of a file completed) and puts the points in the place of the series' points, all at once when they
/// are complete. Of `options` the budget and the row limit are used, as for texts. With automatic row
/// sampling the points are the rows with the smallest and the largest Y in each part of the range of X. A row
/// without a value (NULL) in X or Y gives no point and is counted among the skipped ones; what doubles do not
/// hold exactly is said in the notes. Throws EFileError with the names of connection, table and row; the
/// series is then as it was, as it is when the user cancels, which takes effect at once whatever the engine
/// does.
TTextReport LoadDatabaseSeries(TDataSeries& series, const std::string& connection,
                               const TTextLoadOptions& options, TProgress& progress);

/// The tables and views. Throws EFileError.
XYGRAPH_EXPORT std::vector<TSqlTable> DatabaseTables(const std::string& connection);

struct TDatabasePreview {
    TTablePreview table;
    TChosenColumns chosen; ///< what would be read as X and Y; y is kNoColumn where there is none
};
/// The first rows of the described table or SELECT. Throws EFileError.
XYGRAPH_EXPORT TDatabasePreview PreviewDatabase(const std::string& connection, const TDSInfo& info,
                                                int maxRows);

/// How messages name what is read: "FILE, table NAME" or "CONNECTION, own SELECT".
XYGRAPH_EXPORT std::string DatabaseSourceText(const std::string& connection, const TDSInfo& info);

} // namespace lumoplot
