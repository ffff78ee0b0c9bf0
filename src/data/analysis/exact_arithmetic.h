// Sums and products of doubles without loss: what rounding takes away comes back as a second term. Nothing
// here depends on wider formats or on fused operations, so all machines agree.
#pragma once

#include <cmath>

namespace lumoplot {

/// The unevaluated sum high + low; low is at most half a unit in the last place of high.
struct TDoubleDouble {
    double high = 0;
    double low = 0;
};

/// a + b exactly, unless it overflows (Knuth, The Art of Computer Programming 2, section 4.2.2).
inline TDoubleDouble TwoSum(double a, double b) {
    const double sum = a + b;
    const double bPart = sum - a;
    return {sum, (a - (sum - bPart)) + (b - bPart)};
}

/// a · b exactly, for factors below 2^996 and products of 0 or above 2^-969 (Dekker 1971).
inline TDoubleDouble TwoProduct(double a, double b) {
    constexpr double kSplitter = 134217729.0; // 2^27 + 1 cuts a double into two halves of 26 bits
    const double aWide = kSplitter * a;
    const double bWide = kSplitter * b;
    const double aHigh = aWide - (aWide - a);
    const double bHigh = bWide - (bWide - b);
    const double aLow = a - aHigh;
    const double bLow = b - bHigh;
    const double product = a * b;
    return {product, ((aHigh * bHigh - product) + aHigh * bLow + aLow * bHigh) + aLow * bLow};
}

/// A running sum whose error does not grow with the number of terms (Neumaier 1974).
class TSum {
public:
    void Add(double value) {
        const TDoubleDouble next = TwoSum(m_sum.high, value);
        m_sum.high = next.high;
        m_sum.low += next.low;
    }

    /// Infinite when the sum has overflowed.
    double Value() const { return std::isfinite(m_sum.high) ? m_sum.high + m_sum.low : m_sum.high; }
    TDoubleDouble Terms() const { return TwoSum(m_sum.high, m_sum.low); }

private:
    TDoubleDouble m_sum;
};

} // namespace lumoplot
