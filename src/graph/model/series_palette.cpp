#include "graph/model/series_palette.h"

#include "graph/model/graph.h"
#include "support/update_hold.h"

#include <algorithm>

namespace lumoplot {
namespace {

bool IsTaken(const TSeries& newOne, TColor color) {
    return std::ranges::any_of(newOne.Graph().Series(), [&](const TSeries* series) {
        return series != &newOne && (series->LineColor() == color || series->PointColor() == color);
    });
}

} // namespace

void TakeNextStyle(TSeries& series) {
    const auto first = static_cast<std::size_t>(series.SeriesIndex());
    std::size_t place = first;
    while (place < first + kSeriesColors.size() &&
           IsTaken(series, kSeriesColors[place % kSeriesColors.size()]))
        ++place;
    if (place == first + kSeriesColors.size()) place = first;
    const TUpdateHold hold(series);
    series.SetLineColor(kSeriesColors[place % kSeriesColors.size()]);
    series.SetPointColor(kSeriesColors[place % kSeriesColors.size()]);
    series.SetPointShape(kSeriesShapes[place % kSeriesShapes.size()]);
}

void TakeOwnStyle(TSeries& series) {
    if (IsTaken(series, series.LineColor()) || IsTaken(series, series.PointColor())) TakeNextStyle(series);
}

} // namespace lumoplot
