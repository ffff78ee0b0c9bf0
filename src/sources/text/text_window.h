// The piece of a text file that is in memory: slides over the file from front to end, never holds more than a
// row and a piece.
#pragma once

#include "sources/text/text_file.h"
#include "sources/text/text_rows.h"

#include <cstdint>
#include <vector>

namespace lumoplot {

class TTextWindow {
public:
    /// A longer row is no row of a table; a file without row ends is refused when it has been read this far.
    static constexpr std::size_t kMaxRowLength = std::size_t{4} << 20;

    /// Starts at the front of the file, which is restarted and borrowed.
    TTextWindow(TTextFile& file, TTextEncoding encoding);

    /// Over whole rows that are in memory.
    explicit TTextWindow(std::string_view rows);

    const char* Begin() const { return m_text.data(); }
    /// Behind it kNumberPadding bytes are readable, and they are zero.
    const char* End() const { return m_text.data() + m_end; }
    TTextEnd TextEnd() const { return m_textEnd; }

    /// Keeps the text from `rest` on, where the row with the number `row` begins, and reads on behind it.
    /// Throws EFileError "File NAME: row N is longer than 4 MB" and "File NAME became shorter while row N was
    /// read".
    void Slide(const char* rest, std::int64_t row);

private:
    TTextFile* m_file; ///< null for rows in memory
    std::vector<char> m_text;
    std::size_t m_end = 0;
    TTextEnd m_textEnd = TTextEnd::More;
};

} // namespace lumoplot
