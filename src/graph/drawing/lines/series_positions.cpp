#include "graph/drawing/lines/series_positions.h"

#include "graph/drawing/lines/column_reducer.h"
#include "graph/drawing/lines/summary_reducer.h"

#include <array>
#include <limits>

namespace lumoplot {
namespace {

constexpr double kNowhere = std::numeric_limits<double>::quiet_NaN();

using TRunBuffer = std::array<double, TDrawnPoints::kLength>;

void MapRun(const TScaleMap& map, std::span<const double> values, std::span<double> places) {
    map.MapAll(values, places);
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double place = FarthestPlace(places[i]);
        places[i] = values[i] - values[i] == 0 ? place : kNowhere;
    }
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

void TSeriesPositions::ForEachPlainRun(const TTakeRun& take) const {
    TRunBuffer xPlaces, yPlaces;
    TDrawnPoints(m_series).ForEachRun([&](const TDrawnRun& run) {
        m_xMap.MapAll(run.X, xPlaces);
        m_yMap.MapAll(run.Y, yPlaces);
        take({xPlaces.data(), run.X.size()}, {yPlaces.data(), run.Y.size()});
    });
}

TPolylines TSeriesPositions::Reduced(double firstX, double lastX) const {
    const auto summary = XSeriesOf(m_series) ? nullptr : SummaryOf(m_series);
    if (summary) return TSummaryReducer(m_series, m_xMap, m_yMap, firstX, lastX).Reduced(*summary);
    TColumnReducer reducer(firstX, lastX);
    ForEachRun([&](std::span<const double> x, std::span<const double> y) { reducer.Add(x, y); });
    return reducer.Finish();
}

} // namespace lumoplot
