// Smoothing by a window that goes along a curve.
#pragma once

#include "data/transform/transform.h"

#include <span>

namespace lumoplot {

/// The least squares polynomial at `place`, by polynomials that are orthogonal over the points (Forsythe
/// 1957); X ascend.
double LocalFit(std::span<const double> x, std::span<const double> y, double place, int degree);

/// The local polynomial of that degree at each point, least squares over `width` neighbours, as many as there
/// are at the ends (Savitzky and Golay 1964; X need not be even).
std::vector<double> SavitzkyGolay(const TCurveValues& curve, std::size_t width, int degree);

/// The median of `width` neighbours; at the ends of as many on either side as there are.
std::vector<double> RunningMedian(const std::vector<double>& values, std::size_t width);

} // namespace lumoplot
