// Weights that take their influence from points far off the curve.
#pragma once

#include "fit/definition/fit_weighting.h"

#include <span>
#include <vector>

namespace lumoplot {

/// A point of less weight is called an outlier.
inline constexpr double kOutlierWeight = 0.3;

/// The weight of each residual of a fit with so many parameters, 0 to 1. The scale is the median of their
/// sizes, as many of the smallest left out as there are parameters; where that is 0 those that are not 0 are
/// outliers.
std::vector<double> RobustWeights(TRobust robust, std::span<const double> residuals, std::size_t parameters);

/// The residual deviation that belongs to these weights: with it the covariance of the weighted fit is that
/// of the estimate (P. J. Huber, Robust Statistics (1981), 7.6). Not-a-number without degrees of freedom.
double RobustDeviation(TRobust robust, std::span<const double> residuals, std::size_t parameters);

} // namespace lumoplot
