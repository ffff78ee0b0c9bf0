#include "graph/loading/date_axis.h"

#include "graph/model/axis.h"
#include "graph/model/graph.h"
#include "sources/text/column_formula.h"
#include "sources/text/text_format.h"

#include <algorithm>

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

} // namespace

void ShowDatesOfX(TSeries& series, const TTextFormat& format) {
    TxyGraph& graph = series.Graph();
    const auto all = graph.Series();
    const bool isAlone = std::ranges::all_of(
        all, [&series](const auto& other) { return &*other == &series || other->Count() == 0; });
    if (!isAlone || series.Count() == 0 || !HasDates(series, format)) return;
    TAxis& axis = *graph.XAxis();
    axis.SetShowAsTime(true);
    if (axis.DateTimeFormat() == kUsualFormat)
        axis.SetDateTimeFormat(FormatFor(series.MaxX() - series.MinX()));
}

} // namespace lumoplot
