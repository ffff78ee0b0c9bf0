#include "sources/text/fast_rows.h"

#include "sources/cells/decimal.h"
#include "sources/cells/text_number.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace lumoplot {
namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

// How far the line feed is in the bytes at `text`, of which kNear can be read; kNear where there is none.
constexpr int kNear = 64;
#if defined(__SSE2__)
[[gnu::always_inline]] inline int ToLineFeed(const char* text) {
    const __m128i feeds = _mm_set1_epi8('\n');
    const auto found = [feeds](const char* bytes) {
        const __m128i sixteen = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
        return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(sixteen, feeds)));
    };
    for (int from = 0; from < kNear; from += 32)
        if (const unsigned feed = found(text + from) | found(text + from + 16) << 16)
            return from + std::countr_zero(feed);
    return kNear;
}
#else
int ToLineFeed(const char*) {
    return kNear;
}
#endif

} // namespace

TFastRows::TFastRows(const TTextFormat& format, const TRowSplitter& splitter)
    : m_splitter(splitter), m_blanksSeparate(splitter.BlanksSeparate()), m_decimalSign(format.decimalSign),
      m_xFirst(format.xColumn < format.yColumn), m_hasX(format.xColumn != TTextFormat::kRowNumber),
      m_firstColumn(m_hasX ? std::min(format.xColumn, format.yColumn) : format.yColumn),
      m_betweenCells(std::abs(format.yColumn - format.xColumn) - 1) {
    const bool plainSeparators =
        !m_blanksSeparate || format.separators.find_first_not_of(" \t") == std::string::npos;
    const bool numbers = format.xFormat == TColumnFormat::Number && format.yFormat == TColumnFormat::Number;
    const auto isPartOfNumbers = [](const std::string& text) {
        return text.find_first_of("0123456789+-eEdD") != std::string::npos;
    };
    const auto hasMarks = [&format](int column) {
        const auto index = static_cast<std::size_t>(column);
        return column >= 0 && index < format.columns.size() && !format.columns[index].marks.IsEmpty();
    };
    const bool isPlain = format.fields.empty() && !format.hasInlineComments && !hasMarks(format.xColumn) &&
                         !hasMarks(format.yColumn);
    m_possible = isPlain && !isPartOfNumbers(format.separators) && !isPartOfNumbers(format.quotes) &&
                 format.columnWidth == 0 && plainSeparators && numbers && format.xColumn != format.yColumn &&
                 format.timeColumn == TTextFormat::kNoColumn && !splitter.IsSeparator(format.decimalSign);
    if (format.separators.size() == 1 && !m_blanksSeparate) m_separator = format.separators.front();
    const int rest = static_cast<int>(format.columns.size()) - 1 - std::max(format.xColumn, format.yColumn);
    if (m_separator != 0 || rest == 0) m_restCells = rest;
}

// Over whole cells; null when the row ends before, or has a quote.
[[gnu::always_inline]] inline const char* TFastRows::SkipCells(const char* text, int count) const {
    for (; count > 0; --count) {
        while (m_blanksSeparate && IsBlank(*text)) ++text;
        while (!m_splitter.IsSpecial(*text)) ++text;
        if (!m_splitter.IsSeparator(*text)) return nullptr;
        ++text;
    }
    return text;
}

// The number of the cell at `text`; returns the separator or line end behind it.
[[gnu::always_inline]] inline const char* TFastRows::ReadCell(const char* text, double& value) const {
    if (m_blanksSeparate)
        while (IsBlank(*text)) ++text;
    const char* end = decimal::TakePlain(text, m_decimalSign, value);
    return end != nullptr && m_splitter.EndsCell(*end) ? end : ReadAnyCell(text, value);
}

// The same for a number with more digits, an exponent or blanks around it.
const char* TFastRows::ReadAnyCell(const char* text, double& value) const {
    while (IsBlank(*text) && (m_blanksSeparate || !m_splitter.IsSeparator(*text))) ++text;
    TDecimal number;
    const char* end = decimal::Take(text, m_decimalSign, number);
    if (end == nullptr) return nullptr;
    if (!decimal::ExactValue(number, value) && ReadNumber(text, m_decimalSign, value) == nullptr)
        return nullptr;
    while (IsBlank(*end) && !m_splitter.IsSeparator(*end)) ++end;
    return m_splitter.EndsCell(*end) ? end : nullptr;
}

// Whether more cells stand behind the two than the table has columns.
bool TFastRows::HasMoreCells(const char* text, const char* lineEnd) const {
    if (m_restCells < 0) return false;
    if (m_separator == 0) return std::any_of(text, lineEnd, [](char c) { return !IsBlank(c); });
    const auto cells = std::count(text, lineEnd, m_separator);
    return cells > m_restCells;
}

// The line end of the row; null when there is a quote before it, or when the row is wider than the table.
[[gnu::always_inline]] inline const char* TFastRows::SkipRest(const char* text, const char* end) const {
    if (IsLineEnd(*text)) return text;
    const char* lineEnd = FindLineEnd(text, end);
    for (const char quote : m_splitter.Quotes())
        if (std::memchr(text, quote, static_cast<std::size_t>(lineEnd - text)) != nullptr) return nullptr;
    return HasMoreCells(text, lineEnd) ? nullptr : lineEnd;
}

[[gnu::always_inline]] inline const char* TFastRows::ReadRow(const char* text, const char* end, double& x,
                                                             double& y) const {
    if (m_firstColumn > 0) {
        const char* first = text;
        while (IsBlank(*first)) ++first;
        if (m_splitter.MayBeginComment(*first)) return nullptr;
        text = SkipCells(text, m_firstColumn);
        if (text == nullptr) return nullptr;
    }
    text = ReadCell(text, m_hasX && m_xFirst ? x : y);
    if (text == nullptr || !m_hasX) return text == nullptr ? nullptr : SkipRest(text, end);
    if (IsLineEnd(*text)) return nullptr;
    text = SkipCells(text + 1, m_betweenCells);
    if (text == nullptr) return nullptr;
    text = ReadCell(text, m_xFirst ? y : x);
    return text == nullptr ? nullptr : SkipRest(text, end);
}

const char* TFastRows::Read(const char* text, const char* end, std::span<double> x, std::span<double> y,
                            double firstX, std::size_t& count) const {
    for (count = 0; count < x.size() && text < end; ++count) {
        // The next row begins behind it, without a wait for the numbers of this one.
        const int length = end - text >= kNear ? ToLineFeed(text) : kNear;
        double rowX = firstX + static_cast<double>(count);
        const char* lineEnd = ReadRow(text, end, rowX, y[count]);
        if (lineEnd == nullptr) break;
        x[count] = rowX;
        lineEnd += lineEnd[0] == '\r' && lineEnd[1] == '\n' ? 1 : 0;
        text += (lineEnd - text == length ? length : lineEnd - text) + 1;
    }
    return text;
}

} // namespace lumoplot
