// Divides 8-bit text into rows and rows into cells. Rows end with LF, CR or CRLF, whichever comes; quoted
// cells may hold separators, row ends and doubled quotes.
#pragma once

#include "sources/text/text_format.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace lumoplot {

inline bool IsLineEnd(char c) {
    return c == '\n' || c == '\r';
}

/// The first CR or LF at or behind `text`, or `end`.
const char* FindLineEnd(const char* text, const char* end);

enum class TRowKind {
    Data,
    Blank,     ///< nothing, or nothing but blanks and separators, or a line drawn of them and dashes
    Comment,   ///< begins with #, %, //, or with ; or ! where that is no separator
    Incomplete ///< the text ends before the row does
};

struct TTextRow {
    TRowKind kind = TRowKind::Incomplete;
    const char* next = nullptr; ///< where the next row begins; null for an incomplete row
};

struct TTextCell {
    std::string_view text;      ///< without blanks around it and without its quotes
    bool doubledQuotes = false; ///< quotes inside the text stand doubled in it
};

enum class TTextEnd {
    More, ///< text will follow
    File  ///< the file ends here, and with it the last row
};

class TRowSplitter {
public:
    /// A quoted cell does not reach further than this: a quote that is never closed is a character of its
    /// cell and spoils one row, not the rest of the file.
    static constexpr std::size_t kMaxQuoted = 65536;

    /// Takes what concerns rows and cells from the format; the format is not kept.
    explicit TRowSplitter(const TTextFormat& format);

    /// What the row at `text` is and where it ends. `text` is before `end`.
    TTextRow Scan(const char* text, const char* end, TTextEnd textEnd) const;
    /// As Scan; the cells of a data row go to `cells`, those of a comment too, without its mark.
    TTextRow Split(const char* text, const char* end, TTextEnd textEnd, std::vector<TTextCell>& cells) const;

    bool IsSeparator(char c) const { return m_classes[static_cast<unsigned char>(c)] & kSeparator; }
    bool IsQuote(char c) const { return m_classes[static_cast<unsigned char>(c)] & kQuote; }
    /// A separator, a quote, a CR or an LF: whatever can end a cell.
    bool IsSpecial(char c) const {
        return m_classes[static_cast<unsigned char>(c)] & (kSeparator | kQuote | kLineEnd);
    }
    /// A separator, a CR or an LF: what stands behind a cell without quotes.
    bool EndsCell(char c) const { return m_classes[static_cast<unsigned char>(c)] & (kSeparator | kLineEnd); }
    /// A character that can begin a comment row.
    bool MayBeginComment(char c) const { return m_classes[static_cast<unsigned char>(c)] & kCommentMark; }
    /// Blanks divide cells, and a run of them counts once.
    bool BlanksSeparate() const { return IsSeparator(' '); }
    /// The quote characters that can occur.
    const std::string& Quotes() const { return m_quotes; }

private:
    static constexpr unsigned char kSeparator = 1;
    static constexpr unsigned char kQuote = 2;
    static constexpr unsigned char kBlank = 4;
    static constexpr unsigned char kLineEnd = 8;
    static constexpr unsigned char kCommentMark = 16;

    bool IsBlank(char c) const { return m_classes[static_cast<unsigned char>(c)] & kBlank; }
    const char* SkipBlanks(const char* text, const char* end) const;
    TRowKind KindOf(const char* text, const char* end) const;
    const char* QuotedEnd(const char* text, const char* end) const;
    const char* RowEnd(const char* text, const char* end, TTextEnd textEnd) const;
    void SplitCells(const char* text, const char* end, std::vector<TTextCell>& cells) const;
    const char* TakeCell(const char* text, const char* end, TTextCell& cell) const;
    bool IsRule(const char* text, const char* end) const;
    bool IsComment(const char* text, const char* end) const;
    const char* WithoutComment(const char* text, const char* end) const;
    void SplitByFields(const char* text, const char* end, std::vector<TTextCell>& cells) const;
    void SplitByWidth(const char* text, const char* end, std::vector<TTextCell>& cells) const;

    std::array<unsigned char, 256> m_classes{};
    std::string m_quotes;
    std::size_t m_columnWidth = 0;
    std::vector<TTextField> m_fields;
    bool m_hasInlineComments = false;
    bool m_utf8 = true;
};

/// The text of a cell as UTF-8, doubled quotes made single.
std::string DisplayText(const TTextCell& cell, const TTextFormat& format);

} // namespace lumoplot
