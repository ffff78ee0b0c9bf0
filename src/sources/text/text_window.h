// The piece of a text file that is in memory: slides over the file from front to end, never holds more than a
// row and a piece.
#pragma once

#include "sources/text/read_ahead.h"
#include "sources/text/text_file.h"
#include "sources/text/text_rows.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace lumoplot {

class TTextWindow {
public:
    /// A longer row is no row of a table; a file without row ends is refused when it has been read this far.
    static constexpr std::size_t kMaxRowLength = std::size_t{4} << 20;

    /// Starts at the front of the file, which is restarted and borrowed: nobody else may use it before this
    /// is gone.
    TTextWindow(TTextFile& file, TTextEncoding encoding, std::string quotes = {});

    /// Over whole rows that are in memory.
    explicit TTextWindow(std::string_view rows, const std::string& quotes = {});

    const char* Begin() const { return m_piece.text.data() + m_begin; }
    /// Behind it kNumberPadding bytes are readable, and they are zero.
    const char* End() const { return m_piece.text.data() + m_piece.end; }
    TTextEnd TextEnd() const { return m_textEnd; }
    /// One of the quotes may be in the window.
    bool HasQuotes() const { return m_hasQuotes; }
    /// Of the file, behind the window.
    std::int64_t Position() const { return m_piece.position; }

    /// Has what follows read by another thread, when it is worth one.
    void ReadAhead();

    /// Keeps the text from `rest` on, where the row with the number `row` begins, and reads on behind it.
    /// Throws EFileError "File NAME: row N is longer than 4 MB" and "File NAME became shorter while row N was
    /// read".
    void Slide(const char* rest, std::int64_t row);

private:
    void PutInFront(std::string_view rest);

    TTextFile* m_file; ///< null for rows in memory
    std::string m_quotes;
    std::size_t m_size; ///< of a piece
    TTextPiece m_piece;
    TTextPiece m_next; ///< its memory is used in turn
    std::size_t m_begin = TTextPiece::kRoom;
    TTextEnd m_textEnd = TTextEnd::More;
    bool m_hasQuotes = false;
    std::unique_ptr<TReadAhead> m_ahead;
};

} // namespace lumoplot
