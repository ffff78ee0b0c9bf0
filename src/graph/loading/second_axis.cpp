#include "graph/loading/second_axis.h"

#include "graph/model/graph.h"
#include "support/update_hold.h"

#include <algorithm>

namespace lumoplot {
namespace {

bool IsSecondAxisUsed(const TxyGraph& graph) {
    return std::ranges::any_of(graph.Series(), [](const TSeries* series) { return series->IsOnSecondY(); });
}

void SwitchOn(TxyGraph& graph) {
    TAxis& axis = *graph.YAxis_Second();
    axis.SetShowAxis(true);
    axis.SetAutoSizing(true);
    axis.SetAutoStepping(true);
    axis.SetEnableAutoTitle(true);
    TDimensions& dimensions = *graph.Dimensions();
    dimensions.SetRightMargin(std::max(dimensions.RightMargin(), dimensions.LeftMargin()));
}

} // namespace

void PutOnYAxis(TSeries& series, TYAxisChoice choice) {
    TxyGraph& graph = series.Graph();
    const TUpdateHold hold(graph);
    const bool wasUsed = IsSecondAxisUsed(graph);
    series.SetYAxisOfSeries(choice == TYAxisChoice::Second ? graph.YAxis_Second() : graph.YAxis());
    const bool isUsed = IsSecondAxisUsed(graph);
    if (!wasUsed && isUsed && !graph.YAxis_Second()->ShowAxis()) SwitchOn(graph);
    if (wasUsed && !isUsed) graph.YAxis_Second()->SetShowAxis(false);
}

} // namespace lumoplot
