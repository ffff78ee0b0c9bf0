// Dates as values of an axis (days since 1899-12-30, the time of day as fraction) and as texts.
#pragma once

#include <QDate>
#include <QString>
#include <string_view>

namespace lumoplot {

/// The first and the last value that have a date: the years 1 to 9999.
inline constexpr double kFirstDateValue = -693593;
inline constexpr double kLastDateValue = 2958466;

/// The value of midnight.
double ValueOfDate(const QDate& date);
QDate DateOfValue(double value);

/// The value, rounded to a millisecond, in a format made of the tokens d dd ddd dddd (day, name of the
/// weekday), m mm mmm mmmm (month), yy yyyy, h hh, n nn (minute; also m right behind h), s ss, zzz
/// (millisecond), am/pm and a/p (which make h count to 12), letter case ignored; 'text' and "text" stand as
/// they are, as do all other characters. Names are English. Empty for a value without a date.
QString DateText(double value, std::string_view format);

} // namespace lumoplot
