// What a file is that is no text, by its first bytes, and how its numbers can be had nevertheless.
#pragma once

#include <string>
#include <string_view>

namespace lumoplot {

/// "a spreadsheet (.xlsx): save the sheet as CSV and open that"; empty for what is not known.
std::string KnownBinary(std::string_view firstBytes);

} // namespace lumoplot
