// Error bars: the standard errors of Y around the points of a data set.
#pragma once

#include "graph/drawing/picture/graph_layout.h"

namespace lumoplot {

class TSeries;

/// Draws a bar with caps for every point that has a standard error, in the colour of the points (of the line
/// where none are shown). What reaches below 0 on a logarithmic axis goes down to the end of the axis,
/// without a cap. `visible` is where bars may be drawn. On raster devices the time is that of the pixels that
/// bars cover; elsewhere bars that lie over each other become one where they are very many.
void DrawErrorBars(const TCanvas& canvas, const TSeries& series, const TGraphLayout& layout,
                   const QRectF& visible);

} // namespace lumoplot
