// Which steps belong together.
#pragma once

#include <cstdint>

namespace lumoplot {

/// Steps with equal keys that follow each other are one step: what is typed into one edit, one drag, one turn
/// of the wheel. An empty key is never the same.
struct TMergeKey {
    const void* Where = nullptr; ///< the edit, the graph, …; only its address counts
    std::uint64_t Number = 0;    ///< tells apart what happens at one place, such as drags

    explicit operator bool() const { return Where || Number != 0; }
    bool operator==(const TMergeKey&) const = default;
};

} // namespace lumoplot
