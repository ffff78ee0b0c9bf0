// Numbers as texts and back, independent of the locale: the decimal sign written is always ".", and no text
// that is not wholly a number is ever taken for one.
#pragma once

#include "support/errors.h"
#include "support/export.h"

#include <optional>
#include <string>
#include <string_view>

namespace lumoplot {

/// The shortest text that reads back to the same double. Not-a-number is "nan", infinities are "inf" and
/// "-inf".
XYGRAPH_EXPORT std::string FormatShortest(double value);

/// General format with `precision` significant digits (1 to 17): "0.5", "1234", "1.235E10", "1E-7".
/// Scientific when the value needs more than `precision` digits before the point or is below 0.00001.
XYGRAPH_EXPORT std::string FormatGeneral(double value, int precision);

/// Exponent format with `precision` significant digits (1 to 17) and an exponent of at least two:
/// "1.250E-03".
XYGRAPH_EXPORT std::string FormatExponent(double value, int precision);

/// The value rounded to that many decimals (0 to 17), whatever its size: "-0.5000".
XYGRAPH_EXPORT std::string FormatFixed(double value, int decimals);

/// The number that the whole text (blanks around it allowed) stands for, or nothing. A lone "," is accepted
/// as the decimal sign; "nan", "inf" and "-inf" are numbers. Values beyond the range become infinite or 0.
XYGRAPH_EXPORT std::optional<double> TryParseFloat(std::string_view text);

/// As TryParseFloat. Throws EConvertError "'TEXT' is not a valid floating point value".
inline double ParseFloat(std::string_view text) {
    if (const auto value = TryParseFloat(text)) return *value;
    throw EConvertError("'" + std::string(text) + "' is not a valid floating point value");
}

/// The decimal 32-bit integer that the whole text (blanks around it allowed) stands for, or nothing.
XYGRAPH_EXPORT std::optional<int> TryParseInteger(std::string_view text);

/// As TryParseInteger. Throws EConvertError "'TEXT' is not a valid integer value".
inline int ParseInteger(std::string_view text) {
    if (const auto value = TryParseInteger(text)) return *value;
    throw EConvertError("'" + std::string(text) + "' is not a valid integer value");
}

/// The text without leading and trailing blanks, tabs and control characters.
XYGRAPH_EXPORT std::string_view Trimmed(std::string_view text);

} // namespace lumoplot
