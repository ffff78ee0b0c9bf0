// The X axis is called like the column that X comes from.
#pragma once

#include "support/export.h"

namespace lumoplot {

class TSeries;
struct TTextFormat;

/// Only of a graph with one data set and where nobody has written a title yet. The drawing names the Y axis
/// after its data set by itself.
XYGRAPH_EXPORT void TakeXTitle(TSeries& series, const TTextFormat& format);

} // namespace lumoplot
