#include "sources/text/text_values.h"

#include "sources/cells/plain_number.h"
#include "sources/cells/text_number.h"
#include "support/code_page.h"

namespace lumoplot {
namespace {

constexpr std::size_t kShownBytes = 40;

} // namespace

TRowValues::TRowValues(const TTextFormat& format) : m_format(format) {
    // Blanks do not tell which cell of a row is missing.
    const bool blanks = format.separators.find(' ') != std::string::npos && format.columnWidth == 0;
    if (!blanks || !format.fields.empty()) return;
    m_least = format.columns.size();
    const auto isOptional = [](const TTextColumn& column) {
        return column.kind == TCellKind::Text || column.kind == TCellKind::Empty;
    };
    while (m_least > 0 && isOptional(format.columns[m_least - 1])) --m_least;
}

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
    if (ReadCell(cells, m_format.yColumn, m_format.yFormat, y, problem)) return true;
    const auto index = static_cast<std::size_t>(m_format.yColumn);
    const TTextColumn& column = Column(m_format.yColumn);
    const bool isOfNumbers = m_format.yFormat == TColumnFormat::Number && column.kind == TCellKind::Number;
    const bool mayBeInfinite =
        isOfNumbers && !column.hasMarks && cells.size() >= m_least && index < cells.size();
    const auto value = mayBeInfinite ? ParseNotFinite(cells[index].text) : std::nullopt;
    if (!value) return false;
    y = *value;
    problem = {};
    return true;
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
    if (cells.size() < m_least && index < cells.size()) {
        problem.text = "has " + std::to_string(cells.size()) + " cells, not " + std::to_string(m_least) +
                       ": blanks do not tell which one is missing";
        return false;
    }
    const char* fault = index >= cells.size()           ? " is missing"
                        : cells[index].text.empty()     ? " is empty"
                        : kind == TColumnFormat::Number ? ReadNumberCell(cells[index], column, value)
                                                        : ReadDateCell(cells[index], column, value);
    if (fault == nullptr) return true;
    const bool hasText = index < cells.size() && !cells[index].text.empty();
    problem.column = column;
    problem.text =
        (hasText ? Quoted(cells[index]) + " in " : "") + "column " + ColumnText(m_format, column) + fault;
    return false;
}

const TTextColumn& TRowValues::Column(int column) const {
    static const TTextColumn none;
    const auto index = static_cast<std::size_t>(column);
    return index < m_format.columns.size() ? m_format.columns[index] : none;
}

// Null, or what is wrong with the cell.
const char* TRowValues::ReadNumberCell(const TTextCell& cell, int column, double& value) const {
    TNumberReading reading;
    const TUnitMarks& unit = Column(column).marks;
    if (unit.IsEmpty() || unit == kBracketMarks) reading = ParseNumber(cell.text, m_format.decimalSign);
    if (!unit.IsEmpty() && reading.state == TNumberState::NoNumber) {
        TUnitMarks marks;
        reading = ParseWithUnit(cell.text, m_format.decimalSign, marks);
        if (reading.state == TNumberState::Number && marks != unit) return " is in another unit";
    }
    value = reading.value;
    switch (reading.state) {
    case TNumberState::Number: return nullptr;
    case TNumberState::NoNumber: return IsMissingMark(cell.text) ? " is no value" : " is not a number";
    case TNumberState::NotFinite: return " is no value";
    case TNumberState::TooLarge: return " is too large";
    case TNumberState::TooSmall: break;
    }
    return " is too close to 0";
}

// A number in a column that is said to hold dates is the count of days that they would become.
const char* TRowValues::ReadDateCell(const TTextCell& cell, int column, double& value) const {
    const TCellKind kind = Column(column).kind;
    if (const auto date = ParseDate(cell.text, m_format.dateOrder, m_format.shortTimes)) {
        value = date->days;
        if (kind == TCellKind::Date && date->parts == TDateParts::TimeOfDay) return " is not a date";
        if (kind == TCellKind::TimeOfDay && date->parts == TDateParts::Date) return " is not a time of day";
        return nullptr;
    }
    if (IsMissingMark(cell.text)) return " is no value";
    const TNumberReading number = ParseNumber(cell.text, m_format.decimalSign);
    value = number.value;
    const bool isFound = kind == TCellKind::Date || kind == TCellKind::TimeOfDay;
    return number.state == TNumberState::Number && !isFound ? nullptr : " is not a date";
}

double TTimeRun::Next(double time) {
    constexpr double kHalfADay = 0.5;
    if (!m_runsOn) return time;
    if (time + m_days < m_last - kHalfADay) m_days += 1;
    m_last = time + m_days;
    return m_last;
}

std::string TRowValues::Quoted(const TTextCell& cell) const {
    const std::string text = DisplayText(cell, m_format);
    const std::string_view shown = CutUtf8(text, kShownBytes);
    return "'" + std::string(shown) + (shown.size() < text.size() ? "…'" : "'");
}

} // namespace lumoplot
