// Draws long lines fast and whole: where a line is so dense that it fills its pixel columns it is drawn as
// the area that it covers, elsewhere as strokes.
#pragma once

#include "graph/drawing/lines/canvas.h"
#include "graph/drawing/lines/polylines.h"
#include "graph/drawing/strokes/column_fill.h"

namespace lumoplot {

/// Draws polylines in device pixels (TCanvas::ToDeviceX) with a pen of TCanvas::Pen. They have been clipped.
void DrawPolylines(const TCanvas& canvas, const TPolylines& lines, const QPen& pen);

/// Neighbouring pixel columns and what is covered of each.
struct TColumnArea {
    int First;
    std::vector<TColumnSpan> Spans;
};

/// The area that a line `width` pixels wide covers where it runs through column after column. For lines that
/// are steeper than columns are wide.
TColumnArea AreaOfDenseLine(std::span<const QPointF> line, double width);

} // namespace lumoplot
