#include "sources/text/text_window.h"

#include "sources/cells/text_number.h"
#include "support/errors.h"
#include "support/workers.h"

#include <cstring>

namespace lumoplot {
namespace {

constexpr std::size_t kPieceSize = 262144;
/// A sheet is read slower, and is to be cancelled as soon.
constexpr std::size_t kPieceOfSheet = 65536;
/// Threads that share a piece wait for each other at its end.
constexpr std::size_t kPieceToShare = 1048576;

} // namespace

TTextWindow::TTextWindow(TTextFile& file, TTextEncoding encoding, std::string quotes)
    : m_file(&file), m_quotes(std::move(quotes)),
      m_size(file.AtMost(file.Sheet() ? kPieceOfSheet : kPieceSize)) {
    file.Restart(encoding);
    m_piece.text.resize(m_begin);
    Slide(Begin(), 1);
}

TTextWindow::TTextWindow(std::string_view rows, const std::string& quotes)
    : m_file(nullptr), m_size(rows.size()), m_begin(0), m_textEnd(TTextEnd::File),
      m_hasQuotes(rows.find_first_of(quotes) != std::string_view::npos) {
    m_piece.text.assign(rows.begin(), rows.end());
    m_piece.end = rows.size();
    m_piece.text.resize(rows.size() + kNumberPadding);
}

void TTextWindow::ReadAhead() {
    const bool isWhole = m_piece.Size() < m_size / 2;
    if (m_textEnd == TTextEnd::File || isWhole || ProcessorCount() == 1) return;
    if (!m_file->Sheet()) m_size = m_file->AtMost(kPieceToShare);
    m_ahead = std::make_unique<TReadAhead>(*m_file, m_size, m_quotes);
}

// In its room, or in one of its own for a long row.
void TTextWindow::PutInFront(std::string_view rest) {
    m_begin = TTextPiece::kRoom;
    if (rest.size() > TTextPiece::kRoom) {
        m_piece.text.insert(m_piece.text.begin(), rest.size() - TTextPiece::kRoom, '\0');
        m_piece.end += rest.size() - TTextPiece::kRoom;
        m_begin = rest.size();
    }
    m_begin -= rest.size();
    std::memcpy(m_piece.text.data() + m_begin, rest.data(), rest.size());
}

void TTextWindow::Slide(const char* rest, std::int64_t row) {
    const std::string_view kept(rest, static_cast<std::size_t>(End() - rest));
    if (kept.size() > kMaxRowLength)
        throw EFileError("File " + m_file->Name() + ": row " + std::to_string(row) + " is longer than 4 MB");
    std::swap(m_piece, m_next); // which `kept` is in now
    if (m_ahead)
        m_ahead->Exchange(m_piece);
    else
        ReadPiece(*m_file, m_size, m_quotes, m_piece);
    const bool isAtEnd = m_piece.Size() == 0;
    const bool isQuoted = m_hasQuotes && kept.find_first_of(m_quotes) != std::string_view::npos;
    m_hasQuotes = m_piece.hasQuotes || isQuoted;
    PutInFront(kept);
    if (!isAtEnd) return;
    if (m_piece.position < m_file->Size())
        throw EFileError("File " + m_file->Name() + " became shorter while row " + std::to_string(row) +
                         " was read");
    m_textEnd = TTextEnd::File;
}

} // namespace lumoplot
