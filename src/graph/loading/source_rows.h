// Rows of a data set's source from any place of it.
#pragma once

#include "graph/model/series.h"
#include "sources/text/loading/preview_rows.h"

namespace lumoplot {

/// As PreviewSource, from the row with that number on.
XYGRAPH_EXPORT TTextPreview PreviewSourceFrom(const TSeries& series, std::int64_t firstRow, int maxRows);

} // namespace lumoplot
