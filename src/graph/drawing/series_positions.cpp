#include "graph/drawing/series_positions.h"

#include "graph/appearance.h"
#include "graph/graph.h"

#include <algorithm>
#include <array>
#include <limits>

namespace lumoplot {
namespace {

constexpr std::size_t kRun = 512;
constexpr double kNowhere = std::numeric_limits<double>::quiet_NaN();

using TRunBuffer = std::array<double, kRun>;

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

std::span<const double> Corrected(const TSeries& series, std::span<const double> x, std::span<const double> y,
                                  TRunBuffer& buffer) {
    const double zero = series.ZeroValue();
    const double slope = series.BaseLineSlope();
    if (zero == 0 && slope == 0) return y;
    for (std::size_t i = 0; i < y.size(); ++i) buffer[i] = y[i] - zero - slope * x[i];
    return {buffer.data(), y.size()};
}

// Walks the points of a chain in runs of any wanted length.
class TChainReader {
public:
    explicit TChainReader(const TPointChain& chain) : m_chain(chain) {}

    /// How many points the current block still has; 0 at the end of the chain.
    std::size_t Ready() {
        while (m_block < m_chain.BlockCount()) {
            const std::size_t count = m_chain.Block(m_block).X.size();
            if (m_place < count) return count - m_place;
            ++m_block;
            m_place = 0;
        }
        return 0;
    }
    TPointSpans Take(std::size_t count) {
        const TPointSpans block = m_chain.Block(m_block);
        const std::size_t start = m_place;
        m_place += count;
        return {{}, block.X.subspan(start, count), block.Y.subspan(start, count), {}};
    }

private:
    const TPointChain& m_chain;
    std::size_t m_block = 0;
    std::size_t m_place = 0;
};

} // namespace

const TSeries* XSeriesOf(const TSeries& series) {
    if (!series.UseXAxisSeries()) return nullptr;
    return series.Graph().FindSeries(series.Graph().Appearance()->XAxisSerIndex());
}

void TSeriesPositions::MapOneRun(std::span<const double> x, std::span<const double> y,
                                 const TTakeRun& take) const {
    TRunBuffer corrected, xPlaces, yPlaces;
    MapRun(m_xMap, x, xPlaces);
    MapRun(m_yMap, Corrected(m_series, x, y, corrected), yPlaces);
    take({xPlaces.data(), x.size()}, {yPlaces.data(), x.size()});
}

void TSeriesPositions::ForEachRun(const TTakeRun& take) const {
    if (const TSeries* xSeries = XSeriesOf(m_series)) return ForEachPairedRun(*xSeries, take);
    TChainReader reader(m_series.Points());
    while (const std::size_t count = std::min(kRun, reader.Ready())) {
        const TPointSpans run = reader.Take(count);
        MapOneRun(run.X, run.Y, take);
    }
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
            if (!AddGroup(group, x, reducer)) MapOneRun(x, points.Y.subspan(place, group.Count), take);
            place += group.Count;
        }
    }
    return reducer.Finish();
}

void TSeriesPositions::ForEachPairedRun(const TSeries& xSeries, const TTakeRun& take) const {
    TRunBuffer correctedX, correctedY, xPlaces, yPlaces;
    TChainReader xReader(xSeries.Points());
    TChainReader yReader(m_series.Points());
    while (const std::size_t count = std::min({kRun, xReader.Ready(), yReader.Ready()})) {
        const TPointSpans xRun = xReader.Take(count);
        const TPointSpans yRun = yReader.Take(count);
        MapRun(m_xMap, Corrected(xSeries, xRun.X, xRun.Y, correctedX), xPlaces);
        MapRun(m_yMap, Corrected(m_series, yRun.X, yRun.Y, correctedY), yPlaces);
        take({xPlaces.data(), count}, {yPlaces.data(), count});
    }
}

} // namespace lumoplot
