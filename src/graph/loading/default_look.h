// How a graph looks that the user has not styled yet: sizes that can be read on a screen and in a paper,
// quiet axes and grid, and a style for each new data set that fits its points.
#pragma once

#include "support/export.h"

namespace lumoplot {

class TSeries;
class TxyGraph;

/// Fonts, margins, colours and the legend's place; data sets and axis ranges stay.
XYGRAPH_EXPORT void ApplyDefaultLook(TxyGraph& graph);

/// Few points are shown as symbols, joined by a line unless measurements repeat at the same X; many points as
/// a line alone.
XYGRAPH_EXPORT void ApplyDefaultStyle(TSeries& series);

} // namespace lumoplot
