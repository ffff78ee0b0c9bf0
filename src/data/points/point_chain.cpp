#include "data/points/point_chain.h"

#include <cmath>
#include <stdexcept>

namespace lumoplot {

namespace {

constexpr double kNoReach = -std::numeric_limits<double>::infinity();
constexpr std::int32_t kMaxId = std::numeric_limits<std::int32_t>::max();
constexpr std::size_t kSmallBlock = TPointBlock::kCapacity / 4;
/// A merged block keeps room, so that a few insertions do not split it at once.
constexpr std::size_t kMergedBlock = TPointBlock::kCapacity / 4 * 3;
constexpr std::size_t kFirstCapacity = 8; // most data sets of a busy graph are short

/// Makes the next insertion one that cannot fail.
template <class TValue>
void GrowForOne(std::vector<TValue>& values) {
    if (values.size() == values.capacity()) values.reserve(2 * values.size() + 1);
}

void RelinkAll(TPointIdIndex& ids, TPointBlock* block) {
    for (const std::int32_t id : block->Ids()) ids.Relink(id, block);
}

} // namespace

TPointChain::TPointChain(std::span<const TPointSpans> runs, std::int32_t lastId) {
    m_ids.StartBehind(lastId);
    m_blocks.reserve(runs.size());
    m_reach.reserve(runs.size());
    double reach = kNoReach;
    for (const TPointSpans& run : runs) {
        auto block = std::make_unique<TPointBlock>(TPointBlock::kCapacity);
        for (std::size_t i = 0; i < run.Ids.size(); ++i) {
            block->Insert(i, run.Ids[i], run.X[i], run.Y[i]);
            m_ids.Revive(run.Ids[i], block.get());
        }
        if (!run.YErrors.empty()) block->SetYErrors(run.YErrors);
        m_mayHaveYErrors |= !run.YErrors.empty();
        m_count += static_cast<int>(run.Ids.size());
        reach = std::max(reach, block->MaxX());
        m_reach.push_back(reach);
        m_blocks.push_back(std::move(block));
    }
}

TPointChain::TPointChain(const TPointChain& other)
    : m_reach(other.m_reach), m_ids(other.m_ids), m_count(other.m_count),
      m_mayHaveYErrors(other.m_mayHaveYErrors) {
    m_blocks.reserve(other.m_blocks.size());
    for (const auto& block : other.m_blocks) {
        m_blocks.push_back(std::make_unique<TPointBlock>(*block));
        RelinkAll(m_ids, m_blocks.back().get());
    }
}

void TPointChain::Swap(TPointChain& other) noexcept {
    std::swap(m_blocks, other.m_blocks);
    std::swap(m_reach, other.m_reach);
    std::swap(m_ids, other.m_ids);
    std::swap(m_count, other.m_count);
    std::swap(m_mayHaveYErrors, other.m_mayHaveYErrors);
}

std::optional<TSeriesPoint> TPointChain::Find(std::int32_t id) const {
    const TPointBlock* block = m_ids.BlockOf(id);
    if (!block) return std::nullopt;
    return block->Point(block->PlaceOf(id));
}

bool TPointChain::Add(double x, double y, const TMergeRule& rule, double yError) {
    if (!std::isfinite(x) || LastId() == kMaxId) return false;
    const TPlace end{m_blocks.size(), 0};
    const double key = x - rule.Tolerance;
    if (IsEmpty()) {
        Insert(end, x, y, yError);
    } else if (x >= LastX()) {
        if (!rule.DuplicatesAllowed && key <= LastX())
            Overwrite({m_blocks.size() - 1, m_blocks.back()->Count() - 1}, x, y, yError);
        else
            Insert(end, x, y, yError);
    } else {
        const TPlace place = FirstAtLeast(key);
        const bool isMet = !rule.DuplicatesAllowed && place.Block < m_blocks.size() &&
                           std::fabs(m_blocks[place.Block]->X()[place.Place] - x) <= rule.Tolerance;
        if (isMet)
            Overwrite(place, x, y, yError);
        else
            Insert(place, x, y, yError);
    }
    return true;
}

bool TPointChain::AddAll(std::span<const double> x, std::span<const double> y, const TMergeRule& rule,
                         std::span<const double> yErrors) {
    while (!x.empty()) {
        std::size_t done = CountAppended(x, rule);
        if (done > 0) {
            AppendRun(x.first(done), y.first(done), yErrors.first(std::min(done, yErrors.size())));
        } else {
            if (!Add(x[0], y[0], rule, yErrors.empty() ? 0 : yErrors[0])) return false;
            done = 1;
        }
        x = x.subspan(done);
        y = y.subspan(done);
        yErrors = yErrors.subspan(std::min(done, yErrors.size()));
    }
    return true;
}

/// How many of the points, from the first on, Add would append behind the last point.
std::size_t TPointChain::CountAppended(std::span<const double> x, const TMergeRule& rule) const {
    const auto idsLeft = static_cast<std::size_t>(kMaxId - LastId());
    double last = IsEmpty() ? kNoReach : LastX();
    std::size_t count = 0;
    for (; count < x.size() && count < idsLeft && std::isfinite(x[count]) && x[count] >= last; ++count) {
        if (!rule.DuplicatesAllowed && x[count] - rule.Tolerance <= last) break;
        last = x[count];
    }
    return count;
}

void TPointChain::AppendRun(std::span<const double> x, std::span<const double> y,
                            std::span<const double> yErrors) {
    while (!x.empty()) {
        m_ids.MakeRoom();
        const TPlace place = MakeRoom({m_blocks.size(), 0});
        TPointBlock* block = m_blocks[place.Block].get();
        const std::size_t count = std::min({x.size(), block->Room(), m_ids.Room()});
        const std::size_t first = block->Count();
        block->AppendRun(LastId() + 1, x.first(count), y.first(count));
        for (std::size_t i = 0; i < std::min(count, yErrors.size()); ++i)
            PutYError(*block, first + i, yErrors[i]);
        yErrors = yErrors.subspan(std::min(count, yErrors.size()));
        m_ids.AppendRun(block, count);
        m_count += static_cast<int>(count);
        RaiseReach(place.Block, x[count - 1]);
        x = x.subspan(count);
        y = y.subspan(count);
    }
}

std::optional<double> TPointChain::SetY(std::int32_t id, double y) {
    TPointBlock* block = m_ids.BlockOf(id);
    if (!block) return std::nullopt;
    const std::size_t place = block->PlaceOf(id);
    block->SetY(place, y);
    return block->X()[place];
}

bool TPointChain::HasYErrors() const {
    return m_mayHaveYErrors &&
           std::ranges::any_of(m_blocks, [](const auto& block) { return block->HasYErrors(); });
}

bool TPointChain::SetYError(std::int32_t id, double error) {
    TPointBlock* block = m_ids.BlockOf(id);
    if (block) PutYError(*block, block->PlaceOf(id), error);
    return block != nullptr;
}

void TPointChain::SetYErrors(std::span<const double> errors) {
    if (!errors.empty() && errors.size() != static_cast<std::size_t>(m_count))
        throw std::invalid_argument("one standard error a point is needed");
    m_mayHaveYErrors = !errors.empty();
    for (const auto& block : m_blocks) {
        const std::size_t count = errors.empty() ? 0 : block->Count();
        block->SetYErrors(errors.first(count));
        errors = errors.subspan(count);
    }
}

void TPointChain::PutYError(TPointBlock& block, std::size_t place, double error) {
    if (error == 0 && block.YErrors().empty()) return;
    block.SetYError(place, error);
    m_mayHaveYErrors |= !block.YErrors().empty();
}

std::optional<TSeriesPoint> TPointChain::Erase(std::int32_t id) {
    TPointBlock* block = m_ids.BlockOf(id);
    if (!block) return std::nullopt;
    const std::size_t place = block->PlaceOf(id);
    const TSeriesPoint point = block->Point(place);
    const double maxX = block->MaxX();
    block->Erase(place);
    m_ids.Remove(id);
    --m_count;
    if (block->MaxX() != maxX) RenewReach(PositionOf(*block));
    if (block->IsEmpty())
        EraseBlock(PositionOf(*block));
    else if (block->Count() < kSmallBlock)
        MergeIfSmall(PositionOf(*block));
    return point;
}

int TPointChain::EraseNeighbours(double tolerance) {
    std::optional<double> stayed;
    const int before = m_count;
    const auto isNeighbour = [&](double x, std::int32_t id) {
        if (!stayed || !(std::fabs(x - *stayed) <= tolerance)) {
            stayed = x;
            return false;
        }
        m_ids.Remove(id);
        return true;
    };
    for (const auto& block : m_blocks) m_count -= static_cast<int>(block->EraseIf(isNeighbour));
    if (m_count == before) return 0;
    std::erase_if(m_blocks, [](const auto& block) { return block->IsEmpty(); });
    m_reach.resize(m_blocks.size());
    double reach = kNoReach;
    for (std::size_t i = 0; i < m_blocks.size(); ++i)
        m_reach[i] = reach = std::max(reach, m_blocks[i]->MaxX());
    for (std::size_t i = m_blocks.size(); i-- > 0;) MergeIfSmall(i);
    return before - m_count;
}

void TPointChain::SetDerived(std::span<const double> values) {
    if (!values.empty() && values.size() != static_cast<std::size_t>(m_count))
        throw std::invalid_argument("one derived value a point is needed");
    for (const auto& block : m_blocks) {
        const std::size_t count = values.empty() ? 0 : block->Count();
        block->SetDerived(values.first(count));
        values = values.subspan(count);
    }
}

TPointChain::TPlace TPointChain::FirstAtLeast(double key) const {
    const TPlace end{m_blocks.size(), 0};
    if (std::isnan(key)) return end;
    const std::size_t position = FirstNotBelow(m_reach, key);
    if (position == m_blocks.size()) return end;
    return {position, m_blocks[position]->FirstAtLeast(key)};
}

void TPointChain::Insert(TPlace place, double x, double y, double yError) {
    m_ids.MakeRoom();
    place = MakeRoom(place);
    TPointBlock* block = m_blocks[place.Block].get();
    block->Insert(place.Place, m_ids.Append(block), x, y);
    PutYError(*block, place.Place, yError);
    ++m_count;
    RaiseReach(place.Block, x);
}

void TPointChain::Overwrite(TPlace place, double x, double y, double yError) {
    TPointBlock& block = *m_blocks[place.Block];
    const double maxX = block.MaxX();
    block.Overwrite(place.Place, x, y);
    PutYError(block, place.Place, yError);
    if (block.MaxX() > maxX) RaiseReach(place.Block, x);
    if (block.MaxX() < maxX) RenewReach(place.Block);
}

/// Sees to a block with room for one more point where it belongs, and returns the place in it. Points that
/// come in ascending or in descending order fill their blocks wholly; others split them.
TPointChain::TPlace TPointChain::MakeRoom(TPlace place) {
    // In front of a block, the end of the one before it is as good.
    if (place.Place == 0 && place.Block > 0 && !m_blocks[place.Block - 1]->IsFull())
        place = {place.Block - 1, m_blocks[place.Block - 1]->Count()};
    const bool isEnd = place.Block == m_blocks.size();
    if (isEnd || (place.Place == 0 && m_blocks[place.Block]->IsFull()))
        InsertBlock(place.Block,
                    std::make_unique<TPointBlock>(IsEmpty() ? kFirstCapacity : TPointBlock::kCapacity));
    else if (m_blocks[place.Block]->IsFull())
        place = Split(place);
    m_blocks[place.Block]->MakeRoom();
    return place;
}

TPointChain::TPlace TPointChain::Split(TPlace place) {
    constexpr std::size_t kHalf = TPointBlock::kCapacity / 2;
    const std::size_t position = place.Block;
    GrowForOne(m_blocks);
    GrowForOne(m_reach);
    auto rest = m_blocks[position]->SplitOff(kHalf);
    RelinkAll(m_ids, rest.get());
    InsertBlock(position + 1, std::move(rest));
    RenewReach(position);
    if (place.Place <= kHalf) return place;
    return {position + 1, place.Place - kHalf};
}

void TPointChain::InsertBlock(std::size_t position, std::unique_ptr<TPointBlock> block) {
    const double before = position > 0 ? m_reach[position - 1] : kNoReach;
    const double reach = std::max(before, block->MaxX());
    GrowForOne(m_blocks);
    m_reach.insert(m_reach.begin() + static_cast<std::ptrdiff_t>(position), reach);
    m_blocks.insert(m_blocks.begin() + static_cast<std::ptrdiff_t>(position), std::move(block));
}

/// Takes out a block that the reach of those behind it does not need.
void TPointChain::EraseBlock(std::size_t position) {
    m_blocks.erase(m_blocks.begin() + static_cast<std::ptrdiff_t>(position));
    m_reach.erase(m_reach.begin() + static_cast<std::ptrdiff_t>(position));
}

void TPointChain::MergeIfSmall(std::size_t position) {
    const std::size_t count = m_blocks[position]->Count();
    if (count >= kSmallBlock) return;
    const auto fits = [&](std::size_t other) { return m_blocks[other]->Count() + count <= kMergedBlock; };
    if (position + 1 < m_blocks.size() && fits(position + 1))
        Merge(position);
    else if (position > 0 && fits(position - 1))
        Merge(position - 1);
}

/// Moves the points of the block behind `position` into the one there.
void TPointChain::Merge(std::size_t position) {
    m_blocks[position]->Absorb(*m_blocks[position + 1]);
    RelinkAll(m_ids, m_blocks[position].get());
    m_reach[position] = m_reach[position + 1];
    EraseBlock(position + 1);
}

/// Positions are renumbered when one is asked for and is wrong, so inserting blocks does not touch all
/// others.
std::size_t TPointChain::PositionOf(TPointBlock& block) {
    const std::size_t hint = block.Position();
    if (hint < m_blocks.size() && m_blocks[hint].get() == &block) return hint;
    for (std::size_t i = 0; i < m_blocks.size(); ++i) m_blocks[i]->SetPosition(i);
    return block.Position();
}

void TPointChain::RaiseReach(std::size_t position, double x) {
    for (; position < m_reach.size() && m_reach[position] < x; ++position) m_reach[position] = x;
}

/// Works out the reach anew from `position` to where it is what it was.
void TPointChain::RenewReach(std::size_t position) {
    double reach = position > 0 ? m_reach[position - 1] : kNoReach;
    for (; position < m_blocks.size(); ++position) {
        reach = std::max(reach, m_blocks[position]->MaxX());
        if (m_reach[position] == reach) return;
        m_reach[position] = reach;
    }
}

} // namespace lumoplot
