#include "data/series/ds_info.h"

#include <algorithm>
#include <cctype>
#include <string_view>
#include <utility>

namespace lumoplot {
namespace {

template <class TEnum>
bool IsWithin(TEnum value, TEnum last) {
    return static_cast<int>(value) >= 0 && value <= last;
}

bool IsSameLetter(char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
}

std::string WithoutUserPassword(const std::string& text) {
    const std::size_t scheme = text.find("://");
    if (scheme == std::string::npos) return text;
    const std::size_t begin = scheme + 3;
    const std::size_t at = text.rfind('@');
    if (at == std::string::npos || at < begin) return text;
    const std::size_t colon = text.find(':', begin);
    return colon < at ? text.substr(0, colon) + text.substr(at) : text;
}

// "KEY=value" up to the next separator; a value in braces may hold any character.
std::string WithoutValueOf(std::string text, std::string_view key) {
    for (std::size_t from = 0;;) {
        const auto found = std::search(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(),
                                       key.begin(), key.end(), IsSameLetter);
        if (found == text.end()) return text;
        from = static_cast<std::size_t>(found - text.begin());
        std::size_t end = text.find_first_of(";&", from);
        if (text.compare(from + key.size(), 1, "{") == 0)
            end = text.find_first_of(";&", text.find('}', from));
        if (end == std::string::npos) end = text.size() - 1;
        text.erase(from, end + 1 - from);
    }
}

} // namespace

std::string WithoutPassword(const std::string& connection) {
    std::string text = WithoutUserPassword(connection);
    for (const char* key : {"password=", "pwd="}) text = WithoutValueOf(std::move(text), key);
    return text;
}

template <class TField, class TValue>
void TDSInfo::Store(TField& field, const TValue& value) {
    if (field == value) return;
    field = value;
    m_needsReload = true;
}

void TDSInfo::SetKind(TSourceKind value) {
    if (!IsWithin(value, TSourceKind::Link) || value == m_kind) return;
    Store(m_kind, value);
    m_isSamplingChosen = false;
}

void TDSInfo::SetSourceName(const std::string& value) {
    if (value == m_sourceName) return;
    Store(m_sourceName, value);
    m_isSamplingChosen = false;
}

void TDSInfo::SetDivideTextByWidth(bool value) {
    Store(m_divideTextByWidth, value);
}

void TDSInfo::SetFileHasHeaders(int value) {
    if (value >= kFindHeaders) Store(m_fileHasHeaders, value);
}

void TDSInfo::SetTextSeparators(const std::string& value) {
    Store(m_textSeparators, value);
}

void TDSInfo::SetTextMarkers(const std::string& value) {
    Store(m_textMarkers, value);
}

void TDSInfo::SetXDataColumn(const std::string& value) {
    Store(m_xDataColumn, value);
}

void TDSInfo::SetYDataColumn(const std::string& value) {
    Store(m_yDataColumn, value);
}

void TDSInfo::SetYErrorRule(const TYErrorRule& value) {
    if (value == m_yErrorRule) return;
    m_needsReload |= value.Kind == TYErrorKind::Column;
    m_yErrorRule = value;
}

void TDSInfo::SetRowSamplingFrequency(int value) {
    if (value < 1) return;
    Store(m_rowSamplingFrequency, value);
    m_isSamplingChosen = true;
}

void TDSInfo::SetAutoRowHitFreq(bool value) {
    Store(m_autoRowHitFreq, value);
    m_isSamplingChosen = true;
}

void TDSInfo::SetColumnWidth(int value) {
    if (value >= 1) Store(m_columnWidth, value);
}

void TDSInfo::SetRowChoiceMode(TRowChoice value) {
    if (IsWithin(value, TRowChoice::ByX)) Store(m_rowChoiceMode, value);
}

void TDSInfo::SetRowChoiceValue1(double value) {
    Store(m_rowChoiceValue1, value);
}

void TDSInfo::SetRowChoiceValue2(double value) {
    Store(m_rowChoiceValue2, value);
}

void TDSInfo::SetXFormat(TColumnFormat value) {
    if (IsWithin(value, TColumnFormat::DateTime)) Store(m_xFormat, value);
}

void TDSInfo::SetYFormat(TColumnFormat value) {
    if (IsWithin(value, TColumnFormat::DateTime)) Store(m_yFormat, value);
}

void TDSInfo::SetDatabase(TDatabaseWish value) {
    value.connection = WithoutPassword(value.connection);
    Store(m_database, value);
}

void TDSInfo::SetLinkLimit(const TLinkLimit& value) {
    if (value.rows >= 0 && value.seconds >= 0) Store(m_linkLimit, value);
}

} // namespace lumoplot
