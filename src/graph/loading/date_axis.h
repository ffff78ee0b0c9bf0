// Dates in X make the X axis one of dates.
#pragma once

#include "support/export.h"

namespace lumoplot {

class TSeries;
struct TTextFormat;

/// For a data set that has just got its first points, read as `format` says: where X is dates or times of day
/// and no other data set has points, the X axis shows dates, with a tick format that fits their span. A
/// format that the user has chosen stays. Durations beyond two days stay numbers, as do dates that a formula
/// has changed.
void ShowDatesOfX(TSeries& series, const TTextFormat& format);

} // namespace lumoplot
