#include "data/points/point_block.h"

#include <cassert>
#include <cstring>
#include <numeric>

namespace lumoplot {

namespace {

/// Moves what stands from `place` on, up to `count`, one place to the right.
template <class TValue>
void OpenGap(TValue* values, std::size_t place, std::size_t count) {
    std::memmove(values + place + 1, values + place, (count - place) * sizeof(TValue));
}

template <class TValue>
void CloseGap(TValue* values, std::size_t place, std::size_t count) {
    std::memmove(values + place, values + place + 1, (count - place - 1) * sizeof(TValue));
}

/// Appends `added` values to a column that exists only when one of the two parts has it.
void AppendColumn(std::vector<double>& column, std::span<const double> values, std::size_t before,
                  std::size_t added, std::size_t capacity) {
    if (column.empty() && values.empty()) return;
    column.reserve(capacity);
    column.resize(before + added, 0);
    std::ranges::copy(values, column.begin() + static_cast<std::ptrdiff_t>(before));
}

} // namespace

std::size_t FirstNotBelow(std::span<const double> values, double key) {
    // Eight parts at a time, without a branch on the data: the seven probes miss the cache together and not
    // one after the other, and the processor need not guess where a random key goes.
    constexpr std::size_t kParts = 8;
    const double* base = values.data();
    std::size_t count = values.size();
    while (count > 2 * kParts) {
        const std::size_t part = count / kParts;
        std::size_t below = 0;
        for (std::size_t i = 1; i < kParts; ++i) below += base[i * part - 1] < key;
        base += below * part;
        count = below == kParts - 1 ? count - below * part : part;
    }
    std::size_t below = 0;
    for (std::size_t i = 0; i < count; ++i) below += base[i] < key;
    return static_cast<std::size_t>(base - values.data()) + below;
}

TPointBlock::TPointBlock(std::size_t capacity) {
    Reserve(capacity);
}

TPointBlock::TPointBlock(const TPointBlock& other) : TPointBlock(other.m_capacity) {
    m_ordered = other.m_ordered;
    Append(other, 0);
}

std::size_t TPointBlock::FirstAtLeast(double key) const {
    const auto x = X();
    if (m_ordered) return FirstNotBelow(x, key);
    const auto found = std::find_if(x.begin(), x.end(), [key](double value) { return value >= key; });
    return static_cast<std::size_t>(found - x.begin());
}

std::size_t TPointBlock::PlaceOf(std::int32_t id) const {
    // Points that were appended one after the other stand where their Ids say.
    const auto ids = Ids();
    const std::size_t count = ids.size();
    const auto guess = static_cast<std::size_t>(static_cast<std::int64_t>(id) - (count ? ids[0] : 0));
    if (guess < count && ids[guess] == id) return guess;

    constexpr std::size_t kStride = 32; // a stride without an exit is compared by whole vectors
    std::size_t place = 0;
    for (; place + kStride <= count; place += kStride) {
        bool isHere = false;
        for (std::size_t i = 0; i < kStride; ++i) isHere |= ids[place + i] == id;
        if (isHere) break;
    }
    while (place < count && ids[place] != id) ++place;
    return place;
}

void TPointBlock::MakeRoom() {
    assert(!IsFull());
    if (m_count == m_capacity) Reserve(std::clamp<std::size_t>(2 * m_count, 8, kCapacity));
}

void TPointBlock::Insert(std::size_t place, std::int32_t id, double x, double y) {
    assert(m_count < m_capacity);
    OpenGap(XData(), place, m_count);
    OpenGap(YData(), place, m_count);
    OpenGap(IdData(), place, m_count);
    for (auto* column : {&m_derived, &m_yErrors})
        if (!column->empty()) column->insert(column->begin() + static_cast<std::ptrdiff_t>(place), 0.0);
    IdData()[place] = id;
    ++m_count;
    Place(place, x, y);
    m_maxX = std::max(m_maxX, x);
}

void TPointBlock::AppendRun(std::int32_t firstId, std::span<const double> x, std::span<const double> y) {
    assert(x.size() == y.size() && !x.empty() && x.size() <= Room());
    std::copy(x.begin(), x.end(), XData() + m_count);
    std::copy(y.begin(), y.end(), YData() + m_count);
    std::iota(IdData() + m_count, IdData() + m_count + x.size(), firstId);
    m_count += static_cast<std::uint32_t>(x.size());
    if (!m_derived.empty()) m_derived.resize(m_count, 0);
    if (!m_yErrors.empty()) m_yErrors.resize(m_count, 0);
    m_maxX = std::max(m_maxX, x.back());
}

void TPointBlock::Overwrite(std::size_t place, double x, double y) {
    const double old = XData()[place];
    Place(place, x, y);
    if (x >= m_maxX)
        m_maxX = x;
    else if (old == m_maxX)
        Renew();
}

void TPointBlock::Erase(std::size_t place) {
    const bool wasLargest = XData()[place] == m_maxX;
    CloseGap(XData(), place, m_count);
    CloseGap(YData(), place, m_count);
    CloseGap(IdData(), place, m_count);
    for (auto* column : {&m_derived, &m_yErrors})
        if (!column->empty()) column->erase(column->begin() + static_cast<std::ptrdiff_t>(place));
    --m_count;
    if (wasLargest) Renew();
}

void TPointBlock::SetDerived(std::span<const double> values) {
    assert(values.empty() || values.size() == Count());
    if (values.empty()) {
        m_derived = {};
        return;
    }
    m_derived.reserve(m_capacity);
    m_derived.assign(values.begin(), values.end());
}

bool TPointBlock::HasYErrors() const {
    return std::ranges::any_of(m_yErrors, [](double error) { return error > 0; });
}

void TPointBlock::SetYError(std::size_t place, double error) {
    if (m_yErrors.empty()) {
        if (UsableYError(error) == 0) return;
        m_yErrors.reserve(m_capacity);
        m_yErrors.resize(m_count, 0);
    }
    m_yErrors[place] = UsableYError(error);
}

void TPointBlock::SetYErrors(std::span<const double> errors) {
    assert(errors.empty() || errors.size() == Count());
    m_yErrors = {};
    for (std::size_t i = 0; i < errors.size(); ++i) SetYError(i, errors[i]);
}

std::unique_ptr<TPointBlock> TPointBlock::SplitOff(std::size_t place) {
    auto rest = std::make_unique<TPointBlock>(kCapacity);
    rest->m_ordered = m_ordered;
    rest->Append(*this, place);
    Truncate(place);
    return rest;
}

void TPointBlock::Absorb(const TPointBlock& next) {
    assert(Count() + next.Count() <= kCapacity);
    m_ordered = m_ordered && next.m_ordered && !(MaxX() > next.X().front());
    Append(next, 0);
}

/// Sets X and Y of a point, and notes when it is out of order there.
void TPointBlock::Place(std::size_t place, double x, double y) {
    double* all = XData();
    if (place > 0 && !(all[place - 1] <= x)) m_ordered = false;
    if (place + 1 < m_count && !(x <= all[place + 1])) m_ordered = false;
    all[place] = x;
    YData()[place] = y;
}

void TPointBlock::Reserve(std::size_t capacity) {
    if (!m_derived.empty()) m_derived.reserve(capacity);
    if (!m_yErrors.empty()) m_yErrors.reserve(capacity);
    const std::size_t bytes = capacity * kBytesPerPoint;
    std::unique_ptr<std::byte, TFreePointMemory> arrays(static_cast<std::byte*>(TakePointMemory(bytes)),
                                                        {bytes});
    auto* x = reinterpret_cast<double*>(arrays.get());
    std::copy_n(XData(), m_count, x);
    std::copy_n(YData(), m_count, x + capacity);
    std::copy_n(IdData(), m_count, reinterpret_cast<std::int32_t*>(x + 2 * capacity));
    m_arrays = std::move(arrays);
    m_capacity = static_cast<std::uint32_t>(capacity);
}

/// Appends the other block's points from `from` on; the caller has seen to m_ordered.
void TPointBlock::Append(const TPointBlock& other, std::size_t from) {
    const std::size_t added = other.Count() - from;
    const std::size_t count = Count() + added;
    if (count > m_capacity) Reserve(kCapacity);
    const auto rest = [from](const std::vector<double>& column) {
        return std::span(column).subspan(column.empty() ? 0 : from);
    };
    AppendColumn(m_derived, rest(other.m_derived), m_count, added, m_capacity);
    AppendColumn(m_yErrors, rest(other.m_yErrors), m_count, added, m_capacity);
    std::copy_n(other.XData() + from, added, XData() + m_count);
    std::copy_n(other.YData() + from, added, YData() + m_count);
    std::copy_n(other.IdData() + from, added, IdData() + m_count);
    m_count = static_cast<std::uint32_t>(count);
    Renew();
}

void TPointBlock::Truncate(std::size_t count) {
    m_count = static_cast<std::uint32_t>(count);
    if (!m_derived.empty()) m_derived.resize(count);
    if (!m_yErrors.empty()) m_yErrors.resize(count);
    Renew();
}

/// Looks at the points again for their largest X, and for their order where it was lost.
void TPointBlock::Renew() {
    const auto x = X();
    m_ordered = m_ordered || std::is_sorted(x.begin(), x.end());
    if (x.empty())
        m_maxX = -std::numeric_limits<double>::infinity();
    else
        m_maxX = m_ordered ? x.back() : *std::max_element(x.begin(), x.end());
}

} // namespace lumoplot
