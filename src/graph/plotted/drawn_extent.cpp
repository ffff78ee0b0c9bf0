#include "graph/plotted/drawn_extent.h"

#include "graph/model/graph.h"
#include "graph/plotted/paired_points.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace lumoplot {
namespace {

// The extents of X also count the points without a Y.
bool EndsHaveY(const TSeries& series) {
    const TPointChain& points = series.Points();
    if (points.BlockCount() == 0) return true;
    const TPointSpans first = points.Block(0);
    const TPointSpans last = points.Block(points.BlockCount() - 1);
    return first.X.front() == series.MinX() && std::isfinite(first.Y.front()) &&
           last.X.back() == series.MaxX() && std::isfinite(last.Y.back());
}

// What the data set's own extents say where they describe exactly the points that are drawn.
std::optional<TDrawnExtent> KnownExtent(const TSeries& series, bool logX, bool logY) {
    const bool hasPlaces = (!logX || series.MinX() > 0) && (!logY || series.MinY() > 0);
    // Without any finite Y the extents are 0 as well.
    const bool mayLackY = series.MinY() == 0 && series.MaxY() == 0;
    if (!hasPlaces || mayLackY || !EndsHaveY(series)) return std::nullopt;
    return TDrawnExtent{{series.MinX(), series.MaxX()}, {series.MinY(), series.MaxY()}};
}

TDrawnExtent WalkedExtent(const TSeries& series, bool logX, bool logY) {
    TDrawnExtent extent;
    TDrawnPoints(series).ForEachRun([&](const TDrawnRun& run) {
        for (std::size_t i = 0; i < run.X.size(); ++i) {
            if (!std::isfinite(run.X[i]) || !std::isfinite(run.Y[i])) continue;
            const bool isLost = (logX && run.X[i] <= 0) || (logY && run.Y[i] <= 0);
            extent.LogErrors += isLost;
            if (isLost) continue;
            extent.X.Take(run.X[i]);
            extent.Y.Take(run.Y[i]);
            if (run.YErrors.empty()) continue;
            for (const double end : {run.Y[i] - run.YErrors[i], run.Y[i] + run.YErrors[i]})
                if (std::isfinite(end) && (!logY || end > 0)) extent.Y.Take(end);
        }
    });
    return extent;
}

} // namespace

TRange PlottedXRange(const TSeries& series) {
    if (!series.XSource()) return {series.MinX(), series.MaxX()};
    TRange range;
    TDrawnPoints(series).ForEachRun([&](const TDrawnRun& run) {
        for (const double x : run.X)
            if (std::isfinite(x)) range.Take(x);
    });
    return range;
}

double SmallestPlottedX(const TSeries& series) {
    double smallest = 0;
    TDrawnPoints(series).ForEachRun([&](const TDrawnRun& run) {
        for (const double x : run.X)
            if (std::isfinite(x) && x > 0 && (smallest == 0 || x < smallest)) smallest = x;
    });
    return smallest;
}

TDrawnExtent TDrawnExtents::Of(const TSeries& series) {
    const bool logX = series.Graph().XAxis()->LogScale();
    const bool logY = series.YAxisOfSeries()->LogScale();
    const TSeries* xSeries = XSeriesOf(series);
    if (!xSeries && !series.HasYErrors())
        if (const auto known = KnownExtent(series, logX, logY)) return *known;
    const TKey key{series.DataStamp(), xSeries ? xSeries->DataStamp() : 0, logX, logY};
    const auto found = std::ranges::find(m_kept, key, &TKept::Key);
    if (found != m_kept.end()) {
        found->IsUsed = true;
        return found->Extent;
    }
    m_kept.push_back({key, WalkedExtent(series, logX, logY), true});
    return m_kept.back().Extent;
}

void TDrawnExtents::DropUnused() {
    std::erase_if(m_kept, [](const TKept& kept) { return !kept.IsUsed; });
    for (TKept& kept : m_kept) kept.IsUsed = false;
}

} // namespace lumoplot
