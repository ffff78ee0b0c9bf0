#include "dialog/manual/manual_rows.h"

#include <algorithm>

namespace lumoplot {
namespace {

constexpr std::size_t kBytesOfRow = sizeof(TManualRow) + 64; // with short texts

/// In which of the ascending ranges that end there `position` lies.
std::size_t RangeOf(const std::vector<std::size_t>& ends, std::size_t position) {
    return static_cast<std::size_t>(std::ranges::upper_bound(ends, position) - ends.begin());
}

} // namespace

void TManualRows::Show(const TPointChain* points) {
    m_points = points;
    m_copy.reset();
    m_edited = std::make_shared<TEditedRows>();
    m_editedCount = 0;
    IndexBlocks();
    SetPieces(PointCount() > 0 ? TPieces{{0, PointCount(), false}} : TPieces{});
}

std::vector<TManualRow> TManualRows::TEditedRows::Copy(std::size_t start, std::size_t count) {
    const std::scoped_lock lock(Guard);
    const auto first = Rows.begin() + static_cast<std::ptrdiff_t>(start);
    return {first, first + static_cast<std::ptrdiff_t>(count)};
}

void TManualRows::TEditedRows::Append(std::vector<TManualRow> rows) {
    const std::scoped_lock lock(Guard);
    std::ranges::move(rows, std::back_inserter(Rows));
}

void TManualRows::StartWith(TPointChain points) {
    m_copy = std::make_shared<const TPointChain>(std::move(points));
    m_points = m_copy.get();
    m_edited = std::make_shared<TEditedRows>();
    m_editedCount = 0;
    IndexBlocks();
    SetPieces({});
}

void TManualRows::AppendPoints(std::size_t place, std::size_t count) {
    TPieces pieces = m_pieces;
    if (count > 0) pieces.push_back({place, count, false});
    SetPieces(std::move(pieces));
}

std::size_t TManualRows::RunCount() const {
    std::size_t runs = 0;
    for (const TPiece& piece : m_pieces)
        runs += piece.Edited ? (piece.Count + kLongestRun - 1) / kLongestRun : 1;
    return runs;
}

void TManualRows::IndexBlocks() {
    m_blockEnds.clear();
    if (!m_points) return;
    std::size_t end = 0;
    for (std::size_t block = 0; block < m_points->BlockCount(); ++block)
        m_blockEnds.push_back(end += m_points->Block(block).X.size());
}

void TManualRows::CopyPoints() {
    if (m_copy) return;
    m_copy = std::make_shared<const TPointChain>(m_points ? *m_points : TPointChain());
    m_points = m_copy.get();
    IndexBlocks();
}

bool TManualRows::IsEdited() const {
    if (m_pieces.size() > 1 || Count() != PointCount()) return true;
    return !m_pieces.empty() && m_pieces.front().Edited;
}

TManualRow TManualRows::Row(std::size_t row) const {
    const std::size_t index = RangeOf(m_ends, row);
    const TPiece& piece = m_pieces[index];
    const std::size_t place = piece.Start + row - (m_ends[index] - piece.Count);
    return piece.Edited ? m_edited->Rows[place] : TManualRow{place, {}, {}, {}};
}

TSeriesPoint TManualRows::Point(std::size_t place) const {
    const std::size_t block = RangeOf(m_blockEnds, place);
    const TPointSpans spans = m_points->Block(block);
    const std::size_t i = place - (m_blockEnds[block] - spans.X.size());
    return {spans.Ids[i], spans.X[i], spans.Y[i], spans.Derived.empty() ? 0 : spans.Derived[i],
            spans.YErrors.empty() ? 0 : spans.YErrors[i]};
}

void TManualRows::SetPieces(TPieces pieces) {
    m_pieces = std::move(pieces);
    m_ends.clear();
    std::size_t end = 0;
    for (const TPiece& piece : m_pieces) m_ends.push_back(end += piece.Count);
}

/// Appends the pieces, cut where necessary, of the rows from `from` to before `to`.
void TManualRows::AppendRange(TPieces& pieces, std::size_t from, std::size_t to) const {
    for (std::size_t i = RangeOf(m_ends, from); i < m_pieces.size() && from < to; ++i) {
        const TPiece& piece = m_pieces[i];
        const std::size_t skipped = from - (m_ends[i] - piece.Count);
        const std::size_t count = std::min(m_ends[i], to) - from;
        const std::size_t start = piece.Start + skipped;
        const bool continues = !pieces.empty() && pieces.back().Edited == piece.Edited &&
                               pieces.back().Start + pieces.back().Count == start;
        if (continues)
            pieces.back().Count += count;
        else
            pieces.push_back({start, count, piece.Edited});
        from += count;
    }
}

void TManualRows::Replace(std::size_t row, std::size_t removed, std::vector<TManualRow> rows) {
    CopyPoints();
    TPieces pieces;
    AppendRange(pieces, 0, row);
    if (!rows.empty()) pieces.push_back({m_edited->Rows.size(), rows.size(), true});
    AppendRange(pieces, row + removed, Count());
    m_edited->Append(std::move(rows));
    m_editedCount = m_edited->Rows.size();
    SetPieces(std::move(pieces));
}

std::size_t TManualRows::FirstDifference(const TManualRows& other) const {
    const auto [mine, theirs] = std::ranges::mismatch(m_pieces, other.m_pieces);
    const std::size_t same =
        mine == m_pieces.begin() ? 0 : m_ends[static_cast<std::size_t>(mine - m_pieces.begin()) - 1];
    if (mine == m_pieces.end() || theirs == other.m_pieces.end()) return same;
    const bool startTogether = mine->Start == theirs->Start && mine->Edited == theirs->Edited;
    return same + (startTogether ? std::min(mine->Count, theirs->Count) : 0);
}

std::size_t TManualRows::BytesBeside(const TManualRows* earlier) const {
    std::size_t bytes = m_pieces.size() * (sizeof(TPiece) + sizeof(std::size_t));
    const bool sharesTexts = earlier && earlier->m_edited == m_edited;
    const std::size_t texts =
        m_editedCount - (sharesTexts ? std::min(m_editedCount, earlier->m_editedCount) : 0);
    bytes += texts * kBytesOfRow;
    const bool sharesPoints = earlier && earlier->m_copy == m_copy;
    if (m_copy && !sharesPoints) bytes += PointCount() * sizeof(TSeriesPoint);
    return bytes;
}

} // namespace lumoplot
