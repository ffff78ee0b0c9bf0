// A baseline through places that somebody has chosen: what of a curve is background. Plain values in, plain
// values out.
#pragma once

#include "data/transform/transform.h"

#include <span>

namespace lumoplot {

/// How the baseline goes from place to place.
enum class TBaselineShape {
    Lines,      ///< straight, and on beyond the first and the last place
    Polynomial, ///< the least squares polynomial; through all places when its degree allows that
    Spline      ///< the natural cubic spline; straight beyond the ends
};

struct TBaselineWish {
    TBaselineShape Shape = TBaselineShape::Lines;
    int Degree = 1;      ///< of the polynomial, from 0 to 9; lowered to one less than there are places
    TCurveValues Places; ///< in any order
};

/// The height of the baseline at each X, which may have any order. Throws ETransformError for fewer than two
/// places, for two at the same X, and for places and results that are not finite.
std::vector<double> BaselineAt(const TBaselineWish& wish, std::span<const double> x);

} // namespace lumoplot
