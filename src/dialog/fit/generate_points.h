// Fills a data set with points of its equation.
#pragma once

#include "graph/model/series.h"

namespace lumoplot {

/// A curve that points are taken of or drawn by runs over X from First to Last.
struct TXRange {
    double First;
    double Last;
};

/// From the left to the right margin; in the place of one that is not in use, the end of the data set, and
/// without points of the X axis.
TXRange CurveRange(const TSeries& series);

inline constexpr int kMaxGeneratedPoints = 10'000'000;

/// Puts NPoints points of the equation, evenly over CurveRange, in the place of all points, with one
/// notification. Places where the equation has no finite value are left out. Throws ELumoError when there is
/// no equation, no such range, no value at all, or NPoints is not between 1 and kMaxGeneratedPoints, and what
/// TCurFit::Compile throws; the points then stay.
void GeneratePoints(TSeries& series);

} // namespace lumoplot
