// Lines of very many points that run to and fro over their plot: they are covered while their points are
// read, without a copy of them.
#pragma once

#include "graph/drawing/lines/canvas.h"
#include "graph/drawing/lines/series_positions.h"

namespace lumoplot {

/// Draws the line through the places of the data set inside the painter's clip rectangle and returns true, or
/// draws nothing: for few points, lines that do not run to and fro from their beginning, and devices without
/// pixels.
bool DrawAsCloud(const TCanvas& canvas, const TSeries& series, const TSeriesPositions& positions,
                 const QPen& pen);

} // namespace lumoplot
