#include "graph/plotted/plot_map.h"

namespace lumoplot {

TGraphPart TPlotMap::PartAt(QPointF place) const {
    if (LegendPlace.contains(place)) return TGraphPart::Legend;
    if (Plot.contains(place)) return TGraphPart::Plot;
    if (TitlePlace.contains(place)) return TGraphPart::Title;
    constexpr std::array kAxes = {TGraphPart::XAxis, TGraphPart::YAxis, TGraphPart::SecondYAxis};
    for (std::size_t i = 0; i < kAxes.size(); ++i)
        if (AxisPlaces[i].contains(place)) return kAxes[i];
    return TGraphPart::None;
}

} // namespace lumoplot
