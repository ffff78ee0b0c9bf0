// A copy of the points of a chain, Ids, order and standard errors included, that shares what has not changed
// with an earlier copy. It cannot be edited, only made a chain again. Derived values follow from the points
// and are left out.
#pragma once

#include "data/points/point_chain.h"

#include <atomic>
#include <memory>
#include <utility>
#include <vector>

namespace lumoplot {

/// How many bytes the copies that count into it hold together. A copy may end in another thread.
struct TMemoryMeter {
    std::atomic<std::size_t> Bytes = 0;
};

/// Counts a number of bytes into a meter for as long as it lives.
class TMeteredBytes {
public:
    TMeteredBytes(std::shared_ptr<TMemoryMeter> meter, std::size_t bytes)
        : m_meter(std::move(meter)), m_bytes(bytes) {
        m_meter->Bytes += m_bytes;
    }
    TMeteredBytes(const TMeteredBytes& other) : TMeteredBytes(other.m_meter, other.m_bytes) {}
    TMeteredBytes(TMeteredBytes&& other) noexcept
        : m_meter(std::move(other.m_meter)), m_bytes(std::exchange(other.m_bytes, 0)) {}
    TMeteredBytes& operator=(TMeteredBytes&& other) noexcept {
        std::swap(m_meter, other.m_meter);
        std::swap(m_bytes, other.m_bytes);
        return *this;
    }
    ~TMeteredBytes() {
        if (m_meter) m_meter->Bytes -= m_bytes;
    }

private:
    std::shared_ptr<TMemoryMeter> m_meter;
    std::size_t m_bytes;
};

class TPointSnapshot {
public:
    /// Copies the points of `points`. Runs of points that are bit for bit those at the same place of
    /// `earlier` (counted from the first and from the last point; may be null) are shared with it.
    TPointSnapshot(const TPointChain& points, const TPointSnapshot* earlier,
                   const std::shared_ptr<TMemoryMeter>& meter);

    TPointChain ToChain() const;
    /// The points in their order, a run a block; valid while the snapshot lives.
    std::vector<TPointSpans> Runs() const;
    std::int32_t LastId() const { return m_lastId; }
    std::size_t Count() const;
    /// The same points bit for bit, Ids included.
    bool operator==(const TPointSnapshot& other) const;

private:
    class TPiece;
    using TPieces = std::vector<std::shared_ptr<const TPiece>>;

    TPieces m_pieces; ///< one a block of the chain
    std::int32_t m_lastId;
    TMeteredBytes m_cost;
};

} // namespace lumoplot
