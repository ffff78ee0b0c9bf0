// Exponential smoothing and the running average: a value for each point from that point and those before it.
#pragma once

#include "support/export.h"

#include <cstddef>
#include <span>
#include <vector>

namespace lumoplot {

/// s = weight·y + (1 − weight)·s along the points, starting with the first y. A y that is not finite is
/// passed over: its point takes the s of the point before it, or its own y when there is none yet.
std::vector<double> SmoothExponentially(std::span<const double> y, double weight);

/// The number of points of a running average: the quotient 1 / controlValue rounded to 64 significant bits,
/// then truncated. A double rarely holds the reciprocal of a whole number, so 0.05, 0.1 and 0.2 give 19, 9
/// and 4, while 0.25 and 0.5 give 4 and 2. The largest std::size_t when it is larger than that. Throws
/// ERegressionError "Invalid Running Average limit" below 2 and for 0 and not-a-number.
XYGRAPH_EXPORT std::size_t RunningAverageWindow(double controlValue);

/// The mean of each y and the up to window − 1 values before it. A y that is not finite is passed over: it
/// does not enter any mean, and its point takes that of the point before it, or its own y when there is none
/// yet. `window` is at least 1. Takes O(n) for any window; nothing is subtracted, so large values leave no
/// trace in the means of later windows.
std::vector<double> RunningAverage(std::span<const double> y, std::size_t window);

} // namespace lumoplot
