#include "sources/text/text_number.h"

#include "sources/text/decimal.h"
#include "support/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <optional>
#include <string>

namespace lumoplot {
namespace {

std::optional<double> FromChars(std::string_view text) {
    if (text.starts_with('+')) text.remove_prefix(1);
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() ? std::optional(value) : std::nullopt;
}

// Any number, by the library. Nothing for one beyond the range of doubles.
std::optional<double> LibraryValue(std::string_view text, char decimalSign) {
    const auto isForeign = [decimalSign](char c) {
        return c == 'd' || c == 'D' || (c == decimalSign && c != '.');
    };
    if (std::none_of(text.begin(), text.end(), isForeign)) return FromChars(text);
    std::string plain(text);
    for (char& c : plain)
        if (isForeign(c)) c = c == decimalSign ? '.' : 'e';
    return FromChars(plain);
}

bool IsNotFinite(std::string_view text) {
    std::string word(text.substr(text.starts_with('+') || text.starts_with('-') ? 1 : 0));
    for (char& c : word) c = static_cast<char>(c | 0x20);
    for (const char* name : {"nan", "inf", "infinity"})
        if (word == name) return true;
    return false;
}

// A number beyond the range of doubles is too large rather than too small when it is above 1.
bool IsTooLarge(const TDecimal& number, std::string_view text, char decimalSign) {
    const std::size_t first = text.find_first_of("0123456789");
    const std::size_t end = std::min(text.find_first_of("eEdD"), text.size());
    const auto digits = std::count_if(text.begin() + static_cast<std::ptrdiff_t>(first),
                                      text.begin() + static_cast<std::ptrdiff_t>(end), decimal::IsDigit);
    const int significant =
        decimal::SignificantDigits(text.data() + first, decimalSign, static_cast<int>(digits));
    return number.exponent + significant > 0;
}

} // namespace

const char* ReadNumber(const char* text, char decimalSign, double& value) {
    TDecimal number;
    const char* end = decimal::Take(text, decimalSign, number);
    if (end == nullptr || decimal::ExactValue(number, value)) return end;
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
    else if (decimal::Take(text, decimalSign, number) == text + cell.size())
        reading.state = IsTooLarge(number, {text, cell.size()}, decimalSign) ? TNumberState::TooLarge
                                                                             : TNumberState::TooSmall;
    reading.value = 0;
    return reading;
}

} // namespace lumoplot
