#include "data/analysis/robust_line.h"

#include "data/analysis/slope_selection.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

double MedianIntercept(const TFinitePoints& points, double slope) {
    std::vector<double> intercepts(points.Count());
    std::transform(points.x.begin(), points.x.end(), points.y.begin(), intercepts.begin(),
                   [slope](double x, double y) { return y - slope * x; });
    const auto middle = intercepts.begin() + static_cast<std::ptrdiff_t>(intercepts.size() / 2 - 1);
    std::nth_element(intercepts.begin(), middle, intercepts.end());
    return *middle;
}

} // namespace

TFittedCurve FitRobustLine(std::span<const double> x, std::span<const double> y, TProgress* progress) {
    const TFinitePoints points = FinitePoints(x, y);
    const std::optional<double> slope = MedianSlope(points.x, points.y, {.progress = progress});
    if (!slope || !std::isfinite(*slope)) return TFittedCurve({MeanOf(points.y).high, 0, 0});
    return TFittedCurve({MedianIntercept(points, *slope), *slope, 0});
}

} // namespace lumoplot
