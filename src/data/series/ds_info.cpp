#include "data/series/ds_info.h"

namespace lumoplot {
namespace {

template <class TEnum>
bool IsWithin(TEnum value, TEnum last) {
    return static_cast<int>(value) >= 0 && value <= last;
}

} // namespace

template <class TField, class TValue>
void TDSInfo::Store(TField& field, const TValue& value) {
    if (field == value) return;
    field = value;
    m_needsReload = true;
}

void TDSInfo::SetKind(TSourceKind value) {
    if (!IsWithin(value, TSourceKind::LumoSheet) || value == m_kind) return;
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

} // namespace lumoplot
