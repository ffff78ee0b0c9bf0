// What the points of a fit look like, as far as start values need it.
#pragma once

#include "fit/run/condensed_points.h"

namespace lumoplot {

struct TDataShape {
    double Left = 0; ///< the range of X
    double Right = 0;
    double SmallestPositive = 0; ///< X; 0 where none is above 0
    std::vector<double> Places;  ///< narrow peaks, highest and lowest places, steep ones, even ones
    std::vector<double>
        Widths; ///< distances: of narrow peaks, of the highest and the lowest one, then parts of the range
    std::vector<double> Frequencies; ///< the strongest ones first

    double Span() const { return Right - Left; }
};

/// At least one point, in the order of X, and their narrow peaks.
TDataShape ShapeOf(const TFitPoints& ordered, const std::vector<TNarrowPeak>& peaks);

} // namespace lumoplot
