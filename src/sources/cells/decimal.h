// The digits of decimal numbers and their exact values, inline for the loops that read a million of them.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cfloat>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace lumoplot {

/// The parts of a number: mantissa × 10^exponent. With more than kMaxDigits digits the mantissa is
/// meaningless.
struct TDecimal {
    static constexpr int kMaxDigits = 19; ///< any so many digits fit into 64 bits

    std::uint64_t mantissa = 0;
    int digits = 0; ///< with zeros in front where they are few
    int exponent = 0;
    bool negative = false;
};

namespace decimal {

constexpr auto kIntegerPowers = [] {
    std::array<std::uint64_t, 20> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
    return powers;
}();

/// Every power that a double holds exactly.
inline constexpr std::array<double, 23> kExactPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                        1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                        1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

inline bool IsDigit(char c) {
    return static_cast<unsigned char>(c - '0') < 10;
}

/// Eight bytes with the first in the lowest place.
inline std::uint64_t LoadEight(const char* text) {
    std::uint64_t bytes = 0;
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(&bytes, text, sizeof bytes);
    } else {
        for (int i = 7; i >= 0; --i) bytes = bytes << 8 | static_cast<unsigned char>(text[i]);
    }
    return bytes;
}

/// The value of eight digits, one a byte: neighbours are joined to pairs, pairs to fours, fours to the eight.
inline std::uint64_t JoinDigits(std::uint64_t digits) {
    digits = (digits * 10 + (digits >> 8)) & 0x00FF00FF00FF00FF;
    digits = (digits * 100 + (digits >> 16)) & 0x0000FFFF0000FFFF;
    return (digits * 10000 + (digits >> 32)) & 0xFFFFFFFF;
}

/// Eight bytes as the values of digits, and the high bit of each of them that is none; bits behind the first
/// such byte mean nothing.
struct TEightDigits {
    explicit TEightDigits(const char* text)
        : digits(LoadEight(text) ^ 0x3030303030303030),
          // A byte above 9 carries into its high bit; what that does to later bytes does not matter.
          others(((digits + 0x7676767676767676) | digits) & 0x8080808080808080) {}

    /// Digits in front of the first other byte; there is one.
    int Count() const { return std::countr_zero(others) / 8; }
    /// The first `count` of them, below 8, in the highest places.
    std::uint64_t First(int count) const { return digits << 8 << (56 - 8 * count); }

    std::uint64_t digits;
    std::uint64_t others;
};

/// A value that is not negative, made so where it is to be: without a branch, which signs would mislead.
inline double WithSign(double value, bool isNegative) {
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(value) | std::uint64_t{isNegative} << 63);
}

/// Takes the digits at `text` into the mantissa, eight at a time, and returns where they end.
inline const char* TakeDigits(const char* text, TDecimal& number) {
    for (;;) {
        const TEightDigits eight(text);
        const int count = eight.others == 0 ? 8 : eight.Count();
        if (count == 0) return text;
        number.mantissa = number.mantissa * kIntegerPowers[static_cast<std::size_t>(count)] +
                          JoinDigits(eight.digits << (64 - 8 * count));
        number.digits += count;
        text += count;
        if (count < 8) return text;
    }
}

/// Takes an exponent if there is one. A letter without digits behind it belongs to no number: null.
inline const char* TakeExponent(const char* text, TDecimal& number) {
    const char letter = static_cast<char>(*text | 0x20);
    if (letter != 'e' && letter != 'd') return text;
    ++text;
    const bool negative = *text == '-';
    if (*text == '-' || *text == '+') ++text;
    if (!IsDigit(*text)) return nullptr;
    int exponent = 0;
    for (; IsDigit(*text); ++text) exponent = std::min(exponent * 10 + (*text - '0'), 100000);
    number.exponent += negative ? -exponent : exponent;
    return text;
}

/// Without the zeros in front of the digits, which do not fill the mantissa.
inline int SignificantDigits(const char* digits, char decimalSign, int count) {
    for (; *digits == '0' || *digits == decimalSign; ++digits)
        if (*digits == '0') --count;
    return count;
}

/// Takes the number at `text` apart; returns where it ends, or null when there is none.
inline const char* Take(const char* text, char decimalSign, TDecimal& number) {
    number.negative = *text == '-';
    text += static_cast<int>(*text == '-') | static_cast<int>(*text == '+'); // as good as random: no branch
    const char* first = text;
    text = TakeDigits(text, number);
    if (*text == decimalSign) {
        const int before = number.digits;
        text = TakeDigits(text + 1, number);
        number.exponent = before - number.digits;
    }
    if (number.digits == 0) return nullptr;
    if (number.digits > TDecimal::kMaxDigits)
        number.digits = SignificantDigits(first, decimalSign, number.digits);
    return TakeExponent(text, number);
}

#if defined(__SIZEOF_INT128__)
#define LUMOPLOT_EXACT_QUOTIENT 1
__extension__ using TWide = unsigned __int128;

/// A power of ten for exact division: shifted until its highest bit is set, with its reciprocal
/// floor((2^128 − 1) / divisor) − 2^64.
struct TDivisor {
    std::uint64_t divisor = 0;
    std::uint64_t reciprocal = 0;
    int shift = 0;
};

inline constexpr auto kDivisors = [] {
    std::array<TDivisor, kIntegerPowers.size()> divisors{};
    for (std::size_t i = 0; i < divisors.size(); ++i) {
        const int shift = std::countl_zero(kIntegerPowers[i]);
        const std::uint64_t divisor = kIntegerPowers[i] << shift;
        divisors[i] = {divisor, static_cast<std::uint64_t>(~TWide{0} / divisor), shift};
    }
    return divisors;
}();

/// mantissa / 10^digits by one exact division: 61 bits or more of the quotient with a sticky bit below them,
/// so that the conversion to double is the only rounding. The mantissa is not 0, digits are 0 to kMaxDigits.
/// The division is that of Möller and Granlund, "Improved Division by Invariant Integers", 2011, algorithm 4.
inline double Quotient(std::uint64_t mantissa, int digits) {
    const TDivisor& by = kDivisors[static_cast<std::size_t>(digits)];
    const int shift = std::countl_zero(mantissa);
    const TWide numerator = static_cast<TWide>(mantissa << shift) << 62;
    const TWide estimate =
        static_cast<TWide>(by.reciprocal) * static_cast<std::uint64_t>(numerator >> 64) + numerator;
    std::uint64_t quotient = static_cast<std::uint64_t>(estimate >> 64) + 1;
    std::uint64_t rest = static_cast<std::uint64_t>(numerator) - quotient * by.divisor;
    // Taken in half of the cases: arithmetic is faster than a branch.
    const std::uint64_t isAbove = -std::uint64_t{rest > static_cast<std::uint64_t>(estimate)};
    quotient += isAbove;
    rest += isAbove & by.divisor;
    if (rest >= by.divisor) {
        ++quotient;
        rest -= by.divisor;
    }
    quotient |= rest != 0;
    const auto scale = std::bit_cast<double>(static_cast<std::uint64_t>(1023 + by.shift - shift - 62) << 52);
    return static_cast<double>(static_cast<std::int64_t>(quotient)) * scale;
}
#endif

/// The correctly rounded value where one operation on exact operands gives it (Clinger, "How to Read Floating
/// Point Numbers Accurately", 1990) or one exact division; false otherwise.
inline bool ExactValue(const TDecimal& number, double& value) {
    constexpr std::uint64_t kExactIntegers = std::uint64_t{1} << DBL_MANT_DIG;
    if (FLT_EVAL_METHOD != 0 || number.digits > TDecimal::kMaxDigits) return false;
    const auto power = static_cast<std::size_t>(std::abs(number.exponent));
    if (number.mantissa <= kExactIntegers && power < kExactPowers.size()) {
        const auto mantissa = static_cast<double>(static_cast<std::int64_t>(number.mantissa));
        value = number.exponent < 0 ? mantissa / kExactPowers[power] : mantissa * kExactPowers[power];
#if defined(LUMOPLOT_EXACT_QUOTIENT)
    } else if (number.exponent <= 0 && number.exponent >= -TDecimal::kMaxDigits && number.mantissa != 0) {
        value = Quotient(number.mantissa, -number.exponent);
#endif
    } else {
        return false;
    }
    value = WithSign(value, number.negative);
    return true;
}

/// The correctly rounded mantissa / 10^digits, of at most 19 digits; false where it can not be had so.
inline bool ExactFraction(std::uint64_t mantissa, int digits, double& value) {
    constexpr std::uint64_t kExactIntegers = std::uint64_t{1} << DBL_MANT_DIG;
    if (mantissa <= kExactIntegers) {
        value = static_cast<double>(static_cast<std::int64_t>(mantissa)) /
                kExactPowers[static_cast<std::size_t>(digits)];
        return true;
    }
#if defined(LUMOPLOT_EXACT_QUOTIENT)
    value = Quotient(mantissa, digits);
    return true;
#else
    return false;
#endif
}

/// The decimals at `text` behind `integer`, which has `before` digits; returns as TakePlain does.
inline const char* TakeManyDecimals(const char* text, std::uint64_t integer, int before, double& value) {
    constexpr std::uint64_t kEight = 100000000;
    std::uint64_t mantissa = integer;
    TEightDigits eight(text);
    int behind = 0;
    for (; eight.others == 0; eight = TEightDigits(text + behind)) {
        mantissa = mantissa * kEight + JoinDigits(eight.digits);
        behind += 8;
        if (behind > TDecimal::kMaxDigits) return nullptr;
    }
    const int count = eight.Count();
    behind += count;
    const int digits = integer == 0 ? behind : before + behind;
    if (digits > TDecimal::kMaxDigits) return nullptr;
    mantissa = mantissa * kIntegerPowers[static_cast<std::size_t>(count)] + JoinDigits(eight.First(count));
    return ExactFraction(mantissa, behind, value) ? text + behind : nullptr;
}

/// Takes the number at `text` when it is of the commonest kind: a minus or no sign, less than eight digits in
/// front of the decimal sign, 19 digits at most, no exponent. Returns where its digits end, whatever follows,
/// or null for any other, which Take may still read.
inline const char* TakePlain(const char* text, char decimalSign, double& value) {
    if constexpr (FLT_EVAL_METHOD != 0) return nullptr;
    const bool isNegative = *text == '-';
    text += isNegative ? 1 : 0;
    const TEightDigits first(text);
    if (first.others == 0) return nullptr;
    const int before = first.Count();
    text += before;
    int behind = 0;
    std::uint64_t digits = first.First(before);
    if (*text == decimalSign) {
        const TEightDigits second(++text);
        behind = second.Count();
        if (second.others == 0 || before + behind > 8) {
            text = TakeManyDecimals(text, JoinDigits(digits), before, value);
            value = WithSign(value, isNegative);
            return text;
        }
        digits = digits >> (8 * behind) | second.First(behind);
        text += behind;
    }
    if (before + behind == 0) return nullptr;
    // Both are exact, so the quotient is rounded once.
    value = static_cast<double>(static_cast<std::int64_t>(JoinDigits(digits))) /
            kExactPowers[static_cast<std::size_t>(behind)];
    value = WithSign(value, isNegative);
    return text;
}

} // namespace decimal
} // namespace lumoplot
