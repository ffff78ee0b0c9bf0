#include "sources/text/layout/number_names.h"

#include "support/ranges.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace lumoplot {
namespace {

// Years or channels in a row: whole numbers with the same step between them, or a year alone.
bool AreNumberNames(const TSampleRow& row) {
    const bool hasCorner = !row.kinds.empty() && row.kinds[0] != TCellKind::Number;
    const auto numbers = WholeNumbers(row, 1);
    if (!hasCorner || numbers.empty()) return false;
    if (numbers.size() == 1) return numbers[0] >= 1900 && numbers[0] <= 2100;
    const double step = numbers[1] - numbers[0];
    for (std::size_t i = 2; i < numbers.size(); ++i)
        if (numbers[i] - numbers[i - 1] != step) return false;
    return numbers.size() > 2 ? step > 0 : step == 1;
}

bool AreYears(const TSampleRow& row) {
    const auto numbers = WholeNumbers(row, 1);
    return std::ranges::all_of(numbers, [](double year) { return year >= 1900 && year <= 2100; });
}

// The data row in front of that one, or null.
const TSampleRow* RowBefore(const TSampleTable& table, std::size_t index) {
    while (index > 0)
        if (const TSampleRow& row = table.Rows()[--index]; row.kind == TRowKind::Data) return &row;
    return nullptr;
}

// In front of the row there is none as wide as the table.
bool IsFirstOfItsWidth(const TSampleTable& table, std::size_t index) {
    for (std::size_t i = 0; i < index; ++i)
        if (table.Rows()[i].kind == TRowKind::Data && table.Rows()[i].cells.size() >= table.Columns().size())
            return false;
    return true;
}

// Places behind the decimal sign of a number that has one.
std::size_t CountDecimals(std::string_view text) {
    const std::size_t first = text.find_last_of(".,") + 1;
    return std::min(text.find_first_not_of("0123456789", first), text.size()) - first;
}

// How a column writes its numbers, the row of the names left out.
struct TDecimals {
    TExtent range;
    std::size_t count = 0;
    bool areAll = true;
    bool areEven = true;      ///< all of the same number of places
    bool endWithZero = false; ///< some do: whoever wrote them fills up the places
};

TDecimals DecimalsOf(const TSampleTable& table, std::size_t column, const TSampleRow& names) {
    TDecimals decimals;
    std::size_t places = 0;
    for (const TSampleRow* row : table.Voters()) {
        if (row->text.data() == names.text.data() || row->KindAt(column) != TCellKind::Number) continue;
        const TNumberReading& number = row->numbers[column];
        if (!number.hasDecimals) {
            decimals.areAll = false;
            return decimals;
        }
        const std::string_view text = row->cells[column].text;
        const std::size_t here = CountDecimals(text);
        if (decimals.count++ == 0) places = here;
        decimals.areEven = decimals.areEven && here == places;
        const std::size_t last = text.find_last_of(".,") + here;
        decimals.endWithZero = decimals.endWithZero || (here > 0 && text[last] == '0');
        decimals.range.Take(number.value);
    }
    return decimals;
}

// The first value of a column that rises or falls is outside of the others, too, but not so far.
bool IsFarFrom(const TExtent& range, double name) {
    const double width = range.Max - range.Min;
    return name < range.Min - width || name > range.Max + width;
}

enum class TSteps { Other, Same, One };

TSteps StepsOf(const std::vector<double>& names) {
    const double step = names[1] - names[0];
    for (std::size_t i = 2; i < names.size(); ++i)
        if (names[i] - names[i - 1] != step) return TSteps::Other;
    return step == 1 ? TSteps::One : step != 0 ? TSteps::Same : TSteps::Other;
}

bool RunOneWay(const std::vector<double>& names) {
    return std::ranges::adjacent_find(names, std::less_equal()) == names.end() ||
           std::ranges::adjacent_find(names, std::greater_equal()) == names.end();
}

// Names in front of numbers that fill up their places would be written as those are.
TNumberNames Judge(const std::vector<double>& names, bool areOutside, bool areFilledUp) {
    if ((areOutside || areFilledUp) && RunOneWay(names)) return TNumberNames::Likely;
    const TSteps steps = StepsOf(names);
    if (steps == TSteps::One && names.size() > 2 && (names[0] == 1 || names.size() > 3))
        return TNumberNames::Likely;
    return steps == TSteps::One || (steps == TSteps::Same && names.size() > 2) ? TNumberNames::Perhaps
                                                                               : TNumberNames::None;
}

} // namespace

std::vector<double> WholeNumbers(const TSampleRow& row, std::size_t first) {
    std::vector<double> numbers;
    for (std::size_t i = first; i < row.kinds.size(); ++i) {
        if (row.kinds[i] == TCellKind::Empty || row.kinds[i] == TCellKind::Text) continue;
        const double value = row.numbers[i].value;
        if (row.kinds[i] != TCellKind::Number || value != std::floor(value)) return {};
        numbers.push_back(value);
    }
    return numbers;
}

TNumberNames NamesAboveDecimals(const TSampleTable& table, std::size_t index) {
    constexpr std::size_t kFewest = 4;
    const TSampleRow& row = table.Rows()[index];
    const std::size_t columns = table.Columns().size();
    const std::vector<double> names = WholeNumbers(row, 0);
    if (row.kind != TRowKind::Data || names.size() < 2 || names.size() != row.cells.size() ||
        names.size() > columns || names.size() + 1 < columns || !IsFirstOfItsWidth(table, index))
        return TNumberNames::None;
    const std::size_t nameless = columns - names.size();
    bool areOutside = true;
    bool areEven = true;
    bool endWithZero = false;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const TDecimals decimals = DecimalsOf(table, i + nameless, row);
        if (row.numbers[i].hasDecimals || !decimals.areAll || decimals.count < kFewest)
            return TNumberNames::None;
        areOutside = areOutside && IsFarFrom(decimals.range, names[i]);
        areEven = areEven && decimals.areEven;
        endWithZero = endWithZero || decimals.endWithZero;
    }
    return Judge(names, areOutside, areEven && endWithZero);
}

bool IsNamedByNumbers(const TSampleTable& table, std::size_t index) {
    const auto& rows = table.Rows();
    if (NamesAboveDecimals(table, index) == TNumberNames::Likely) return true;
    if (rows[index].kind != TRowKind::Data || !AreNumberNames(rows[index])) return false;
    // Below such names others would be the first row of data.
    const TSampleRow* before = RowBefore(table, index);
    if (before && before->cells.size() >= rows[index].cells.size() && AreNumberNames(*before)) return false;
    std::size_t others = 0;
    std::size_t alike = 0;
    const bool areYears = AreYears(rows[index]);
    for (std::size_t i = index + 1; i < rows.size() && others < 20; ++i) {
        if (rows[i].kind != TRowKind::Data) continue;
        ++others;
        if (AreNumberNames(rows[i]) && AreYears(rows[i]) == areYears) ++alike;
    }
    // An empty corner is a name only above cells that are not.
    const bool hasCorner = rows[index].kinds[0] == TCellKind::Text || table.Fill(0) > 0.5;
    return others > 0 && alike * 4 <= others && hasCorner;
}

std::optional<std::size_t> OtherHeaderRows(const TSampleTable& table, std::size_t headerRows) {
    if (table.HasFixedHeader()) return std::nullopt;
    if (headerRows > 0 && NamesAboveDecimals(table, headerRows - 1) == TNumberNames::Likely)
        return headerRows - 1;
    for (std::size_t i = headerRows; i < table.Rows().size(); ++i) {
        if (table.Rows()[i].kind != TRowKind::Data) continue;
        return NamesAboveDecimals(table, i) == TNumberNames::Perhaps ? std::optional(i + 1) : std::nullopt;
    }
    return std::nullopt;
}

} // namespace lumoplot
