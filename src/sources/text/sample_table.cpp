#include "sources/text/sample_table.h"

#include "sources/text/text_number.h"
#include "sources/text/text_values.h"

#include <algorithm>
#include <array>
#include <map>

namespace lumoplot {
namespace {

constexpr std::array kDateOrders = {TDateOrder::YearMonthDay, TDateOrder::DayMonthYear,
                                    TDateOrder::MonthDayYear};

TCellKind KindOfCell(std::string_view text, char decimalSign) {
    if (text.empty()) return TCellKind::Empty;
    if (ParseNumber(text, decimalSign).state != TNumberState::NoNumber) return TCellKind::Number;
    for (const TDateOrder order : kDateOrders)
        if (const auto date = ParseDate(text, order))
            return date->parts == TDateParts::Date ? TCellKind::Date : TCellKind::TimeOfDay;
    return TCellKind::Text;
}

double Share(std::size_t part, std::size_t whole) {
    return whole == 0 ? 0 : static_cast<double>(part) / static_cast<double>(whole);
}

} // namespace

bool IsValue(TCellKind kind) {
    return kind == TCellKind::Number || kind == TCellKind::Date || kind == TCellKind::TimeOfDay;
}

std::size_t TSampleRow::Width() const {
    return cells.size() > 1 && kinds.back() == TCellKind::Empty ? cells.size() - 1 : cells.size();
}

bool TSampleRow::HasValue() const {
    return std::any_of(kinds.begin(), kinds.end(), IsValue);
}

TSampleTable::TSampleTable(const TTextSample& sample, const TTextFormat& format)
    : m_fixedHeaderRows(format.headerRows) {
    const std::size_t maxRows = kMaxRows + static_cast<std::size_t>(std::max(format.headerRows, 0));
    const TRowSplitter splitter(format);
    const TTextEnd textEnd = sample.whole ? TTextEnd::File : TTextEnd::More;
    const char* text = sample.text.data();
    const char* end = text + sample.text.size();
    while (text < end && m_rows.size() < maxRows) {
        TSampleRow row;
        const TTextRow read = splitter.Split(text, end, textEnd, row.cells);
        if (read.kind == TRowKind::Incomplete) break;
        row.kind = read.kind;
        for (const TTextCell& cell : row.cells)
            row.kinds.push_back(KindOfCell(cell.text, format.decimalSign));
        m_rows.push_back(std::move(row));
        text = read.next;
    }
    m_columns.resize(FindWidth());
    for (std::size_t column = 0; column < m_columns.size(); ++column) m_columns[column] = FindKind(column);
}

// The commonest width among rows with values, or among all where there are none; the larger one of equals.
std::size_t TSampleTable::FindWidth() const {
    std::map<std::size_t, std::size_t> withValues;
    std::map<std::size_t, std::size_t> all;
    for (const TSampleRow& row : m_rows) {
        if (row.kind != TRowKind::Data) continue;
        ++all[row.Width()];
        if (row.HasValue()) ++withValues[row.Width()];
    }
    std::size_t width = 0;
    std::size_t most = 0;
    for (const auto& [count, rows] : withValues.empty() ? all : withValues)
        if (rows >= most) {
            width = count;
            most = rows;
        }
    return width;
}

// Of the rows with values; where the header rows are to be found, the first third of all may be some and has
// no vote.
TCellKind TSampleTable::FindKind(std::size_t column) const {
    std::array<std::size_t, 5> counts{};
    std::size_t cells = 0;
    const std::size_t first =
        m_fixedHeaderRows < 0 ? m_rows.size() / 3 : static_cast<std::size_t>(m_fixedHeaderRows);
    for (std::size_t i = first; i < m_rows.size(); ++i) {
        const TSampleRow& row = m_rows[i];
        if (row.kind != TRowKind::Data || row.Width() != m_columns.size() || column >= row.kinds.size())
            continue;
        if (row.kinds[column] == TCellKind::Empty || !row.HasValue()) continue;
        ++counts[static_cast<std::size_t>(row.kinds[column])];
        ++cells;
    }
    if (cells == 0) return TCellKind::Empty;
    for (const TCellKind kind : {TCellKind::Number, TCellKind::Date, TCellKind::TimeOfDay})
        if (counts[static_cast<std::size_t>(kind)] * 2 >= cells) return kind;
    return TCellKind::Text;
}

bool TSampleTable::FitsColumns(const TSampleRow& row) const {
    if (row.kind != TRowKind::Data) return false;
    std::size_t values = 0;
    std::size_t filled = 0;
    for (std::size_t column = 0; column < m_columns.size(); ++column) {
        if (!IsValue(m_columns[column])) continue;
        ++values;
        const TCellKind kind = column < row.kinds.size() ? row.kinds[column] : TCellKind::Empty;
        if (kind == m_columns[column])
            ++filled;
        else if (kind != TCellKind::Empty)
            return false;
    }
    return filled > 0 && filled * 2 >= values && row.Width() <= m_columns.size();
}

// Whether row `index`, in front of the data, is one of them with a bad cell, to be reported: among the header
// rows it would be lost in silence. Either it begins as they do, or it holds a value at a value's place below
// a row of names.
bool TSampleTable::IsSpoilt(std::size_t index) const {
    const TSampleRow& row = m_rows[index];
    if (row.kind != TRowKind::Data || row.Width() > m_columns.size()) return false;
    const auto isNames = [this](const TSampleRow& other) {
        return other.kind == TRowKind::Data && other.Width() == m_columns.size() && !other.HasValue();
    };
    const auto above = m_rows.begin() + static_cast<std::ptrdiff_t>(index);
    const bool hasNames = std::any_of(m_rows.begin(), above, isNames);
    for (std::size_t column = 0; column < std::min(m_columns.size(), row.kinds.size()); ++column) {
        if (!IsValue(m_columns[column])) continue;
        if (row.kinds[column] == m_columns[column]) return true;
        if (!hasNames) return false;
    }
    return false;
}

std::size_t TSampleTable::FirstFitting() const {
    constexpr std::size_t kLookAhead = 6;
    for (std::size_t first = 0; first < m_rows.size(); ++first) {
        if (!FitsColumns(m_rows[first])) continue;
        std::size_t rows = 0;
        std::size_t fitting = 0;
        for (std::size_t i = first; i < m_rows.size() && rows < kLookAhead; ++i) {
            if (m_rows[i].kind != TRowKind::Data) continue;
            ++rows;
            if (FitsColumns(m_rows[i])) ++fitting;
        }
        if (fitting * 2 >= rows) return first;
    }
    return 0;
}

std::size_t TSampleTable::HeaderRows() const {
    if (m_fixedHeaderRows >= 0) return static_cast<std::size_t>(m_fixedHeaderRows);
    std::size_t first = FirstFitting();
    for (std::size_t i = first; i > 0; --i) {
        if (m_rows[i - 1].kind != TRowKind::Data) continue;
        if (!IsSpoilt(i - 1)) break;
        first = i - 1;
    }
    return first;
}

// The cells of a row that can name the columns, or none. A label in front of the names ("Data: y x") is left
// out.
std::span<const TTextCell> TSampleTable::NameCells(const TSampleRow& row) const {
    const std::span<const TTextCell> cells(row.cells);
    const std::size_t texts =
        static_cast<std::size_t>(std::count(row.kinds.begin(), row.kinds.end(), TCellKind::Text));
    if (texts * 2 < m_columns.size()) return {};
    if (row.Width() == m_columns.size()) return cells.first(m_columns.size());
    const bool labelled = row.Width() == m_columns.size() + 1 && cells[0].text.ends_with(':');
    return labelled ? cells.subspan(1, m_columns.size()) : std::span<const TTextCell>();
}

// Names stand in the first of the rows with as many texts as columns that directly precede the data (units
// may follow them), or in the last comment.
std::vector<TTextCell> TSampleTable::ColumnNames(std::size_t headerRows) const {
    std::span<const TTextCell> names;
    bool inRows = false;
    for (std::size_t i = std::min(headerRows, m_rows.size()); i > 0; --i) {
        const TSampleRow& row = m_rows[i - 1];
        if (row.kind == TRowKind::Blank && !inRows) continue;
        const auto cells = NameCells(row);
        if (cells.empty() || (inRows && row.kind == TRowKind::Comment)) break;
        names = cells;
        if (row.kind == TRowKind::Comment) break;
        inRows = true;
    }
    return {names.begin(), names.end()};
}

double TSampleTable::Score(std::size_t headerRows) const {
    std::size_t rows = 0;
    std::size_t fitting = 0;
    std::size_t regular = 0;
    std::size_t cells = 0;
    std::size_t values = 0;
    std::size_t allRows = 0;
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        const TSampleRow& row = m_rows[i];
        if (row.kind != TRowKind::Data) continue;
        ++allRows;
        if (i < headerRows) continue;
        ++rows;
        if (FitsColumns(row)) ++fitting;
        if (row.Width() == m_columns.size()) ++regular;
        for (const TCellKind kind : row.kinds) {
            if (kind != TCellKind::Empty) ++cells;
            if (IsValue(kind)) ++values;
        }
    }
    const auto valueColumns = std::count_if(m_columns.begin(), m_columns.end(), IsValue);
    const double columns = valueColumns == 0 ? 0 : valueColumns == 1 ? 0.6 : 1;
    return columns * Share(fitting, rows) * Share(values, cells) * (0.5 + 0.5 * Share(regular, rows)) *
           (0.5 + 0.5 * Share(rows, allRows));
}

bool TSampleTable::HasTrailingSeparator(std::size_t headerRows) const {
    std::size_t rows = 0;
    for (std::size_t i = headerRows; i < m_rows.size(); ++i) {
        if (m_rows[i].kind != TRowKind::Data) continue;
        ++rows;
        if (m_rows[i].cells.size() != m_columns.size() + 1) return false;
    }
    return rows > 0;
}

bool TSampleTable::HasDecimalSign(char sign) const {
    for (const TSampleRow& row : m_rows)
        for (std::size_t i = 0; i < row.cells.size(); ++i)
            if (row.kinds[i] == TCellKind::Number && row.cells[i].text.find(sign) != std::string_view::npos)
                return true;
    return false;
}

TSamplePoints TSampleTable::Points(const TTextFormat& format) const {
    const TRowValues values(format);
    TSamplePoints points;
    std::int64_t dataRow = 0;
    for (std::size_t i = static_cast<std::size_t>(format.headerRows); i < m_rows.size(); ++i) {
        if (m_rows[i].kind != TRowKind::Data) continue;
        double x = 0;
        double y = 0;
        TRowProblem problem;
        const auto& cells = m_rows[i].cells;
        if (values.ReadX(cells, ++dataRow, x, problem) && values.ReadY(cells, y, problem))
            points.emplace_back(x, y);
    }
    return points;
}

TSampleTable::TDateFit TSampleTable::FitDates(TDateOrder order) const {
    TDateFit fit;
    const auto column = std::find(m_columns.begin(), m_columns.end(), TCellKind::Date) - m_columns.begin();
    const auto index = static_cast<std::size_t>(column);
    double previous = 0;
    int direction = 0;
    for (const TSampleRow& row : m_rows) {
        if (index >= row.cells.size() || row.kinds[index] != TCellKind::Date) continue;
        const auto date = ParseDate(row.cells[index].text, order);
        if (!date) continue;
        if (!date->fixed) ++fit.open;
        if (fit.read++ > 0 && date->days != previous) {
            const int turn = date->days > previous ? 1 : -1;
            if (direction != 0 && turn != direction) ++fit.reversals;
            direction = turn;
        }
        previous = date->days;
    }
    return fit;
}

} // namespace lumoplot
