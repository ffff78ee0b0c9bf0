#include "sources/report/text_explanation.h"

#include "sources/text/text_columns.h"

#include <algorithm>

namespace lumoplot {
namespace {

std::vector<std::string> PartsOf(const std::string& description) {
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin < description.size();) {
        const std::size_t end = std::min(description.find(", ", begin), description.size());
        parts.push_back(description.substr(begin, end - begin));
        begin = end + 2;
    }
    return parts;
}

// What the description of the other reading has and the best one's has not.
std::string Difference(const TTextFormat& other, const TTextFormat& best) {
    const auto known = PartsOf(Describe(best));
    std::string difference;
    for (const std::string& part : PartsOf(Describe(other)))
        if (std::ranges::find(known, part) == known.end())
            difference += (difference.empty() ? "" : ", ") + part;
    // What only lacks something is told whole.
    return difference.empty() ? Describe(other) : difference;
}

std::string ColumnsText(const TTextFormat& format) {
    const auto name = [&format](int column) {
        return (column >= 0 ? "column " : "") + ColumnText(format, column);
    };
    std::string text = "X is " + name(format.xColumn);
    if (format.timeColumn >= 0) text += " with " + name(format.timeColumn);
    return text + ", Y is " + name(format.yColumn);
}

std::string RowsText(const TTextReport& report) {
    std::string text = std::to_string(report.rowsUsed) + (report.rowsUsed == 1 ? " row used" : " rows used");
    if (report.rowsSkipped > 0) text += ", " + std::to_string(report.rowsSkipped) + " skipped";
    if (report.rowsMerged > 0) text += ", " + std::to_string(report.rowsMerged) + " merged";
    if (report.samplingFrequency > 1)
        text += ", one of " + std::to_string(report.samplingFrequency) + " read";
    return text;
}

} // namespace

std::vector<std::string> TTextExplanation::Lines() const {
    std::vector<std::string> lines = {"read as " + reading, columns};
    if (!other.empty()) lines.push_back("also fits: " + other);
    lines.push_back(rows + (skipped.empty() ? "" : ", the first: " + skipped));
    for (const auto* list : {&leftOut, &notes}) lines.insert(lines.end(), list->begin(), list->end());
    return lines;
}

TTextExplanation Explain(const TTextReport& report) {
    const TTextFormat& format = report.readings.best.format;
    TTextExplanation explanation;
    explanation.reading = Describe(format);
    explanation.columns = ColumnsText(format);
    if (report.readings.runnerUp) explanation.other = Difference(report.readings.runnerUp->format, format);
    explanation.rows = RowsText(report);
    if (!report.messages.empty()) explanation.skipped = report.messages.front();
    explanation.leftOut = LeftOutColumns(format);
    explanation.notes = report.notes;
    return explanation;
}

} // namespace lumoplot
