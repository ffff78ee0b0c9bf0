#include "sources/database/value_reader.h"

#include "sources/cells/text_date.h"
#include "sources/database/connection/decimal_text.h"
#include "support/message_text.h"

#include <cmath>

namespace lumoplot {

std::optional<double> TValueReader::Read(const TSqlCell& cell, TCellCounts& counts) {
    using TKind = TSqlCell::TKind;
    switch (cell.kind) {
    case TKind::Rounded: ++counts.rounded; [[fallthrough]];
    case TKind::Number:
    case TKind::Date:
        if (std::isfinite(cell.number)) return cell.number;
        m_problem = "the number in column " + m_column->name + " is not finite";
        return std::nullopt;
    case TKind::Null:
        ++counts.nulls;
        m_problem.clear();
        return std::nullopt;
    case TKind::Text: {
        const auto value = ReadText(cell.text);
        if (value) ++counts.fromTexts;
        return value;
    }
    case TKind::Binary: break;
    }
    m_problem = "column " + m_column->name + " holds binary data and no number";
    return std::nullopt;
}

std::optional<double> TValueReader::ReadText(std::string_view text) {
    constexpr std::size_t kMostShown = 40;
    if (const auto decimal = DecimalOf(text)) return decimal->value;
    if (m_column->kind == TSqlColumnKind::DateText)
        if (const auto date = ParseDate(text, TDateOrder::YearMonthDay)) return date->days;
    if (const TNumberReading number = ParseNumber(text, '.'); number.state == TNumberState::Number)
        return number.value;
    m_problem =
        "'" + std::string(text.substr(0, kMostShown)) + "' in column " + m_column->name + " is not a number";
    return std::nullopt;
}

} // namespace lumoplot
