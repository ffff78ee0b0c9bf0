#include "graph/drawing/picture/series_painter.h"

#include "graph/drawing/lines/cloud_line.h"
#include "graph/drawing/lines/line_painter.h"
#include "graph/drawing/lines/series_pen.h"
#include "graph/drawing/lines/series_positions.h"
#include "graph/drawing/lines/symbol_cloud.h"
#include "graph/drawing/picture/curve_painter.h"
#include "graph/drawing/picture/error_bars.h"
#include "graph/drawing/picture/regression_painter.h"
#include "graph/model/graph.h"

namespace lumoplot {
namespace {

void DrawLine(const TCanvas& canvas, const TSeries& series, const TSeriesPositions& positions,
              const QRectF& visible) {
    const QPen pen = SeriesPen(canvas, series, series.LineColor(), series.LineStyle(), series.LineWidth());
    const QRectF reach = ReachOfPen(canvas, pen, visible);
    canvas.Painter().save();
    canvas.Painter().setClipRect(visible, Qt::IntersectClip);
    if (!DrawAsCloud(canvas, series, positions, pen))
        DrawPolylines(canvas, Clipped(positions.Reduced(reach.left(), reach.right()), reach), pen);
    canvas.Painter().restore();
}

void DrawPoints(const TCanvas& canvas, const TSeries& series, const TSeriesPositions& positions,
                const QRectF& visible) {
    TSymbolCloud cloud(canvas, SymbolOf(series), canvas.ToDevice(visible));
    positions.ForEachPlainRun([&](std::span<const double> x, std::span<const double> y) { cloud.Add(x, y); });
    cloud.Draw();
}

} // namespace

void DrawSeries(const TCanvas& canvas, const TSeries& series, const TGraphLayout& layout,
                const QRectF& visible) {
    if (!IsDrawn(series)) return;
    const QRectF plot = canvas.ToDevice(layout.Plot());
    const TScaleMap xMap = MapOf(*series.Graph().XAxis(), plot);
    const TScaleMap yMap = MapOf(*series.YAxisOfSeries(), plot);
    const TSeriesPositions positions(series, xMap, yMap);
    DrawBounds(canvas, series, layout);
    DrawErrorBars(canvas, series, layout, visible);
    if (series.LinesShown()) DrawLine(canvas, series, positions, visible);
    if (series.PointsShown()) DrawPoints(canvas, series, positions, visible);
    DrawRegression(canvas, series, layout, visible);
    DrawFittedCurve(canvas, series, layout, visible);
}

} // namespace lumoplot
