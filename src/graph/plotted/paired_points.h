// Which points a data set is drawn with: its own X and corrected Y, or, where another data set serves as X,
// the corrected Y of both at the same place.
#pragma once

#include "graph/model/series.h"

#include <algorithm>
#include <array>
#include <span>

namespace lumoplot {

/// The data set whose Y values are the X of this one: the graph's X data set where `series` uses it; else
/// null.
const TSeries* XSeriesOf(const TSeries& series);

/// The data set has points, is active and does not itself serve as its X.
bool IsDrawn(const TSeries& series);

/// Walks the points of a chain in runs of any wanted length.
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
    /// The next points, at most as many as are ready; without Derived.
    TPointSpans Take(std::size_t count) {
        const TPointSpans block = m_chain.Block(m_block);
        const std::size_t start = m_place;
        m_place += count;
        return {block.Ids.subspan(start, count),
                block.X.subspan(start, count),
                block.Y.subspan(start, count),
                {},
                block.YErrors.empty() ? block.YErrors : block.YErrors.subspan(start, count)};
    }

private:
    const TPointChain& m_chain;
    std::size_t m_block = 0;
    std::size_t m_place = 0;
};

/// A run of the points that a data set is drawn with. `Ids` are its own; the spans live until the next run.
struct TDrawnRun {
    std::span<const std::int32_t> Ids;
    std::span<const double> X;
    std::span<const double> Y;       ///< corrected
    std::span<const double> YErrors; ///< its standard errors, 0 where there is none; may be empty
};

/// Hands over the points that a data set is drawn with, in order, in runs of at most kLength. With an X data
/// set, points beyond its count are left out.
class TDrawnPoints {
public:
    static constexpr std::size_t kLength = 512;

    explicit TDrawnPoints(const TSeries& series);

    /// Calls `take(const TDrawnRun&)` for every run.
    template <class TTake>
    void ForEachRun(TTake take) {
        while (NextRun()) take(m_run);
    }

private:
    using TBuffer = std::array<double, kLength>;

    bool NextRun();
    static std::span<const double> Corrected(const TSeries& series, const TPointSpans& points,
                                             TBuffer& buffer);

    const TSeries& m_series;
    const TSeries* m_xSeries;
    TChainReader m_reader;
    TChainReader m_xReader;
    TBuffer m_y;
    TBuffer m_x;
    TDrawnRun m_run;
};

} // namespace lumoplot
