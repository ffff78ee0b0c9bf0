#include "data/analysis/regression_types.h"

#include <cassert>
#include <cmath>

namespace lumoplot {

TFinitePoints FinitePoints(std::span<const double> x, std::span<const double> y) {
    assert(x.size() == y.size());
    TFinitePoints points;
    points.x.reserve(x.size());
    points.y.reserve(y.size());
    for (std::size_t i = 0; i < x.size(); ++i) {
        if (!std::isfinite(x[i]) || !std::isfinite(y[i])) continue;
        points.x.push_back(x[i]);
        points.y.push_back(y[i]);
    }
    return points;
}

} // namespace lumoplot
