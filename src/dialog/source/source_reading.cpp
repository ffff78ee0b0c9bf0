#include "dialog/source/source_reading.h"

#include "data/series/ds_info.h"

namespace lumoplot {

void FixReading(TSeries& series, const TTextFormat& chosen, const TTextFormat& found) {
    TDSInfo& info = series.DataSourceInfo();
    if (chosen.separators != found.separators) info.SetTextSeparators(chosen.separators);
    if (chosen.headerRows != found.headerRows) info.SetFileHasHeaders(chosen.headerRows);
    TTextWishes wishes = series.TextWishes();
    if (chosen.encoding != found.encoding) wishes.encoding = chosen.encoding;
    if (chosen.decimalSign != found.decimalSign) wishes.decimalSign = chosen.decimalSign;
    if (chosen.dateOrder != found.dateOrder) wishes.dateOrder = chosen.dateOrder;
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
