// Rows of the manual grid that have been edited and not been committed, as the steps of a session and
// recovery files keep them beside the graph.
#pragma once

#include "dialog/manual/manual_rows.h"
#include "session/side_state.h"

#include <memory>
#include <span>

namespace lumoplot {

class TxyGraph;

struct TPendingRows : TSideState {
    int SeriesNumber = 0;
    TManualRows Rows;

    std::size_t BytesBeside(const TSideState* earlier) const override;
    TBytes ToBytes(const TGraphSnapshot& graph) const override;
};

/// What ToBytes gave, for a graph that is equal to the one that they belonged to. Throws EStreamError for
/// bytes that are none.
std::shared_ptr<const TPendingRows> PendingRowsOf(std::span<const std::uint8_t> bytes, const TxyGraph& graph);

} // namespace lumoplot
