#include "data/analysis/centring.h"

#include <algorithm>
#include <cassert>

namespace lumoplot {
namespace {

constexpr int kSmallestExponent = -1000; // its reciprocal is still a double

TDoubleDouble SumOf(std::span<const double> values, double factor) {
    TSum sum;
    for (const double value : values) sum.Add(value * factor);
    return sum.Terms();
}

TDoubleDouble Quotient(TDoubleDouble dividend, double divisor) {
    const double quotient = dividend.high / divisor;
    const TDoubleDouble back = TwoProduct(quotient, divisor);
    return TwoSum(quotient, (dividend.high - back.high - back.low + dividend.low) / divisor);
}

} // namespace

TDoubleDouble MeanOf(std::span<const double> values) {
    if (values.empty()) return {};
    constexpr double kLargeSum = 0x1p+990;
    constexpr double kShrink = 0x1p-70; // room for more values than memory holds
    const double count = static_cast<double>(values.size());
    const TDoubleDouble sum = SumOf(values, 1);
    if (std::abs(sum.high) < kLargeSum) return Quotient(sum, count);
    const TDoubleDouble mean = Quotient(SumOf(values, kShrink), count);
    return {mean.high / kShrink, mean.low / kShrink};
}

TCentring::TCentring(std::span<const double> values) {
    assert(!values.empty());
    const auto [lowest, highest] = std::minmax_element(values.begin(), values.end());
    m_allEqual = *lowest == *highest;
    if (m_allEqual) {
        m_mean = {*lowest, 0};
        return;
    }
    m_mean = MeanOf(values);
    if (!std::isfinite(*highest - *lowest)) {
        m_room = 0.25;
        m_mean = {m_mean.high * m_room, m_mean.low * m_room};
    }
    const double reach = std::max((*this)(*highest), -(*this)(*lowest));
    const int exponent = std::max(std::ilogb(reach), kSmallestExponent);
    m_factor = std::ldexp(1.0, -exponent);
    m_exponent = exponent - std::ilogb(m_room);
}

} // namespace lumoplot
