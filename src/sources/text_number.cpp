#include "sources/text_number.h"

#include "support/number_text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>

namespace lumoplot {
namespace {

constexpr std::array<std::uint64_t, 20> kIntegerPowers = {1ull,
                                                          10ull,
                                                          100ull,
                                                          1000ull,
                                                          10000ull,
                                                          100000ull,
                                                          1000000ull,
                                                          10000000ull,
                                                          100000000ull,
                                                          1000000000ull,
                                                          10000000000ull,
                                                          100000000000ull,
                                                          1000000000000ull,
                                                          10000000000000ull,
                                                          100000000000000ull,
                                                          1000000000000000ull,
                                                          10000000000000000ull,
                                                          100000000000000000ull,
                                                          1000000000000000000ull,
                                                          10000000000000000000ull};
// Every power that a double holds exactly.
constexpr std::array<double, 23> kExactPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                 1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int kMaxDigits = 19; // any so many digits fit into 64 bits

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// The parts of a number: mantissa × 10^exponent. With more than kMaxDigits digits the mantissa is
// meaningless.
struct TDecimal {
    std::uint64_t mantissa = 0;
    int digits = 0;
    int exponent = 0;
    bool negative = false;
};

// Eight bytes with the first in the lowest place.
std::uint64_t LoadEight(const char* text) {
    std::uint64_t bytes = 0;
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(&bytes, text, sizeof bytes);
    } else {
        for (int i = 7; i >= 0; --i) bytes = bytes << 8 | static_cast<unsigned char>(text[i]);
    }
    return bytes;
}

// The value of eight digits, one a byte: neighbours are joined to pairs, pairs to fours, fours to the eight.
std::uint64_t JoinDigits(std::uint64_t digits) {
    digits = (digits * 10 + (digits >> 8)) & 0x00FF00FF00FF00FF;
    digits = (digits * 100 + (digits >> 16)) & 0x0000FFFF0000FFFF;
    return (digits * 10000 + (digits >> 32)) & 0xFFFFFFFF;
}

// Takes the digits at `text` into the mantissa, eight at a time, and returns where they end.
const char* TakeDigits(const char* text, TDecimal& number) {
    for (;;) {
        const std::uint64_t digits = LoadEight(text) ^ 0x3030303030303030;
        // A byte above 9 carries into its high bit; what that does to later bytes does not matter.
        const std::uint64_t others = ((digits + 0x7676767676767676) | digits) & 0x8080808080808080;
        const int count = others == 0 ? 8 : std::countr_zero(others) / 8;
        if (count == 0) return text;
        number.mantissa = number.mantissa * kIntegerPowers[static_cast<std::size_t>(count)] +
                          JoinDigits(digits << (64 - 8 * count));
        number.digits += count;
        text += count;
        if (count < 8) return text;
    }
}

// Takes an exponent if there is one; a letter without digits behind it belongs to no number.
const char* TakeExponent(const char* text, TDecimal& number) {
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

const char* TakeDecimal(const char* text, char decimalSign, TDecimal& number) {
    number.negative = *text == '-';
    if (*text == '-' || *text == '+') ++text;
    text = TakeDigits(text, number);
    if (*text == decimalSign) {
        const int before = number.digits;
        text = TakeDigits(text + 1, number);
        number.exponent = before - number.digits;
    }
    return number.digits == 0 ? nullptr : TakeExponent(text, number);
}

#if defined(__SIZEOF_INT128__)
// mantissa / 10^digits by one exact division: 62 bits or more of the quotient with a sticky bit below them,
// so that the conversion to double is the only rounding. The mantissa is not 0, digits are 1 to kMaxDigits.
double Quotient(std::uint64_t mantissa, int digits) {
    __extension__ using TWide = unsigned __int128;
    const std::uint64_t power = kIntegerPowers[static_cast<std::size_t>(digits)];
    const int mantissaShift = std::countl_zero(mantissa);
    const int powerShift = std::countl_zero(power);
    const TWide numerator = static_cast<TWide>(mantissa << mantissaShift) << 63;
    const std::uint64_t divisor = power << powerShift;
    std::uint64_t quotient = static_cast<std::uint64_t>(numerator / divisor);
    if (static_cast<TWide>(quotient) * divisor != numerator) quotient |= 1;
    return std::ldexp(static_cast<double>(quotient), powerShift - mantissaShift - 63);
}
#endif

// The value where one operation on exact operands gives it, correctly rounded by that operation (Clinger,
// "How to Read Floating Point Numbers Accurately", 1990).
std::optional<double> ExactValue(const TDecimal& number) {
    constexpr std::uint64_t kExactIntegers = std::uint64_t{1} << DBL_MANT_DIG;
    if (FLT_EVAL_METHOD != 0 || number.digits > kMaxDigits) return std::nullopt;
    if (number.mantissa == 0) return 0.0;
    if (number.mantissa <= kExactIntegers &&
        std::abs(number.exponent) < static_cast<int>(kExactPowers.size())) {
        const double mantissa = static_cast<double>(number.mantissa);
        return number.exponent < 0 ? mantissa / kExactPowers[static_cast<std::size_t>(-number.exponent)]
                                   : mantissa * kExactPowers[static_cast<std::size_t>(number.exponent)];
    }
#if defined(__SIZEOF_INT128__)
    if (number.exponent < 0 && number.exponent >= -kMaxDigits)
        return Quotient(number.mantissa, -number.exponent);
#endif
    return std::nullopt;
}

// Any number, by the library. Nothing for one beyond the range of doubles.
std::optional<double> LibraryValue(std::string_view text, char decimalSign) {
    std::string plain(text);
    for (char& c : plain) {
        if (c == decimalSign) c = '.';
        if (c == 'd' || c == 'D') c = 'e';
    }
    const char* first = plain.data() + (plain.starts_with('+') ? 1 : 0);
    double value = 0;
    const auto result = std::from_chars(first, plain.data() + plain.size(), value);
    return result.ec == std::errc() ? std::optional(value) : std::nullopt;
}

bool IsNotFinite(std::string_view text) {
    std::string word(text.substr(text.starts_with('+') || text.starts_with('-') ? 1 : 0));
    for (char& c : word) c = static_cast<char>(c | 0x20);
    for (const char* name : {"nan", "inf", "infinity"})
        if (word == name) return true;
    return false;
}

// Whether a number beyond the range of doubles is too large rather than too small. Leading zeros do not
// count.
bool IsTooLarge(const TDecimal& number, std::string_view text) {
    const std::size_t zeros = text.find_first_of("123456789");
    const std::size_t leading = static_cast<std::size_t>(
        std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(zeros), '0'));
    return number.exponent + number.digits - static_cast<int>(leading) > 0;
}

} // namespace

const char* ReadNumber(const char* text, char decimalSign, double& value) {
    TDecimal number;
    const char* end = TakeDecimal(text, decimalSign, number);
    if (end == nullptr) return nullptr;
    if (const auto exact = ExactValue(number)) {
        value = number.negative ? -*exact : *exact;
        return end;
    }
    const auto read = LibraryValue({text, static_cast<std::size_t>(end - text)}, decimalSign);
    if (!read) return nullptr;
    value = *read;
    return end;
}

TNumberReading ParseNumber(std::string_view cell, char decimalSign) {
    cell = Trimmed(cell);
    std::array<char, 64> local{};
    std::string large;
    const char* text = local.data();
    if (cell.size() + kNumberPadding < local.size()) {
        std::memcpy(local.data(), cell.data(), cell.size());
    } else {
        large.assign(cell).append(kNumberPadding, '\0');
        text = large.data();
    }
    TNumberReading reading;
    if (ReadNumber(text, decimalSign, reading.value) == text + cell.size()) {
        reading.state = TNumberState::Number;
        return reading;
    }
    TDecimal number;
    if (IsNotFinite(cell))
        reading.state = TNumberState::NotFinite;
    else if (TakeDecimal(text, decimalSign, number) == text + cell.size())
        reading.state = IsTooLarge(number, cell) ? TNumberState::TooLarge : TNumberState::TooSmall;
    reading.value = 0;
    return reading;
}

} // namespace lumoplot
