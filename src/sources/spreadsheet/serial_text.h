// Numbers that a sheet shows as dates or times, as text.
#pragma once

#include <string>
#include <string_view>

namespace lumoplot {

enum class TSerialKind { Number, Date, DateTime, Time, Duration };

/// What the code of a number format ("yyyy-mm-dd", "[h]:mm") makes of numbers.
TSerialKind SerialKindOf(std::string_view formatCode);
/// The same of the formats that have a number and no code.
TSerialKind SerialKindOf(int formatNumber);

/// "2024-01-31", "2024-01-31 12:30:05.25", "12:30:05", "47:30:00" of days since 1899-12-30; empty where it is
/// none.
std::string SerialText(double days, TSerialKind kind);

} // namespace lumoplot
