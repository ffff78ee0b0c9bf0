// What the library of Windows is too inexact for: it reduces angles with too few digits of pi, multiplies
// whole powers up with an error each time, and takes logarithms of sums.
#if defined(_WIN32)
#include "expr/scalar_math.h"

#include <cstdlib>

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

/// Beyond, the library's logarithms of sums are as good.
constexpr double kLargestSquared = 1e8;

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

/// (High + Low) * 2^Exponent, with about 100 bits.
struct TLongNumber {
    double High = 1;
    double Low = 0;
    int Exponent = 0;
};

/// a * b less its rounded value.
double ProductError(double a, double b, double product) {
    constexpr double kSplitter = (1 << 27) + 1;
    const auto upper = [](double x) { return kSplitter * x - (kSplitter * x - x); };
    const double a1 = upper(a), a2 = a - a1, b1 = upper(b), b2 = b - b1;
    return ((a1 * b1 - product) + a1 * b2 + a2 * b1) + a2 * b2;
}

TLongNumber operator*(const TLongNumber& a, const TLongNumber& b) {
    const double product = a.High * b.High;
    const double low = ProductError(a.High, b.High, product) + (a.High * b.Low + a.Low * b.High);
    const double high = product + low;
    int exponent = 0;
    const double mantissa = std::frexp(high, &exponent);
    return {mantissa, std::ldexp(low - (high - product), -exponent), a.Exponent + b.Exponent + exponent};
}

TLongNumber Inverse(const TLongNumber& a) {
    const double guess = 1 / a.High;
    const double product = guess * a.High;
    const double error = ((1 - product) - ProductError(guess, a.High, product)) - guess * a.Low;
    return {guess, guess * error, -a.Exponent};
}

double WholePower(double a, int exponent) {
    TLongNumber power, square;
    square.High = std::frexp(a, &square.Exponent);
    for (int left = std::abs(exponent); left > 0; left /= 2) {
        if (left % 2 == 1) power = power * square;
        square = square * square;
    }
    if (exponent < 0) power = Inverse(power);
    return std::ldexp(power.High + power.Low, power.Exponent);
}

} // namespace

double LibraryPower(double a, double b) {
    constexpr double kLargest = 1 << 16;
    const bool isWhole = std::fabs(b) <= kLargest && b == std::nearbyint(b);
    if (!isWhole || b == 0 || a == 0 || !std::isfinite(a)) return std::pow(a, b);
    return WholePower(a, static_cast<int>(b));
}

// Not the logarithms of sums that are nearly 1.
double LibraryArcSinh(double a) {
    const double size = std::fabs(a);
    if (!(size < kLargestSquared)) return std::asinh(a);
    const double square = size * size;
    return std::copysign(std::log1p(size + square / (1 + std::sqrt(1 + square))), a);
}

double LibraryArcCosh(double a) {
    if (!(a < kLargestSquared)) return std::acosh(a);
    const double above = a - 1;
    return std::log1p(above + std::sqrt(2 * above + above * above));
}

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
