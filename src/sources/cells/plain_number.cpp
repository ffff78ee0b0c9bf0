#include "sources/cells/plain_number.h"

#include "sources/cells/decimal.h"
#include "sources/cells/text_scanner.h"

#include <array>

namespace lumoplot {
namespace {

/// Minus, en dash and hyphens, in UTF-8 and in the code page.
constexpr std::array<std::string_view, 6> kMinuses = {
    "-", "\xE2\x88\x92", "\xE2\x80\x93", "\xE2\x80\x90", "\xE2\x80\x91", "\x96"};
/// Blanks and apostrophes between thousands: no-break, narrow, thin and figure space, the code page's.
constexpr std::array<std::string_view, 9> kGroupSigns = {
    " ", "\xC2\xA0", "\xE2\x80\xAF", "\xE2\x80\x89", "\xE2\x80\x87", "\xA0", "'", "\xE2\x80\x99", "\x92"};
constexpr std::array<std::string_view, 7> kBlanks = {
    " ", "\t", "\xC2\xA0", "\xE2\x80\xAF", "\xE2\x80\x89", "\xE2\x80\x87", "\xA0"};

// The bytes of the first of the texts that begins the text.
template <std::size_t Count>
std::size_t LengthOfAny(const std::array<std::string_view, Count>& texts, std::string_view text) {
    for (const auto candidate : texts)
        if (!text.empty() && text.front() == candidate.front() && text.starts_with(candidate))
            return candidate.size();
    return 0;
}

// What stands between the first digits and three others: the sign of the groups, or nothing.
std::string_view GroupSign(std::string_view text, char decimalSign) {
    const char other = decimalSign == '.' ? ',' : '.';
    const std::size_t length = text.starts_with(other) ? 1 : LengthOfAny(kGroupSigns, text);
    return text.substr(0, length);
}

// "1,00,000": groups of two digits in front of one of three.
bool IsGroupOfTwo(TTextScanner behind, std::string_view sign) {
    if (sign != "," || behind.Digits() != 2) return false;
    while (behind.Digits() == 2) {
        behind.Drop(2);
        if (!behind.Take(',')) return false;
    }
    return behind.Digits() == 3;
}

// Digits, grouped by threes or not at all.
bool TakeInteger(TTextScanner& scan, char decimalSign, std::string& plain, TNumberReading& reading) {
    const std::size_t first = scan.Digits();
    plain.append(scan.Rest().substr(0, first));
    const bool beginsWithZero = first > 0 && scan.Front() == '0';
    scan.Drop(first);
    const std::string_view sign = GroupSign(scan.Rest(), decimalSign);
    int groups = 0;
    while (!sign.empty() && scan.Rest().starts_with(sign)) {
        TTextScanner behind(scan.Rest().substr(sign.size()));
        if (first == 0 || first > 3 || beginsWithZero) return false;
        const std::size_t length = first <= 2 && IsGroupOfTwo(behind, sign) ? 2 : 3;
        if (behind.Digits() != length) return false;
        plain.append(behind.Rest().substr(0, length));
        behind.Drop(length);
        scan = behind;
        ++groups;
    }
    const bool isSign = sign == "." || sign == ",";
    reading.hasGroups = groups > 0 && isSign;
    reading.isOpen = groups == 1 && isSign;
    reading.isPlainSmall = groups == 0 && first <= 3;
    reading.isPlainLarge = groups == 0 && first > 3;
    return true;
}

// The digits behind the decimal sign.
void TakeDecimals(TTextScanner& scan, char decimalSign, std::string& plain, TNumberReading& reading) {
    if (!scan.Take(decimalSign)) return;
    const std::size_t digits = scan.Digits();
    plain.append(1, '.').append(scan.Rest().substr(0, digits));
    scan.Drop(digits);
    // Three decimals behind one to three digits look like a group, unless it would begin with 0.
    const std::size_t integer = plain.find_first_not_of('-');
    reading.isOpen = !reading.hasGroups && reading.isPlainSmall && digits == 3 && plain[integer] != '.' &&
                     plain[integer] != '0';
    reading.hasDecimals = true;
    reading.isPlainSmall = reading.isPlainLarge = false;
}

// "x10^", "·10^" and the like, with blanks around the sign.
bool TakePowerOfTen(TTextScanner& scan) {
    TTextScanner power = scan;
    power.TakeBlanks();
    const std::size_t sign = LengthOfAny(
        std::array<std::string_view, 6>{"x", "*", "\xC3\x97", "\xC2\xB7", "\xD7", "\xB7"}, power.Rest());
    if (sign == 0) return false;
    power.Drop(sign);
    power.TakeBlanks();
    if (!power.Rest().starts_with("10^")) return false;
    power.Drop(3);
    scan = power;
    return true;
}

// An exponent with its letter or as a power of ten, or, behind decimals, three digits with a sign.
bool TakeExponent(TTextScanner& scan, std::string& plain, TNumberReading& reading) {
    const bool hasLetter = scan.TakeAny("eEdD") || TakePowerOfTen(scan);
    if (!hasLetter && (!reading.hasDecimals || scan.Rest().size() != 4)) return true;
    const bool hasSign = scan.Front() == '-' || scan.Front() == '+';
    const std::string_view rest = scan.Rest();
    TTextScanner digits(rest.substr(hasSign ? 1 : 0));
    if (digits.Digits() == 0 || (!hasLetter && !hasSign)) return false;
    plain.append(1, 'e').append(rest.substr(0, digits.Digits() + (hasSign ? 1 : 0)));
    scan.Drop(digits.Digits() + (hasSign ? 1 : 0));
    reading.isOpen = reading.isPlainSmall = reading.isPlainLarge = false;
    return true;
}

bool HasDigit(std::string_view text) {
    return text.find_first_of("0123456789") != std::string_view::npos;
}

} // namespace

std::size_t MinusLength(std::string_view text, bool atEnd) {
    if (text.empty()) return 0;
    const char near = atEnd ? text.back() : text.front();
    if (near != '-' && static_cast<unsigned char>(near) < 0x80) return 0;
    for (const auto minus : kMinuses)
        if (atEnd ? text.ends_with(minus) : text.starts_with(minus)) return minus.size();
    return 0;
}

std::string_view WithoutBlanks(std::string_view text) {
    const auto isOther = [](char c) { return c > ' ' && static_cast<unsigned char>(c) < 0x80; };
    while (const std::size_t length = LengthOfAny(kBlanks, text)) text.remove_prefix(length);
    for (bool isBlank = true; isBlank;) {
        isBlank = false;
        if (text.empty() || isOther(text.back())) break;
        for (const auto blank : kBlanks)
            if (text.ends_with(blank)) {
                text.remove_suffix(blank.size());
                isBlank = true;
            }
    }
    return text;
}

bool ToPlainNumber(std::string_view cell, char decimalSign, std::string& plain, TNumberReading& reading) {
    plain.clear();
    std::size_t minus = MinusLength(cell, false);
    cell.remove_prefix(minus == 0 && cell.starts_with('+') ? 1 : minus);
    if (minus == 0 && HasDigit(cell)) {
        minus = MinusLength(cell, true);
        cell.remove_suffix(minus);
    }
    if (minus > 0) plain = "-";
    TTextScanner scan(WithoutBlanks(cell));
    if (!TakeInteger(scan, decimalSign, plain, reading)) return false;
    TakeDecimals(scan, decimalSign, plain, reading);
    if (!HasDigit(plain) || !TakeExponent(scan, plain, reading)) return false;
    return scan.AtEnd();
}

} // namespace lumoplot
