// What a number means that a person typed.
#pragma once

#include "support/errors.h"
#include "support/number_text.h"

#include <algorithm>
#include <string>

namespace lumoplot {

/// What the comma is where the person lives: where it is no decimal sign it may divide groups of digits.
enum class TTypedComma { IsDecimalSign, MayGroup };

/// The text has one comma, with exactly three digits behind it.
inline bool MayBeGrouped(const std::string& text) {
    const std::size_t comma = text.find(',');
    if (comma == std::string::npos || text.find(',', comma + 1) != std::string::npos) return false;
    return std::min(text.find_first_not_of("0123456789", comma + 1), text.size()) - comma == 4;
}

/// The number that a typed text stands for. Its decimal sign is the point; the comma is one too, but before
/// exactly three digits only where it is one in any case. Throws EConvertError, which then names both
/// readings.
inline double ParseTypedNumber(const std::string& text, TTypedComma comma) {
    const double value = ParseFloat(text);
    if (comma == TTypedComma::IsDecimalSign || !MayBeGrouped(text)) return value;
    std::string whole(Trimmed(text));
    whole.erase(whole.find(','), 1);
    throw EConvertError("'" + text + "' can be " + whole + " or " + FormatShortest(value) +
                        ": leave the comma out or write a point");
}

} // namespace lumoplot
