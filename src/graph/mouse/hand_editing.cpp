#include "graph/mouse/hand_editing.h"

#include "graph/model/graph.h"
#include "graph/mouse/graph_mouse.h"
#include "graph/plotted/value_text.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kRingRadius = 5; // radius of the ring around the place
constexpr double kMargin = 5;     // around the text
constexpr double kGap = 12;       // between the place and the text

std::optional<TPointHit> SnapPoint(const TxyGraph& graph, const TPlotMap& map, QPointF place,
                                   const TSeries* except) {
    std::optional<TPointHit> best;
    for (const auto& series : graph.Series()) {
        if (series == except || (!series->LinesShown() && !series->PointsShown())) continue;
        const auto hit = NearestPointOf(*series, map, place, best ? best->Distance : TGraphMouse::kReach);
        if (hit) best = hit;
    }
    return best;
}

double PixelOf(const TScaleMap& map, double position) {
    return std::abs(map.Value(position + 1) - map.Value(position));
}

} // namespace

double RoundedToPixel(const TAxis& axis, const TScaleMap& map, double position, double value) {
    return RoundedTo(axis, value, PixelOf(map, position));
}

double PointedAt(const TAxis& axis, const TScaleMap& map, double position) {
    return RoundedToPixel(axis, map, position, map.Value(position));
}

TPlotPlace PlaceIn(const TxyGraph& graph, const TPlotMap& map, QPointF place, bool second, bool snaps,
                   const TSeries* except) {
    const TAxis& yAxis = second ? *graph.YAxis_Second() : *graph.YAxis();
    const TScaleMap& yMap = map.YOf(second);
    if (snaps)
        if (const auto hit = SnapPoint(graph, map, place, except)) {
            const bool isOnIt = hit->Series->IsOnSecondY() == second;
            return {hit->Place, hit->X, isOnIt ? hit->Y : PointedAt(yAxis, yMap, hit->Place.y())};
        }
    place = {std::clamp(place.x(), map.Plot.left(), map.Plot.right()),
             std::clamp(place.y(), map.Plot.top(), map.Plot.bottom())};
    return {place, PointedAt(*graph.XAxis(), map.X, place.x()), PointedAt(yAxis, yMap, place.y())};
}

QString PlaceText(const TxyGraph& graph, const TPlotMap& map, const TPlotPlace& place, bool second) {
    const TAxis& yAxis = second ? *graph.YAxis_Second() : *graph.YAxis();
    return ValueText(*graph.XAxis(), place.X, PixelOf(map.X, place.Place.x())) + QStringLiteral(", ") +
           ValueText(yAxis, place.Y, PixelOf(map.YOf(second), place.Place.y()));
}

void PaintDragLabel(QPainter& painter, const TxyGraph& graph, const TPlotMap& map, QPointF place,
                    const QString& text) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(graph.palette().color(QPalette::Highlight), 2));
    painter.drawEllipse(place, kRingRadius, kRingRadius);
    const QFontMetricsF metrics(painter.font());
    QRectF box(QPointF(), QSizeF(metrics.horizontalAdvance(text) + 2 * kMargin, metrics.height() + kMargin));
    box.moveTopLeft(place + QPointF(kGap, -kGap - box.height()));
    if (box.right() > map.Plot.right()) box.moveRight(place.x() - kGap);
    if (box.top() < map.Plot.top()) box.moveTop(place.y() + kGap);
    painter.setPen(graph.palette().color(QPalette::ToolTipText));
    painter.setBrush(graph.palette().color(QPalette::ToolTipBase));
    painter.drawRoundedRect(box, 3, 3);
    painter.drawText(box, Qt::AlignCenter, text);
    painter.restore();
}

} // namespace lumoplot
