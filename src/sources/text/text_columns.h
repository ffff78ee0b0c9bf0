// Chooses the X and the Y column of a text file, by what the description asks for and else by what the
// columns hold.
#pragma once

#include "sources/text/text_format.h"

#include <string>
#include <string_view>
#include <vector>

namespace lumoplot {

/// Sets the columns and their formats in `format`, whose columns are known. A column of `info` is a number
/// from 1, 0 for the row number (X only), or a header name, case ignored where no name fits exactly. Without
/// one X is the column named X or the first of values, Y the next column of numbers; with a single column of
/// values X is the row number. Returns why it is not possible, to stand behind "File NAME ", or an empty
/// text.
std::string ChooseColumns(TTextFormat& format, const TDSInfo& info);

/// The column (from 0) with that header name, case ignored where no name fits exactly, or kNoColumn.
int ColumnNamed(const TTextFormat& format, std::string_view name);

/// "its columns are time, current" with the first names, or that they have none: for messages.
std::string ColumnNameList(const TTextFormat& format);

/// Why columns are neither X nor Y: "column 3 (remark) holds text", "column 1 (No.) only counts the rows".
std::vector<std::string> LeftOutColumns(const TTextFormat& format);

/// The columns of numbers, from 0, that are neither X nor Y but could be.
std::vector<int> OtherColumns(const TTextFormat& format);

} // namespace lumoplot
