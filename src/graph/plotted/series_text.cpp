#include "graph/plotted/series_text.h"

#include "graph/model/axis.h"
#include "graph/model/graph.h"
#include "support/message_text.h"
#include "support/number_text.h"
#include "support/replace_file.h"

#include <algorithm>
#include <cctype>

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

void AppendLine(std::vector<std::uint8_t>& bytes, std::string_view first, char divider,
                std::string_view second) {
    Append(bytes, first);
    bytes.push_back(static_cast<std::uint8_t>(divider));
    Append(bytes, second);
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

} // namespace

std::vector<std::uint8_t> SeriesAsText(const TSeries& series, const std::string& fileName) {
    const char divider = EndsWith(fileName, ".csv") ? ',' : '\t';
    std::vector<std::uint8_t> bytes;
    const auto [x, y] = ColumnNames(series, fileName);
    AppendLine(bytes, HeaderText(x, divider), divider, HeaderText(y, divider));
    for (TPointCursor point = series.First(); point; point = point.Next())
        AppendLine(bytes, FormatShortest(point.X()), divider, FormatShortest(point.Y()));
    return bytes;
}

void SaveSeriesAsText(const TSeries& series, const std::string& fileName) {
    ReplaceFile(fileName, SeriesAsText(series, fileName));
}

} // namespace lumoplot
