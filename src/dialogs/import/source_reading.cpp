#include "dialogs/import/source_reading.h"

#include "data/series/ds_info.h"

namespace lumoplot {

void FixReading(TSeries& series, const TTextFormat& chosen, const TTextFormat& found) {
    TDSInfo& info = series.DataSourceInfo();
    if (chosen.separators != found.separators)
        info.SetTextSeparators(chosen.separators.empty() ? "\n" : chosen.separators);
    if (chosen.headerRows != found.headerRows) info.SetFileHasHeaders(chosen.headerRows);
    TTextWishes wishes = series.TextWishes();
    if (chosen.encoding != found.encoding) wishes.encoding = chosen.encoding;
    if (chosen.decimalSign != found.decimalSign) wishes.decimalSign = chosen.decimalSign;
    if (chosen.dateOrder != found.dateOrder) wishes.dateOrder = chosen.dateOrder;
    if (chosen.shortTimes != found.shortTimes) wishes.shortTimes = chosen.shortTimes;
    if (chosen.midnight != found.midnight) wishes.midnight = chosen.midnight;
    if (chosen.quotes != found.quotes) wishes.quotes = chosen.quotes;
    if (chosen.fields.empty() != found.fields.empty())
        wishes.columns = chosen.fields.empty() ? TColumnLayout::InTurn : TColumnLayout::Aligned;
    series.SetTextWishes(wishes);
}

void ForgetReading(TSeries& series) {
    TDSInfo& info = series.DataSourceInfo();
    info.SetTextSeparators({});
    info.SetFileHasHeaders(TDSInfo::kFindHeaders);
    info.SetDivideTextByWidth(false);
    info.SetTextMarkers(TDSInfo().TextMarkers());
    series.SetTextWishes({});
}

bool HasFixedReading(const TSeries& series) {
    const TDSInfo& info = series.DataSourceInfo();
    return !info.TextSeparators().empty() || info.FileHasHeaders() != TDSInfo::kFindHeaders ||
           info.DivideTextByWidth() || info.TextMarkers() != TDSInfo().TextMarkers() ||
           series.TextWishes() != TTextWishes{};
}

} // namespace lumoplot
