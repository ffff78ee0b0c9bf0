// Decimal numbers in text files, read correctly rounded. What is not wholly a number is never taken for one,
// and neither overflow nor underflow passes for a value: the caller tells the user.
#pragma once

#include <cstddef>
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
    double value = 0; ///< 0 in every state but Number
};

/// Reads a whole cell, blanks around the number allowed. "nan", "inf" and their like are NotFinite; a number
/// that is not zero but would become zero is TooSmall.
TNumberReading ParseNumber(std::string_view cell, char decimalSign);

} // namespace lumoplot
