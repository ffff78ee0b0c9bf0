#include "graph/mouse/point_tip.h"

#include "graph/model/graph.h"
#include "graph/plotted/paired_points.h"
#include "graph/plotted/value_text.h"

#include <cmath>

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

/// The shown point before or after the point `from` in the order of its data set.
std::optional<TPointHit> Neighbour(const TPlotMap& map, const TPointHit& from, TPointStep step) {
    std::optional<TPointHit> before, after;
    bool isBehind = false;
    ForEachShownPoint(*from.Series, map, [&](const TPointHit& hit) {
        if (hit.Id == from.Id)
            isBehind = true;
        else if (!isBehind)
            before = hit;
        else if (!after)
            after = hit;
    });
    return step == TPointStep::Previous ? before : after;
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
    if (step == TPointStep::Previous || step == TPointStep::Next) return Neighbour(map, *from, step);
    const auto place = static_cast<std::size_t>(found - all.begin());
    const std::size_t other = step == TPointStep::NextSeries ? place + 1 : place + all.size() - 1;
    return NearestInX(*all[other % all.size()], map, from->Place.x());
}

} // namespace lumoplot
