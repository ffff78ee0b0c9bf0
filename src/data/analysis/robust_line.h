// The median-based line through points: outliers up to a good quarter of the points hardly move it.
#pragma once

#include "data/analysis/least_squares.h"
#include "support/progress.h"

#include <span>

namespace lumoplot {

/// C1 is the median slope of all pairs of points with different X (MedianSlope), C0 the median of y − C1·x;
/// both medians take the lower of two middle values as statistics do. With fewer than two different X it is
/// the flat line of FitLine. Points of which X or Y is not finite are left out. Needs no order of X. Throws
/// ERegressionCancelled when the user cancels `progress`, which may be null.
TFittedCurve FitRobustLine(std::span<const double> x, std::span<const double> y,
                           TProgress* progress = nullptr);

} // namespace lumoplot
