#include "data/points/point_block.h"

#include <algorithm>

namespace lumoplot {

void TPointIdIndex::MakeRoom() {
    if (static_cast<std::size_t>(m_lastId) == m_pages.size() << kPageBits) {
        m_pages.emplace_back();
        if (m_pages.size() > 1) m_pages.back().Blocks.reserve(kPageSize);
    }
    auto& blocks = m_pages.back().Blocks;
    if (blocks.size() < blocks.capacity()) return;
    blocks.reserve(std::clamp<std::size_t>(2 * blocks.size(), 8, kPageSize));
}

void TPointIdIndex::AppendRun(TPointBlock* block, std::size_t count) {
    TPage& page = m_pages.back();
    page.Blocks.insert(page.Blocks.end(), count, block);
    page.Live += static_cast<std::int32_t>(count);
    m_lastId += static_cast<std::int32_t>(count);
}

void TPointIdIndex::Remove(std::int32_t id) {
    TPage& page = m_pages[PageOf(id)];
    page.Blocks[SlotOf(id)] = nullptr;
    if (--page.Live == 0 && page.Blocks.size() == kPageSize) page.Blocks = {};
}

void TPointIdIndex::StartBehind(std::int32_t lastId) {
    m_lastId = lastId;
    m_pages.resize((static_cast<std::size_t>(lastId) + kPageSize - 1) >> kPageBits);
    const std::size_t begun = static_cast<std::size_t>(lastId) & (kPageSize - 1);
    if (begun > 0) m_pages.back().Blocks.assign(begun, nullptr);
}

void TPointIdIndex::Revive(std::int32_t id, TPointBlock* block) {
    TPage& page = m_pages[PageOf(id)];
    if (page.Blocks.empty()) page.Blocks.assign(kPageSize, nullptr);
    page.Blocks[SlotOf(id)] = block;
    ++page.Live;
}

} // namespace lumoplot
