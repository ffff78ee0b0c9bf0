// How lists show the columns of a text source and what a description keeps of the one that is chosen.
#pragma once

#include "controls/widgets_export.h"
#include "sources/text/text_format.h"

#include <QString>

namespace lumoplot {

/// "2: Voltage", or "Row number" for TTextFormat::kRowNumber.
XYWIDGETS_EXPORT QString ColumnItemText(const TTextFormat& format, int column);

/// The column's name where the description finds this column and no other by it, else its number.
XYWIDGETS_EXPORT QString ColumnItemKey(const TTextFormat& format, int column);

} // namespace lumoplot
