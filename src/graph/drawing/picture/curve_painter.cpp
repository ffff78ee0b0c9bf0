#include "graph/drawing/picture/curve_painter.h"

#include "fit/definition/cur_fit.h"
#include "fit/many/uncertainty.h"
#include "graph/drawing/lines/column_reducer.h"
#include "graph/drawing/lines/line_painter.h"
#include "graph/drawing/lines/series_pen.h"
#include "graph/drawing/lines/series_positions.h"
#include "graph/model/graph.h"
#include "support/errors.h"

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

constexpr double kBandConfidence = 0.95;
constexpr double kBandOpacity = 0.16;
constexpr int kFewestDegrees = 1;

bool HasBands(const TCurFit& fit) {
    return fit.Result() && !fit.IsStale() && !fit.Result()->Varied.empty() &&
           fit.Result()->Quality.Freedom >= kFewestDegrees;
}

// Stretches of the curve with a width, as shapes inside `reach`: not every vector format cuts off what lies
// outside a clip rectangle.
void DrawBand(const TCanvas& canvas, const std::vector<TCurveSample>& curve,
              const std::vector<double>& halfWidths, const TScaleMap& xMap, const TScaleMap& yMap,
              const QRectF& reach) {
    QPolygonF upper, lower;
    const auto fill = [&] {
        std::reverse(lower.begin(), lower.end());
        if (upper.size() > 1) canvas.Painter().drawPolygon(upper + lower);
        upper.clear();
        lower.clear();
    };
    for (std::size_t i = 0; i < curve.size(); ++i) {
        const double x = PlaceOf(xMap, curve[i].X);
        const double high = PlaceOf(yMap, curve[i].Derived + halfWidths[i]);
        double low = PlaceOf(yMap, curve[i].Derived - halfWidths[i]);
        if (std::isnan(low)) low = yMap.Position(yMap.Min()); // below 0 on a logarithmic axis
        const bool isShown =
            std::isfinite(x) && std::isfinite(high) && x >= reach.left() && x <= reach.right();
        if (!isShown) {
            fill();
            continue;
        }
        const auto inside = [&](double y) {
            return canvas.FromDeviceY(std::clamp(y, reach.top(), reach.bottom()));
        };
        upper.append({canvas.FromDeviceX(x), inside(high)});
        lower.append({canvas.FromDeviceX(x), inside(low)});
    }
    fill();
}

void DrawBands(const TCanvas& canvas, const TSeries& series, const TScaleMap& xMap, const TScaleMap& yMap,
               const QRectF& visible) {
    const TFitBands shown = series.Graph().Appearance()->FitBands();
    const TCurFit& fit = series.CurveFit();
    if (shown == TFitBands::None || !HasBands(fit)) return;
    std::vector<double> x;
    for (const TCurveSample& sample : series.FittedCurve()) x.push_back(sample.X);
    TBands bands;
    try {
        bands = BandsOf(fit, x, kBandConfidence);
    } catch (const ELumoError&) {
        return; // the curve has no slopes
    }
    QColor color = ToQColor(fit.CurveColor());
    color.setAlphaF(static_cast<float>(kBandOpacity));
    canvas.Painter().setPen(Qt::NoPen);
    canvas.Painter().setBrush(color);
    const QRectF reach = canvas.ToDevice(visible);
    if (shown != TFitBands::Confidence)
        DrawBand(canvas, series.FittedCurve(), bands.Prediction, xMap, yMap, reach);
    if (shown != TFitBands::Prediction)
        DrawBand(canvas, series.FittedCurve(), bands.Confidence, xMap, yMap, reach);
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
    DrawBands(canvas, series, xMap, yMap, visible);
    DrawPolylines(canvas, Clipped(LineThrough(series.FittedCurve(), xMap, yMap, reach), reach), pen);
    canvas.Painter().restore();
}

} // namespace lumoplot
