#include "sources/text_number.h"

#include "sources/decimal.h"
#include "support/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <optional>
#include <string>

namespace lumoplot {
namespace {

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
        reading.state = IsTooLarge(number, cell) ? TNumberState::TooLarge : TNumberState::TooSmall;
    reading.value = 0;
    return reading;
}

} // namespace lumoplot
