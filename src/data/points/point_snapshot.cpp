#include "data/points/point_snapshot.h"

#include <algorithm>
#include <cstring>

namespace lumoplot {
namespace {

template <class TValue>
bool SameBits(std::span<const TValue> a, std::span<const TValue> b) {
    return a.size() == b.size() && (a.empty() || std::memcmp(a.data(), b.data(), a.size_bytes()) == 0);
}

} // namespace

class TPointSnapshot::TPiece {
public:
    TPiece(const TPointSpans& block, std::shared_ptr<TMemoryMeter> meter)
        : m_ids(block.Ids.begin(), block.Ids.end()), m_x(block.X.begin(), block.X.end()),
          m_y(block.Y.begin(), block.Y.end()), m_yErrors(block.YErrors.begin(), block.YErrors.end()),
          m_cost(std::move(meter), sizeof(*this) + PointBytes()) {}

    TPointSpans Spans() const { return {m_ids, m_x, m_y, {}, m_yErrors}; }
    bool Holds(const TPointSpans& block) const {
        return SameBits<std::int32_t>(m_ids, block.Ids) && SameBits<double>(m_x, block.X) &&
               SameBits<double>(m_y, block.Y) && SameBits<double>(m_yErrors, block.YErrors);
    }

private:
    std::size_t PointBytes() const {
        return m_ids.size() * (sizeof(std::int32_t) + 2 * sizeof(double)) + m_yErrors.size() * sizeof(double);
    }

    std::vector<std::int32_t> m_ids;
    std::vector<double> m_x;
    std::vector<double> m_y;
    std::vector<double> m_yErrors; ///< empty where there are none
    TMeteredBytes m_cost;
};

TPointSnapshot::TPointSnapshot(const TPointChain& points, const TPointSnapshot* earlier,
                               const std::shared_ptr<TMemoryMeter>& meter)
    : m_pieces(points.BlockCount()), m_lastId(points.LastId()),
      m_cost(meter, sizeof(*this) + m_pieces.size() * sizeof(m_pieces[0])) {
    const TPieces none;
    const TPieces& old = earlier ? earlier->m_pieces : none;
    const std::size_t common = std::min(old.size(), m_pieces.size());
    std::size_t front = 0;
    for (; front < common && old[front]->Holds(points.Block(front)); ++front) m_pieces[front] = old[front];
    std::size_t back = 0; // pieces shared from the last one on
    for (; back < common - front; ++back) {
        const auto& piece = old[old.size() - 1 - back];
        const std::size_t place = m_pieces.size() - 1 - back;
        if (!piece->Holds(points.Block(place))) break;
        m_pieces[place] = piece;
    }
    for (std::size_t i = front; i < m_pieces.size() - back; ++i)
        m_pieces[i] = std::make_shared<const TPiece>(points.Block(i), meter);
}

std::vector<TPointSpans> TPointSnapshot::Runs() const {
    std::vector<TPointSpans> runs;
    runs.reserve(m_pieces.size());
    for (const auto& piece : m_pieces) runs.push_back(piece->Spans());
    return runs;
}

std::size_t TPointSnapshot::Count() const {
    std::size_t count = 0;
    for (const auto& piece : m_pieces) count += piece->Spans().Ids.size();
    return count;
}

TPointChain TPointSnapshot::ToChain() const {
    return {Runs(), m_lastId};
}

bool TPointSnapshot::operator==(const TPointSnapshot& other) const {
    return std::ranges::equal(m_pieces, other.m_pieces,
                              [](const auto& a, const auto& b) { return a == b || a->Holds(b->Spans()); });
}

} // namespace lumoplot
