// The reading of a text that a data set's description fixes: separators, header rows, decimal sign, order of
// dates and encoding. What is not fixed is found from the text.
#pragma once

#include "controls/widgets_export.h"
#include "graph/model/series.h"
#include "sources/text/text_format.h"

namespace lumoplot {

/// Fixes what `chosen` has and `found` has not.
XYWIDGETS_EXPORT void FixReading(TSeries& series, const TTextFormat& chosen, const TTextFormat& found);

/// Leaves all of it to be found from the text.
XYWIDGETS_EXPORT void ForgetReading(TSeries& series);

/// Something of it is fixed.
XYWIDGETS_EXPORT bool HasFixedReading(const TSeries& series);

} // namespace lumoplot
