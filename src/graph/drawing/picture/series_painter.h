// Draws one data set into the plot: its bounds, its line, its points and its regression.
#pragma once

#include "graph/drawing/picture/graph_layout.h"
#include "graph/model/series.h"

namespace lumoplot {

/// Draws an active data set on its Y axis; `visible` is where its line may be drawn and its points may lie.
/// The data set that serves as X is not drawn against itself.
void DrawSeries(const TCanvas& canvas, const TSeries& series, const TGraphLayout& layout,
                const QRectF& visible);

} // namespace lumoplot
