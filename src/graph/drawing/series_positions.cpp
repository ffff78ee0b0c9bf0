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

void TSeriesPositions::ForEachRun(const TTakeRun& take) const {
    if (const TSeries* xSeries = XSeriesOf(m_series)) return ForEachPairedRun(*xSeries, take);
    TRunBuffer corrected, xPlaces, yPlaces;
    TChainReader reader(m_series.Points());
    while (const std::size_t count = std::min(kRun, reader.Ready())) {
        const TPointSpans run = reader.Take(count);
        MapRun(m_xMap, run.X, xPlaces);
        MapRun(m_yMap, Corrected(m_series, run.X, run.Y, corrected), yPlaces);
        take({xPlaces.data(), count}, {yPlaces.data(), count});
    }
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
