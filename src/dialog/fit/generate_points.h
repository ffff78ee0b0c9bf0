// Fills a data set with points of its equation.
#pragma once

#include "graph/drawing/picture/fit_picture.h"

namespace lumoplot {

inline constexpr int kMaxGeneratedPoints = 10'000'000;

/// Puts NPoints points of the equation, evenly over CurveRange, in the place of all points, with one
/// notification. Places where the equation has no finite value are left out. Throws ELumoError when there is
/// no equation, no such range, no value at all, or NPoints is not between 1 and kMaxGeneratedPoints, and what
/// TCurFit::Compile throws; the points then stay.
void GeneratePoints(TSeries& series);

} // namespace lumoplot
