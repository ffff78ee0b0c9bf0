// The peaks of a curve.
#pragma once

#include "data/transform/transform.h"

namespace lumoplot {

struct TPeak {
    double Position;
    double Height; ///< Y at the top
    double Width;  ///< at half of what the peak rises above its base, by straight lines between the points
    double Area;   ///< above its base, by trapezoids
};

/// Peaks that rise by at least `part` (0 to 1) of the range of Y above their base, in their order. The base
/// of a peak is the higher of the two lowest places between it and higher ones, or the ends of the curve, on
/// its either side. A flat top counts at its middle. Points that are not finite are left out.
std::vector<TPeak> FindPeaks(const TCurveValues& curve, double part);

} // namespace lumoplot
