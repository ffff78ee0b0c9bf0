#include "graph/drawing/picture/curve_painter.h"

#include "fit/definition/cur_fit.h"
#include "graph/drawing/lines/column_reducer.h"
#include "graph/drawing/lines/line_painter.h"
#include "graph/drawing/lines/series_pen.h"
#include "graph/drawing/lines/series_positions.h"
#include "graph/model/graph.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

constexpr double kNowhere = std::numeric_limits<double>::quiet_NaN();

double PlaceOf(const TScaleMap& map, double value) {
    if (!std::isfinite(value)) return kNowhere;
    return FarthestPlace(map.Position(value));
}

TPolylines LineThrough(const std::vector<TCurveSample>& curve, const TScaleMap& xMap, const TScaleMap& yMap,
                       const QRectF& reach) {
    TColumnReducer reducer(reach.left(), reach.right());
    std::vector<double> x;
    std::vector<double> y;
    for (const TCurveSample& sample : curve) {
        x.push_back(PlaceOf(xMap, sample.X));
        y.push_back(PlaceOf(yMap, sample.Derived));
    }
    reducer.Add(x, y);
    return reducer.Finish();
}

TPenStyle StyleOf(const TCurFit& fit) {
    return static_cast<TPenStyle>(std::clamp(fit.CurveStyle(), 0, static_cast<int>(TPenStyle::DashDotDot)));
}

} // namespace

void DrawFittedCurve(const TCanvas& canvas, const TSeries& series, const TGraphLayout& layout,
                     const QRectF& visible) {
    if (series.FittedCurve().empty() || !IsDrawn(series)) return;
    const TCurFit& fit = series.CurveFit();
    const QPen pen =
        SeriesPen(canvas, series, fit.CurveColor(), StyleOf(fit), std::clamp(fit.CurveWidth(), 0, 65535));
    const QRectF reach = ReachOfPen(canvas, pen, visible);
    const QRectF plot = canvas.ToDevice(layout.Plot());
    const TScaleMap xMap = MapOf(*series.Graph().XAxis(), plot);
    const TScaleMap yMap = MapOf(*series.YAxisOfSeries(), plot);
    canvas.Painter().save();
    canvas.Painter().setClipRect(visible, Qt::IntersectClip);
    DrawPolylines(canvas, Clipped(LineThrough(series.FittedCurve(), xMap, yMap, reach), reach), pen);
    canvas.Painter().restore();
}

} // namespace lumoplot
