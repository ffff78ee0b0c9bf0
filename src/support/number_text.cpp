#include "support/number_text.h"

#include "support/errors.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

std::string NotFiniteText(double value) {
    return std::isnan(value) ? "nan" : value < 0 ? "-inf" : "inf";
}

constexpr std::string_view kInfinitySign = "\xE2\x88\x9E";

std::optional<double> SignedInfinity(std::string_view text) {
    text.remove_suffix(kInfinitySign.size());
    if (!text.empty() && text != "-") return std::nullopt;
    const double infinity = std::numeric_limits<double>::infinity();
    return text.empty() ? infinity : -infinity;
}

std::string WithoutTrailingZeros(std::string digits) {
    if (digits.find('.') == std::string::npos) return digits;
    digits.erase(digits.find_last_not_of('0') + 1);
    if (digits.back() == '.') digits.pop_back();
    return digits;
}

template <class... TArgs>
std::string ToChars(double value, TArgs... args) {
    std::array<char, 512> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, args...);
    return std::string(buffer.data(), result.ptr);
}

// from_chars reports both kinds of range error alike; the power of ten of the leading digit tells which one
// it was.
double OutOfRangeValue(std::string_view text) {
    const double sign = text.starts_with('-') ? -1.0 : 1.0;
    const std::size_t mark = text.find_first_of("eE");
    const std::string_view digits = text.substr(0, mark);
    const auto point = static_cast<double>(std::min(digits.find('.'), digits.size()));
    const auto leading = static_cast<double>(digits.find_first_of("123456789"));
    double exponent = 0;
    if (mark != std::string_view::npos)
        for (const char c : text.substr(mark + 1))
            if (c >= '0' && c <= '9') exponent = 10 * exponent + (c - '0');
    if (mark != std::string_view::npos && text.substr(mark + 1).starts_with('-')) exponent = -exponent;
    return sign * (point - leading + exponent < 0 ? 0.0 : std::numeric_limits<double>::infinity());
}

} // namespace

std::string FormatShortest(double value) {
    return std::isfinite(value) ? ToChars(value) : NotFiniteText(value);
}

std::string FormatGeneral(double value, int precision) {
    if (!std::isfinite(value)) return NotFiniteText(value);
    if (value == 0) return "0";
    precision = std::clamp(precision, 1, 17);
    const std::string scientific = ToChars(value, std::chars_format::scientific, precision - 1);
    const std::size_t mark = scientific.find('e');
    const int exponent = ParseInteger(scientific.substr(mark + 1));
    if (exponent < precision && exponent >= -5)
        return WithoutTrailingZeros(
            ToChars(value, std::chars_format::fixed, std::max(0, precision - 1 - exponent)));
    return WithoutTrailingZeros(scientific.substr(0, mark)) + "E" + std::to_string(exponent);
}

std::string FormatExponent(double value, int precision) {
    if (!std::isfinite(value)) return NotFiniteText(value);
    std::string text = ToChars(value, std::chars_format::scientific, std::clamp(precision, 1, 17) - 1);
    text[text.find('e')] = 'E';
    return text;
}

std::string FormatFixed(double value, int decimals) {
    if (!std::isfinite(value)) return NotFiniteText(value);
    return ToChars(value, std::chars_format::fixed, std::clamp(decimals, 0, 17));
}

std::string_view Trimmed(std::string_view text) {
    const auto isBlank = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

std::optional<double> TryParseFloat(std::string_view text) {
    text = Trimmed(text);
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    std::string pointed;
    if (const std::size_t comma = text.find(','); comma != std::string_view::npos) {
        pointed = text;
        pointed[comma] = '.';
        text = pointed;
    }
    double value = 0;
    const char* end = text.data() + text.size();
    if (text.ends_with(kInfinitySign)) return SignedInfinity(text);
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (stop != end || error == std::errc::invalid_argument) return std::nullopt;
    return error == std::errc::result_out_of_range ? OutOfRangeValue(text) : value;
}

std::optional<int> TryParseInteger(std::string_view text) {
    text = Trimmed(text);
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    int value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (stop != end || error != std::errc()) return std::nullopt;
    return value;
}

} // namespace lumoplot
