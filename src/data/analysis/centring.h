// How far values lie from their mean, in a unit that keeps squares and higher powers in range. Statistics and
// least squares sum powers of these deviations instead of taking the difference of two large sums.
#pragma once

#include "data/analysis/exact_arithmetic.h"

#include <span>

namespace lumoplot {

/// The mean of finite values as a sum of two doubles; 0 without values. Sums that overflow do no harm.
TDoubleDouble MeanOf(std::span<const double> values);

/// Maps values to (value − mean) / 2^Exponent(), which lies within [-2, 2] for the values given.
class TCentring {
public:
    /// Leaves values as they are.
    TCentring() = default;
    /// At least one value, all finite.
    explicit TCentring(std::span<const double> values);

    double operator()(double value) const { return ((value * m_room - m_mean.high) - m_mean.low) * m_factor; }
    double Mean() const { return m_mean.high / m_room; }
    /// Between -1000 and 1025.
    int Exponent() const { return m_exponent; }
    /// All values are the same; every deviation is 0.
    bool AllEqual() const { return m_allEqual; }

private:
    TDoubleDouble m_mean; // in units of 1 / m_room
    double m_room = 1;    // 0.25 when differences of the values would overflow
    double m_factor = 1;
    int m_exponent = 0;
    bool m_allEqual = false;
};

} // namespace lumoplot
