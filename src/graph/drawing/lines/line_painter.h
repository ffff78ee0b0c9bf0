// Draws long lines fast and whole: where a line is so dense that it fills its pixel columns it is drawn as
// the area that it covers, elsewhere as strokes.
#pragma once

#include "graph/drawing/lines/canvas.h"
#include "graph/drawing/lines/polylines.h"
#include "graph/drawing/strokes/column_fill.h"

#include <cmath>
#include <vector>

namespace lumoplot {

/// Draws polylines in device pixels (TCanvas::ToDeviceX) with a pen of TCanvas::Pen. They have been clipped.
void DrawPolylines(const TCanvas& canvas, const TPolylines& lines, const QPen& pen);

/// How far a line runs, in pixels.
struct TLineRun {
    double AlongX = 0;
    double AlongY = 0;

    void Take(QPointF from, QPointF to) {
        AlongX += std::abs(to.x() - from.x());
        AlongY += std::abs(to.y() - from.y());
    }
};

/// Lines that run to and fro over their area again and again, so that a pen so many pixels wide covers as
/// many pixels as it has.
bool CoversAsCloud(const TLineRun& run, const QRect& area, double width);

/// The width of a pen on the device.
double PixelsOf(const TCanvas& canvas, const QPen& pen);
/// The dashes of a pen so many pixels wide, in pixels; none for a solid one.
std::vector<double> DashesOf(const QPen& pen, double width);

/// Neighbouring pixel columns and what is covered of each.
struct TColumnArea {
    int First;
    std::vector<TColumnSpan> Spans;
};

/// The area that a line `width` pixels wide covers where it runs through column after column. For lines that
/// are steeper than columns are wide.
TColumnArea AreaOfDenseLine(std::span<const QPointF> line, double width);

} // namespace lumoplot
