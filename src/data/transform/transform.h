// What can be worked out from the points of a curve as a whole: shifted, scaled, smoothed, differentiated and
// the like. Plain values in, plain values out; the X of the input ascend or are equal.
#pragma once

#include "support/errors.h"

#include <vector>

namespace lumoplot {

/// What is asked of a curve can not be done.
class ETransformError : public ELumoError {
public:
    using ELumoError::ELumoError;
};

struct TCurveValues {
    std::vector<double> X;
    std::vector<double> Y;
    std::vector<double> YErrors = {}; ///< standard errors of Y, 0 for none; empty where there are none
};

/// What is done, and below what the two numbers of TTransform are for it.
enum class TTransformKind {
    Shift,         ///< added to X; added to Y
    Scale,         ///< X is multiplied by; Y is multiplied by. Not 0
    Normalise,     ///< the smallest Y becomes; the largest Y becomes
    CutRange,      ///< points from this X on; up to this X stay
    Resample,      ///< so many points at even distances, on the straight lines between the old ones
    Average,       ///< the means of so many neighbours become one point; a rest at the end is a block, too
    SavitzkyGolay, ///< a polynomial through so many neighbours (odd); of that degree
    RunningMedian, ///< the middle of so many neighbours (odd), of fewer at the ends
    Derivative,    ///< of the parabola through each point and its neighbours
    Integral       ///< by trapezoids from this X on; up to this X. It begins with 0
};

struct TTransform {
    TTransformKind Kind = TTransformKind::Shift;
    double First = 0;
    double Second = 0;
};

/// The new curve; its X ascend. Shift, scale, normalise, a cut and averages carry the standard errors of Y
/// along (a mean of points some of which have none has none); the others, whose new Y depend on each other,
/// have none any more. Points with a coordinate that is not finite are left out. Throws ETransformError with
/// what is wrong with the numbers, or when no point is left.
TCurveValues Transformed(const TCurveValues& curve, const TTransform& transform);

} // namespace lumoplot
