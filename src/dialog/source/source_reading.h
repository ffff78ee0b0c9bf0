// The reading of a text that a data set's description fixes: separators, header rows, decimal sign, order of
// dates and encoding. What is not fixed is found from the text.
#pragma once

#include "graph/model/series.h"
#include "sources/text/text_format.h"

namespace lumoplot {

/// Fixes what `chosen` has and `found` has not.
void FixReading(TSeries& series, const TTextFormat& chosen, const TTextFormat& found);

/// Leaves all of it to be found from the text.
void ForgetReading(TSeries& series);

/// Something of it is fixed.
bool HasFixedReading(const TSeries& series);

} // namespace lumoplot
