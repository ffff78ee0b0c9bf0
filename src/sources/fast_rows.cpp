#include "sources/fast_rows.h"

#include "sources/text_number.h"

#include <algorithm>
#include <cstdlib>

namespace lumoplot {
namespace {

bool IsLineEnd(char c) {
    return c == '\n' || c == '\r';
}
bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

} // namespace

TFastRows::TFastRows(const TTextFormat& format, const TRowSplitter& splitter)
    : m_splitter(splitter), m_blanksSeparate(splitter.BlanksSeparate()), m_decimalSign(format.decimalSign),
      m_xFirst(format.xColumn < format.yColumn), m_hasX(format.xColumn != TTextFormat::kRowNumber),
      m_firstColumn(m_hasX ? std::min(format.xColumn, format.yColumn) : format.yColumn),
      m_betweenCells(std::abs(format.yColumn - format.xColumn) - 1) {
    const bool plainSeparators =
        !m_blanksSeparate || format.separators.find_first_not_of(" \t") == std::string::npos;
    const bool numbers = format.xFormat == TColumnFormat::Number && format.yFormat == TColumnFormat::Number;
    m_possible = format.columnWidth == 0 && plainSeparators && numbers && format.xColumn != format.yColumn &&
                 format.timeColumn == TTextFormat::kNoColumn && !splitter.IsSeparator(format.decimalSign);
}

// Over whole cells; null when the row ends before.
const char* TFastRows::SkipCells(const char* text, int count) const {
    for (; count > 0; --count) {
        while (m_blanksSeparate && IsBlank(*text)) ++text;
        while (!m_splitter.IsSeparator(*text) && !IsLineEnd(*text)) ++text;
        if (IsLineEnd(*text)) return nullptr;
        ++text;
    }
    return text;
}

// The number of the cell at `text`; returns the separator or line end behind it.
const char* TFastRows::ReadCell(const char* text, double& value) const {
    while (IsBlank(*text) && (m_blanksSeparate || !m_splitter.IsSeparator(*text))) ++text;
    text = ReadNumber(text, m_decimalSign, value);
    if (text == nullptr) return nullptr;
    while (IsBlank(*text) && !m_splitter.IsSeparator(*text)) ++text;
    return IsLineEnd(*text) || m_splitter.IsSeparator(*text) ? text : nullptr;
}

const char* TFastRows::Read(const char* text, const char* end, double& x, double& y) const {
    if (m_splitter.MayBeginComment(*text) || IsBlank(*text)) {
        const char* first = text;
        while (IsBlank(*first)) ++first;
        if (m_splitter.MayBeginComment(*first)) return nullptr;
    }
    text = SkipCells(text, m_firstColumn);
    if (text == nullptr) return nullptr;
    text = ReadCell(text, m_hasX && m_xFirst ? x : y);
    if (text == nullptr) return nullptr;
    if (m_hasX) {
        if (IsLineEnd(*text)) return nullptr;
        text = SkipCells(text + 1, m_betweenCells);
        if (text == nullptr) return nullptr;
        text = ReadCell(text, m_xFirst ? y : x);
        if (text == nullptr) return nullptr;
    }
    return FindLineEnd(text, end);
}

} // namespace lumoplot
