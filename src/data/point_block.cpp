#include "data/point_block.h"

#include <cassert>

namespace lumoplot {

namespace {

template <class TValue>
void InsertAt(std::vector<TValue>& values, std::size_t place, TValue value) {
    values.insert(values.begin() + static_cast<std::ptrdiff_t>(place), value);
}

template <class TValue>
void EraseAt(std::vector<TValue>& values, std::size_t place) {
    values.erase(values.begin() + static_cast<std::ptrdiff_t>(place));
}

template <class TValue>
void AppendAll(std::vector<TValue>& values, std::span<const TValue> more) {
    values.insert(values.end(), more.begin(), more.end());
}

} // namespace

std::size_t FirstNotBelow(std::span<const double> values, double key) {
    // Halving without a branch on the data: the processor cannot guess where a random key goes.
    const double* base = values.data();
    std::size_t count = values.size();
    if (count == 0) return 0;
    while (count > 1) {
        const std::size_t half = count / 2;
        base += base[half - 1] < key ? half : 0;
        count -= half;
    }
    return static_cast<std::size_t>(base - values.data()) + (*base < key ? 1 : 0);
}

TPointBlock::TPointBlock(std::size_t capacity) {
    Reserve(capacity);
}

std::size_t TPointBlock::FirstAtLeast(double key) const {
    if (m_ordered) return FirstNotBelow(m_x, key);
    const auto found = std::find_if(m_x.begin(), m_x.end(), [key](double x) { return x >= key; });
    return static_cast<std::size_t>(found - m_x.begin());
}

std::size_t TPointBlock::PlaceOf(std::int32_t id) const {
    // Points that were appended one after the other stand where their Ids say.
    const std::size_t count = Count();
    const auto guess = static_cast<std::size_t>(static_cast<std::int64_t>(id) - (count ? m_ids[0] : 0));
    if (guess < count && m_ids[guess] == id) return guess;

    constexpr std::size_t kStride = 32; // a stride without an exit is compared by whole vectors
    std::size_t place = 0;
    for (; place + kStride <= count; place += kStride) {
        bool isHere = false;
        for (std::size_t i = 0; i < kStride; ++i) isHere |= m_ids[place + i] == id;
        if (isHere) break;
    }
    while (place < count && m_ids[place] != id) ++place;
    return place;
}

void TPointBlock::MakeRoom() {
    assert(!IsFull());
    if (Count() < m_x.capacity()) return;
    Reserve(std::clamp<std::size_t>(2 * Count(), 8, kCapacity));
}

void TPointBlock::Insert(std::size_t place, std::int32_t id, double x, double y) {
    assert(Count() < m_x.capacity());
    if (place > 0 && !(m_x[place - 1] <= x)) m_ordered = false;
    if (place < Count() && !(x <= m_x[place])) m_ordered = false;
    InsertAt(m_x, place, x);
    InsertAt(m_y, place, y);
    InsertAt(m_ids, place, id);
    if (!m_derived.empty()) InsertAt(m_derived, place, 0.0);
    m_maxX = std::max(m_maxX, x);
}

void TPointBlock::Overwrite(std::size_t place, double x, double y) {
    if (place > 0 && !(m_x[place - 1] <= x)) m_ordered = false;
    if (place + 1 < Count() && !(x <= m_x[place + 1])) m_ordered = false;
    const double old = m_x[place];
    m_x[place] = x;
    m_y[place] = y;
    if (x >= m_maxX)
        m_maxX = x;
    else if (old == m_maxX)
        Renew();
}

void TPointBlock::Erase(std::size_t place) {
    const bool wasLargest = m_x[place] == m_maxX;
    EraseAt(m_x, place);
    EraseAt(m_y, place);
    EraseAt(m_ids, place);
    if (!m_derived.empty()) EraseAt(m_derived, place);
    if (wasLargest) Renew();
}

void TPointBlock::SetDerived(std::span<const double> values) {
    assert(values.empty() || values.size() == Count());
    if (values.empty()) {
        m_derived = {};
        return;
    }
    m_derived.reserve(m_x.capacity());
    m_derived.assign(values.begin(), values.end());
}

std::unique_ptr<TPointBlock> TPointBlock::SplitOff(std::size_t place) {
    auto rest = std::make_unique<TPointBlock>(kCapacity);
    if (!m_derived.empty()) rest->m_derived.reserve(kCapacity);
    AppendAll(rest->m_x, X().subspan(place));
    AppendAll(rest->m_y, Y().subspan(place));
    AppendAll(rest->m_ids, Ids().subspan(place));
    if (!m_derived.empty()) AppendAll(rest->m_derived, Derived().subspan(place));
    rest->m_ordered = m_ordered;
    rest->Renew();
    Resize(place);
    Renew();
    return rest;
}

void TPointBlock::Absorb(const TPointBlock& next) {
    const std::size_t count = Count() + next.Count();
    assert(count <= kCapacity);
    if (m_derived.empty() && !next.m_derived.empty()) {
        m_derived.reserve(kCapacity);
        m_derived.assign(Count(), 0);
    }
    if (count > m_x.capacity()) Reserve(kCapacity);
    m_ordered = m_ordered && next.m_ordered && !(MaxX() > next.X().front());
    AppendAll(m_x, next.X());
    AppendAll(m_y, next.Y());
    AppendAll(m_ids, next.Ids());
    AppendAll(m_derived, next.Derived());
    if (!m_derived.empty()) m_derived.resize(count, 0);
    Renew();
}

void TPointBlock::Reserve(std::size_t capacity) {
    m_y.reserve(capacity);
    m_ids.reserve(capacity);
    if (!m_derived.empty()) m_derived.reserve(capacity);
    m_x.reserve(capacity); // last: its capacity stands for that of all
}

void TPointBlock::Resize(std::size_t count) {
    m_x.resize(count);
    m_y.resize(count);
    m_ids.resize(count);
    if (!m_derived.empty()) m_derived.resize(count);
}

/// Looks at the points again for their largest X, and for their order where it was lost.
void TPointBlock::Renew() {
    m_ordered = m_ordered || std::is_sorted(m_x.begin(), m_x.end());
    if (m_x.empty())
        m_maxX = -std::numeric_limits<double>::infinity();
    else
        m_maxX = m_ordered ? m_x.back() : *std::max_element(m_x.begin(), m_x.end());
}

} // namespace lumoplot
