#include "sources/text/text_window.h"

#include "sources/cells/text_number.h"
#include "support/errors.h"

#include <cstring>

namespace lumoplot {
namespace {

// Stays in the second-level cache together with the points made of it.
constexpr std::size_t kPieceSize = 262144;

} // namespace

TTextWindow::TTextWindow(TTextFile& file, TTextEncoding encoding)
    : m_file(&file), m_text(file.AtMost(kPieceSize) + kNumberPadding) {
    file.Restart(encoding);
    Slide(Begin(), 1);
}

TTextWindow::TTextWindow(std::string_view rows)
    : m_file(nullptr), m_text(rows.begin(), rows.end()), m_end(rows.size()), m_textEnd(TTextEnd::File) {
    m_text.resize(m_end + kNumberPadding);
}

void TTextWindow::Slide(const char* rest, std::int64_t row) {
    const auto kept = static_cast<std::size_t>(End() - rest);
    if (kept > kMaxRowLength)
        throw EFileError("File " + m_file->Name() + ": row " + std::to_string(row) + " is longer than 4 MB");
    std::memmove(m_text.data(), rest, kept);
    if (m_text.size() - kNumberPadding < kept * 2) m_text.resize(kept * 2 + kPieceSize + kNumberPadding);
    const std::size_t count = m_file->Read(m_text.data() + kept, m_text.size() - kNumberPadding - kept);
    m_end = kept + count;
    std::memset(m_text.data() + m_end, 0, kNumberPadding);
    if (count > 0) return;
    if (m_file->Position() < m_file->Size())
        throw EFileError("File " + m_file->Name() + " became shorter while row " + std::to_string(row) +
                         " was read");
    m_textEnd = TTextEnd::File;
}

} // namespace lumoplot
