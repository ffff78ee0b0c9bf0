// What a drawing needs of many points at once: the points of a data set in groups, each with its ends and its
// lowest and highest corrected Y. Kept between frames, so that a frame of a large data set reads a fraction
// of it.
#pragma once

#include "graph/model/series.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace lumoplot {

/// Up to kGroupSize neighbouring points of one block.
struct TPointGroup {
    double FirstX, LastX;
    double FirstY, LastY; ///< corrected, as are LowY and HighY
    double LowY, HighY;
    std::uint8_t LowPlace, HighPlace; ///< of the first point with that Y
    std::uint8_t Count;
    /// X ascends and every Y is finite; only then does the rest say anything.
    bool IsRegular;
};

class TSeriesSummary {
public:
    static constexpr std::size_t kGroupSize = 64;

    explicit TSeriesSummary(const TSeries& series);

    /// The groups of a block of the series' chain, in order.
    std::span<const TPointGroup> GroupsOf(std::size_t block) const {
        return std::span(m_groups).subspan(m_starts[block], m_starts[block + 1] - m_starts[block]);
    }
    std::size_t ByteCount() const { return m_groups.size() * sizeof(TPointGroup); }

private:
    std::vector<TPointGroup> m_groups;
    std::vector<std::size_t> m_starts; ///< one for each block, and the end
};

/// The summary of the data set as it is now, or null for one that is too small to gain by it. Summaries are
/// kept for the data sets used last, as far as they fit into 64 MB.
std::shared_ptr<const TSeriesSummary> SummaryOf(const TSeries& series);

} // namespace lumoplot
