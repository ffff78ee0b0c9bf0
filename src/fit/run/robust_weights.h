// Weights that take their influence from points far off the curve.
#pragma once

#include <span>
#include <vector>

namespace lumoplot {

/// How the weight of a point falls with the size of its residual. Each leaves
/// 95 % of the efficiency of least squares on points without outliers.
///
/// P. J. Huber, Robust Statistics (1981); A. E. Beaton, J. W. Tukey,
/// Technometrics 16 (1974) 147-185; P. W. Holland, R. E. Welsch, Comm. Statist.
/// A 6 (1977) 813-827, for the constants.
enum class TRobust {
    None,
    Huber,  ///< 1 for small ones, then as 1/r
    Cauchy, ///< 1/(1 + r²), never 0
    Tukey,  ///< (1 − r²)², 0 for large ones: such points do not count at all
};

/// The weight of each residual, 0 to 1. The scale is the median of their sizes;
/// where that is 0 those that are not 0 are outliers.
std::vector<double> RobustWeights(TRobust robust, std::span<const double> residuals);

} // namespace lumoplot
