// Dates in X make the X axis one of dates.
#pragma once

#include "support/export.h"

#include <string>

namespace lumoplot {

class TSeries;
struct TTextFormat;

/// For a data set that has just got its first points, read as `format` says: where X is dates or times of day
/// and no other data set has points, the X axis shows dates, with a tick format that fits their span. A
/// format that the user has chosen stays. Durations beyond two days stay numbers, as do dates that a formula
/// has changed.
void ShowDatesOfX(TSeries& series, const TTextFormat& format);

/// What to tell of a data set that has just got points, read as `format` says, beside others whose X are not
/// of its kind: numbers on an axis of dates, dates on one of numbers, times of day beside dates. Empty where
/// they go together.
XYGRAPH_EXPORT std::string MixedXText(const TSeries& series, const TTextFormat& format);

} // namespace lumoplot
