#include "sources/database/table_columns.h"

#include "sources/cells/text_date.h"
#include "sources/database/connection/decimal_text.h"
#include "support/errors.h"

#include <algorithm>
#include <charconv>
#include <set>

namespace lumoplot {
namespace {

TSqlColumnKind KindOfText(std::string_view text) {
    if (DecimalOf(text) || ParseNumber(text, '.').state == TNumberState::Number)
        return TSqlColumnKind::NumberText;
    const bool beginsWithYear = text.size() > 7 && text[4] == '-';
    if (beginsWithYear && ParseDate(text, TDateOrder::YearMonthDay)) return TSqlColumnKind::DateText;
    return TSqlColumnKind::Text;
}

TSqlColumnKind KindOfCell(const TSqlCell& cell) {
    switch (cell.kind) {
    case TSqlCell::TKind::Null: return TSqlColumnKind::Empty;
    case TSqlCell::TKind::Date:
        return cell.number < 1 && cell.number >= 0 ? TSqlColumnKind::TimeOfDay : TSqlColumnKind::Date;
    case TSqlCell::TKind::Text: return cell.text.empty() ? TSqlColumnKind::Empty : KindOfText(cell.text);
    case TSqlCell::TKind::Binary: return TSqlColumnKind::Binary;
    default: return TSqlColumnKind::Number;
    }
}

// Beside numbers a text or two do not make a column one of texts: these rows are told of when they are read.
TSqlColumnKind Joined(TSqlColumnKind before, TSqlColumnKind next) {
    if (before == next || next == TSqlColumnKind::Empty) return before;
    if (before == TSqlColumnKind::Empty || before == TSqlColumnKind::Text) return next;
    if (before == TSqlColumnKind::TimeOfDay) return TSqlColumnKind::Date;
    return before;
}

[[noreturn]] void ThrowNoColumn(const std::vector<TTableColumn>& columns, const std::string& name) {
    constexpr std::size_t kMostNamed = 12;
    std::string names;
    for (std::size_t i = 0; i < std::min(columns.size(), kMostNamed); ++i)
        names += (i == 0 ? "" : ", ") + columns[i].name;
    if (columns.size() > kMostNamed) names += ", …";
    throw EFileError("no column is named '" + name + "' (its columns are " + names + ")");
}

int FindColumn(const std::vector<TTableColumn>& columns, const std::string& name) {
    const auto index = [&](auto found) { return static_cast<int>(found - columns.begin()); };
    const auto named = std::ranges::find(columns, name, &TTableColumn::name);
    if (named != columns.end()) return index(named);
    int number = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
    const bool isNumber = error == std::errc() && end == name.data() + name.size();
    if (isNumber && number == 0) return TTextFormat::kRowNumber;
    if (isNumber && number >= 1 && number <= static_cast<int>(columns.size())) return number - 1;
    ThrowNoColumn(columns, name);
}

// Numbers are plotted before texts that could be read as numbers.
int FirstWithValues(const std::vector<TTableColumn>& columns, int other) {
    for (const bool mayBeText : {false, true})
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const bool isText = columns[i].kind == TSqlColumnKind::NumberText;
            const bool fits = columns[i].HasValues() && columns[i].kind != TSqlColumnKind::Empty;
            if (fits && isText <= mayBeText && static_cast<int>(i) != other) return static_cast<int>(i);
        }
    return TTextFormat::kNoColumn;
}

} // namespace

std::string KindText(TSqlColumnKind kind) {
    switch (kind) {
    case TSqlColumnKind::Number: return "number";
    case TSqlColumnKind::Date: return "date and time";
    case TSqlColumnKind::TimeOfDay: return "time of day";
    case TSqlColumnKind::NumberText: return "text of numbers";
    case TSqlColumnKind::DateText: return "text of dates";
    case TSqlColumnKind::Text: return "text";
    case TSqlColumnKind::Binary: return "binary data";
    case TSqlColumnKind::Empty: break;
    }
    return "empty";
}

TTablePreview ReadPreview(TSqlSession& session, const std::string& source, const std::string& condition,
                          int maxRows) {
    const std::string where = condition.empty() ? "" : " WHERE (" + condition + ")";
    const bool canLimit = session.Dialect() != TDatabaseKind::Odbc;
    const std::string limit = canLimit ? " LIMIT " + std::to_string(maxRows) : "";
    const auto rows = session.Query("SELECT * FROM " + source + where + limit);
    TTablePreview preview;
    for (int i = 0; i < rows->ColumnCount(); ++i) preview.columns.push_back({rows->ColumnName(i), {}});
    while (static_cast<int>(preview.rows.size()) < maxRows && rows->Next()) {
        auto& row = preview.rows.emplace_back();
        for (int i = 0; i < rows->ColumnCount(); ++i) {
            TTableColumn& column = preview.columns[static_cast<std::size_t>(i)];
            column.kind = Joined(column.kind, KindOfCell(rows->Cell(i)));
            row.push_back(rows->ShownText(i));
        }
    }
    return preview;
}

TChosenColumns ChooseColumns(const std::vector<TTableColumn>& columns, const TDSInfo& info) {
    TChosenColumns chosen;
    const std::string& x = info.XDataColumn();
    const std::string& y = info.YDataColumn();
    if (!y.empty()) chosen.y = FindColumn(columns, y);
    chosen.x = !x.empty() ? FindColumn(columns, x) : FirstWithValues(columns, chosen.y);
    if (y.empty()) chosen.y = FirstWithValues(columns, chosen.x);
    if (x.empty() && chosen.y == TTextFormat::kNoColumn) std::swap(chosen.x, chosen.y);
    if (chosen.x == TTextFormat::kNoColumn) chosen.x = TTextFormat::kRowNumber;
    if (chosen.y < 0) throw EFileError("no column holds numbers or dates");
    const TYErrorRule& rule = info.YErrorRule();
    if (rule.Kind == TYErrorKind::Column) chosen.yError = FindColumn(columns, rule.Column);
    if (chosen.yError == TTextFormat::kRowNumber) chosen.yError = TTextFormat::kNoColumn;
    for (const int place : {chosen.x, chosen.y, chosen.yError})
        if (place >= 0 && columns[static_cast<std::size_t>(place)].kind == TSqlColumnKind::Binary)
            throw EFileError("row 1: column " + columns[static_cast<std::size_t>(place)].name +
                             " holds binary data and no numbers");
    return chosen;
}

} // namespace lumoplot
