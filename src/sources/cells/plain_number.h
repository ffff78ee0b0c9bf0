// Numbers as people and foreign programs write them, turned into the plain form that ReadNumber takes.
#pragma once

#include "sources/cells/text_number.h"

#include <string>

namespace lumoplot {

/// Writes the number in `cell` (without blanks around it) to `plain` with a point as its decimal sign; false
/// when the cell is none. What is noticed on the way goes to `reading`.
bool ToPlainNumber(std::string_view cell, char decimalSign, std::string& plain, TNumberReading& reading);

/// The bytes of a minus at the front or, for `atEnd`, at the end of the text; 0 where there is none.
std::size_t MinusLength(std::string_view text, bool atEnd);

/// Without the blanks of any kind around it: no-break and thin ones too.
std::string_view WithoutBlanks(std::string_view text);

/// Reads a cell of nothing but a sign, digits and at most one decimal sign, and of no more digits than most
/// have; false, with `reading` as it was, for any other, which ParseNumber may still read.
bool ParsePlainNumber(std::string_view cell, char decimalSign, TNumberReading& reading);

/// The marks of a column where brackets make numbers negative: "(300)" beside "300".
inline const TUnitMarks kBracketMarks = {"(", ")"};

} // namespace lumoplot
