#include "graph/mouse/point_tip.h"

#include "graph/model/graph.h"
#include "graph/plotted/paired_points.h"
#include "graph/plotted/value_text.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace lumoplot {
namespace {

QString Row(const char* name, const QString& value) {
    return QStringLiteral("<tr><td>%1&nbsp;=&nbsp;</td><td>%2</td></tr>")
        .arg(QLatin1String(name), value.toHtmlEscaped());
}

/// Calls `take(hit)` for the points of the data set inside the plot, in their order.
template <class TTake>
void ForEachShownPoint(const TSeries& series, const TPlotMap& map, TTake take) {
    const QRectF room = map.Plot.adjusted(-1, -1, 1, 1);
    TDrawnPoints(series).ForEachRun([&](const TDrawnRun& run) {
        for (std::size_t i = 0; i < run.X.size(); ++i) {
            const QPointF place(map.X.Position(run.X[i]), map.YOf(series).Position(run.Y[i]));
            if (room.contains(place)) take(TPointHit{&series, run.Ids[i], run.X[i], run.Y[i], place, 0});
        }
    });
}

/// How far a step goes in the order of the data set's shown points; nothing for another data set.
std::optional<std::ptrdiff_t> WayOf(TPointStep step) {
    constexpr std::ptrdiff_t kToTheEnd = PTRDIFF_MAX / 2;
    switch (step) {
    case TPointStep::Previous: return -1;
    case TPointStep::Next: return 1;
    case TPointStep::TenBack: return -10;
    case TPointStep::TenOn: return 10;
    case TPointStep::First: return -kToTheEnd;
    case TPointStep::Last: return kToTheEnd;
    default: return std::nullopt;
    }
}

/// The shown point so far from the point `from`, or the last one on the way; nothing when that is `from`.
std::optional<TPointHit> Neighbour(const TPlotMap& map, const TPointHit& from, std::ptrdiff_t way) {
    std::vector<TPointHit> shown;
    std::ptrdiff_t place = -1;
    ForEachShownPoint(*from.Series, map, [&](const TPointHit& hit) {
        if (hit.Id == from.Id) place = static_cast<std::ptrdiff_t>(shown.size());
        shown.push_back(hit);
    });
    if (place < 0) return std::nullopt;
    const auto last = static_cast<std::ptrdiff_t>(shown.size()) - 1;
    const std::ptrdiff_t target = std::clamp<std::ptrdiff_t>(place + way, 0, last);
    return target == place ? std::nullopt : std::optional(shown[static_cast<std::size_t>(target)]);
}

std::optional<TPointHit> NearestInX(const TSeries& series, const TPlotMap& map, double x) {
    std::optional<TPointHit> best;
    ForEachShownPoint(series, map, [&](const TPointHit& hit) {
        if (!best || std::abs(hit.Place.x() - x) < std::abs(best->Place.x() - x)) best = hit;
    });
    return best;
}

std::vector<const TSeries*> WalkedSeries(const TxyGraph& graph) {
    std::vector<const TSeries*> all;
    for (const auto& series : graph.Series())
        if (IsDrawn(*series) && (series->LinesShown() || series->PointsShown())) all.push_back(series);
    return all;
}

} // namespace

QString PointTip(const TPointHit& hit) {
    const QString name = QString::fromStdString(hit.Series->SeriesName()).toHtmlEscaped();
    return QStringLiteral("<p style='white-space:pre'><b>%1</b></p><table>").arg(name) +
           Row("X", ValueText(*hit.Series->Graph().XAxis(), hit.X)) +
           Row("Y", ValueText(*hit.Series->YAxisOfSeries(), hit.Y)) + QStringLiteral("</table>");
}

std::optional<TPointStep> PointStepOf(int key) {
    switch (key) {
    case Qt::Key_Left: return TPointStep::Previous;
    case Qt::Key_Right: return TPointStep::Next;
    case Qt::Key_PageUp: return TPointStep::TenBack;
    case Qt::Key_PageDown: return TPointStep::TenOn;
    case Qt::Key_Home: return TPointStep::First;
    case Qt::Key_End: return TPointStep::Last;
    case Qt::Key_Up: return TPointStep::PreviousSeries;
    case Qt::Key_Down: return TPointStep::NextSeries;
    default: return std::nullopt;
    }
}

std::optional<TPointHit> NextPoint(const TxyGraph& graph, const TPlotMap& map,
                                   const std::optional<TPointHit>& from, TPointStep step) {
    const std::vector<const TSeries*> all = WalkedSeries(graph);
    if (all.empty()) return std::nullopt;
    const auto found = from ? std::ranges::find(all, from->Series) : all.end();
    if (found == all.end()) return NearestInX(*all.front(), map, map.Plot.left());
    if (const auto way = WayOf(step)) return Neighbour(map, *from, *way);
    const auto place = static_cast<std::size_t>(found - all.begin());
    const std::size_t other = step == TPointStep::NextSeries ? place + 1 : place + all.size() - 1;
    return NearestInX(*all[other % all.size()], map, from->Place.x());
}

} // namespace lumoplot
