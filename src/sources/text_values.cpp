#include "sources/text_values.h"

#include "sources/text_number.h"
#include "support/code_page.h"

namespace lumoplot {
namespace {

constexpr std::size_t kShownBytes = 40;

} // namespace

bool TRowValues::Read(std::span<const TTextCell> cells, std::int64_t dataRow, double& x, double& y,
                      TRowProblem& problem) const {
    x = static_cast<double>(dataRow);
    if (m_format.xColumn != TTextFormat::kRowNumber &&
        !ReadCell(cells, m_format.xColumn, m_format.xFormat, x, problem))
        return false;
    if (m_format.timeColumn != TTextFormat::kNoColumn) {
        double time = 0;
        if (!ReadCell(cells, m_format.timeColumn, TColumnFormat::DateTime, time, problem)) return false;
        x += time;
    }
    return ReadCell(cells, m_format.yColumn, m_format.yFormat, y, problem);
}

bool TRowValues::ReadCell(std::span<const TTextCell> cells, int column, TColumnFormat kind, double& value,
                          TRowProblem& problem) const {
    problem.column = column;
    const std::string place = "column " + ColumnText(m_format, column);
    if (static_cast<std::size_t>(column) >= cells.size()) {
        problem.text = place + " is missing";
        return false;
    }
    const TTextCell& cell = cells[static_cast<std::size_t>(column)];
    if (cell.text.empty()) {
        problem.text = place + " is empty";
        return false;
    }
    if (kind == TColumnFormat::DateTime ? ReadDateCell(cell, value, problem)
                                        : ReadNumberCell(cell, value, problem))
        return true;
    problem.text = Quoted(cell) + " in " + place + problem.text;
    return false;
}

bool TRowValues::ReadNumberCell(const TTextCell& cell, double& value, TRowProblem& problem) const {
    const TNumberReading reading = ParseNumber(cell.text, m_format.decimalSign);
    value = reading.value;
    switch (reading.state) {
    case TNumberState::Number: return true;
    case TNumberState::NoNumber: problem.text = " is not a number"; break;
    case TNumberState::NotFinite: problem.text = " is no value"; break;
    case TNumberState::TooLarge: problem.text = " is too large"; break;
    case TNumberState::TooSmall: problem.text = " is too close to 0"; break;
    }
    return false;
}

// A number among dates is the count of days that it would become.
bool TRowValues::ReadDateCell(const TTextCell& cell, double& value, TRowProblem& problem) const {
    if (const auto date = ParseDate(cell.text, m_format.dateOrder)) {
        value = date->days;
        return true;
    }
    const TNumberReading number = ParseNumber(cell.text, m_format.decimalSign);
    value = number.value;
    problem.text = " is not a date";
    return number.state == TNumberState::Number;
}

std::string TRowValues::Quoted(const TTextCell& cell) const {
    const std::string text = DisplayText(cell, m_format);
    const std::string_view shown = CutUtf8(text, kShownBytes);
    return "'" + std::string(shown) + (shown.size() < text.size() ? "…'" : "'");
}

} // namespace lumoplot
