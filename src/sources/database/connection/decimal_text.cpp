#include "sources/database/connection/decimal_text.h"

#include <charconv>
#include <cmath>
#include <string>

namespace lumoplot {
namespace {

constexpr std::size_t kDigitsAlwaysHeld = 15;

// The digits without sign, point, exponent and zeros at both ends.
std::string SignificantDigits(std::string_view text) {
    std::string digits;
    for (const char c : text.substr(0, text.find_first_of("eE")))
        if (c >= '0' && c <= '9' && (c != '0' || !digits.empty())) digits += c;
    while (!digits.empty() && digits.back() == '0') digits.pop_back();
    return digits;
}

} // namespace

std::optional<TDecimal> DecimalOf(std::string_view text) {
    TDecimal decimal;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), decimal.value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(decimal.value))
        return std::nullopt;
    const std::string digits = SignificantDigits(text);
    if (digits.size() <= kDigitsAlwaysHeld) return decimal;
    char shortest[64];
    const auto printed = std::to_chars(shortest, shortest + sizeof shortest, decimal.value);
    decimal.isRounded =
        SignificantDigits({shortest, static_cast<std::size_t>(printed.ptr - shortest)}) != digits;
    return decimal;
}

} // namespace lumoplot
