// What belongs to the steps of a session beside the graph: what was typed that is not in the graph yet.
#pragma once

#include "stream/items.h"

#include <cstddef>
#include <functional>
#include <memory>

namespace lumoplot {

class TGraphSnapshot;

/// Never changes. The states that share one are those between which nothing of it changed.
class TSideState {
public:
    virtual ~TSideState() = default;
    /// Bytes that it takes where `earlier` (may be null) is kept as well.
    virtual std::size_t BytesBeside(const TSideState* earlier) const = 0;
    /// What a recovery file holds of it beside the graph that it belongs to. May run in any thread.
    virtual TBytes ToBytes(const TGraphSnapshot& graph) const = 0;
};

using TSideStatePtr = std::shared_ptr<const TSideState>; ///< null when there is nothing beside the graph

/// Where a session gets the state from that belongs to the present one, and where one is put back, after the
/// graph.
struct TSideAccess {
    std::function<TSideStatePtr()> Take;
    std::function<void(const TSideStatePtr&)> PutBack;
    // Both may be empty. What is being typed in an edit that is still open is no step, but recovery files
    // keep it.

    std::function<bool()> IsTyping = {};
    std::function<TSideStatePtr()> TakeTyped = {}; ///< as Take, as if that edit were left
};

} // namespace lumoplot
