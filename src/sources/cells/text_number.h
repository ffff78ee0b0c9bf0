// Numbers in text files, read correctly rounded. What is not wholly a number is never taken for one, and
// neither overflow nor underflow passes for a value: the caller tells the user.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace lumoplot {

/// Bytes that ReadNumber may look at behind the number: whoever hands it text keeps that many readable.
inline constexpr std::size_t kNumberPadding = 8;

/// Reads the number at `text`, which no blank precedes: sign, digits with the decimal sign anywhere, exponent
/// behind e, E, d or D. Returns where the number ends, or null for no number and for one beyond the range of
/// doubles. The text ends with a character that belongs to no number, kNumberPadding bytes before memory
/// does.
const char* ReadNumber(const char* text, char decimalSign, double& value);

enum class TNumberState { Number, NoNumber, NotFinite, TooLarge, TooSmall };

struct TNumberReading {
    TNumberState state = TNumberState::NoNumber;
    double value = 0;          ///< 0 in every state but Number
    bool hasGroups = false;    ///< thousands are grouped by the point or comma that is not the decimal sign
    bool isOpen = false;       ///< one to three digits, one point or comma, three digits: a group or decimals
    bool hasDecimals = false;  ///< the decimal sign occurs
    bool isPlainSmall = false; ///< up to three digits and no sign between them
    bool isPlainLarge = false; ///< more than three digits and no sign between them
};

/// Reads a whole cell, blanks around the number allowed. Beside what ReadNumber reads: thousands grouped by
/// threes with a blank, an apostrophe or, of the point and the comma, that which is not the decimal sign; a
/// minus behind the number or written as one of the dashes; an exponent of three digits without its letter
/// (1.5-101). "nan", "inf" and their like are NotFinite; a number that is not zero but would become zero is
/// TooSmall.
TNumberReading ParseNumber(std::string_view cell, char decimalSign);

/// The infinity of a cell like "inf", "-Infinity", "+∞", letter case ignored; not-a-number for "-nan", as
/// which this program writes it where others write "nan" for a value that is missing. Nothing for any other
/// cell.
std::optional<double> ParseNotFinite(std::string_view cell);

/// What stands around the number in a cell: a currency in front, a unit behind.
struct TUnitMarks {
    std::string front;
    std::string behind;

    bool IsEmpty() const { return front.empty() && behind.empty(); }
    bool operator==(const TUnitMarks&) const = default;
};

/// The number of a cell like "12.5 kV", "3 %", "$12.50" or "($12.50)", which is negative; `marks` gets what
/// is around it. NoNumber when there is none, or nothing around it.
TNumberReading ParseWithUnit(std::string_view cell, char decimalSign, TUnitMarks& marks);

/// The cell says that there is no value: "NA", "n/a", "-", "---", "*", "#DIV/0!", "OVER", "nan", "inf", …
bool IsMissingMark(std::string_view cell);

} // namespace lumoplot
