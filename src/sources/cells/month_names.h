// Names of months and days of the week, whole or short, in the languages of Western, Northern and Central
// Europe.
#pragma once

#include <string_view>

namespace lumoplot {

/// 1 to 12 for the name of a month or an abbreviation of at least three letters that means one month only; 0
/// for any other word. The word is folded (FoldText).
int MonthOfName(std::string_view folded);

/// The word names a day of the week, or shortens one to at least two letters. The word is folded.
bool IsWeekday(std::string_view folded);

} // namespace lumoplot
