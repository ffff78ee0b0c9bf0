// The arithmetic of the language on single numbers, with the guards of every operation's domain: what has no
// real value is kNotANumber. The compiled chain, the folding of constants and the lanes that the vector
// kernels leave over all come here, so this is the reference for every result.
#pragma once

#include "expr/eval_record.h"
#include "expr/product.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

namespace lumoplot::scalar {

inline double Truth(bool holds) {
    return holds ? 1 : 0;
}

#if defined(_WIN32) // the library there is several ulp off
double LibraryPower(double a, double b);
double LibraryArcSinh(double a);
double LibraryArcCosh(double a);
double Sin(double a);
double Cos(double a);
double Tan(double a);
#else
inline double LibraryPower(double a, double b) {
    return std::pow(a, b);
}
inline double LibraryArcSinh(double a) {
    return std::asinh(a);
}
inline double LibraryArcCosh(double a) {
    return std::acosh(a);
}
inline double Sin(double a) {
    return std::sin(a);
}
inline double Cos(double a) {
    return std::cos(a);
}
inline double Tan(double a) {
    return std::tan(a);
}
#endif

inline double Percent(double a) {
    return a * 0.01;
}
inline double Negate(double a) {
    return -a;
}
inline double Identity(double a) {
    return a;
}

/// 1 below 1.1, the product 1·2·…·n for the rounded argument n, infinite above 170.
inline double Factorial(double a) {
    const double n = std::nearbyint(a);
    if (std::isnan(n)) return kNotANumber;
    if (n > 170) return std::numeric_limits<double>::infinity();
    double product = 1;
    for (double factor = 2; factor <= n; ++factor) product *= factor;
    return product;
}

inline double Multiply(double a, double b) {
    return a * b;
}
inline double Divide(double a, double b) {
    return b == 0 ? kNotANumber : a / b;
}
inline double Add(double a, double b) {
    return a + b;
}
inline double Subtract(double a, double b) {
    return a - b;
}

inline double Sqr(double a) {
    return a * a;
}

inline double IntPower(double a, double b) {
    const double n = std::nearbyint(b);
    if (std::isnan(a) || std::isnan(n) || (a == 0 && n < 0)) return kNotANumber;
    if (n >= 0 && n <= 8) {
        switch (static_cast<int>(n)) {
        case 0: return 1;
        case 1: return a;
        case 2: return Product<2>(a);
        case 3: return Product<3>(a);
        case 4: return Product<4>(a);
        case 5: return Product<5>(a);
        case 6: return Product<6>(a);
        case 7: return Product<7>(a);
        case 8: return Product<8>(a);
        }
    }
    return LibraryPower(a, n);
}

/// Not-a-number for a negative base with a fraction as exponent, and for 0 to a negative power.
inline double Power(double a, double b) {
    const double power = LibraryPower(a, b);
    return std::isnan(a) || std::isnan(b) || std::isnan(power) || (a == 0 && b < 0) ? kNotANumber : power;
}

inline bool FitsInt64(double rounded) {
    return rounded >= -0x1p63 && rounded < 0x1p63;
}

/// The quotient without its fraction; -2^63 by -1 is 2^63 rather than a trap.
inline double Div(double a, double b) {
    const double dividend = std::nearbyint(a);
    const double divisor = std::nearbyint(b);
    if (!FitsInt64(dividend) || !FitsInt64(divisor) || divisor == 0) return kNotANumber;
    if (divisor == -1) return 0 - dividend;
    return static_cast<double>(static_cast<std::int64_t>(dividend) / static_cast<std::int64_t>(divisor));
}

/// The remainder has the sign of the dividend.
inline double Mod(double a, double b) {
    const double dividend = std::nearbyint(a);
    const double divisor = std::nearbyint(b);
    if (!FitsInt64(dividend) || !FitsInt64(divisor) || divisor == 0) return kNotANumber;
    if (divisor == -1) return 0;
    return static_cast<double>(static_cast<std::int64_t>(dividend) % static_cast<std::int64_t>(divisor));
}

inline double Greater(double a, double b) {
    return Truth(a > b);
}
inline double GreaterEqual(double a, double b) {
    return Truth(a + 1e-20 >= b);
}
inline double LessEqual(double a, double b) {
    return Truth(b + 1e-20 >= a);
}
inline double Less(double a, double b) {
    return Truth(a < b);
}
inline double NotEqual(double a, double b) {
    return Truth(std::fabs(a - b) > 1e-30);
}
inline double Equal(double a, double b) {
    return Truth(std::fabs(a - b) <= 1e-30);
}

/// The low byte of the rounded, finite number in two's complement. Doubles beyond 64 bits are multiples of
/// 2^11.
inline unsigned LowByte(double a) {
    const double rounded = std::nearbyint(a);
    return FitsInt64(rounded) ? static_cast<unsigned>(static_cast<std::int64_t>(rounded) & 0xFF) : 0;
}

// The logical words have no value when an operand is not a number or infinite: such an operand has no low
// byte.
inline double Not(double a) {
    return std::isfinite(a) ? LowByte(a) ^ 1U : kNotANumber;
}
inline bool BothFinite(double a, double b) {
    return std::isfinite(a) && std::isfinite(b);
}
inline double Or(double a, double b) {
    return BothFinite(a, b) ? Truth((LowByte(a) | LowByte(b)) != 0) : kNotANumber;
}
inline double And(double a, double b) {
    return BothFinite(a, b) ? Truth(LowByte(a) != 0 && LowByte(b) != 0) : kNotANumber;
}
inline double Xor(double a, double b) {
    return BothFinite(a, b) ? LowByte(a) ^ LowByte(b) : kNotANumber;
}

inline double Exp(double a) {
    if (a >= 709.75) return kNotANumber;
    return a <= -744.44 ? 0 : std::exp(a);
}

inline double Sqrt(double a) {
    return a < 0 ? kNotANumber : std::sqrt(a);
}
inline double Abs(double a) {
    return std::fabs(a);
}
// Adding 0 turns the negative zero into the positive one: a whole number has no signed zero.
inline double Round(double a) {
    return std::nearbyint(a) + 0.0;
}
inline double Trunc(double a) {
    return std::trunc(a) + 0.0;
}
inline double Ln(double a) {
    return a <= 0 ? kNotANumber : std::log(a);
}
inline double Log10(double a) {
    return a <= 0 ? kNotANumber : std::log10(a);
}

/// The logarithm of `a` to the base `base`, which is positive and not 1.
inline double LogN(double base, double a) {
    if (!(base > 0) || !(a > 0) || base == 1) return kNotANumber;
    return base == 10 ? std::log10(a) : base == 2 ? std::log2(a) : std::log(a) / std::log(base);
}

inline double Max(double a, double b) {
    return a >= b ? a : b;
}
inline double Min(double a, double b) {
    return a <= b ? a : b;
}
inline double ArcSin(double a) {
    return std::fabs(a) > 1 ? kNotANumber : std::asin(a);
}
inline double ArcCos(double a) {
    return std::fabs(a) > 1 ? kNotANumber : std::acos(a);
}
inline double ArcTan2(double y, double x) {
    return std::atan2(y, x);
}
inline double Sinh(double a) {
    return std::sinh(a);
}
inline double Cosh(double a) {
    return std::cosh(a);
}
inline double Tanh(double a) {
    return std::tanh(a);
}
inline double ArcSinh(double a) {
    return LibraryArcSinh(a);
}
inline double ArcCosh(double a) {
    return a < 1 ? kNotANumber : LibraryArcCosh(a);
}
inline double ArcTanh(double a) {
    return std::fabs(a) >= 1 ? kNotANumber : std::atanh(a);
}
inline double DegToRad(double a) {
    return a * (std::numbers::pi / 180);
}
inline double RadToDeg(double a) {
    return a * (180 / std::numbers::pi);
}

/// Uniform in [0, 1); every thread has a sequence of its own that starts anywhere.
double Random();

// The slopes that derivatives need besides the operations above. Each is the limit where the product of its
// parts would be 0 times infinity.

/// -1, 0 or 1; not-a-number stays.
inline double Sign(double a) {
    return a > 0 ? 1 : a < 0 ? -1 : a;
}
/// The slope of a^b over a.
inline double PowerSlope(double a, double b) {
    return b == 0 ? 0 : b * Power(a, b - 1);
}
/// The slope of a^b over b, where `power` is a^b.
inline double ExponentSlope(double a, double power) {
    return a == 0 && power == 0 ? 0 : power * Ln(a);
}
inline double IntPowerSlope(double a, double b) {
    const double n = std::nearbyint(b);
    return n == 0 ? 0 : n * IntPower(a, n - 1);
}
/// One choice rather than a sum of both, so that no infinite branch is multiplied by 0.
inline double SelectGreaterEqual(double a, double b, double chosen, double other) {
    return a >= b ? chosen : other;
}
inline double SelectLessEqual(double a, double b, double chosen, double other) {
    return a <= b ? chosen : other;
}

} // namespace lumoplot::scalar
