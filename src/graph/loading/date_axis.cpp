#include "graph/loading/date_axis.h"

#include "graph/model/axis.h"
#include "graph/model/graph.h"
#include "sources/text/column_formula.h"
#include "sources/text/text_format.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace lumoplot {
namespace {

constexpr const char* kUsualFormat = "dd-mmm";
constexpr double kLongestTimes = 2; // days

bool HasDates(const TSeries& series, const TTextFormat& format) {
    if (format.xColumn < 0 || format.xFormat != TColumnFormat::DateTime) return false;
    if (!EffectiveFormula(series.XColExpr(), "X").empty()) return false;
    const TCellKind kind = format.columns[static_cast<std::size_t>(format.xColumn)].kind;
    return kind == TCellKind::Date || series.MaxX() <= kLongestTimes;
}

// For ticks that are a tenth of the span apart, in days.
const char* FormatFor(double span) {
    if (span < 0.005) return "hh:nn:ss";
    if (span < 2) return "hh:nn";
    if (span < 120) return kUsualFormat;
    return span < 3000 ? "mmm yyyy" : "yyyy";
}

std::vector<const TSeries*> OthersWithPoints(const TSeries& series) {
    std::vector<const TSeries*> others;
    for (const TSeries* other : std::as_const(series.Graph()).Series())
        if (other != &series && other->Count() > 0) others.push_back(other);
    return others;
}

} // namespace

void ShowDatesOfX(TSeries& series, const TTextFormat& format) {
    TxyGraph& graph = series.Graph();
    if (!OthersWithPoints(series).empty() || series.Count() == 0 || !HasDates(series, format)) return;
    TAxis& axis = *graph.XAxis();
    axis.SetShowAsTime(true);
    if (axis.DateTimeFormat() == kUsualFormat)
        axis.SetDateTimeFormat(FormatFor(series.MaxX() - series.MinX()));
}

std::string MixedXText(const TSeries& series, const TTextFormat& format) {
    const auto others = OthersWithPoints(series);
    if (others.empty() || series.Count() == 0) return {};
    const bool showsDates = series.Graph().XAxis()->ShowAsTime();
    if (!HasDates(series, format))
        return showsDates ? "the X axis shows dates, but these X are numbers: they count as days since "
                            "1899-12-30. \"Dates and times\" among the settings of the X axis turns it off"
                          : std::string();
    if (!showsDates)
        return "these X are dates, but the X axis shows numbers: dates count as days since 1899-12-30. "
               "\"Dates and times\" among the settings of the X axis turns dates on";
    const auto hasDays = [](const TSeries* other) { return other->MaxX() > kLongestTimes; };
    const bool isTime = format.columns[static_cast<std::size_t>(format.xColumn)].kind == TCellKind::TimeOfDay;
    return isTime && std::ranges::any_of(others, hasDays) ? "these X are times of day without a date, beside "
                                                            "data sets with dates: they lie at 1899-12-30"
                                                          : std::string();
}

} // namespace lumoplot
