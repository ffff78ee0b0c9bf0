// Ranges of numbers: a range of X that somebody asks for, and the span of the values that were met.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

namespace lumoplot {

/// A range of X, both ends included.
struct TXRange {
    double From;
    double To;
};

/// The smallest and the largest of the finite values that it is given.
struct TExtent {
    double Min = std::numeric_limits<double>::infinity();
    double Max = -std::numeric_limits<double>::infinity();

    void Take(double value) {
        if (!std::isfinite(value)) return;
        Min = std::min(Min, value);
        Max = std::max(Max, value);
    }
    bool IsEmpty() const { return Min > Max; }
};

} // namespace lumoplot
