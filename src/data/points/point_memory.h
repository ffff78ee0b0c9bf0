// Memory for the many arrays of one size that a chain of points consists of: taken from large pieces, which
// the system provides in large pages where it can. Filling a million points costs half as much so as with
// pages that are made available one by one. Several threads may take and free at once.
#pragma once

#include "support/export.h"

#include <cstddef>

namespace lumoplot {

/// The sizes in bytes that come from large pieces; others are ordinary memory.
inline constexpr std::size_t kPooledSizes[] = {5120, 8192};

/// Throws std::bad_alloc.
void* TakePointMemory(std::size_t bytes);
/// `bytes` as when it was taken.
XYGRAPH_EXPORT void FreePointMemory(void* memory, std::size_t bytes) noexcept;

/// For std::unique_ptr.
struct TFreePointMemory {
    std::size_t bytes = 0;
    void operator()(std::byte* memory) const noexcept { FreePointMemory(memory, bytes); }
};

/// For containers.
template <class TValue>
struct TPointAllocator {
    using value_type = TValue;

    TPointAllocator() = default;
    template <class TOther>
    TPointAllocator(const TPointAllocator<TOther>&) noexcept {}

    TValue* allocate(std::size_t count) {
        return static_cast<TValue*>(TakePointMemory(count * sizeof(TValue)));
    }
    void deallocate(TValue* values, std::size_t count) noexcept {
        FreePointMemory(values, count * sizeof(TValue));
    }
    bool operator==(const TPointAllocator&) const = default;
};

} // namespace lumoplot
