// How a chain keeps its points: in blocks, and an index of these by Id.
//
// A block is a run of neighbouring points, kept as one array per field so that a scan reads contiguous
// doubles. Owned by its TPointChain, which decides where points go; a block only keeps its arrays in step.
#pragma once

#include "data/points/point_memory.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <vector>

namespace lumoplot {

/// A copy of one point of a chain.
struct TSeriesPoint {
    std::int32_t Id = 0;
    double X = 0;
    double Y = 0;
    double Derived = 0;
    double YError = 0; ///< the standard error of Y; 0 where there is none
};

/// A standard error of Y that counts is finite and above 0; 0 for any other one.
inline double UsableYError(double error) {
    return error > 0 && error <= std::numeric_limits<double>::max() ? error : 0;
}

/// The first place whose value is not below `key`, or the size; `values` ascend, `key` is a number.
std::size_t FirstNotBelow(std::span<const double> values, double key);

class TPointBlock {
public:
    /// Large enough that splits and their relinking of Ids are rare, small enough that moving the points
    /// behind an insertion costs less than the search.
    static constexpr std::size_t kCapacity = 256;

    /// An empty block with room for `capacity` points; MakeRoom enlarges it up to kCapacity.
    explicit TPointBlock(std::size_t capacity);
    TPointBlock(const TPointBlock& other);
    TPointBlock& operator=(const TPointBlock&) = delete;

    std::size_t Count() const { return m_count; }
    bool IsEmpty() const { return m_count == 0; }
    bool IsFull() const { return m_count == kCapacity; }
    std::span<const double> X() const { return {XData(), m_count}; }
    std::span<const double> Y() const { return {YData(), m_count}; }
    std::span<const std::int32_t> Ids() const { return {IdData(), m_count}; }
    /// Empty while the Derived of every point is 0.
    std::span<const double> Derived() const { return m_derived; }
    /// Empty where no point was given a standard error; 0 for a point that has none.
    std::span<const double> YErrors() const { return m_yErrors; }
    bool HasYErrors() const;
    TSeriesPoint Point(std::size_t place) const {
        return {IdData()[place], XData()[place], YData()[place], m_derived.empty() ? 0 : m_derived[place],
                m_yErrors.empty() ? 0 : m_yErrors[place]};
    }
    /// Minus infinity in an empty block.
    double MaxX() const { return m_maxX; }

    /// Where the block was last seen in its chain; only a hint.
    std::size_t Position() const { return m_position; }
    void SetPosition(std::size_t position) { m_position = position; }

    /// The first place whose X is not below `key`, or the count, whatever the order of the points.
    std::size_t FirstAtLeast(double key) const;
    /// The place of the point with that Id, or the count.
    std::size_t PlaceOf(std::int32_t id) const;

    /// Prepares one insertion. All that allocates happens here, so an insertion is done wholly or not at all.
    void MakeRoom();
    /// Inserts before `place` a point whose Derived is 0 and that has no standard error. Needs the room.
    void Insert(std::size_t place, std::int32_t id, double x, double y);
    /// Points that can be placed behind the last one without MakeRoom.
    std::size_t Room() const { return m_capacity - m_count; }
    /// Places points with the Ids from `firstId` on behind the last one; their X ascend from that of the last
    /// one on. Needs the room.
    void AppendRun(std::int32_t firstId, std::span<const double> x, std::span<const double> y);
    void Overwrite(std::size_t place, double x, double y);
    void SetY(std::size_t place, double y) { YData()[place] = y; }
    /// 0 for none; what is not usable counts as none.
    void SetYError(std::size_t place, double error);
    /// One value a point, or none at all.
    void SetYErrors(std::span<const double> errors);
    void Erase(std::size_t place);
    /// One value a point, or none at all, which makes them 0.
    void SetDerived(std::span<const double> values);

    /// Moves the points from `place` on into a new block.
    std::unique_ptr<TPointBlock> SplitOff(std::size_t place);
    /// Appends the points of `next`; both together fit into one block.
    void Absorb(const TPointBlock& next);

    /// Removes, from first to last, the points for which `erase(x, id)` is true, and returns how many.
    template <class TPredicate>
    std::size_t EraseIf(TPredicate erase);

private:
    static constexpr std::size_t kBytesPerPoint = 2 * sizeof(double) + sizeof(std::int32_t);
    static_assert(kCapacity * kBytesPerPoint == kPooledSizes[0]);

    double* XData() const { return reinterpret_cast<double*>(m_arrays.get()); }
    double* YData() const { return XData() + m_capacity; }
    std::int32_t* IdData() const { return reinterpret_cast<std::int32_t*>(YData() + m_capacity); }
    void Place(std::size_t place, double x, double y);
    void Reserve(std::size_t capacity);
    void Append(const TPointBlock& other, std::size_t from);
    void Truncate(std::size_t count);
    void Renew();

    /// The X of all points, then the Y, then the Ids, each with room for m_capacity: together, because a
    /// random access costs a miss for each page of memory that it touches.
    std::unique_ptr<std::byte, TFreePointMemory> m_arrays;
    std::uint32_t m_capacity = 0;
    std::uint32_t m_count = 0;
    double m_maxX = -std::numeric_limits<double>::infinity();
    std::vector<double> m_derived;
    std::vector<double> m_yErrors;
    std::size_t m_position = 0;
    bool m_ordered = true; ///< X ascends; false may also mean that this is not known
};

template <class TPredicate>
std::size_t TPointBlock::EraseIf(TPredicate erase) {
    const std::size_t count = Count();
    std::size_t kept = 0;
    for (std::size_t place = 0; place < count; ++place) {
        if (erase(XData()[place], IdData()[place])) continue;
        XData()[kept] = XData()[place];
        YData()[kept] = YData()[place];
        IdData()[kept] = IdData()[place];
        if (!m_derived.empty()) m_derived[kept] = m_derived[place];
        if (!m_yErrors.empty()) m_yErrors[kept] = m_yErrors[place];
        ++kept;
    }
    if (kept < count) Truncate(kept);
    return count - kept;
}

/// Where the point with a given Id is: the block of every Id that was ever handed out, in pages by Id. Ids
/// are dense and never reused, so a page is filled once and freed when the last of its points is gone.
class TPointIdIndex {
public:
    /// The last Id handed out; 0 before the first.
    std::int32_t LastId() const { return m_lastId; }
    /// The block that holds the point, or null for an Id that never was or is gone.
    TPointBlock* BlockOf(std::int32_t id) const;

    /// Prepares one Append. All that allocates happens here.
    void MakeRoom();
    /// Hands out the next Id to a point of `block`. Needs the room.
    std::int32_t Append(TPointBlock* block);
    /// Ids that can be handed out without MakeRoom, at least one behind it.
    std::size_t Room() const { return m_pages.back().Blocks.capacity() - m_pages.back().Blocks.size(); }
    /// Hands out the next `count` Ids to points of `block`. Needs the room.
    void AppendRun(TPointBlock* block, std::size_t count);
    /// Notes that a live point is in another block now.
    void Relink(std::int32_t id, TPointBlock* block);
    void Remove(std::int32_t id);

    /// Makes a new index one that has handed out the Ids up to `lastId`, all of them gone.
    void StartBehind(std::int32_t lastId);
    /// Notes that a point of `block` has an Id that was gone.
    void Revive(std::int32_t id, TPointBlock* block);

private:
    static constexpr int kPageBits = 10;
    static constexpr std::int32_t kPageSize = 1 << kPageBits;
    static_assert(kPageSize * sizeof(TPointBlock*) == kPooledSizes[1] || sizeof(void*) != 8);

    struct TPage {
        std::vector<TPointBlock*, TPointAllocator<TPointBlock*>>
            Blocks; ///< by Id; null for one that is gone, empty when all are
        std::int32_t Live = 0;
    };

    static std::size_t PageOf(std::int32_t id) { return static_cast<std::size_t>(id - 1) >> kPageBits; }
    static std::size_t SlotOf(std::int32_t id) { return static_cast<std::size_t>(id - 1) & (kPageSize - 1); }

    std::vector<TPage> m_pages;
    std::int32_t m_lastId = 0;
};

inline TPointBlock* TPointIdIndex::BlockOf(std::int32_t id) const {
    if (id < 1 || id > m_lastId) return nullptr;
    const TPage& page = m_pages[PageOf(id)];
    return page.Blocks.empty() ? nullptr : page.Blocks[SlotOf(id)];
}

inline void TPointIdIndex::Relink(std::int32_t id, TPointBlock* block) {
    m_pages[PageOf(id)].Blocks[SlotOf(id)] = block;
}

inline std::int32_t TPointIdIndex::Append(TPointBlock* block) {
    TPage& page = m_pages.back();
    page.Blocks.push_back(block);
    ++page.Live;
    return ++m_lastId;
}

} // namespace lumoplot
