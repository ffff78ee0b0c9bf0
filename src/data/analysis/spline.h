// The cubic spline through points, sampled on an even grid.
#pragma once

#include "data/analysis/regression_types.h"

#include <limits>
#include <span>
#include <vector>

namespace lumoplot {

/// An end slope from here up (or one that is not finite) leaves the ends of a spline natural: no curvature.
inline constexpr double kNaturalEndSlope = 0.99e30;

/// Sampled curves have at most this many steps.
inline constexpr int kMostCurveSamples = 1'000'000;

/// `samples` even steps from minX to maxX, hence samples + 1 values, the last exactly maxX. Empty when
/// `samples` is below 1 or above kMostCurveSamples, or when minX < maxX does not hold.
std::vector<double> CurveGrid(double minX, double maxX, int samples);

struct TSpline {
    std::vector<double> SecondDerivatives; ///< one a point; 0 for points left out
    std::vector<TCurveSample> Curve;       ///< over CurveGrid of the first and the last knot
};

/// The cubic spline through the points in the order given. Both ends have the slope `endSlope`, or are
/// natural (kNaturalEndSlope). A point is left out as a knot when X or Y is not finite or when it does not
/// lie to the right of the knot before it. With fewer than two knots, or no grid for `samples`, the curve is
/// empty. Tridiagonal sweep after Press et al., Numerical Recipes, section 3.3.
TSpline SampleSpline(std::span<const double> x, std::span<const double> y, int samples, double endSlope);

} // namespace lumoplot
