// The pens that the lines of a data set are drawn with.
#pragma once

#include "graph/drawing/lines/canvas.h"
#include "graph/model/series.h"

namespace lumoplot {

/// A pen for a line of the data set; paper shows the style only when the graph says so.
QPen SeriesPen(const TCanvas& canvas, const TSeries& series, TColor color, TPenStyle style, double width);
/// Where corners of a line with that pen matter, in device pixels: caps and joins beyond `visible` must not
/// come into sight. Not every vector format cuts off what lies outside a clip rectangle, so there lines end
/// at its edge.
QRectF ReachOfPen(const TCanvas& canvas, const QPen& pen, const QRectF& visible);

} // namespace lumoplot
