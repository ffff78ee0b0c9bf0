// The points of a data set as they are plotted, for what is worked out from them.
#pragma once

#include "data/series/data_series.h"
#include "support/export.h"

#include <vector>

namespace lumoplot {

/// In chain order. With an XSource, points beyond its count are left out, and X may be not-a-number.
struct TPlottedValues {
    std::vector<double> X;
    std::vector<double> Y;       ///< corrected
    std::vector<double> YErrors; ///< 0 for a point without; empty where there are none

    /// Leaves out places whose X is infinite or not a number.
    XYGRAPH_EXPORT void KeepFiniteX();
};

XYGRAPH_EXPORT TPlottedValues PlottedValues(const TDataSeries& series);

} // namespace lumoplot
