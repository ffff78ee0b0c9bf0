// Weights that take their influence from points far off the curve.
#pragma once

#include "fit/definition/fit_weighting.h"

#include <span>
#include <vector>

namespace lumoplot {

/// A point of less weight is called an outlier.
inline constexpr double kOutlierWeight = 0.3;

/// The weight of each residual, 0 to 1. The scale is the median of their sizes;
/// where that is 0 those that are not 0 are outliers.
std::vector<double> RobustWeights(TRobust robust, std::span<const double> residuals);

} // namespace lumoplot
