#include "graph/drawing/series_painter.h"

#include "graph/appearance.h"
#include "graph/drawing/column_reducer.h"
#include "graph/drawing/line_painter.h"
#include "graph/drawing/regression_painter.h"
#include "graph/drawing/series_positions.h"
#include "graph/drawing/symbol_cloud.h"
#include "graph/graph.h"

namespace lumoplot {
namespace {

QRectF ToDevice(const TCanvas& canvas, const QRectF& r) {
    return {QPointF(canvas.ToDeviceX(r.left()), canvas.ToDeviceY(r.top())),
            QPointF(canvas.ToDeviceX(r.right()), canvas.ToDeviceY(r.bottom()))};
}

QPen LinePen(const TCanvas& canvas, const TSeries& series) {
    const bool plain = canvas.IsPrinting() && !series.Graph().Appearance()->PrintLineStyle();
    return canvas.Pen(series.LineColor(), plain ? TPenStyle::Solid : series.LineStyle(), series.LineWidth());
}

void DrawLine(const TCanvas& canvas, const TSeries& series, const TSeriesPositions& positions,
              const QRectF& visible) {
    const QPen pen = LinePen(canvas, series);
    // Beyond the visible part a line goes on far enough for its caps and joins to stay out of sight. Not
    // every vector format cuts off what lies outside a clip rectangle, so there it ends at the edge.
    const double beyond = canvas.IsRaster() ? 4 * pen.widthF() * canvas.PixelsPerUnit() + 2 : 0;
    const QRectF reach = ToDevice(canvas, visible).adjusted(-beyond, -beyond, beyond, beyond);
    const TPolylines line = positions.Reduced(TColumnReducer(reach.left(), reach.right()));
    canvas.Painter().save();
    canvas.Painter().setClipRect(visible, Qt::IntersectClip);
    DrawPolylines(canvas, Clipped(line, reach), pen);
    canvas.Painter().restore();
}

void DrawPoints(const TCanvas& canvas, const TSeries& series, const TSeriesPositions& positions,
                const QRectF& visible) {
    TSymbolCloud cloud(canvas, SymbolOf(series), ToDevice(canvas, visible));
    positions.ForEachRun([&](std::span<const double> x, std::span<const double> y) { cloud.Add(x, y); });
    cloud.Draw();
}

} // namespace

void DrawSeries(const TCanvas& canvas, const TSeries& series, const TGraphLayout& layout,
                const QRectF& visible) {
    if (!series.Active() || series.Count() == 0 || XSeriesOf(series) == &series) return;
    const QRectF plot = ToDevice(canvas, layout.Plot());
    const TScaleMap xMap = MapOf(*series.Graph().XAxis(), plot);
    const TScaleMap yMap = MapOf(*series.YAxisOfSeries(), plot);
    const TSeriesPositions positions(series, xMap, yMap);
    DrawBounds(canvas, series, layout);
    if (series.LinesShown()) DrawLine(canvas, series, positions, visible);
    if (series.PointsShown()) DrawPoints(canvas, series, positions, visible);
    DrawRegression(canvas, series, layout, visible);
}

} // namespace lumoplot
