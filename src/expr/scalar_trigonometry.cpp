// Sine, cosine and tangent where the library reduces their arguments with too few digits of pi.
#if defined(_WIN32)
#include "expr/scalar_math.h"

namespace lumoplot::scalar {
namespace {

/// The argument less whole quarters of the circle: Rest + Error, between -pi/4 and pi/4 or barely outside.
struct TQuarter {
    double Rest = 0;
    double Error = 0;
    int Number = 0; ///< 0 to 3
};

/// Beyond, the quarters are no longer taken off exactly.
constexpr double kMostReduced = 1 << 20;

bool IsReducible(double a) {
    return std::fabs(a) < kMostReduced;
}

// A quarter in three parts of 33 bits and the rest: so many of them are products without rounding.
TQuarter Reduced(double a) {
    constexpr double kParts[] = {0x1.921fb544p+0, 0x1.0b4611a6p-34, 0x1.3198a2ep-69};
    constexpr double kLast = 0x1.b839a252049c1p-104;
    const double quarters = std::nearbyint(a * (2 / std::numbers::pi));
    double rest = a;
    double error = quarters * kLast;
    for (const double part : kParts) {
        const double before = rest;
        rest = before - quarters * part;
        error -= (before - rest) - quarters * part;
    }
    const double sum = rest - error;
    return {sum, (rest - sum) - error, static_cast<int>(static_cast<std::int64_t>(quarters) & 3)};
}

double SinOf(const TQuarter& quarter) {
    return std::sin(quarter.Rest) + quarter.Error * std::cos(quarter.Rest);
}

double CosOf(const TQuarter& quarter) {
    return std::cos(quarter.Rest) - quarter.Error * std::sin(quarter.Rest);
}

double InQuarter(const TQuarter& quarter, int number) {
    const double value = number % 2 == 0 ? SinOf(quarter) : CosOf(quarter);
    return number < 2 ? value : -value;
}

} // namespace

double Sin(double a) {
    if (!IsReducible(a)) return std::sin(a);
    if (std::fabs(a) < std::numbers::pi / 4) return std::sin(a); // with the sign of zero
    const TQuarter quarter = Reduced(a);
    return InQuarter(quarter, quarter.Number);
}

double Cos(double a) {
    if (!IsReducible(a)) return std::cos(a);
    const TQuarter quarter = Reduced(a);
    return InQuarter(quarter, (quarter.Number + 1) & 3);
}

double Tan(double a) {
    if (!IsReducible(a) || std::fabs(a) < std::numbers::pi / 4) return std::tan(a);
    const TQuarter quarter = Reduced(a);
    const double tangent = std::tan(quarter.Rest);
    const double value = tangent + quarter.Error * (1 + tangent * tangent);
    return quarter.Number % 2 == 0 ? value : -1 / value;
}

} // namespace lumoplot::scalar
#endif
