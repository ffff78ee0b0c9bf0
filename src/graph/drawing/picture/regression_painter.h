// Draws the regression of a data set and its bounds into the plot.
#pragma once

#include "graph/drawing/picture/graph_layout.h"
#include "graph/model/series.h"

namespace lumoplot {

/// Draws the regression of an active data set on its Y axis, over the corrected Y: a line or parabola from
/// the first point to the last, a curve on its own grid, or the line through the Derived of the points.
/// `visible` is where it may be drawn. Nothing is drawn for a regression that failed, nor for a curve on a
/// grid of X where another data set serves as X.
void DrawRegression(const TCanvas& canvas, const TSeries& series, const TGraphLayout& layout,
                    const QRectF& visible);

/// Draws the bounds that its Y axis shows, across the plot.
void DrawBounds(const TCanvas& canvas, const TSeries& series, const TGraphLayout& layout);

} // namespace lumoplot
