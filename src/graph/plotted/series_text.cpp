#include "graph/plotted/series_text.h"

#include "graph/model/axis.h"
#include "graph/model/graph.h"
#include "support/message_text.h"
#include "support/number_text.h"
#include "support/replace_file.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <span>

namespace lumoplot {
namespace {

void Append(std::vector<std::uint8_t>& bytes, std::string_view text) {
    bytes.insert(bytes.end(), text.begin(), text.end());
}

std::string HeaderText(const std::string& text, char divider) {
    if (text.find_first_of(std::string("\"\r\n") + divider) == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + '"';
}

void AppendLine(std::vector<std::uint8_t>& bytes, char divider, std::span<const std::string> cells) {
    for (const std::string& cell : cells) {
        if (&cell != &cells.front()) bytes.push_back(static_cast<std::uint8_t>(divider));
        Append(bytes, cell);
    }
    bytes.push_back('\n');
}

bool EndsWith(std::string name, std::string_view extension) {
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name.ends_with(extension);
}

std::string Chosen(const std::string& wanted, const std::string& untouched, const char* otherwise) {
    const std::string text = ShownLine(wanted, wanted.size() + 3);
    const bool isNamed = text.find_first_not_of(' ') != std::string::npos && wanted != untouched;
    return isNamed ? text : otherwise;
}

/// Of the two columns, as who reads them again names the X axis and the data set.
std::pair<std::string, std::string> ColumnNames(const TSeries& series, const std::string& fileName) {
    const std::string& yTitle = series.YAxisOfSeries()->Title();
    if (EndsWith(fileName, ".dat")) return {series.SeriesName(), yTitle};
    return {Chosen(series.Graph().XAxis()->Title(), "X axis", "X"),
            Chosen(series.SeriesName(), "", Chosen(yTitle, "", "Y").c_str())};
}

using TValueOf = double (TPointCursor::*)() const;

// The only decimals of the column are three digits each, beside whole numbers below 1000: "6.125" and "18"
// would be read as groups of digits.
bool LooksGrouped(const TSeries& series, TValueOf value) {
    constexpr std::size_t kGroup = 3;
    bool hasGroup = false;
    bool hasWhole = false;
    for (TPointCursor point = series.First(); point; point = point.Next()) {
        if (!std::isfinite((point.*value)())) continue;
        const std::string text = FormatShortest(std::abs((point.*value)()));
        const std::size_t sign = text.find_first_not_of("0123456789");
        if (std::min(sign, text.size()) > kGroup) return false;
        const bool isWhole = sign == std::string::npos;
        const bool isGroup = !isWhole && text[sign] == '.' && text.front() != '0' &&
                             text.size() - sign - 1 == kGroup &&
                             text.find_first_not_of("0123456789", sign + 1) == std::string::npos;
        if (!isWhole && !isGroup) return false;
        hasWhole |= isWhole;
        hasGroup |= isGroup;
    }
    return hasWhole && hasGroup;
}

// "nan" alone would be read as the mark of a value that is missing.
std::string YText(double y) {
    return std::isnan(y) ? "-nan" : FormatShortest(y);
}

std::string NumberCell(std::string text, bool looksGrouped) {
    return looksGrouped && text.find('.') != std::string::npos ? text + '0' : text;
}

std::string LostInText(const TSeries& series) {
    int lost = 0;
    for (TPointCursor point = series.First(); point; point = point.Next())
        if (!std::isfinite(point.Y())) ++lost;
    if (lost == 0) return {};
    return std::to_string(lost) + " of " + std::to_string(series.Count()) +
           " points have no finite Y (inf, -inf, -nan): other programs that read the text may pass over "
           "them.";
}

} // namespace

std::vector<std::uint8_t> SeriesAsText(const TSeries& series, const std::string& fileName) {
    const char divider = EndsWith(fileName, ".csv") ? ',' : '\t';
    const bool hasErrors = series.HasYErrors();
    std::vector<std::uint8_t> bytes;
    const auto [x, y] = ColumnNames(series, fileName);
    std::vector<std::string> cells = {HeaderText(x, divider), HeaderText(y, divider)};
    if (hasErrors) cells.emplace_back("Error of Y");
    AppendLine(bytes, divider, cells);
    const auto looksGrouped = [&](TValueOf value) { return divider == '\t' && LooksGrouped(series, value); };
    const bool groupedX = looksGrouped(&TPointCursor::X);
    const bool groupedY = looksGrouped(&TPointCursor::Y);
    const bool groupedError = hasErrors && looksGrouped(&TPointCursor::YError);
    for (TPointCursor point = series.First(); point; point = point.Next()) {
        cells = {NumberCell(FormatShortest(point.X()), groupedX), NumberCell(YText(point.Y()), groupedY)};
        if (hasErrors)
            cells.push_back(point.YError() > 0 ? NumberCell(FormatShortest(point.YError()), groupedError)
                                               : std::string());
        AppendLine(bytes, divider, cells);
    }
    return bytes;
}

std::string SaveSeriesAsText(const TSeries& series, const std::string& fileName) {
    ReplaceFile(fileName, SeriesAsText(series, fileName));
    return LostInText(series);
}

} // namespace lumoplot
