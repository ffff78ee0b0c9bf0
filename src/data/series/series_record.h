// The table of the series record: the settings of a data series as files hold them, in front of its points.
#pragma once

#include "data/series/data_series.h"
#include "stream/section.h"

namespace lumoplot {

std::span<const TSectionRow<TDataSeries>> SeriesRecordRows();

} // namespace lumoplot
