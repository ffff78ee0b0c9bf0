// The data of a series as they stand: what a copy takes besides the settings. Points keep their Ids, their
// order and what a regression gave them, and no result is worked out anew.
#pragma once

#include "data/points/point_chain.h"
#include "data/series/data_series.h"
#include "data/series/series_results.h"

#include <string>
#include <vector>

namespace lumoplot {

struct TSeriesData {
    TPointChain Points;
    TSeriesExtents Extents;
    TSeriesResults Results;
    std::vector<TCurveSample> RegressionCurve;
    std::string RegressionError;
    bool RegressionStale = false;
};

} // namespace lumoplot
