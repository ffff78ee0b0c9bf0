#include "sources/report/text_explanation.h"

#include "sources/cells/plain_number.h"
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
    text += ", Y is " + name(format.yColumn);
    if (format.yErrorColumn >= 0) text += " with the errors in " + name(format.yErrorColumn);
    const auto isNegative = [&format](int column) {
        return column >= 0 && format.columns[static_cast<std::size_t>(column)].marks == kBracketMarks;
    };
    return isNegative(format.xColumn) || isNegative(format.yColumn)
               ? text + ", numbers in brackets are negative"
               : text;
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

std::string TTextExplanation::Found() const {
    constexpr std::size_t kMostLeftOut = 3;
    std::string text = "Read as " + reading + ". " + columns + ".";
    for (std::size_t i = 0; i < std::min(leftOut.size(), kMostLeftOut); ++i)
        text += (i == 0 ? " Left out: " : "; ") + leftOut[i];
    if (leftOut.size() > kMostLeftOut)
        text += "; and " + std::to_string(leftOut.size() - kMostLeftOut) + " more";
    return leftOut.empty() ? text : text + ".";
}

TTextExplanation Explain(const TTextReadings& readings) {
    const TTextFormat& format = readings.best.format;
    TTextExplanation explanation;
    explanation.reading = Describe(format);
    if (format.yColumn >= 0) explanation.columns = ColumnsText(format);
    if (readings.runnerUp) explanation.other = Difference(readings.runnerUp->format, format);
    explanation.leftOut = LeftOutColumns(format);
    return explanation;
}

TTextExplanation Explain(const TTextReport& report) {
    TTextExplanation explanation = Explain(report.readings);
    explanation.rows = RowsText(report);
    if (!report.messages.empty()) explanation.skipped = report.messages.front();
    explanation.notes = report.notes;
    return explanation;
}

} // namespace lumoplot
