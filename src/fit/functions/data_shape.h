// What the points of a fit look like, as far as start values need it.
#pragma once

#include "fit/procedures/fit_rows.h"

namespace lumoplot {

struct TDataShape {
    double Left = 0; ///< the range of X
    double Right = 0;
    double SmallestPositive = 0; ///< X; 0 where none is above 0
    std::vector<double> Places;  ///< highest and lowest places first, then steep ones, then even ones
    std::vector<double>
        Widths; ///< distances: of the highest and the lowest peak at half height, then parts of the range
    std::vector<double> Frequencies; ///< the strongest ones first

    double Span() const { return Right - Left; }
};

/// The points need not be in order; at least one.
TDataShape ShapeOf(const TFitPoints& points);

} // namespace lumoplot
