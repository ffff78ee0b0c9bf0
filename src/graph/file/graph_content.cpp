#include "graph/file/graph_content.h"

#include "graph/file/graph_file.h"
#include "graph/model/child_graph.h"
#include "support/update_hold.h"

#include <string_view>
#include <utility>

namespace lumoplot {
namespace {

// Which data set is current, and which one is X, is known when there are data sets.
template <class T>
void WriteAllEntries(TxyWriter& writer, std::span<const TSectionRow<T>> rows, const T& object) {
    for (const auto& row : rows)
        if (row.write && !std::string_view(row.label).ends_with("SerIndex")) row.write(writer, row, object);
    writer.WriteEndOfSection();
}

} // namespace

TSeriesContent::TSeriesContent(const TSeries& series)
    : m_number(series.SeriesIndex()), m_usesXAxisSeries(series.UseXAxisSeries()), m_data(series.Data()),
      m_source(series.SourceState()), m_fitRun(series.CurveFit().RunState()) {
    TxyWriter writer(m_record, TEncoding::Compact);
    WriteSeries(writer, series, TPoints::LeaveOut);
}

// The points are away while the record is read, whose settings would merge them.
void TSeriesContent::MoveInto(TSeries& series) && {
    const TUpdateHold hold(series);
    series.Clear();
    TByteSource source(m_record);
    TxyReader reader(source);
    ReadSeries(reader, series);
    series.CurveFit().RestoreRunState(m_fitRun);
    series.SetData(std::move(m_data));
    series.SetSourceState(m_source);
}

TGraphContent::TGraphContent(const TxyGraph& graph)
    : m_errorCaption(graph.Appearance()->ErrorCaption()), m_marks(graph.Marks()),
      m_xAxisSerIndex(graph.Appearance()->XAxisSerIndex()),
      m_currSerIndex(graph.Appearance()->CurrSerIndex()) {
    TxyWriter writer(m_settings, TEncoding::Compact);
    WriteAllEntries(writer, AppearanceRows(), *graph.Appearance());
    WriteAllEntries(writer, DimensionsRows(), *graph.Dimensions());
    for (const TAxis* axis : {graph.XAxis(), graph.YAxis(), graph.YAxis_Second()})
        WriteAllEntries(writer, AxisRows(), *axis);
    WriteAllEntries(writer, LegendRows(), *graph.Legend());
    m_series.reserve(graph.Series().size());
    for (const auto& series : graph.Series()) m_series.emplace_back(*series);
    m_children.reserve(graph.ChildGraphs().size());
    for (const auto& child : graph.ChildGraphs()) m_children.emplace_back(*child);
}

void TGraphContent::MoveInto(TxyGraph& graph) && {
    const TUpdateHold hold(graph);
    graph.FreeAllSeries();
    graph.ClearMarks();
    graph.ClearChildGraphs();
    graph.ResetToDefaults();
    MoveSettingsInto(graph);
    MovePartsInto(graph);
    graph.Appearance()->RestoreIndices(m_xAxisSerIndex, m_currSerIndex);
    for (const TSeriesContent& content : m_series)
        graph.FindSeries(content.Number())->RestoreUseXAxisSeries(content.UsesXAxisSeries());
    graph.NeedRescale();
    graph.RequestRepaint(true);
}

void TGraphContent::MoveSettingsInto(TxyGraph& graph) const {
    TByteSource source(m_settings);
    TxyReader reader(source);
    ReadEntries(reader, AppearanceRows(), *graph.Appearance());
    graph.Appearance()->SetErrorCaption(m_errorCaption);
    ReadEntries(reader, DimensionsRows(), *graph.Dimensions());
    for (TAxis* axis : {graph.XAxis(), graph.YAxis(), graph.YAxis_Second()})
        ReadEntries(reader, AxisRows(), *axis);
    ReadEntries(reader, LegendRows(), *graph.Legend());
}

// A listener may have added data sets of its own already.
void TGraphContent::MovePartsInto(TxyGraph& graph) {
    for (TSeriesContent& content : m_series) {
        TSeries* series = graph.FindSeries(content.Number());
        std::move(content).MoveInto(series ? *series : *graph.AddSeriesNumbered(content.Number()));
    }
    graph.SetMarks(m_marks);
    for (TGraphContent& content : m_children) {
        TxyChildGr* child = graph.AddChildGraph();
        std::move(content).MoveInto(*child);
        child->FollowParent();
    }
}

void ReplaceContent(TxyGraph& graph, TGraphContent content) {
    TGraphContent before(graph);
    try {
        std::move(content).MoveInto(graph);
    } catch (...) {
        std::move(before).MoveInto(graph);
        throw;
    }
}

} // namespace lumoplot
