// The rows of a window of text, read by several threads: each reads its piece as far as the rows are plain.
#pragma once

#include "sources/text/fast_rows.h"
#include "support/workers.h"

#include <array>
#include <functional>
#include <memory>
#include <span>

namespace lumoplot {

/// Consecutive rows and what they hold.
struct TRowsPiece {
    const char* begin = nullptr;
    const char* end = nullptr;  ///< of the piece's text, behind a line end
    const char* rest = nullptr; ///< the first row that needs the long way, or the end
    std::size_t count = 0;
    std::size_t room = 0;
    std::unique_ptr<double[]> x; ///< `room`, of which the first `count` are set
    std::unique_ptr<double[]> y;

    std::span<const double> X() const { return {x.get(), count}; }
    std::span<const double> Y() const { return {y.get(), count}; }
};

class TSharedRows {
public:
    static constexpr std::size_t kPieces = 8;
    using TPieces = std::array<TRowsPiece, kPieces>;

    /// Shorter texts are not worth sharing.
    static constexpr std::ptrdiff_t kLeastText = 65536;

    /// Borrows the reader of rows. X is a column.
    explicit TSharedRows(const TFastRows& rows) : m_rows(rows), m_workers(ProcessorCount()) {}

    /// Reads whole lines, and does `meanwhile` in one of the threads. The pieces stay as they are until the
    /// call after the next.
    TPieces& Read(const char* text, const char* end, const std::function<void()>& meanwhile);

private:
    void ReadPiece(TRowsPiece& piece) const;

    const TFastRows& m_rows;
    TWorkers m_workers;
    std::array<TPieces, 2> m_pieces;
    std::size_t m_turn = 0;
};

} // namespace lumoplot
