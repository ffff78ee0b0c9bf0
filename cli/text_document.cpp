#include "cli/text_document.h"

#include "sources/report/text_explanation.h"

namespace lumoplot {
namespace {

const char* KindName(TCellKind kind) {
    switch (kind) {
    case TCellKind::Number: return "number";
    case TCellKind::Date: return "date";
    case TCellKind::TimeOfDay: return "time of day";
    case TCellKind::Text: return "text";
    case TCellKind::Empty: break;
    }
    return "empty";
}

// Numbers from 1, as users count columns; the row number as X is 0, which --columns takes as well.
int ColumnNumber(int column) {
    return column == TTextFormat::kRowNumber ? 0 : column + 1;
}

TDocument ColumnsDocument(const TTextFormat& format) {
    TDocument columns = TDocument::array();
    for (const TTextColumn& column : format.columns)
        columns.push_back({{"Name", column.name}, {"Unit", column.unit}, {"Kind", KindName(column.kind)}});
    return columns;
}

} // namespace

TDocument TextDocument(const TTextReport& report) {
    const TTextFormat& format = report.readings.best.format;
    const TTextExplanation explanation = Explain(report);
    TDocument document = {{"Format", Describe(format)},
                          {"Separators", format.separators},
                          {"DecimalSign", std::string(1, format.decimalSign)},
                          {"HeaderRows", format.headerRows},
                          {"XColumn", ColumnNumber(format.xColumn)},
                          {"YColumn", ColumnNumber(format.yColumn)},
                          {"Columns", ColumnsDocument(format)},
                          {"RowsUsed", report.rowsUsed},
                          {"RowsSkipped", report.rowsSkipped},
                          {"RowsMerged", report.rowsMerged},
                          {"Messages", report.messages},
                          {"LeftOut", explanation.leftOut},
                          {"Notes", explanation.notes}};
    if (format.sheet) document["Sheet"] = *format.sheet;
    if (format.timeColumn >= 0) document["TimeColumn"] = ColumnNumber(format.timeColumn);
    if (report.readings.runnerUp) document["OtherReading"] = Describe(report.readings.runnerUp->format);
    return document;
}

} // namespace lumoplot
