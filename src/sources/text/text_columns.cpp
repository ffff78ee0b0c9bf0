#include "sources/text/text_columns.h"

#include "sources/text/error_columns.h"
#include "support/number_text.h"

#include <algorithm>

namespace lumoplot {
namespace {

constexpr int kNone = TTextFormat::kNoColumn;
/// More names do not help in a message.
constexpr int kMostNames = 20;

bool IsValueColumn(const TTextColumn& column) {
    return column.kind == TCellKind::Number || column.kind == TCellKind::Date ||
           column.kind == TCellKind::TimeOfDay;
}

bool IsSameIgnoringCase(std::string_view left, std::string_view right) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [lower](char a, char b) { return lower(a) == lower(b); });
}

} // namespace

int ColumnNamed(const TTextFormat& format, std::string_view name) {
    const auto& columns = format.columns;
    auto found = std::find_if(columns.begin(), columns.end(), [&](const auto& c) { return c.name == name; });
    if (found == columns.end())
        found = std::find_if(columns.begin(), columns.end(),
                             [&](const auto& c) { return IsSameIgnoringCase(c.name, name); });
    return found == columns.end() ? kNone : static_cast<int>(found - columns.begin());
}

std::string ColumnNameList(const TTextFormat& format) {
    std::string list;
    int count = 0;
    for (const TTextColumn& column : format.columns) {
        if (column.name.empty()) continue;
        if (++count > kMostNames) return "its columns are " + list + ", …";
        list += (list.empty() ? "" : ", ") + column.name;
    }
    return list.empty() ? "no column has a name" : "its columns are " + list;
}

namespace {

// The column that the description names, or a problem. An empty text is no column and no problem.
int ColumnAsked(const TTextFormat& format, const std::string& asked, std::string& problem) {
    const std::string_view text = Trimmed(asked);
    if (text.empty()) return kNone;
    const auto count = static_cast<int>(format.columns.size());
    if (const auto number = TryParseInteger(text)) {
        if (*number >= 0 && *number <= count) return *number == 0 ? TTextFormat::kRowNumber : *number - 1;
        problem = "has no column " + std::string(text) + ", only " + std::to_string(count);
        return kNone;
    }
    const int column = ColumnNamed(format, text);
    if (column == kNone)
        problem = "has no column '" + std::string(text) + "' (" + ColumnNameList(format) + ")";
    return column;
}

// The first column from `from` on that passes, other than `taken`.
template <class TPredicate>
int FirstColumn(const TTextFormat& format, int from, int taken, TPredicate passes) {
    for (int i = std::max(from, 0); i < static_cast<int>(format.columns.size()); ++i)
        if (i != taken && passes(format.columns[static_cast<std::size_t>(i)])) return i;
    return kNone;
}

// The columns of values that are X or Y without being asked for, unless there are too few of them.
std::vector<int> Candidates(const TTextFormat& format, int taken) {
    std::vector<int> columns;
    for (int i = 0; i < static_cast<int>(format.columns.size()); ++i) {
        const TTextColumn& column = format.columns[static_cast<std::size_t>(i)];
        if (i != taken && IsValueColumn(column) && column.role == TColumnRole::Values) columns.push_back(i);
    }
    return columns;
}

TCellKind KindOf(const TTextFormat& format, int column) {
    return format.columns[static_cast<std::size_t>(column)].kind;
}

int FindX(const TTextFormat& format, int yColumn) {
    const int named = ColumnNamed(format, "X");
    if (named != kNone && named != yColumn && IsValueColumn(format.columns[static_cast<std::size_t>(named)]))
        return named;
    const auto columns = Candidates(format, yColumn);
    // A date says more than the value or the time of day in front of it.
    for (std::size_t i = 0; i < std::min<std::size_t>(columns.size(), 2); ++i)
        if (KindOf(format, columns[i]) == TCellKind::Date) return columns[i];
    if (columns.size() >= (yColumn == kNone ? 2u : 1u)) return columns[0];
    const int y = yColumn != kNone ? yColumn : columns.empty() ? kNone : columns[0];
    // What counts the rows serves when nothing else does, and a constant as Y.
    const auto has = [&](TColumnRole role) {
        return FirstColumn(format, 0, y, [role](const TTextColumn& column) {
            return IsValueColumn(column) && column.role == role;
        });
    };
    const int counter = has(TColumnRole::Counter);
    // Behind the only other column it is what that one is drawn against.
    if (yColumn == kNone && y != kNone && counter > y) return y;
    const int constant = has(TColumnRole::Constant);
    if (counter != kNone && (y != kNone || constant != kNone)) return counter;
    if (yColumn != kNone) return constant != kNone ? constant : TTextFormat::kRowNumber;
    return !columns.empty() && constant != kNone ? columns[0] : TTextFormat::kRowNumber;
}

int FindY(const TTextFormat& format, int xColumn) {
    const auto isNumber = [](const TTextColumn& column) { return column.kind == TCellKind::Number; };
    const auto isMeasured = [](const TTextColumn& column) {
        return column.kind == TCellKind::Number && column.role == TColumnRole::Values;
    };
    const auto isNotCounting = [](const TTextColumn& column) {
        return column.kind == TCellKind::Number && column.role == TColumnRole::Constant;
    };
    const int named = ColumnNamed(format, "Y");
    if (named != kNone && named != xColumn && isNumber(format.columns[static_cast<std::size_t>(named)]))
        return named;
    int column = FirstColumn(format, xColumn + 1, xColumn, isMeasured);
    if (column == kNone) column = FirstColumn(format, 0, xColumn, isMeasured);
    if (column == kNone) column = FirstColumn(format, 0, xColumn, isNotCounting);
    if (column == kNone) column = FirstColumn(format, xColumn + 1, xColumn, isNumber);
    if (column == kNone) column = FirstColumn(format, 0, xColumn, isNumber);
    return column != kNone ? column : FirstColumn(format, 0, xColumn, IsValueColumn);
}

TCellKind KindOfColumn(const TTextFormat& format, int column) {
    return column < 0 ? TCellKind::Number : format.columns[static_cast<std::size_t>(column)].kind;
}

TColumnFormat FormatOf(const TTextFormat& format, int column, TColumnFormat asked) {
    const TCellKind kind = KindOfColumn(format, column);
    const bool dates = kind == TCellKind::Date || kind == TCellKind::TimeOfDay;
    return dates && column >= 0 ? TColumnFormat::DateTime : asked;
}

// The column of times of day beside the dates in X.
int FindTimeColumn(const TTextFormat& format) {
    if (format.xColumn < 0 || KindOfColumn(format, format.xColumn) != TCellKind::Date) return kNone;
    for (const int column : {format.xColumn + 1, format.xColumn - 1}) {
        const bool exists = column >= 0 && column < static_cast<int>(format.columns.size());
        if (exists && column != format.yColumn && KindOfColumn(format, column) == TCellKind::TimeOfDay)
            return column;
    }
    return kNone;
}

std::string YErrorColumnOf(const TDSInfo& info) {
    const TYErrorRule& rule = info.YErrorRule();
    return rule.Kind == TYErrorKind::Column ? rule.Column : std::string();
}

const char* ReasonOf(const TTextColumn& column) {
    switch (column.role) {
    case TColumnRole::Counter: return " only counts the rows";
    case TColumnRole::Constant: return " is the same in all rows";
    case TColumnRole::Settings: return " holds settings";
    case TColumnRole::Values: break;
    }
    if (column.kind == TCellKind::Text) return " holds text";
    return column.kind == TCellKind::Empty ? " is empty" : nullptr;
}

bool IsUsed(const TTextFormat& format, int column) {
    return column == format.xColumn || column == format.yColumn || column == format.timeColumn ||
           column == format.yErrorColumn;
}

} // namespace

std::vector<std::string> LeftOutColumns(const TTextFormat& format) {
    std::vector<std::string> reasons;
    const std::vector<int> owners = ErrorOwners(format);
    for (int i = 0; i < static_cast<int>(format.columns.size()); ++i) {
        if (IsUsed(format, i)) continue;
        const std::string column = "column " + ColumnText(format, i);
        const char* reason = ReasonOf(format.columns[static_cast<std::size_t>(i)]);
        if (reason) reasons.push_back(column + reason);
        const int owner = owners[static_cast<std::size_t>(i)];
        if (owner >= 0)
            reasons.push_back(column + " looks like the errors of column " + ColumnText(format, owner));
    }
    return reasons;
}

std::vector<int> OtherColumns(const TTextFormat& format) {
    std::vector<int> columns;
    for (int i = 0; i < static_cast<int>(format.columns.size()); ++i) {
        if (!IsUsed(format, i) && KindOfColumn(format, i) == TCellKind::Number) columns.push_back(i);
    }
    return columns;
}

std::string ChooseColumns(TTextFormat& format, const TDSInfo& info) {
    std::string problem;
    const int askedX = ColumnAsked(format, info.XDataColumn(), problem);
    const int askedY = ColumnAsked(format, info.YDataColumn(), problem);
    const bool hasX = askedX != kNone;
    format.yColumn = askedY != kNone && askedY != TTextFormat::kRowNumber ? askedY : kNone;
    format.xColumn = hasX ? askedX : FindX(format, format.yColumn);
    if (askedY == TTextFormat::kRowNumber) problem = "has no column 0 for Y";
    if (format.yColumn == kNone) format.yColumn = FindY(format, format.xColumn);
    format.timeColumn = FindTimeColumn(format);
    format.xFormat = FormatOf(format, format.xColumn, info.XFormat());
    format.yFormat = FormatOf(format, format.yColumn, info.YFormat());
    format.yErrorColumn = ColumnAsked(format, YErrorColumnOf(info), problem);
    if (format.yErrorColumn == TTextFormat::kRowNumber) problem = "has no column 0 for the errors of Y";
    if (problem.empty() && format.yColumn == kNone) problem = "holds no column of numbers";
    return problem;
}

} // namespace lumoplot
