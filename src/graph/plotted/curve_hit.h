// Finds the data set whose points or line lie at a place on the screen.
#pragma once

#include "graph/plotted/plot_map.h"

namespace lumoplot {

/// The data set nearest to `place`, at most `reach` away (both in the map's units), by its points and by the
/// straight lines between them as far as these are drawn; null for none.
XYGRAPH_EXPORT const TSeries* CurveAt(const TxyGraph& graph, const TPlotMap& map, QPointF place,
                                      double reach);

} // namespace lumoplot
