#include "data/analysis/smoothing.h"

#include "data/analysis/exact_arithmetic.h"
#include "data/analysis/regression_types.h"

#include <cassert>
#include <cstdint>
#include <limits>

namespace lumoplot {
namespace {

constexpr int kQuotientBits = 64;

// 1 / value = bits · 2^exponent for a positive value, rounded to nearest with 64 bits, ties to even.
struct TReciprocal {
    std::uint64_t bits = 0;
    int exponent = 0;
};

TReciprocal ReciprocalOf(double value) {
    int valueExponent = 0;
    const double fraction = std::frexp(value, &valueExponent);
    const auto divisor = static_cast<std::uint64_t>(std::ldexp(fraction, 53));
    // Value is divisor · 2^(valueExponent − 53) with divisor from 2^52 up; long division of 2^52 or 2^53 by
    // it starts with a quotient bit of 1.
    const bool powerOfTwo = divisor == std::uint64_t{1} << 52;
    std::uint64_t rest = std::uint64_t{1} << (powerOfTwo ? 52 : 53);
    std::uint64_t quotient = 0;
    for (int i = 0; i < kQuotientBits; ++i) {
        const bool fits = rest >= divisor;
        if (fits) rest -= divisor;
        quotient = quotient << 1 | (fits ? 1 : 0);
        rest *= 2;
    }
    // Rounding never carries into a further bit: other reciprocals stay 2^-53 clear of a power of two.
    // There is no tie: the divisor is odd or a power of two.
    if (rest > divisor) ++quotient;
    return {quotient, (powerOfTwo ? 1 : 0) - valueExponent - (kQuotientBits - 1)};
}

// The sum of the most recent values of a stream: those of the current block as they come, and for those of
// the block before it the sums from each to the block's end (van Herk 1992).
class TWindowSum {
public:
    explicit TWindowSum(std::size_t window) : m_window(window) {}

    void Add(double value) {
        if (m_current.size() == m_window) StartBlock();
        m_current.push_back(value);
        m_currentSum.Add(value);
    }
    bool IsEmpty() const { return m_current.empty(); }
    double Mean() const {
        const std::size_t oldest = m_current.size(); // of the block before, when there is one
        if (oldest >= m_tails.size()) return m_currentSum.Value() / static_cast<double>(m_current.size());
        return (m_tails[oldest] + m_currentSum.Value()) / static_cast<double>(m_window);
    }

private:
    void StartBlock() {
        m_tails.resize(m_window);
        TSum tail;
        for (std::size_t i = m_window; i-- > 0;) {
            tail.Add(m_current[i]);
            m_tails[i] = tail.Value();
        }
        m_current.clear();
        m_currentSum = TSum();
    }

    std::size_t m_window;
    std::vector<double> m_tails;
    std::vector<double> m_current;
    TSum m_currentSum;
};

} // namespace

std::vector<double> SmoothExponentially(std::span<const double> y, double weight) {
    std::vector<double> derived;
    derived.reserve(y.size());
    bool started = false;
    double smooth = 0;
    for (const double value : y) {
        if (std::isfinite(value)) {
            smooth = started ? weight * value + (1 - weight) * smooth : value;
            started = true;
        }
        derived.push_back(started ? smooth : value);
    }
    return derived;
}

std::size_t RunningAverageWindow(double controlValue) {
    if (!(controlValue > 0 && controlValue <= 0.5)) throw ERegressionError("Invalid Running Average limit");
    const TReciprocal reciprocal = ReciprocalOf(controlValue);
    constexpr int kSizeBits = std::numeric_limits<std::size_t>::digits;
    if (reciprocal.exponent > kSizeBits - kQuotientBits) return std::numeric_limits<std::size_t>::max();
    return static_cast<std::size_t>(reciprocal.bits >> -reciprocal.exponent);
}

std::vector<double> RunningAverage(std::span<const double> y, std::size_t window) {
    assert(window >= 1);
    std::vector<double> derived;
    derived.reserve(y.size());
    TWindowSum sum(window);
    for (const double value : y) {
        if (std::isfinite(value)) sum.Add(value);
        derived.push_back(sum.IsEmpty() ? value : sum.Mean());
    }
    return derived;
}

} // namespace lumoplot
