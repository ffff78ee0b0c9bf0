#include "sources/text/layout/sample_table.h"

#include "sources/cells/plain_number.h"
#include "sources/text/text_values.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>

namespace lumoplot {
namespace {

constexpr std::array kDateOrders = {TDateOrder::YearMonthDay, TDateOrder::DayMonthYear,
                                    TDateOrder::MonthDayYear};

// "(300)": a number where its column says so.
bool IsBracketed(std::string_view text, char decimalSign, TNumberReading& number) {
    TUnitMarks marks;
    if (!text.starts_with('(')) return false;
    number = ParseWithUnit(text, decimalSign, marks);
    return number.state == TNumberState::Number && marks == kBracketMarks;
}

TCellKind KindOfCell(std::string_view text, char decimalSign, TNumberReading& number) {
    if (text.empty()) return TCellKind::Empty;
    const bool beginsAsNumber = (text.front() >= '0' && text.front() <= '9') || text.front() == '-';
    if (beginsAsNumber && ParsePlainNumber(text, decimalSign, number)) return TCellKind::Number;
    if (IsMissingMark(text)) return TCellKind::Empty;
    number = ParseNumber(text, decimalSign);
    if (number.state == TNumberState::NotFinite) return TCellKind::Empty;
    if (number.state != TNumberState::NoNumber) return TCellKind::Number;
    if (IsBracketed(text, decimalSign, number)) return TCellKind::Number;
    for (const TDateOrder order : kDateOrders)
        if (const auto date = ParseDate(text, order))
            return date->parts == TDateParts::Date ? TCellKind::Date : TCellKind::TimeOfDay;
    return TCellKind::Text;
}

void FindKinds(TSampleRow& row, char decimalSign) {
    row.numbers.resize(row.cells.size());
    row.kinds.reserve(row.cells.size());
    for (std::size_t i = 0; i < row.cells.size(); ++i)
        row.kinds.push_back(KindOfCell(row.cells[i].text, decimalSign, row.numbers[i]));
}

// Which share of the cells that both have is of different kinds is at most a third.
bool IsAlike(const std::vector<TCellKind>& signature, const TSampleRow& row) {
    std::size_t compared = 0;
    std::size_t different = 0;
    for (std::size_t i = 0; i < std::min(signature.size(), row.kinds.size()); ++i) {
        if (signature[i] == TCellKind::Empty || row.kinds[i] == TCellKind::Empty) continue;
        ++compared;
        if (signature[i] != row.kinds[i]) ++different;
    }
    return compared > 0 && different * 3 <= compared;
}

void Extend(std::vector<TCellKind>& signature, const TSampleRow& row) {
    signature.resize(std::max(signature.size(), row.kinds.size()), TCellKind::Empty);
    for (std::size_t i = 0; i < row.kinds.size(); ++i)
        if (signature[i] == TCellKind::Empty) signature[i] = row.kinds[i];
}

/// Rows one after the other that look alike.
struct TRun {
    std::size_t first = 0;
    std::size_t values = 0;
};

double Share(std::size_t part, std::size_t whole) {
    return whole == 0 ? 0 : static_cast<double>(part) / static_cast<double>(whole);
}

std::size_t CountValues(const TSampleRow& row) {
    return static_cast<std::size_t>(std::ranges::count_if(row.kinds, IsValue));
}

std::size_t CountFilled(const TSampleRow& row) {
    return row.kinds.size() - static_cast<std::size_t>(std::ranges::count(row.kinds, TCellKind::Empty));
}

// In a column of texts: what another reading would take for a number.
bool LooksLikeNumber(std::string_view text) {
    return text.find_first_of("0123456789") != std::string_view::npos &&
           text.find_first_not_of("0123456789.,+-'eE ") == std::string_view::npos;
}

// Rows of nothing but values count more than keys with a value behind them.
std::size_t WeightOf(const TSampleRow& row) {
    const std::size_t values = CountValues(row);
    return values == CountFilled(row) ? values * 2 : values;
}

} // namespace

bool IsValue(TCellKind kind) {
    return kind == TCellKind::Number || kind == TCellKind::Date || kind == TCellKind::TimeOfDay;
}

bool TSampleRow::HasValue() const {
    return std::ranges::any_of(kinds, IsValue);
}

TSampleTable::TSampleTable(const TTextSample& sample, const TTextFormat& format)
    : m_fixedHeaderRows(format.headerRows), m_decimalSign(format.decimalSign) {
    const TRowSplitter splitter(format);
    ReadFront(sample, splitter, format.decimalSign);
    const std::string_view rest = std::string_view(sample.text).substr(m_read);
    ReadBehind(rest, sample.whole ? TTextEnd::File : TTextEnd::More, splitter, format.decimalSign);
    ReadBehind(sample.behind, TTextEnd::File, splitter, format.decimalSign);
    ReadBehind(sample.odd, TTextEnd::File, splitter, format.decimalSign);
    FindVoters();
    WidenTo(FindWidth());
}

void TSampleTable::ReadFront(const TTextSample& sample, const TRowSplitter& splitter, char decimalSign) {
    const TTextEnd textEnd = sample.whole ? TTextEnd::File : TTextEnd::More;
    const char* text = sample.text.data();
    const char* end = text + sample.text.size();
    // Header rows that somebody has counted may be rows of numbers, too.
    const char* enough = m_fixedHeaderRows > 0 ? end : text + std::min(sample.enough, sample.text.size());
    constexpr std::size_t kMostRows = 20000;
    std::size_t withValues = 0;
    while (text < enough && withValues < kMaxRows && m_rows.size() < kMostRows) {
        TSampleRow row;
        if (!m_rows.empty()) row.cells.reserve(m_rows.back().cells.size());
        const TTextRow read = splitter.Split(text, end, textEnd, row.cells);
        if (read.kind == TRowKind::Incomplete) break;
        row.kind = read.kind;
        row.text = {text, static_cast<std::size_t>(read.next - text)};
        FindKinds(row, decimalSign);
        const bool isData =
            row.kind == TRowKind::Data && static_cast<int>(m_rows.size()) >= m_fixedHeaderRows;
        // Keys with a number behind them may stand in front of the table.
        if (isData && CountValues(row) * 2 > CountFilled(row)) ++withValues;
        m_rows.push_back(std::move(row));
        text = read.next;
    }
    m_read = static_cast<std::size_t>(text - sample.text.data());
}

// All rows of a short text, of a longer one some at even distances.
void TSampleTable::ReadBehind(std::string_view text, TTextEnd textEnd, const TRowSplitter& splitter,
                              char decimalSign) {
    constexpr std::size_t kShort = 16384;
    const std::size_t stride = text.size() <= kShort ? 0 : text.size() / kMaxRows;
    const char* end = text.data() + text.size();
    for (const char* at = text.data(); at < end;) {
        TSampleRow row;
        if (!m_behind.empty()) row.cells.reserve(m_behind.back().cells.size());
        const TTextRow read = splitter.Split(at, end, textEnd, row.cells);
        if (read.kind == TRowKind::Incomplete) break;
        row.kind = read.kind;
        row.text = {at, static_cast<std::size_t>(read.next - at)};
        if (row.kind == TRowKind::Data) {
            FindKinds(row, decimalSign);
            m_behind.push_back(std::move(row));
        }
        const char* next = read.next;
        if (stride > 0 && static_cast<std::size_t>(next - at) < stride) {
            next = at + std::min(stride, static_cast<std::size_t>(end - at));
            next = FindLineEnd(next, end);
            while (next < end && (*next == '\r' || *next == '\n')) ++next;
        }
        at = next;
    }
}

// The table is the longest run of rows that look alike, by their values, with all that follows it. One row
// that is different does not end a run.
void TSampleTable::FindVoters() {
    std::size_t begin = static_cast<std::size_t>(std::max(m_fixedHeaderRows, 0));
    if (m_fixedHeaderRows < 0) {
        TRun best;
        TRun run;
        std::vector<TCellKind> signature;
        std::vector<TCellKind> other;
        std::size_t different = m_rows.size();
        for (std::size_t i = 0; i < m_rows.size(); ++i) {
            const TSampleRow& row = m_rows[i];
            if (row.kind != TRowKind::Data || row.cells.empty()) continue;
            const bool isAlike = run.values > 0 && IsAlike(signature, row);
            if (!isAlike && different == m_rows.size() && run.values > 0) {
                different = i;
                other.clear();
                Extend(other, row);
                continue;
            }
            if (!isAlike) {
                const bool goesOn = different < m_rows.size() && IsAlike(other, row);
                run = {goesOn ? different : i, goesOn ? WeightOf(m_rows[different]) : 0};
                signature.clear();
                if (goesOn) Extend(signature, m_rows[different]);
            }
            different = m_rows.size();
            Extend(signature, row);
            run.values += WeightOf(row);
            if (run.values > best.values) best = run;
        }
        begin = best.first;
    }
    for (std::size_t i = begin; i < m_rows.size(); ++i)
        if (m_rows[i].kind == TRowKind::Data && m_rows[i].HasValue()) m_voters.push_back(&m_rows[i]);
    for (const TSampleRow& row : m_behind)
        if (row.HasValue()) m_voters.push_back(&row);
    if (!m_voters.empty()) return;
    for (const TSampleRow& row : m_rows)
        if (row.kind == TRowKind::Data) m_voters.push_back(&row);
}

// The commonest number of cells, empty ones among them; the larger one of equals.
std::size_t TSampleTable::FindWidth() const {
    std::map<std::size_t, std::size_t> widths;
    for (const TSampleRow* row : m_voters) ++widths[row->cells.size()];
    std::size_t width = 0;
    std::size_t most = 0;
    for (const auto& [count, rows] : widths)
        if (rows >= most) {
            width = count;
            most = rows;
        }
    return width;
}

TCellKind TSampleTable::FindKind(std::size_t column) {
    FindBrackets(column);
    std::array<std::size_t, 5> counts{};
    std::size_t cells = 0;
    for (const TSampleRow* row : m_voters) {
        const TCellKind kind = row->KindAt(column);
        if (kind == TCellKind::Empty) continue;
        ++counts[static_cast<std::size_t>(kind)];
        ++cells;
    }
    if (cells == 0) return IsInfinite(column) ? TCellKind::Number : TCellKind::Empty;
    const auto count = [&counts](TCellKind kind) { return counts[static_cast<std::size_t>(kind)]; };
    if (count(TCellKind::Number) * 2 >= cells) {
        TakeDigitsForDates(column);
        const bool areDates = std::ranges::none_of(
            m_voters, [column](auto* row) { return row->KindAt(column) == TCellKind::Number; });
        return areDates ? TCellKind::Date : TCellKind::Number;
    }
    for (const TCellKind kind : {TCellKind::Date, TCellKind::TimeOfDay})
        if (count(kind) * 2 >= cells) return kind;
    return FindUnits(column) ? TCellKind::Number : TCellKind::Text;
}

bool TSampleTable::HasMarks(std::size_t column) const {
    const auto isMark = [this, column](const TSampleRow* row) {
        if (column >= row->cells.size() || row->KindAt(column) != TCellKind::Empty) return false;
        const std::string_view text = row->cells[column].text;
        return !text.empty() && !ParseNotFinite(text) &&
               ParseNumber(text, m_decimalSign).state != TNumberState::NotFinite;
    };
    return std::ranges::any_of(m_voters, isMark);
}

// A column of nothing but infinities, in half of the rows or more.
bool TSampleTable::IsInfinite(std::size_t column) const {
    const auto isInfinite = [column](const TSampleRow* row) {
        return column < row->cells.size() && ParseNotFinite(row->cells[column].text);
    };
    const auto count = static_cast<std::size_t>(std::ranges::count_if(m_voters, isInfinite));
    return count > 0 && count * 2 >= m_voters.size() && !HasMarks(column);
}

// Numbers of eight, twelve or fourteen digits that are dates of our time throughout are dates. So are shorter
// ones ("202401", "2024031", "01.2024") that go beyond a year: others would not stop at its end.
void TSampleTable::TakeDigitsForDates(std::size_t column) {
    constexpr double kFirst = 1;    // 1900
    constexpr double kLast = 73051; // 2100
    constexpr std::size_t kFewestShort = 6;
    std::size_t dates = 0;
    bool isShort = false;
    std::set<std::string_view> years;
    for (const TSampleRow* row : m_voters) {
        if (row->KindAt(column) != TCellKind::Number) continue;
        const std::string_view text = row->cells[column].text;
        const bool isMonth = text.size() == 7 && text[2] == '.';
        if (text.size() < 6 || (!isMonth && text.find_first_not_of("0123456789") != std::string_view::npos))
            return;
        const auto date = ParseDate(text, TDateOrder::YearMonthDay);
        if (!date || date->days < kFirst || date->days > kLast) return;
        isShort = isShort || text.size() < 8;
        years.insert(isMonth ? text.substr(3) : text.substr(0, 4));
        ++dates;
    }
    if (dates < 2 || (isShort && (years.size() < 2 || dates < kFewestShort))) return;
    for (auto* rows : {&m_rows, &m_behind})
        for (TSampleRow& row : *rows)
            if (row.KindAt(column) == TCellKind::Number &&
                ParseDate(row.cells[column].text, TDateOrder::YearMonthDay))
                row.kinds[column] = TCellKind::Date;
}

// A column of texts that are numbers with the same unit in most cells holds numbers.
bool TSampleTable::FindUnits(std::size_t column) {
    std::vector<std::pair<TUnitMarks, std::size_t>> found;
    std::size_t cells = 0;
    std::size_t others = 0;
    for (const TSampleRow* row : m_voters) {
        if (row->KindAt(column) == TCellKind::Empty) continue;
        ++cells;
        TUnitMarks marks;
        if (ParseWithUnit(row->cells[column].text, m_decimalSign, marks).state != TNumberState::Number ||
            marks == kBracketMarks) {
            if (++others * 2 > m_voters.size()) return false;
            continue;
        }
        const auto same = std::ranges::find(found, marks, [](const auto& entry) { return entry.first; });
        if (same == found.end())
            found.emplace_back(marks, 1);
        else
            ++same->second;
    }
    const auto most = std::ranges::max_element(found, {}, [](const auto& entry) { return entry.second; });
    if (most == found.end() || most->second * 2 < cells) return false;
    m_units[column] = most->first;
    for (auto* rows : {&m_rows, &m_behind})
        for (TSampleRow& row : *rows) {
            if (row.KindAt(column) == TCellKind::Empty) continue;
            TUnitMarks marks;
            const auto number = ParseWithUnit(row.cells[column].text, m_decimalSign, marks);
            const bool isNumber = number.state == TNumberState::Number && marks == most->first;
            row.kinds[column] = isNumber ? TCellKind::Number : TCellKind::Text;
            row.numbers[column] = number;
        }
    return true;
}

// Numbers in brackets beside others that are none below 0 are negative, as in accounts; else they are texts.
void TSampleTable::FindBrackets(std::size_t column) {
    const auto isBracketed = [column](const TSampleRow& row) {
        return row.KindAt(column) == TCellKind::Number && row.cells[column].text.starts_with('(');
    };
    bool hasBrackets = false;
    bool hasPlain = false;
    bool hasMinus = false;
    for (const TSampleRow* row : m_voters) {
        const bool isIn = isBracketed(*row);
        const bool isPlain = !isIn && row->KindAt(column) == TCellKind::Number;
        hasBrackets = hasBrackets || isIn;
        hasPlain = hasPlain || isPlain;
        hasMinus = hasMinus || (isPlain && row->numbers[column].value < 0);
    }
    if (!hasBrackets) return;
    if (hasPlain && !hasMinus) {
        m_units[column] = kBracketMarks;
        return;
    }
    for (auto* rows : {&m_rows, &m_behind})
        for (TSampleRow& row : *rows)
            if (isBracketed(row)) row.kinds[column] = TCellKind::Text;
}

double TSampleTable::FindFill(std::size_t column) const {
    const auto isFilled = [column](auto* row) { return row->KindAt(column) != TCellKind::Empty; };
    return Share(static_cast<std::size_t>(std::ranges::count_if(m_voters, isFilled)), m_voters.size());
}

void TSampleTable::WidenTo(std::size_t columns) {
    const std::size_t before = m_columns.size();
    m_columns.resize(std::max(before, columns), TCellKind::Empty);
    m_units.resize(m_columns.size());
    for (std::size_t column = before; column < m_columns.size(); ++column) {
        m_columns[column] = FindKind(column);
        m_fill.push_back(FindFill(column));
    }
}

void TSampleTable::DropLastColumn() {
    m_columns.pop_back();
    m_units.pop_back();
    m_fill.pop_back();
}

bool TSampleTable::FitsColumns(const TSampleRow& row) const {
    constexpr double kSeldomEmpty = 0.5;
    if (row.kind != TRowKind::Data) return false;
    std::size_t dense = 0;
    std::size_t filledDense = 0;
    std::size_t filled = 0;
    for (std::size_t column = 0; column < m_columns.size(); ++column) {
        if (!IsValue(m_columns[column])) continue;
        const bool isDense = Fill(column) >= kSeldomEmpty;
        const TCellKind kind = row.KindAt(column);
        if (kind != m_columns[column] && kind != TCellKind::Empty) return false;
        dense += isDense ? 1 : 0;
        filled += kind == m_columns[column] ? 1 : 0;
        filledDense += isDense && kind == m_columns[column] ? 1 : 0;
    }
    return filled > 0 && filledDense * 2 >= dense;
}

double TSampleTable::Score(std::size_t headerRows) const {
    constexpr double kText = 0.5; // what a text in a column of texts is worth
    const std::size_t width = FindWidth();
    std::size_t rows = 0;
    std::size_t fitting = 0;
    std::size_t regular = 0;
    double cells = 0;
    double values = 0;
    std::size_t allRows = 0;
    const auto count = [&](const TSampleRow& row) {
        ++rows;
        if (FitsColumns(row)) ++fitting;
        if (row.cells.size() == m_columns.size() || row.cells.size() == width) ++regular;
        for (std::size_t i = 0; i < row.kinds.size(); ++i) {
            if (row.kinds[i] == TCellKind::Empty) continue;
            cells += 1;
            const bool isText = i < m_columns.size() && m_columns[i] == TCellKind::Text &&
                                !LooksLikeNumber(row.cells[i].text);
            values += IsValue(row.kinds[i]) ? 1 : isText ? kText : 0;
        }
    };
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        if (m_rows[i].kind != TRowKind::Data) continue;
        ++allRows;
        if (i >= headerRows) count(m_rows[i]);
    }
    for (const TSampleRow& row : m_behind) count(row);
    allRows += m_behind.size();
    const auto valueColumns = std::ranges::count_if(m_columns, IsValue);
    const auto numbers = std::ranges::count(m_columns, TCellKind::Number);
    const double columns = valueColumns == 0 ? 0 : valueColumns == 1 || numbers == 0 ? 0.6 : 1;
    return columns * Share(fitting, rows) * (cells > 0 ? values / cells : 0) *
           (0.5 + 0.5 * Share(regular, rows)) * (0.5 + 0.5 * Share(rows, allRows));
}

TSamplePoints TSampleTable::Points(const TTextFormat& format) const {
    const TRowValues values(format);
    TTimeRun run(format.midnight);
    TSamplePoints points;
    std::int64_t dataRow = 0;
    const auto add = [&](const TSampleRow& row) {
        if (row.kind != TRowKind::Data) return;
        double x = 0;
        double y = 0;
        TRowProblem problem;
        if (!values.ReadX(row.cells, ++dataRow, x, problem) || !values.ReadY(row.cells, y, problem)) return;
        x = run.Next(x);
        // What is not a number would differ from itself.
        if (std::isfinite(y)) points.emplace_back(x, y);
    };
    for (std::size_t i = static_cast<std::size_t>(format.headerRows); i < m_rows.size(); ++i) add(m_rows[i]);
    for (const TSampleRow& row : m_behind) add(row);
    return points;
}

} // namespace lumoplot
