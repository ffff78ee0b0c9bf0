#include "sources/text/text_values.h"

#include "sources/text/text_number.h"
#include "support/code_page.h"

namespace lumoplot {
namespace {

constexpr std::size_t kShownBytes = 40;

} // namespace

bool TRowValues::ReadX(std::span<const TTextCell> cells, std::int64_t dataRow, double& x,
                       TRowProblem& problem) const {
    x = static_cast<double>(dataRow);
    if (m_format.xColumn != TTextFormat::kRowNumber &&
        !ReadCell(cells, m_format.xColumn, m_format.xFormat, x, problem))
        return false;
    if (m_format.timeColumn == TTextFormat::kNoColumn) return true;
    double time = 0;
    if (!ReadCell(cells, m_format.timeColumn, TColumnFormat::DateTime, time, problem)) return false;
    x += time;
    return true;
}

bool TRowValues::ReadY(std::span<const TTextCell> cells, double& y, TRowProblem& problem) const {
    return ReadCell(cells, m_format.yColumn, m_format.yFormat, y, problem);
}

bool TRowValues::ReadColumn(std::span<const TTextCell> cells, int column, double& value,
                            TRowProblem& problem) const {
    const TCellKind kind = m_format.columns[static_cast<std::size_t>(column)].kind;
    const bool isDate = kind == TCellKind::Date || kind == TCellKind::TimeOfDay;
    return ReadCell(cells, column, isDate ? TColumnFormat::DateTime : TColumnFormat::Number, value, problem);
}

bool TRowValues::ReadCell(std::span<const TTextCell> cells, int column, TColumnFormat kind, double& value,
                          TRowProblem& problem) const {
    const auto index = static_cast<std::size_t>(column);
    const char* fault = index >= cells.size()           ? " is missing"
                        : cells[index].text.empty()     ? " is empty"
                        : kind == TColumnFormat::Number ? ReadNumberCell(cells[index], value)
                                                        : ReadDateCell(cells[index], value);
    if (fault == nullptr) return true;
    const bool hasText = index < cells.size() && !cells[index].text.empty();
    problem.column = column;
    problem.text =
        (hasText ? Quoted(cells[index]) + " in " : "") + "column " + ColumnText(m_format, column) + fault;
    return false;
}

// Null, or what is wrong with the cell.
const char* TRowValues::ReadNumberCell(const TTextCell& cell, double& value) const {
    const TNumberReading reading = ParseNumber(cell.text, m_format.decimalSign);
    value = reading.value;
    switch (reading.state) {
    case TNumberState::Number: return nullptr;
    case TNumberState::NoNumber: return " is not a number";
    case TNumberState::NotFinite: return " is no value";
    case TNumberState::TooLarge: return " is too large";
    case TNumberState::TooSmall: break;
    }
    return " is too close to 0";
}

// A number among dates is the count of days that it would become.
const char* TRowValues::ReadDateCell(const TTextCell& cell, double& value) const {
    if (const auto date = ParseDate(cell.text, m_format.dateOrder)) {
        value = date->days;
        return nullptr;
    }
    const TNumberReading number = ParseNumber(cell.text, m_format.decimalSign);
    value = number.value;
    return number.state == TNumberState::Number ? nullptr : " is not a date";
}

std::string TRowValues::Quoted(const TTextCell& cell) const {
    const std::string text = DisplayText(cell, m_format);
    const std::string_view shown = CutUtf8(text, kShownBytes);
    return "'" + std::string(shown) + (shown.size() < text.size() ? "…'" : "'");
}

} // namespace lumoplot
