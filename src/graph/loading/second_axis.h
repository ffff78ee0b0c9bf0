// Which Y axis a data set belongs to, and what that means for the second one.
#pragma once

#include "support/export.h"

namespace lumoplot {

class TSeries;

enum class TYAxisChoice { Main, Second };

/// Puts the data set on that axis. The first one on the second axis switches it on: it follows its data, has
/// room for its labels and is named after the data set unless it has a title. Without any it is off again.
XYGRAPH_EXPORT void PutOnYAxis(TSeries& series, TYAxisChoice choice);

} // namespace lumoplot
