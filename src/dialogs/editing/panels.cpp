#include "dialogs/editing/panels.h"

#include "graph/mouse/graph_mouse.h"
#include "graph/plotted/panel_place.h"
#include "support/errors.h"
#include "support/update_hold.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace lumoplot {
namespace {

constexpr int kBetweenPanels = 10; // units, above and below the plots inside a stack
constexpr int kInsetFont = 11;
constexpr int kInsetMargin = 34;
constexpr int kInsetEdge = 10;

TFontSpec Resized(TFontSpec font, int size) {
    font.Size = size;
    return font;
}

void PlaceChild(TxyChildGr& child, const QRectF& place) {
    TDimensions& dimensions = *child.Dimensions();
    dimensions.SetHorPosition(place.left());
    dimensions.SetVerPosition(place.top());
    dimensions.SetHorSize(place.width());
    dimensions.SetVerSize(place.height());
    child.FollowParent();
}

QRectF PlaceOfChild(const TxyChildGr& child) {
    const TDimensions& place = *child.Dimensions();
    return {place.HorPosition(), place.VerPosition(), place.HorSize(), place.VerSize()};
}

/// A child graph like the graph itself, without child graphs of its own.
TxyChildGr& AddCopy(TxyGraph& graph) {
    TxyGraph copy;
    copy.CopyFrom(graph);
    copy.ClearChildGraphs();
    TxyChildGr& child = *graph.AddChildGraph();
    child.CopyFrom(copy);
    child.Appearance()->SetGraphTitle({});
    return child;
}

/// Lets every graph of the stack have the same height. Only the lowest one shows the X axis.
void Restack(TxyGraph& graph, int top, int bottom) {
    const std::vector<TxyGraph*> stack = StackOf(graph);
    const double height = 1.0 / static_cast<double>(stack.size());
    for (std::size_t i = 0; i < stack.size(); ++i) {
        const bool isLowest = i + 1 == stack.size();
        TDimensions& margins = *stack[i]->Dimensions();
        margins.SetTopMargin(i == 0 ? top : kBetweenPanels);
        margins.SetBottomMargin(isLowest ? bottom : kBetweenPanels);
        stack[i]->XAxis()->SetShowAxis(isLowest);
        if (stack[i] != &graph)
            PlaceChild(static_cast<TxyChildGr&>(*stack[i]), {0, static_cast<double>(i) * height, 1, height});
    }
    graph.RequestRepaint(true);
}

int BottomOf(TxyGraph& graph) {
    return StackOf(graph).back()->Dimensions()->BottomMargin();
}

} // namespace

TxyChildGr& AddInset(TxyGraph& graph, const QRectF& place) {
    const TUpdateHold hold(graph);
    TxyChildGr& inset = AddCopy(graph);
    TAppearance& look = *inset.Appearance();
    look.SetLabelFont(Resized(look.LabelFont(), kInsetFont));
    look.SetTitleFont(Resized(look.TitleFont(), kInsetFont));
    look.SetShowFrame(true);
    inset.XAxis()->SetShowAxis(true); // a graph of a stack shows none
    inset.Legend()->Setvisible(false);
    for (TAxis* axis : {inset.XAxis(), inset.YAxis(), inset.YAxis_Second()}) {
        axis->SetEnableAutoTitle(false);
        axis->SetTitle({});
    }
    TDimensions& margins = *inset.Dimensions();
    margins.SetLeftMargin(kInsetMargin);
    margins.SetBottomMargin(kInsetMargin);
    margins.SetTopMargin(kInsetEdge);
    margins.SetRightMargin(inset.YAxis_Second()->ShowAxis() ? kInsetMargin : kInsetEdge);
    inset.ClearMarks();
    PlaceChild(inset, place);
    return inset;
}

std::vector<TxyGraph*> StackOf(TxyGraph& graph) {
    std::vector<TxyGraph*> stack{&graph};
    for (TxyChildGr* child : graph.ChildGraphs())
        if (IsStacked(*child)) stack.push_back(child);
    std::sort(stack.begin() + 1, stack.end(), [](const TxyGraph* a, const TxyGraph* b) {
        return a->Dimensions()->VerPosition() < b->Dimensions()->VerPosition();
    });
    return stack;
}

TxyChildGr& StackBelow(TxyGraph& graph, TSeries& series) {
    if (graph.Series().size() < 2)
        throw ELumoError("A panel of its own needs a second data set in the graph");
    const TUpdateHold hold(graph);
    graph.PrepareForDrawing();
    const double min = graph.XAxis()->Min();
    const double max = graph.XAxis()->Max();
    const int bottom = BottomOf(graph);
    TxyChildGr& panel = AddCopy(graph);
    const int number = series.SeriesIndex();
    panel.FreeAllSeries();
    panel.ClearMarks();
    TSeries& moved = *panel.FindSeries(panel.AddSeries());
    moved.CopyFrom(series);
    if (series.IsOnSecondY()) panel.YAxis()->SetTitle(graph.YAxis_Second()->Title());
    moved.SetYAxisOfSeries(panel.YAxis());
    panel.YAxis()->SetAutoSizing(true);
    panel.YAxis_Second()->SetShowAxis(false);
    graph.DeleteSeries(number);
    const auto usesSecond = [](const TSeries* other) { return other->IsOnSecondY(); };
    if (std::ranges::none_of(graph.Series(), usesSecond)) graph.YAxis_Second()->SetShowAxis(false);
    PlaceChild(panel, {0, 1, 1, 1}); // below all others
    Restack(graph, graph.Dimensions()->TopMargin(), bottom);
    for (TxyGraph* member : StackOf(graph)) {
        member->XAxis()->SetMax(max);
        member->XAxis()->SetMin(min);
    }
    return panel;
}

void AlignFrames(TxyGraph& graph) {
    const std::vector<TxyGraph*> stack = StackOf(graph);
    double left = 0;
    double right = 0;
    for (const TxyGraph* member : stack) {
        const TPlotMap* map = member->Mouse().Map();
        if (!map) continue;
        left = std::max(left, map->Plot.left());
        right = std::max(right, member->width() - map->Plot.right());
    }
    for (TxyGraph* member : stack) {
        member->Dimensions()->SetLeftMargin(static_cast<int>(std::ceil(left)));
        member->Dimensions()->SetRightMargin(static_cast<int>(std::ceil(right)));
    }
}

void ShareXRange(TxyGraph& graph, const TxyGraph& changed) {
    const TAxis& range = *changed.XAxis();
    for (TxyGraph* member : StackOf(graph)) {
        TAxis& axis = *member->XAxis();
        if (member == &changed || (axis.Min() == range.Min() && axis.Max() == range.Max())) continue;
        axis.SetMax(range.Max());
        axis.SetMin(range.Min());
    }
}

// The chain of child graphs gives none of them back alone, so the others are added anew.
void RemovePanel(TxyGraph& graph, int place) {
    const TUpdateHold hold(graph);
    const int top = graph.Dimensions()->TopMargin();
    const int bottom = BottomOf(graph);
    struct TKept {
        std::unique_ptr<TxyGraph> Graph;
        QRectF Place;
    };
    std::vector<TKept> kept;
    int at = 0;
    bool wasStacked = false;
    for (TxyChildGr* child : graph.ChildGraphs()) {
        if (at++ == place) {
            wasStacked = IsStacked(*child);
            if (wasStacked)
                for (const TSeries* series : child->Series())
                    graph.FindSeries(graph.AddSeries())->CopyFrom(*series);
            continue;
        }
        kept.push_back({std::make_unique<TxyGraph>(), PlaceOfChild(*child)});
        kept.back().Graph->CopyFrom(*child);
    }
    graph.ClearChildGraphs();
    for (const TKept& panel : kept) {
        TxyChildGr& child = *graph.AddChildGraph();
        child.CopyFrom(*panel.Graph);
        PlaceChild(child, panel.Place);
    }
    if (wasStacked) Restack(graph, top, bottom);
}

} // namespace lumoplot
