#include "graph/plotted/curve_hit.h"

#include "graph/model/graph.h"
#include "graph/plotted/paired_points.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace lumoplot {
namespace {

double Length(QPointF way) {
    return std::hypot(way.x(), way.y());
}

double DistanceFromPart(QPointF from, QPointF to, QPointF place) {
    const QPointF way = to - from;
    const double square = QPointF::dotProduct(way, way);
    const double part = square > 0 ? QPointF::dotProduct(place - from, way) / square : 0;
    return Length(from + way * std::clamp(part, 0.0, 1.0) - place);
}

double DistanceFrom(const TSeries& series, const TPlotMap& map, QPointF place) {
    const TScaleMap& yMap = map.YOf(series);
    double nearest = std::numeric_limits<double>::infinity();
    std::optional<QPointF> before;
    const auto take = [&](double x, double y) {
        const QPointF point(map.X.Position(x), yMap.Position(y));
        const bool isPoint = std::isfinite(point.x()) && std::isfinite(point.y());
        if (isPoint && series.PointsShown()) nearest = std::min(nearest, Length(point - place));
        if (isPoint && before && series.LinesShown())
            nearest = std::min(nearest, DistanceFromPart(*before, point, place));
        before = isPoint ? std::optional(point) : std::nullopt;
    };
    TDrawnPoints(series).ForEachRun([&](const TDrawnRun& run) {
        for (std::size_t i = 0; i < run.X.size(); ++i) take(run.X[i], run.Y[i]);
    });
    return nearest;
}

} // namespace

const TSeries* CurveAt(const TxyGraph& graph, const TPlotMap& map, QPointF place, double reach) {
    if (!map.Plot.contains(place)) return nullptr;
    const TSeries* found = nullptr;
    double nearest = reach;
    for (const TSeries* series : graph.Series()) {
        if (!IsDrawn(*series)) continue;
        const double distance = DistanceFrom(*series, map, place);
        if (!(distance <= nearest)) continue;
        nearest = distance;
        found = series;
    }
    return found;
}

} // namespace lumoplot
