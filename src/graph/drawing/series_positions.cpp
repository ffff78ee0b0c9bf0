#include "graph/drawing/series_positions.h"

#include <algorithm>
#include <array>
#include <limits>

namespace lumoplot {
namespace {

constexpr double kNowhere = std::numeric_limits<double>::quiet_NaN();

using TRunBuffer = std::array<double, TDrawnPoints::kLength>;

void MapRun(const TScaleMap& map, std::span<const double> values, std::span<double> places) {
    map.MapAll(values, places);
    constexpr double kFarthest = TSeriesPositions::kFarthest;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double place = places[i] < -kFarthest  ? -kFarthest
                             : places[i] > kFarthest ? kFarthest
                                                     : places[i];
        places[i] = values[i] - values[i] == 0 ? place : kNowhere;
    }
}

double PlaceOf(const TScaleMap& map, double value) {
    return std::clamp(map.Position(value), -TSeriesPositions::kFarthest, TSeriesPositions::kFarthest);
}

} // namespace

void TSeriesPositions::MapOneRun(std::span<const double> x, std::span<const double> y,
                                 const TTakeRun& take) const {
    TRunBuffer xPlaces, yPlaces;
    MapRun(m_xMap, x, xPlaces);
    MapRun(m_yMap, y, yPlaces);
    take({xPlaces.data(), x.size()}, {yPlaces.data(), x.size()});
}

void TSeriesPositions::ForEachRun(const TTakeRun& take) const {
    TDrawnPoints(m_series).ForEachRun([&](const TDrawnRun& run) { MapOneRun(run.X, run.Y, take); });
}

void TSeriesPositions::MapGroup(std::span<const double> x, std::span<const double> y,
                                const TTakeRun& take) const {
    std::array<double, TSeriesSummary::kGroupSize> corrected;
    for (std::size_t i = 0; i < x.size(); ++i) corrected[i] = m_series.CorrectedY(x[i], y[i]);
    MapOneRun(x, {corrected.data(), x.size()}, take);
}

// True when the whole group lies in one column and was taken.
bool TSeriesPositions::AddGroup(const TPointGroup& group, std::span<const double> x,
                                TColumnReducer& reducer) const {
    const bool hasPlaces =
        group.IsRegular && (!m_xMap.IsLog() || group.FirstX > 0) && (!m_yMap.IsLog() || group.LowY > 0);
    if (!hasPlaces) return false;
    const double firstX = PlaceOf(m_xMap, group.FirstX);
    const double lastX = PlaceOf(m_xMap, group.LastX);
    if (!reducer.IsOneColumn(firstX, lastX)) return false;
    // Most extremes are none of their column or lie at an end of the group: the X of the others, far away in
    // memory, is seldom read.
    const bool opens = !reducer.IsInColumn(firstX);
    const auto extreme = [&](double value, std::size_t place) {
        const double y = PlaceOf(m_yMap, value);
        if (place == 0) return QPointF(firstX, y);
        const bool isNeeded = place + 1 < group.Count && (opens || reducer.IsExtreme(y));
        return QPointF(isNeeded ? PlaceOf(m_xMap, x[place]) : lastX, y);
    };
    reducer.AddPart({QPointF(firstX, PlaceOf(m_yMap, group.FirstY)),
                     QPointF(lastX, PlaceOf(m_yMap, group.LastY)),
                     {extreme(group.LowY, group.LowPlace), extreme(group.HighY, group.HighPlace)},
                     {group.LowPlace, group.HighPlace},
                     group.Count});
    return true;
}

TPolylines TSeriesPositions::Reduced(TColumnReducer reducer) const {
    const TTakeRun take = [&reducer](std::span<const double> x, std::span<const double> y) {
        reducer.Add(x, y);
    };
    const auto summary = XSeriesOf(m_series) ? nullptr : SummaryOf(m_series);
    if (!summary) {
        ForEachRun(take);
        return reducer.Finish();
    }
    for (std::size_t block = 0; block < m_series.Points().BlockCount(); ++block) {
        const TPointSpans points = m_series.Points().Block(block);
        std::size_t place = 0;
        for (const TPointGroup& group : summary->GroupsOf(block)) {
            const auto x = points.X.subspan(place, group.Count);
            if (!AddGroup(group, x, reducer)) MapGroup(x, points.Y.subspan(place, group.Count), take);
            place += group.Count;
        }
    }
    return reducer.Finish();
}

} // namespace lumoplot
