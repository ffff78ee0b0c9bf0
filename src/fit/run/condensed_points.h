// Fewer points in place of many that still show what is narrow.
#pragma once

#include "fit/procedures/fit_rows.h"

namespace lumoplot {

/// Neighbouring points, in the order of X, whose mean stands out of what is on both sides of them.
struct TNarrowPeak {
    std::size_t Center = 0;
    std::size_t Count = 1; ///< how many points stand out; at most a twenty-fifth of all
};

TFitPoints InOrderOfX(const TFitPoints& points);

/// Peaks and valleys far above the noise of neighbours, those that add most to the sum of squares first; at
/// most four.
std::vector<TNarrowPeak> NarrowPeaksOf(const TFitPoints& ordered);

/// What stands for neighbours.
enum class TNeighbours {
    Mean,   ///< less noise, for curves without fast oscillations
    Middle, ///< the one in the middle
};

/// About `count` points, each with the weight of those that it stands for, and more where there are narrow
/// peaks; not more than there are.
TFitPoints Condensed(const TFitPoints& ordered, const std::vector<TNarrowPeak>& peaks, std::size_t count,
                     TNeighbours neighbours);

} // namespace lumoplot
