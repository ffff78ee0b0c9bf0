#include "sources/cells/text_number.h"

#include "sources/cells/decimal.h"
#include "sources/cells/folded_text.h"
#include "sources/cells/plain_number.h"
#include "support/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <limits>
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

namespace {

// A number in its plain form, with a point.
TNumberReading ParsePlain(std::string_view cell, char decimalSign, TNumberReading reading) {
    std::array<char, 64> local{};
    std::string large;
    const char* text = local.data();
    if (cell.size() + kNumberPadding < local.size()) {
        std::memcpy(local.data(), cell.data(), cell.size());
    } else {
        large.assign(cell).append(kNumberPadding, '\0');
        text = large.data();
    }
    reading.value = 0;
    if (ReadNumber(text, decimalSign, reading.value) == text + cell.size()) {
        reading.state = TNumberState::Number;
        return reading;
    }
    TDecimal number;
    if (decimal::Take(text, decimalSign, number) == text + cell.size())
        reading.state = IsTooLarge(number, {text, cell.size()}, decimalSign) ? TNumberState::TooLarge
                                                                             : TNumberState::TooSmall;
    reading.value = 0;
    return reading;
}

constexpr std::string_view kMissing[] = {
    "na",        "n/a",         "n.a.",          "n.a",           "n.d.",
    "nd",        "#n/a",        "#na",           "<na>",          "nat",
    "null",      "none",        "nil",           "missing",       "unknown",
    "no data",   "nodata",      "k.a.",          "void",          "invalid",
    "error",     "err",

    "over",      "overload",    "ovl",           "ovld",          "ol",
    "o.l.",      "overflow",    "overrange",     "under",         "urange",
    "underflow", "underrange",

    "#value!",   "#div/0!",     "#ref!",         "#num!",         "#null!",
    "#name?",    "#error",      "1.#inf",        "1.#ind",        "1.#qnan",
    "1.#snan",   "1.#nan",      "nan(ind)",      "-nan(ind)",     "nan",
    "inf",       "infinity",    "+inf",          "-inf",          "-infinity",
    "+infinity", "-nan",        "+nan",          "-1.#inf",       "-1.#ind",
    "-1.#qnan",  "1.#infe+000", "\xE2\x88\x9E",  "-\xE2\x88\x9E", "_",
    "n. a.",     "k. a.",       "not available", "tbd",           "sin dato",
    "s/d"};

/// What may stand in front of an amount.
constexpr std::string_view kCurrencies[] = {
    "US$",  "A$",  "C$",           "R$",           "$",       "\xE2\x82\xAC", "\xC2\xA3", "\xC2\xA5", "\x80",
    "\xA3", "EUR", "USD",          "GBP",          "CHF",     "Fr.",          "kr.",      "kr",       "SEK",
    "JPY",  "Rs.", "\xE2\x82\xB9", "\xE2\x82\xBD", "\xC2\xA2"};

// The unit behind a number: begins with no character of numbers, and the letters of an exponent do not come
// alone before digits.
bool IsUnit(std::string_view text) {
    constexpr std::size_t kLongest = 16;
    if (text.empty() || text.size() > kLongest) return false;
    // Feet and inches.
    for (const char* mark : {"\"", "'", "''", "\xE2\x80\xB2", "\xE2\x80\xB3"})
        if (text == mark) return true;
    if (std::string_view("0123456789.,:;+-/*=<>()'\"!?#|&").find(text.front()) != std::string_view::npos)
        return false;
    // Digits only as a power: "m2", "cm-1".
    const std::size_t digit = text.find_first_of("0123456789");
    if (digit == std::string_view::npos) return true;
    // Behind another sign than a letter they may be decimals, as behind a raised point.
    const bool isMicro = text.starts_with("\xC2\xB5") || text.starts_with("\xCE\xBC");
    return digit > 0 && digit + 1 == text.size() && (isMicro || LetterLength(text) > 0) &&
           text.front() != 'e' && text.front() != 'E';
}

// Where the number at the front of the text ends, with everything that may belong to it.
std::size_t NumberLength(std::string_view text) {
    std::size_t end = MinusLength(text, false);
    std::size_t last = 0;
    while (end < text.size()) {
        const char c = text[end];
        if (decimal::IsDigit(c)) {
            last = ++end;
            continue;
        }
        const bool isExponent =
            (c == 'e' || c == 'E') && last == end && end + 1 < text.size() &&
            (decimal::IsDigit(text[end + 1]) || ((text[end + 1] == '-' || text[end + 1] == '+') &&
                                                 end + 2 < text.size() && decimal::IsDigit(text[end + 2])));
        if (isExponent) {
            end += decimal::IsDigit(text[end + 1]) ? 1 : 2;
        } else if (c == '.' || c == ',' || c == '\'' || c == ' ') {
            ++end;
        } else if (text.substr(end).starts_with("\xC2\xA0")) {
            end += 2;
        } else if (text.substr(end).starts_with("\xE2\x80\xAF") ||
                   text.substr(end).starts_with("\xE2\x80\x99")) {
            end += 3;
        } else {
            break;
        }
    }
    return last;
}

} // namespace

bool ParsePlainNumber(std::string_view cell, char decimalSign, TNumberReading& reading) {
    constexpr std::size_t kLongest = 20;
    std::array<char, kLongest + kNumberPadding + 1> text{};
    if (cell.size() > kLongest) return false;
    std::memcpy(text.data(), cell.data(), cell.size());
    const char* integer = text.data() + (text[0] == '-' || text[0] == '+' ? 1 : 0);
    const char* point = integer;
    while (decimal::IsDigit(*point)) ++point;
    const char* last = point + (*point == decimalSign ? 1 : 0);
    while (decimal::IsDigit(*last)) ++last;
    if (last != text.data() + cell.size()) return false;
    double value = 0;
    if (ReadNumber(text.data(), decimalSign, value) != last) return false;
    const auto digits = point - integer;
    const bool hasDecimals = point != last;
    reading = {.state = TNumberState::Number, .value = value, .hasDecimals = hasDecimals};
    reading.isOpen = hasDecimals && digits >= 1 && digits <= 3 && last - point == 4 && *integer != '0';
    reading.isPlainSmall = !hasDecimals && digits <= 3;
    reading.isPlainLarge = !hasDecimals && digits > 3;
    return true;
}

TNumberReading ParseNumber(std::string_view cell, char decimalSign) {
    cell = WithoutBlanks(Trimmed(cell));
    TNumberReading reading;
    if (cell.empty() || ParsePlainNumber(cell, decimalSign, reading)) return reading;
    if (IsNotFinite(cell)) {
        reading.state = TNumberState::NotFinite;
        return reading;
    }
    std::string plain;
    if (cell.size() > 4096) return ParsePlain(cell, decimalSign, reading);
    if (!ToPlainNumber(cell, decimalSign, plain, reading)) return {};
    return ParsePlain(plain, '.', reading);
}

TNumberReading ParseWithUnit(std::string_view cell, char decimalSign, TUnitMarks& marks) {
    marks = {};
    cell = WithoutBlanks(Trimmed(cell));
    const bool isBracketed = cell.size() > 2 && cell.starts_with('(') && cell.ends_with(')');
    if (isBracketed) cell = WithoutBlanks(cell.substr(1, cell.size() - 2));
    if (cell.starts_with('+')) cell.remove_prefix(1);
    const std::size_t minus = MinusLength(cell, false);
    std::string number(cell.substr(0, minus));
    std::string_view rest = WithoutBlanks(cell.substr(minus));
    for (const auto currency : kCurrencies)
        if (!rest.empty() && rest.front() == currency.front() && rest.starts_with(currency)) {
            marks.front = currency;
            rest = WithoutBlanks(rest.substr(currency.size()));
            break;
        }
    const std::size_t length = NumberLength(rest);
    if (length == 0) return {};
    number.append(rest.substr(0, length));
    rest.remove_prefix(length);
    if (rest == "-" && !marks.front.empty())
        number.append(1, '-');
    else
        marks.behind = WithoutBlanks(rest);
    if (isBracketed && marks.IsEmpty())
        marks = kBracketMarks;
    else if (isBracketed && marks.front.empty())
        return {};
    else if (marks.IsEmpty() || (!marks.behind.empty() && !IsUnit(marks.behind)))
        return {};
    if (isBracketed) number.insert(0, 1, '-');
    return ParseNumber(number, decimalSign);
}

std::optional<double> ParseNotFinite(std::string_view cell) {
    cell = WithoutBlanks(Trimmed(cell));
    constexpr std::size_t kLongest = 12; // a dash and a word
    if (cell.empty() || cell.size() > kLongest) return std::nullopt;
    const std::size_t minus = MinusLength(cell, false);
    std::string word(cell.substr(minus > 0 ? minus : cell.starts_with('+') ? 1 : 0));
    for (char& c : word)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c | 0x20);
    if (word == "nan" && minus > 0) return std::numeric_limits<double>::quiet_NaN();
    if (word != "inf" && word != "infinity" && word != "\xE2\x88\x9E") return std::nullopt;
    const double infinity = std::numeric_limits<double>::infinity();
    return minus > 0 ? -infinity : infinity;
}

bool IsMissingMark(std::string_view cell) {
    constexpr std::size_t kLongest = 16;
    if (cell.empty() || cell.size() > kLongest) return false;
    if (cell.find_first_not_of("-.*?~") == std::string_view::npos) return true;
    if (cell == "\xE2\x80\x93" || cell == "\xE2\x80\x94" || cell == "\x96" || cell == "\x97" ||
        cell == "\xE2\x80\xA6")
        return true;
    std::string word(cell);
    for (char& c : word)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c | 0x20);
    return std::ranges::find(kMissing, word) != std::end(kMissing);
}

} // namespace lumoplot
