#include "sources/text/text_format.h"

#include "support/code_page.h"

namespace lumoplot {
namespace {

std::string SeparatorName(char separator) {
    switch (separator) {
    case '\t': return "tab";
    case ',': return "comma";
    case ';': return "semicolon";
    case ' ': return "blank";
    case '|': return "vertical bar";
    default: return "\"" + std::string(1, separator) + "\"";
    }
}

std::string SeparatorText(const TTextFormat& format) {
    if (format.sheet) return "sheet \"" + *format.sheet + '"';
    if (format.columnWidth > 0) return "columns of " + std::to_string(format.columnWidth) + " characters";
    if (format.separators.empty() || format.separators == "\n") return "one column";
    if (!format.fields.empty()) return "aligned columns";
    if (format.separators == " \t") return "blanks";
    std::string text;
    for (const char separator : format.separators)
        text += (text.empty() ? "" : " or ") + SeparatorName(separator);
    return text;
}

std::string_view EncodingName(TTextEncoding encoding) {
    switch (encoding) {
    case TTextEncoding::Utf8: return "UTF-8";
    case TTextEncoding::Utf8WithMark: return "UTF-8 with BOM";
    case TTextEncoding::Utf16LittleEndian: return "UTF-16 LE";
    case TTextEncoding::Utf16BigEndian: return "UTF-16 BE";
    case TTextEncoding::CodePage: break;
    }
    return "Windows-1252";
}

std::string_view DateOrderName(TDateOrder order) {
    switch (order) {
    case TDateOrder::YearMonthDay: return "year-month-day";
    case TDateOrder::DayMonthYear: return "day.month.year";
    case TDateOrder::MonthDayYear: break;
    }
    return "month/day/year";
}

bool HasDates(const TTextFormat& format) {
    for (const TTextColumn& column : format.columns)
        if (column.kind == TCellKind::Date) return true;
    return false;
}

} // namespace

std::string TTextColumn::Title() const {
    return unit.empty() || name.empty() ? name : name + " (" + unit + ")";
}

std::string Describe(const TTextFormat& format) {
    std::string text = SeparatorText(format);
    if (!format.sheet || format.decimalSign == ',')
        text += format.decimalSign == ',' ? ", decimal comma" : ", decimal point";
    if (HasDates(format)) text.append(", dates ").append(DateOrderName(format.dateOrder));
    if (format.quotes == "'") text += ", text in '";
    if (format.shortTimes == TShortTimes::MinutesAndSeconds) text += ", times in minutes:seconds";
    if (format.midnight == TMidnight::RunsOn) text += ", times run on behind midnight";
    text += format.headerRows == 0   ? std::string(", no header rows")
            : format.headerRows == 1 ? std::string(", 1 header row")
                                     : ", " + std::to_string(format.headerRows) + " header rows";
    return format.sheet ? text : text.append(", ").append(EncodingName(format.encoding));
}

std::string ColumnText(const TTextFormat& format, int column) {
    if (column == TTextFormat::kRowNumber) return "the row number";
    std::string text = std::to_string(column + 1);
    const auto index = static_cast<std::size_t>(column);
    if (index < format.columns.size() && !format.columns[index].name.empty())
        text += " (" + format.columns[index].name + ")";
    return text;
}

std::string ToDisplayText(std::string_view text, TTextEncoding encoding) {
    if (encoding != TTextEncoding::CodePage && IsValidUtf8(text)) return std::string(text);
    return FromCodePage(text);
}

} // namespace lumoplot
