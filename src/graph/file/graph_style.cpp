#include "graph/file/graph_style.h"

#include "graph/model/setting_value.h"
#include "support/update_hold.h"

#include <algorithm>
#include <string_view>

namespace lumoplot {
namespace {

// By their names in files: those of Appearance, Dimensions and axes; data sets have labels.
constexpr std::string_view kContent[] = {
    "DuplicatesAllowed", "TitleOfGraph", "XAxisSerIndex", "CurrSerIndex", "dataDirectory", "MarksAreShown",
    "HorPosition", "VerPosition", "HorSize", "VerSize", "AxisTitle", "EnableAutoTitle", "useLogScale", "Max",
    "Min", "TickSpace", "MinimumScale", "ShowAsTime", "TimeFormat", "TimeTickMode", "AllowAutoSize",
    "AllowTickRescale",
    // of data sets
    "Active", "FirstAxis", "UpperBound", "LowerBound", "BoundsMode", "ShowInLegend", "SeriesFlag"};

constexpr int kFirstWishOfText = 60; // keys of data sets from there on say how their texts are read

template <class T>
bool IsLook(const TSectionRow<T>& row) {
    if constexpr (std::is_same_v<T, TSeries>)
        if (row.key >= kFirstWishOfText) return false;
    return row.write && std::ranges::find(kContent, std::string_view(row.label)) == std::end(kContent);
}

template <class T>
void TakeRows(std::span<const TSectionRow<T>> rows, const T& from, T& to) {
    CopySettings(rows, from, to, [](const TSectionRow<T>& row) { return IsLook(row); });
}

} // namespace

void TakeLook(TxyGraph& graph, const TxyGraph& from) {
    const TUpdateHold hold(graph);
    TakeRows(AppearanceRows(), *from.Appearance(), *graph.Appearance());
    TakeRows(DimensionsRows(), *from.Dimensions(), *graph.Dimensions());
    TakeRows(AxisRows(), *from.XAxis(), *graph.XAxis());
    TakeRows(AxisRows(), *from.YAxis(), *graph.YAxis());
    TakeRows(AxisRows(), *from.YAxis_Second(), *graph.YAxis_Second());
    TakeRows(LegendRows(), *from.Legend(), *graph.Legend());
    for (const auto& series : graph.Series())
        if (const TSeries* model = from.FindSeries(series->SeriesIndex()))
            TakeRows(SeriesRows(), *model, *series);
    graph.NeedRescale();
    graph.RequestRepaint(true);
}

void ApplyStyle(TxyGraph& graph, const std::string& fileName) {
    TxyGraph style;
    style.resize(graph.size());
    style.LoadFromFile(fileName);
    TakeLook(graph, style);
}

void SaveStyle(const TxyGraph& graph, const std::string& fileName) {
    TxyGraph style;
    style.resize(graph.size());
    for (const auto& series : graph.Series()) style.AddSeriesNumbered(series->SeriesIndex());
    TakeLook(style, graph);
    style.SaveTemplate(fileName, TPoints::LeaveOut);
}

} // namespace lumoplot
