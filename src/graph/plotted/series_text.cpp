#include "graph/plotted/series_text.h"

#include "graph/model/axis.h"
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

bool EndsWithCsv(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name.ends_with(".csv");
}

} // namespace

void SaveSeriesAsText(const TSeries& series, const std::string& fileName) {
    const char divider = EndsWithCsv(fileName) ? ',' : '\t';
    std::vector<std::uint8_t> bytes;
    AppendLine(bytes, HeaderText(series.SeriesName(), divider), divider,
               HeaderText(series.YAxisOfSeries()->Title(), divider));
    for (TPointCursor point = series.First(); point; point = point.Next())
        AppendLine(bytes, FormatShortest(point.X()), divider, FormatShortest(point.Y()));
    ReplaceFile(fileName, bytes);
}

} // namespace lumoplot
