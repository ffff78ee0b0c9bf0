// The pairs of a sequence that stand in the wrong order, counted and picked by number while the sequence is
// merge-sorted.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace lumoplot {

/// Picks nothing: inversions are only counted.
struct TNoInversions {
    static constexpr std::uint64_t kNone = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t Next() const { return kNone; }
    void Take(std::uint32_t, std::uint32_t) {}
};

/// Sorts `values` and returns the number of pairs of which the greater stood first. The sort meets these
/// pairs in a fixed order and numbers them from 0: for the number that `picker.Next()` asks for, each asked
/// number being above the one before, it calls `picker.Take(greater, lesser)`. `scratch` is working space.
/// Calls `passed()` each time that it has gone through all values.
template <class TPicker, class TPassed>
std::uint64_t SortPickingInversions(std::vector<std::uint32_t>& values, std::vector<std::uint32_t>& scratch,
                                    TPicker&& picker, TPassed& passed) {
    const std::size_t count = values.size();
    scratch.resize(count);
    std::uint64_t inversions = 0;
    for (std::size_t width = 1; width < count; width *= 2) {
        for (std::size_t begin = 0; begin < count; begin += 2 * width) {
            const std::uint32_t* left = values.data() + begin;
            const std::uint32_t* const leftEnd = values.data() + std::min(begin + width, count);
            const std::uint32_t* right = leftEnd;
            const std::uint32_t* const rightEnd = values.data() + std::min(begin + 2 * width, count);
            std::uint32_t* out = scratch.data() + begin;
            while (left != leftEnd && right != rightEnd) {
                const bool inverted = *right < *left;
                *out++ = inverted ? *right : *left;
                const std::uint64_t before = inversions;
                inversions += inverted ? static_cast<std::uint64_t>(leftEnd - left) : 0;
                while (picker.Next() < inversions) picker.Take(left[picker.Next() - before], *right);
                right += inverted ? 1 : 0;
                left += inverted ? 0 : 1;
            }
            out = std::copy(left, leftEnd, out);
            std::copy(right, rightEnd, out);
        }
        std::swap(values, scratch);
        passed();
    }
    return inversions;
}

} // namespace lumoplot
