#include "sources/text/layout/header_rows.h"

#include "sources/cells/folded_text.h"
#include "sources/cells/unit_names.h"
#include "sources/text/layout/number_names.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

// A row that is narrower than the table, with a row of names for all columns soon behind it.
bool IsInFrontOfNames(const TSampleTable& table, std::size_t index) {
    constexpr std::size_t kSoon = 4;
    const auto& rows = table.Rows();
    const std::size_t columns = table.Columns().size();
    std::size_t count = 0;
    for (std::size_t i = index; i < rows.size() && count < kSoon; ++i) {
        if (rows[i].kind != TRowKind::Data) continue;
        const bool isFull = rows[i].cells.size() == columns;
        if (isFull && count > 0)
            return std::ranges::count(rows[i].kinds, TCellKind::Text) == static_cast<std::ptrdiff_t>(columns);
        if (isFull) return false;
        ++count;
    }
    return false;
}

std::size_t FirstFitting(const TSampleTable& table) {
    constexpr std::size_t kLookAhead = 6;
    const auto& rows = table.Rows();
    for (std::size_t first = 0; first < rows.size(); ++first) {
        if (!table.FitsColumns(rows[first]) || IsNamedByNumbers(table, first)) continue;
        if (IsInFrontOfNames(table, first)) continue;
        std::size_t count = 0;
        std::size_t fitting = 0;
        for (std::size_t i = first; i < rows.size() && count < kLookAhead; ++i) {
            if (rows[i].kind != TRowKind::Data) continue;
            ++count;
            if (table.FitsColumns(rows[i])) ++fitting;
        }
        if (fitting * 2 >= count) return first;
    }
    return 0;
}

// Whether row `index`, in front of the data, is one of them with a bad cell, to be reported: among the header
// rows it would be lost in silence. Either it begins as they do, or it holds a value at a value's place below
// a row of names.
bool IsSpoilt(const TSampleTable& table, std::size_t index) {
    const TSampleRow& row = table.Rows()[index];
    const auto& columns = table.Columns();
    if (row.kind != TRowKind::Data || row.cells.size() > columns.size()) return false;
    if (IsNamedByNumbers(table, index)) return false;
    const bool hasNames = index > 0 && table.Rows()[index - 1].kind == TRowKind::Data &&
                          table.Rows()[index - 1].cells.size() == columns.size() &&
                          !table.Rows()[index - 1].HasValue();
    for (std::size_t column = 0; column < std::min(columns.size(), row.kinds.size()); ++column) {
        if (!IsValue(columns[column])) continue;
        if (row.kinds[column] == columns[column]) return true;
        if (!hasNames) return false;
    }
    return false;
}

bool IsSection(const TSampleRow& row) {
    const auto filled = std::ranges::count_if(row.cells, [](const auto& cell) { return !cell.text.empty(); });
    const std::string_view text = row.cells.empty() ? std::string_view() : row.cells[0].text;
    if (filled != 1 || text.empty()) return false;
    return text.starts_with('[') || text.starts_with('<') || text.starts_with("***") ||
           text.ends_with("***") || text.starts_with("==") || text.starts_with("--") ||
           FoldText(text) == "data" || text.ends_with(':');
}

// As many columns as there are up to the last one of that kind.
template <class TPredicate>
std::size_t CountColumns(const TSampleTable& table, TPredicate isKind) {
    std::size_t count = table.Columns().size();
    while (count > 1 && !isKind(table.Columns()[count - 1])) --count;
    return count;
}

// The cells of a row that can name so many columns, or none. A label in front of the names ("Data: y x") is
// left out; with one cell less the first column has the names of the rows.
std::vector<TTextCell> NameCells(const TSampleTable& table, std::size_t index, bool hasRowNames) {
    const TSampleRow& row = table.Rows()[index];
    const TNumberNames numberNames = NamesAboveDecimals(table, index);
    if (numberNames != TNumberNames::None) {
        std::vector<TTextCell> names = row.cells;
        if (names.size() < table.Columns().size()) names.insert(names.begin(), TTextCell());
        return names;
    }
    const std::size_t columns = CountColumns(table, [](TCellKind kind) { return kind != TCellKind::Empty; });
    const std::size_t valueColumns = CountColumns(table, IsValue);
    std::vector<TTextCell> cells = row.cells;
    while (cells.size() > columns && cells.back().text.empty()) cells.pop_back();
    const auto texts = static_cast<std::size_t>(std::ranges::count(row.kinds, TCellKind::Text));
    const auto numbers = static_cast<std::size_t>(std::ranges::count_if(row.kinds, IsValue));
    if (texts == 0 || (texts < numbers && WholeNumbers(row, 1).size() != numbers)) return {};
    if (texts * 2 < columns && texts + numbers + 1 < columns) return {};
    if (cells.size() == columns + 1 && cells[0].text.ends_with(':')) cells.erase(cells.begin());
    if (cells.size() + 1 == columns && hasRowNames) cells.insert(cells.begin(), TTextCell());
    // Texts behind the columns that have names need none.
    const bool isRest = cells.size() > 1 && cells.size() >= valueColumns && numbers == 0;
    if (cells.size() < columns && isRest) cells.resize(columns);
    return cells.size() >= columns && cells.size() <= columns + 8 ? cells : std::vector<TTextCell>();
}

// The first cells of the table name its rows: texts, or numbers that count them or stand in quotes.
bool HasRowNames(const TSampleTable& table) {
    if (table.Columns().empty() || table.Columns()[0] == TCellKind::Text) return true;
    double last = 0;
    for (const TSampleRow* row : table.Voters()) {
        if (row->cells.empty() || row->KindAt(0) != TCellKind::Number) return false;
        const std::string_view text = row->cells[0].text;
        const bool isQuoted = text.data() > row->text.data() && text.data()[-1] == '"';
        const double value = row->numbers[0].value;
        if (!isQuoted && (value != std::floor(value) || value != last + 1)) return false;
        last = value;
    }
    return true;
}

bool AreUnits(const std::vector<TTextCell>& cells) {
    std::size_t filled = 0;
    std::size_t units = 0;
    std::size_t letters = 0; // names as likely as units
    for (const TTextCell& cell : cells) {
        if (cell.text.empty() || cell.text == "-") continue;
        ++filled;
        if (!IsUnitName(cell.text)) continue;
        ++units;
        if (cell.text.size() == 1 && LetterLength(cell.text) == 1) ++letters;
    }
    return filled > 0 && units * 2 >= filled && (letters < units || units == filled);
}

class TNameFinder {
public:
    TNameFinder(const TSampleTable& table, std::size_t headerRows, const TTextFormat& format)
        : m_table(table), m_format(format), m_next(std::min(headerRows, table.Rows().size())),
          m_hasRowNames(HasRowNames(table)) {}

    TColumnNames Find() {
        const auto last = Next(TEmptyRows::Pass);
        if (last.empty()) return {};
        if (m_table.Rows()[m_next].kind == TRowKind::Comment) return NamesInComments(last);
        if (!AreUnits(last)) {
            // Comments may stand below the units.
            const auto below = m_next;
            const auto units = Next(TEmptyRows::Stop);
            const auto names = AreUnits(units) ? Next(TEmptyRows::Stop) : std::vector<TTextCell>();
            m_next = below;
            return names.empty() ? TColumnNames{last, {}} : TColumnNames{names, units};
        }
        const auto names = Next(TEmptyRows::Stop);
        return names.empty() ? TColumnNames{last, {}} : TColumnNames{names, last};
    }

private:
    enum class TEmptyRows { Pass, Stop };

    // Comments may be prose: only what can be nothing but units belongs to the names above it.
    TColumnNames NamesInComments(const std::vector<TTextCell>& last) {
        const bool areUnits =
            std::ranges::all_of(last, [](const auto& cell) { return IsUnitName(cell.text); });
        const auto names = areUnits ? Next(TEmptyRows::Stop) : std::vector<TTextCell>();
        const bool areNames =
            !names.empty() && !m_table.Rows()[m_next].HasValue() && names.size() == last.size();
        return areNames ? TColumnNames{names, last} : TColumnNames{last, {}};
    }

    // The names in the next row above that has some.
    std::vector<TTextCell> Next(TEmptyRows emptyRows) {
        std::size_t comments = 0;
        for (; m_next > 0; --m_next) {
            const TSampleRow& row = m_table.Rows()[m_next - 1];
            const bool isEmpty =
                row.kind == TRowKind::Blank || (row.kind == TRowKind::Data && IsSection(row));
            if (isEmpty && emptyRows == TEmptyRows::Pass) continue;
            if (isEmpty && !IsRuleOrTop(row)) return {};
            if (isEmpty) continue;
            auto cells = NameCells(m_table, m_next - 1, m_hasRowNames);
            if (cells.empty()) cells = OtherwiseDivided(row);
            if (!cells.empty()) {
                --m_next;
                return cells;
            }
            if (row.kind != TRowKind::Comment || ++comments > 3) return {};
        }
        return {};
    }

    // A drawn line may stand between names and units.
    static bool IsRuleOrTop(const TSampleRow& row) {
        return row.kind == TRowKind::Blank && row.text.find_first_of("-=_") != std::string_view::npos;
    }

    // Names that are divided by other characters than the rows.
    std::vector<TTextCell> OtherwiseDivided(const TSampleRow& row) const {
        if (row.cells.size() == m_table.Columns().size()) return {};
        for (const char* separators : {"\t", ";", ",", "|", " \t"}) {
            if (m_format.separators == separators || m_format.columnWidth > 0) continue;
            TTextFormat format = m_format;
            format.separators = separators;
            format.fields.clear();
            const TRowSplitter splitter(format);
            std::vector<TTextCell> cells;
            splitter.Split(row.text.data(), row.text.data() + row.text.size(), TTextEnd::File, cells);
            const auto isText = [this](const TTextCell& cell) {
                return !cell.text.empty() &&
                       ParseNumber(cell.text, m_format.decimalSign).state == TNumberState::NoNumber;
            };
            if (cells.size() == m_table.Columns().size() && cells.size() > 1 &&
                std::ranges::all_of(cells, isText))
                return cells;
        }
        return {};
    }

    const TSampleTable& m_table;
    const TTextFormat& m_format;
    std::size_t m_next; ///< behind the row to look at
    bool m_hasRowNames;
};

} // namespace

std::size_t FindHeaderRows(const TSampleTable& table) {
    if (table.HasFixedHeader()) return static_cast<std::size_t>(table.FixedHeaderRows());
    std::size_t first = FirstFitting(table);
    for (std::size_t i = first; i > 0; --i) {
        if (table.Rows()[i - 1].kind != TRowKind::Data) continue;
        if (!IsSpoilt(table, i - 1)) break;
        first = i - 1;
    }
    return first;
}

TColumnNames FindColumnNames(const TSampleTable& table, std::size_t headerRows, const TTextFormat& format) {
    return TNameFinder(table, headerRows, format).Find();
}

} // namespace lumoplot
