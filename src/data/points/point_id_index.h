// Where the point with a given Id is: the block of every Id that was ever handed out, in pages by Id. Ids are
// dense and never reused, so a page is filled once and freed when the last of its points is gone.
#pragma once

#include <cstdint>
#include <vector>

namespace lumoplot {

class TPointBlock;

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

    struct TPage {
        std::vector<TPointBlock*> Blocks; ///< by Id; null for one that is gone, empty when all are
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
