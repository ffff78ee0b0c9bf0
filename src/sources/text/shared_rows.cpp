#include "sources/text/shared_rows.h"

#include <algorithm>

namespace lumoplot {
namespace {

const char* NextLine(const char* text, const char* end) {
    text = FindLineEnd(text, end);
    while (text < end && (*text == '\r' || *text == '\n')) ++text;
    return text;
}

} // namespace

void TSharedRows::ReadPiece(TRowsPiece& piece) const {
    constexpr std::size_t kShortestRow = 4; // "1,2" and its end
    const std::size_t most = static_cast<std::size_t>(piece.end - piece.begin) / kShortestRow + 1;
    // Memory that is never used costs nothing.
    if (piece.room < most) {
        piece.x = std::make_unique_for_overwrite<double[]>(most);
        piece.y = std::make_unique_for_overwrite<double[]>(most);
        piece.room = most;
    }
    piece.rest = m_rows.Read(piece.begin, piece.end, std::span(piece.x.get(), most),
                             std::span(piece.y.get(), most), 0, piece.count);
}

TSharedRows::TPieces& TSharedRows::Read(const char* text, const char* end,
                                        const std::function<void()>& meanwhile) {
    TPieces& pieces = m_pieces[m_turn];
    m_turn = 1 - m_turn;
    const auto length = end - text;
    for (std::size_t i = 0; i < kPieces; ++i) {
        pieces[i].begin = i == 0 ? text : pieces[i - 1].end;
        const char* least = text + length * static_cast<std::ptrdiff_t>(i + 1) / std::ptrdiff_t{kPieces};
        pieces[i].end = i + 1 == kPieces ? end : NextLine(std::max(least, pieces[i].begin), end);
    }
    m_workers.Run(kPieces + 1,
                  [&](std::size_t part, int) { part == 0 ? meanwhile() : ReadPiece(pieces[part - 1]); });
    return pieces;
}

} // namespace lumoplot
