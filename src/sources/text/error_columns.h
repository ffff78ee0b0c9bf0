// Columns whose names say that they hold the standard errors of another column: "err_y", "sigma", "Voltage
// SD", "± (mV)".
#pragma once

#include "sources/text/text_format.h"

namespace lumoplot {

/// For each column the one (from 0) whose errors it holds by its name, or kNoColumn; none where X and Y would
/// not be left beside them.
XYGRAPH_EXPORT std::vector<int> ErrorOwners(const TTextFormat& format);

/// The column (from 0) with the errors of that one; kNoColumn where no name says so.
XYGRAPH_EXPORT int ErrorColumnOf(const TTextFormat& format, int column);

/// The rule that takes the errors of the format's Y from their column; none where no name says so.
inline TYErrorRule FoundYErrorRule(const TTextFormat& format) {
    const int column = ErrorColumnOf(format, format.yColumn);
    return column < 0 ? TYErrorRule() : TYErrorRule{TYErrorKind::Column, 0, std::to_string(column + 1)};
}

} // namespace lumoplot
