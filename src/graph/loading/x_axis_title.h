// The X axis is called like the column that X comes from.
#pragma once

namespace lumoplot {

class TSeries;
struct TTextFormat;

/// Only of a graph with one data set and where nobody has written a title yet. The drawing names the Y axis
/// after its data set by itself.
void TakeXTitle(TSeries& series, const TTextFormat& format);

} // namespace lumoplot
