#include "sources/text/text_rows.h"

#include "sources/cells/decimal.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

namespace lumoplot {
namespace {

// The high bit of each byte of `bytes` that is zero, and perhaps of bytes behind one.
std::uint64_t ZeroBytes(std::uint64_t bytes) {
    return (bytes - 0x0101010101010101) & ~bytes & 0x8080808080808080;
}

std::string_view WithoutBlanksBehind(const char* text, const char* end) {
    while (end > text && (end[-1] == ' ' || end[-1] == '\t')) --end;
    return {text, static_cast<std::size_t>(end - text)};
}

} // namespace

const char* FindLineEnd(const char* text, const char* end) {
    constexpr std::uint64_t kLineFeeds = 0x0A0A0A0A0A0A0A0A;
    constexpr std::uint64_t kReturns = 0x0D0D0D0D0D0D0D0D;
    while (end - text >= 8) {
        const std::uint64_t bytes = decimal::LoadEight(text);
        const std::uint64_t found = ZeroBytes(bytes ^ kLineFeeds) | ZeroBytes(bytes ^ kReturns);
        if (found != 0) return text + std::countr_zero(found) / 8;
        text += 8;
    }
    while (text < end && !IsLineEnd(*text)) ++text;
    return text;
}

TRowSplitter::TRowSplitter(const TTextFormat& format)
    : m_columnWidth(static_cast<std::size_t>(std::max(format.columnWidth, 0))), m_fields(format.fields),
      m_hasInlineComments(format.hasInlineComments), m_utf8(format.encoding != TTextEncoding::CodePage) {
    m_classes[' '] = m_classes['\t'] = kBlank;
    m_classes['\n'] = m_classes['\r'] = kLineEnd;
    m_classes['\x1A'] = m_classes['\f'] = m_classes['\v'] = kBlank; // some programs end texts and pages so
    for (const char c : {'#', '%', '/', ';', '!'}) m_classes[static_cast<unsigned char>(c)] = kCommentMark;
    if (m_columnWidth > 0) return;
    for (const char c : format.separators)
        if (!IsLineEnd(c)) m_classes[static_cast<unsigned char>(c)] |= kSeparator;
    for (const char c : format.quotes) {
        if (IsLineEnd(c) || IsSeparator(c)) continue;
        m_classes[static_cast<unsigned char>(c)] |= kQuote;
        m_quotes += c;
    }
}

const char* TRowSplitter::SkipBlanks(const char* text, const char* end) const {
    while (text < end && IsBlank(*text) && (BlanksSeparate() || !IsSeparator(*text))) ++text;
    return text;
}

bool TRowSplitter::IsComment(const char* text, const char* end) const {
    return MayBeginComment(*text) && !IsSeparator(*text) &&
           (*text != '/' || (end - text > 1 && text[1] == '/'));
}

// A line drawn below names: nothing but dashes and the like, some of them side by side.
bool TRowSplitter::IsRule(const char* text, const char* end) const {
    int run = 0;
    int longest = 0;
    bool hasBar = false;
    bool isAligning = false; // "|:--|--:|"
    for (char last = 0; text < end && !IsLineEnd(*text); last = *text++) {
        const bool isLine = *text == '-' || *text == '=' || *text == '_' || *text == '*';
        if (!isLine && *text != '+' && *text != ':' && *text != '|' && !IsBlank(*text) && !IsSeparator(*text))
            return false;
        hasBar = hasBar || *text == '|';
        isAligning = isAligning || (hasBar && *text == ':');
        run = isLine ? (*text == last ? run + 1 : 1) : 0;
        longest = std::max(longest, run);
    }
    return longest >= (isAligning ? 2 : 3);
}

TRowKind TRowSplitter::KindOf(const char* text, const char* end) const {
    text = SkipBlanks(text, end);
    if (text < end && IsComment(text, end)) return TRowKind::Comment;
    if (text < end && IsRule(text, end)) return TRowKind::Blank;
    while (text < end && (IsBlank(*text) || IsSeparator(*text))) ++text;
    return text == end || IsLineEnd(*text) ? TRowKind::Blank : TRowKind::Data;
}

// Behind the closing quote of the cell that opens at `text`. Null when it is not closed within kMaxQuoted, or
// has something else than a separator behind it: then the quote is a character of the cell.
const char* TRowSplitter::QuotedEnd(const char* text, const char* end) const {
    const char quote = *text++;
    if (static_cast<std::size_t>(end - text) > kMaxQuoted) end = text + kMaxQuoted;
    while (text < end) {
        text = static_cast<const char*>(std::memchr(text, quote, static_cast<std::size_t>(end - text)));
        if (text == nullptr) return nullptr;
        ++text;
        if (text == end || IsSeparator(*text) || IsBlank(*text) || IsLineEnd(*text)) return text;
        if (*text != quote) return nullptr;
        ++text;
    }
    return nullptr;
}

// The line end that closes the row; null when it may lie behind `end`.
const char* TRowSplitter::RowEnd(const char* text, const char* end, TTextEnd textEnd) const {
    const char* lineEnd = FindLineEnd(text, end);
    const auto length = static_cast<std::size_t>(lineEnd - text);
    const auto occurs = [&](char quote) { return std::memchr(text, quote, length) != nullptr; };
    const bool quoted =
        std::any_of(m_quotes.begin(), m_quotes.end(), occurs) && KindOf(text, lineEnd) != TRowKind::Comment;
    while (quoted && text < lineEnd) {
        const char* cell = SkipBlanks(text, lineEnd);
        const char* close = cell < lineEnd && IsQuote(*cell) ? QuotedEnd(cell, end) : nullptr;
        if (close == nullptr && cell < lineEnd && IsQuote(*cell) && textEnd == TTextEnd::More &&
            static_cast<std::size_t>(end - cell) <= kMaxQuoted)
            return nullptr;
        text = close == nullptr ? cell : close;
        if (text > lineEnd) lineEnd = FindLineEnd(text, end);
        text = std::find_if(text, lineEnd, [this](char c) { return IsSeparator(c); });
        if (text < lineEnd) ++text;
    }
    if (textEnd == TTextEnd::File) return lineEnd;
    // A CR that the text ends with may be half of a CRLF.
    return lineEnd == end || (*lineEnd == '\r' && lineEnd + 1 == end) ? nullptr : lineEnd;
}

TTextRow TRowSplitter::Scan(const char* text, const char* end, TTextEnd textEnd) const {
    const char* rowEnd = RowEnd(text, end, textEnd);
    if (rowEnd == nullptr) return {};
    const char* next = rowEnd;
    if (next < end) next += *next == '\r' && end - next > 1 && next[1] == '\n' ? 2 : 1;
    return {KindOf(text, rowEnd), next};
}

TTextRow TRowSplitter::Split(const char* text, const char* end, TTextEnd textEnd,
                             std::vector<TTextCell>& cells) const {
    cells.clear();
    const TTextRow row = Scan(text, end, textEnd);
    if (row.kind != TRowKind::Data && row.kind != TRowKind::Comment) return row;
    const char* rowEnd = row.next;
    while (rowEnd > text && IsLineEnd(rowEnd[-1])) --rowEnd;
    if (row.kind == TRowKind::Comment) {
        text = SkipBlanks(text, rowEnd);
        while (text < rowEnd && MayBeginComment(*text)) ++text;
    } else if (m_hasInlineComments) {
        rowEnd = WithoutComment(text, rowEnd);
    }
    if (m_columnWidth > 0)
        SplitByWidth(text, rowEnd, cells);
    else if (!m_fields.empty() && row.kind == TRowKind::Data)
        SplitByFields(text, rowEnd, cells);
    else
        SplitCells(text, rowEnd, cells);
    return row;
}

// The end of the row in front of a comment that follows a blank.
const char* TRowSplitter::WithoutComment(const char* text, const char* end) const {
    char quote = 0;
    for (const char* at = text; at < end; ++at) {
        if (quote != 0 ? *at == quote : IsQuote(*at)) quote = quote != 0 ? '\0' : *at;
        const bool follows = at > text && IsBlank(at[-1]);
        if (quote != 0 || !follows || !IsComment(at, end)) continue;
        while (at > text && IsBlank(at[-1])) --at;
        return at;
    }
    return end;
}

// Words go to the column that they overlap most, or to the nearest one; several in a column are one cell.
void TRowSplitter::SplitByFields(const char* text, const char* end, std::vector<TTextCell>& cells) const {
    cells.assign(m_fields.size(), {});
    int column = 0;
    while (text < end) {
        if (IsBlank(*text)) {
            ++text;
            ++column;
            continue;
        }
        const char* first = text;
        const int begin = column;
        for (; text < end && !IsBlank(*text); ++text)
            if (!m_utf8 || (static_cast<unsigned char>(*text) & 0xC0) != 0x80) ++column;
        std::size_t best = 0;
        int most = -1000000;
        for (std::size_t i = 0; i < m_fields.size(); ++i) {
            const int overlap = std::min(column, m_fields[i].end) - std::max(begin, m_fields[i].begin);
            if (overlap > most) best = i;
            most = std::max(most, overlap);
        }
        TTextCell& cell = cells[best];
        const char* start = cell.text.empty() ? first : cell.text.data();
        cell.text = {start, static_cast<std::size_t>(text - start)};
    }
}

void TRowSplitter::SplitCells(const char* text, const char* end, std::vector<TTextCell>& cells) const {
    for (;;) {
        TTextCell cell;
        text = SkipBlanks(text, end);
        // Blanks that divide cells may also follow the last one.
        if (text == end && BlanksSeparate() && !cells.empty() && IsBlank(end[-1])) return;
        text = TakeCell(text, end, cell);
        cells.push_back(cell);
        if (text == end) return;
        if (BlanksSeparate() && IsBlank(*text)) {
            text = SkipBlanks(text, end);
            if (text < end && !IsSeparator(*text)) continue;
        }
        if (text < end) ++text;
        if (text == end && !IsBlank(end[-1])) {
            cells.push_back({});
            return;
        }
    }
}

// Takes the cell at `text`, which is no blank, and returns the separator behind it or the end.
const char* TRowSplitter::TakeCell(const char* text, const char* end, TTextCell& cell) const {
    const auto isSeparator = [this](char c) { return IsSeparator(c); };
    if (text < end && IsQuote(*text)) {
        if (const char* close = QuotedEnd(text, end)) {
            const char* behind = SkipBlanks(close, end);
            if (behind == end || IsSeparator(*behind) || (behind > close && BlanksSeparate())) {
                cell.text = {text + 1, static_cast<std::size_t>(close - text - 2)};
                cell.doubledQuotes = cell.text.find(*text) != std::string_view::npos;
                return behind > close && BlanksSeparate() ? close : behind;
            }
        }
    }
    const char* stop = std::find_if(text, end, isSeparator);
    cell.text = WithoutBlanksBehind(text, stop);
    return stop;
}

void TRowSplitter::SplitByWidth(const char* text, const char* end, std::vector<TTextCell>& cells) const {
    while (text < end) {
        const char* stop = text;
        for (std::size_t width = 0; width < m_columnWidth && stop < end; ++width) {
            ++stop;
            while (m_utf8 && stop < end && (static_cast<unsigned char>(*stop) & 0xC0) == 0x80) ++stop;
        }
        const char* first = text;
        while (first < stop && (*first == ' ' || *first == '\t')) ++first;
        cells.push_back({WithoutBlanksBehind(first, stop), false});
        text = stop;
    }
}

std::string DisplayText(const TTextCell& cell, const TTextFormat& format) {
    std::string text(cell.text);
    if (cell.doubledQuotes) {
        text.clear();
        for (std::size_t i = 0; i < cell.text.size(); ++i) {
            text += cell.text[i];
            const bool quote = format.quotes.find(cell.text[i]) != std::string::npos;
            if (quote && i + 1 < cell.text.size() && cell.text[i + 1] == cell.text[i]) ++i;
        }
    }
    return ToDisplayText(text, format.encoding);
}

} // namespace lumoplot
