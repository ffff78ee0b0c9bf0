#include "sources/text/layout/column_roles.h"

#include "sources/cells/folded_text.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace lumoplot {
namespace {

constexpr std::string_view kCounterNames[] = {"rownames",
                                              "row names",
                                              "row.names",
                                              "row",
                                              "rows",
                                              "row no",
                                              "index",
                                              "idx",
                                              "id",
                                              "no",
                                              "nr",
                                              "num",
                                              "number",
                                              "n\xC2\xB0",
                                              "n\xC2\xBA",
                                              "\xE2\x84\x96",
                                              "#",
                                              "obs",
                                              "obs.",
                                              "observation",
                                              "case",
                                              "record",
                                              "record no",
                                              "rec",
                                              "entry",
                                              "item",
                                              "unnamed: 0",
                                              "...1",
                                              "lfd nr",
                                              "lfd. nr",
                                              "lfdnr",
                                              "lfd",
                                              "nummer",
                                              "zeile",
                                              "ligne",
                                              "fila",
                                              "riga",
                                              "nro",
                                              "numero",
                                              "sl no",
                                              "s.no",
                                              "s. no",
                                              "sr no",
                                              "sno",
                                              "serial",
                                              "serial no",
                                              "seq",
                                              "sequence",
                                              "counter",
                                              "count no",
                                              "key",
                                              "rowid",
                                              "row_id",
                                              "row id",
                                              "line no",
                                              "x1",
                                              "pk",
                                              "uid",
                                              "record number",
                                              "row number",
                                              "rownum",
                                              "row_number",
                                              "subject",
                                              "participant",
                                              "patient",
                                              "respondent"};

bool IsCounterName(std::string_view name) {
    std::string folded = FoldText(name);
    while (folded.ends_with('.') || folded.ends_with(':')) folded.pop_back();
    return folded.empty() || std::ranges::find(kCounterNames, folded) != std::end(kCounterNames) ||
           folded.ends_with("_id") || folded.ends_with(" id") || folded.ends_with(" no") ||
           folded.ends_with(" nr") || folded.ends_with('#') || folded.ends_with("-nr") ||
           folded.ends_with("-no") || folded.ends_with("_nr") || folded.ends_with("_no");
}

bool BeginsWithOneOf(std::string_view name, std::initializer_list<std::string_view> words) {
    const std::string folded = FoldText(name);
    return std::ranges::any_of(words, [&folded](auto word) {
        return folded.starts_with(word) && LetterLength(std::string_view(folded).substr(word.size())) == 0;
    });
}

// What is counted, where no other column could be X.
bool IsNameOfCounted(std::string_view name) {
    return BeginsWithOneOf(name, {"sample", "point", "data point", "pt", "scan", "reading", "measurement",
                                  "meas", "shot", "messung", "messpunkt", "punkt", "probe", "mesure", "punto",
                                  "medida", "misura", "meting", "meetpunt"});
}

bool IsNameOfTime(std::string_view name) {
    return BeginsWithOneOf(name, {"t", "time", "timestamp", "elapsed", "elapsed time", "sec", "seconds",
                                  "zeit", "temps", "tiempo", "tempo", "tijd", "tid", "date", "datum"});
}

struct TColumnFacts {
    std::size_t filled = 0;
    std::size_t texts = 0;
    std::size_t last = 0; ///< number of the last voter with a value, from 1
    bool isConstant = true;
    bool isRising = true;     ///< whole numbers, each above the one before
    bool isCounting = true;   ///< by 1, from 0 or 1
    bool isIncreasing = true; ///< each above the one before
};

TColumnFacts FactsOf(const TSampleTable& table, std::size_t column) {
    TColumnFacts facts;
    double first = 0;
    double previous = 0;
    const std::size_t front = table.Rows().size();
    std::size_t place = 0;
    for (const TSampleRow* row : table.Voters()) {
        ++place;
        const TCellKind kind = row->KindAt(column);
        if (kind == TCellKind::Empty) continue;
        facts.last = place;
        if (!IsValue(kind)) ++facts.texts;
        if (kind != TCellKind::Number) continue;
        const double value = row->numbers[column].value;
        if (facts.filled++ == 0) first = value;
        facts.isConstant = facts.isConstant && value == first;
        if (place > front) continue;
        const bool isFirst = facts.filled == 1;
        facts.isIncreasing = facts.isIncreasing && (isFirst || value > previous);
        facts.isRising = facts.isRising && value == std::floor(value) && (isFirst || value > previous);
        facts.isCounting = facts.isCounting && (isFirst ? value == 0 || value == 1 : value == previous + 1);
        previous = value;
    }
    return facts;
}

// Beside a column that could be X as well, with others for Y.
bool IsBesideX(const TSampleTable& table, const TTextFormat& format, std::size_t column) {
    constexpr std::ptrdiff_t kFewest = 3;
    const auto isNumber = [](const auto& c) { return c.kind == TCellKind::Number; };
    if (column + 1 >= format.columns.size() || !isNumber(format.columns[column + 1])) return false;
    if (std::ranges::count_if(format.columns, isNumber) < kFewest) return false;
    const bool isCounted =
        IsNameOfCounted(format.columns[column].name) || IsNameOfTime(format.columns[column + 1].name);
    return isCounted && FactsOf(table, column + 1).isIncreasing;
}

TColumnRole RoleOf(const TSampleTable& table, const TTextFormat& format, std::size_t column, bool hasNames) {
    constexpr std::size_t kFewest = 5;
    const TColumnFacts facts = FactsOf(table, column);
    const std::size_t rows = table.Voters().size();
    if (rows >= 8 && facts.last * 4 <= rows && facts.texts > 0) return TColumnRole::Settings;
    const std::string& name = format.columns[column].name;
    const bool isNamed = hasNames && IsCounterName(name) && (!name.empty() || column == 0);
    if (facts.isRising && isNamed && facts.filled >= 2) return TColumnRole::Counter;
    // Beside dates a count is a count, whatever it is called.
    const bool isBesideDates =
        column + 1 < format.columns.size() && format.columns[column + 1].kind == TCellKind::Date;
    const bool isCounting = facts.isCounting && facts.isRising && facts.filled >= 3;
    if (isCounting && (isBesideDates || IsBesideX(table, format, column))) return TColumnRole::Counter;
    return facts.isConstant && facts.filled >= kFewest ? TColumnRole::Constant : TColumnRole::Values;
}

} // namespace

void FindColumnRoles(const TSampleTable& table, TTextFormat& format) {
    const bool hasNames = std::ranges::any_of(format.columns, [](const auto& c) { return !c.name.empty(); });
    for (std::size_t column = 0; column < format.columns.size(); ++column)
        if (format.columns[column].kind == TCellKind::Number)
            format.columns[column].role = RoleOf(table, format, column, hasNames);
}

} // namespace lumoplot
