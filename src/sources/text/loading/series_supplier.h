// Fills a data series from a text file.
#pragma once

#include "data/series/data_series.h"
#include "sources/text/loading/text_loader.h"

namespace lumoplot {

/// Loads the file as the series' DataSourceInfo describes it, makes X and Y of what is read by XColExpr and
/// YColExpr, and puts the points in the place of the series' points, all at once when they are complete:
/// after an error or a cancelled load the series is as it was. The formulas of `options` are not used. Rows
/// merge by the tolerance and the duplicate policy of the series. While SeriesFlag is set and the Y column
/// has a header name, it becomes SeriesName. NeedsReload is cleared, and with automatic row sampling its
/// frequency noted.
XYGRAPH_EXPORT TTextReport LoadTextSeries(TDataSeries& series, const TTextSource& source,
                                          const TTextLoadOptions& options, TProgress& progress);

} // namespace lumoplot
