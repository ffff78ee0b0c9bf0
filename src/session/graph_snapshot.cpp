#include "session/graph_snapshot.h"

#include "data/series/ds_info.h"
#include "graph/file/graph_file.h"
#include "graph/model/child_graph.h"
#include "graph/mouse/graph_mouse.h"
#include "session/settings_sections.h"
#include "support/update_hold.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace lumoplot {
namespace {

using TBytesPointer = std::shared_ptr<const TSharedBytes>;

/// `bytes`, or the same ones that are kept already.
TBytesPointer Share(TBytes bytes, const TBytesPointer* earlier, const std::shared_ptr<TMemoryMeter>& meter) {
    if (earlier && (*earlier)->Bytes() == bytes) return *earlier;
    return std::make_shared<const TSharedBytes>(std::move(bytes), meter);
}

// Which data set is current, and which one is X, is kept beside the settings, and so is what is only at times
// written.
template <class T>
bool IsKeptApart(const TSectionRow<T>& row) {
    return row.rowOf != TRowOf::EverySection || std::string_view(row.label).ends_with("SerIndex");
}

template <class T>
TBytes SectionOf(std::span<const TSectionRow<T>> rows, const T& object) {
    TBytes bytes;
    TxyWriter writer(bytes, TEncoding::Compact);
    for (const auto& row : rows)
        if (row.write && !IsKeptApart(row)) row.write(writer, row, object);
    writer.WriteEndOfSection();
    return bytes;
}

TBytesPointer PendingFitOf(const TCurFit& fit, const TSeriesState* earlier,
                           const std::shared_ptr<TMemoryMeter>& meter) {
    if (!fit.IsPending()) return nullptr;
    TBytes bytes;
    TxyWriter writer(bytes, TEncoding::Compact);
    fit.SaveToStream(writer);
    return Share(std::move(bytes), earlier && earlier->PendingFit ? &earlier->PendingFit : nullptr, meter);
}

bool SamePoints(const TSeriesState& a, const TSeriesState& b) {
    return a.Points == b.Points || *a.Points == *b.Points;
}

TBytes RecordOf(const TSeries& series) {
    TBytes bytes;
    TxyWriter writer(bytes, TEncoding::Compact);
    WriteSeries(writer, series, TPoints::LeaveOut);
    return bytes;
}

// The state of the same data set in an earlier snapshot: the one with the same points, else the one at the
// same place.
const TSeriesState* EarlierState(const TGraphSnapshot* earlier, std::size_t place, std::uint64_t stamp) {
    if (!earlier) return nullptr;
    const auto& states = earlier->Series();
    if (place < states.size() && states[place].DataStamp == stamp) return &states[place];
    const auto same = std::ranges::find(states, stamp, &TSeriesState::DataStamp);
    if (same != states.end()) return &*same;
    return place < states.size() ? &states[place] : nullptr;
}

std::shared_ptr<const TPointSnapshot> PointsOf(const TSeries& series, const TSeriesState* earlier,
                                               const std::shared_ptr<TMemoryMeter>& meter) {
    if (earlier && earlier->DataStamp == series.DataStamp()) return earlier->Points;
    auto points = std::make_shared<const TPointSnapshot>(series.Points(),
                                                         earlier ? earlier->Points.get() : nullptr, meter);
    return earlier && *points == *earlier->Points ? earlier->Points : points;
}

TSeriesState StateOf(const TSeries& series, const TSeriesState* earlier,
                     const std::shared_ptr<TMemoryMeter>& meter) {
    TSeriesState state;
    state.Number = series.SeriesIndex();
    state.Name = series.SeriesName();
    state.Record = Share(RecordOf(series), earlier ? &earlier->Record : nullptr, meter);
    state.Points = PointsOf(series, earlier, meter);
    state.Extents = series.Extents();
    state.SourceRows = series.SourceRows();
    state.TextWishes = series.TextWishes();
    state.FitRun = series.CurveFit().RunState();
    state.PendingFit = PendingFitOf(series.CurveFit(), earlier, meter);
    state.RegressionStale = series.RegressionStale();
    state.IsThinned = series.IsThinned();
    state.NeedsReload = series.DataSourceInfo().NeedsReload();
    state.IsSamplingChosen = series.DataSourceInfo().IsSamplingChosen();
    state.UsesXAxisSeries = series.UseXAxisSeries();
    state.DataStamp = series.DataStamp();
    state.FeedId = series.DataSourceInfo().FeedId();
    return state;
}

// The points are away while the record is read, whose settings would merge them.
void RestoreContent(TSeries& series, const TSeriesState& state, const TSeriesState& present) {
    const TUpdateHold hold(series);
    TPointChain points = series.SwapPoints({});
    if (!SamePoints(state, present)) points = state.Points->ToChain();
    TByteSource source(state.Record->Bytes());
    TxyReader reader(source);
    ReadSeries(reader, series);
    series.SwapPoints(std::move(points));
}

void RestoreRegression(TSeries& series, bool stale) {
    if (stale && !series.RegressionStale()) series.MarkRegressionStale();
    if (!stale) series.UpdateRegression();
}

// What was worked out, when the data sets and the one that is X are what they were, baselines included.
void RestoreResults(TSeries& series, const TSeriesState& state) {
    RestoreRegression(series, state.RegressionStale);
    series.RestoreExtents(state.Extents); // sampling the curve of a fit has brought them up to date
    series.CurveFit().RestoreRunState(state.FitRun);
    series.SetTextWishes(state.TextWishes);
    series.SetSourceRows(state.SourceRows);
    series.SetThinned(state.IsThinned);
    series.DataSourceInfo().SetNeedsReload(state.NeedsReload);
    series.DataSourceInfo().SetSamplingChosen(state.IsSamplingChosen);
    series.DataSourceInfo().SetFeedId(state.FeedId);
}

/// Of the graph or of one of its child graphs.
const TSeriesState* FedState(const TGraphSnapshot& whole, std::uint64_t feedId) {
    if (feedId == 0) return nullptr;
    const auto found = std::ranges::find(whole.Series(), feedId, &TSeriesState::FeedId);
    if (found != whole.Series().end()) return &*found;
    for (const TGraphSnapshot& child : whole.Children())
        if (const TSeriesState* state = FedState(child, feedId)) return state;
    return nullptr;
}

void AddFed(const TGraphSnapshot& part, const TGraphSnapshot& before, std::vector<TFedAtStep>& fed) {
    for (const TSeriesState& state : part.Series())
        if (const TSeriesState* earlier = FedState(before, state.FeedId))
            fed.push_back({state.FeedId, state.Points->LastId(), !SamePoints(*earlier, state)});
    for (const TGraphSnapshot& child : part.Children()) AddFed(child, before, fed);
}

// The points of `edited` that were there at the step, and those of `present` that came behind it.
TPointChain JoinFed(const TPointSnapshot& edited, const TPointSnapshot& present, std::int32_t lastId) {
    // Points that are added get Ids that no step has seen.
    TPointChain joined(edited.Runs(), std::max(edited.LastId(), present.LastId()));
    std::vector<std::int32_t> later;
    for (TPointCursor point = joined.First(); point; point = point.Next())
        if (point.Id() > lastId) later.push_back(point.Id());
    for (const std::int32_t id : later) joined.Erase(id);
    for (const TPointSpans& run : present.Runs())
        for (std::size_t i = 0; i < run.Ids.size(); ++i)
            if (run.Ids[i] > lastId)
                joined.Add(run.X[i], run.Y[i], {.DuplicatesAllowed = true},
                           run.YErrors.empty() ? 0 : run.YErrors[i]);
    return joined;
}

} // namespace

bool TSeriesState::SameContent(const TSeriesState& other) const {
    return (Record == other.Record || Record->Bytes() == other.Record->Bytes()) && SamePoints(*this, other);
}

bool TSeriesState::operator==(const TSeriesState& other) const {
    return SameContent(other) && TextWishes == other.TextWishes && SourceRows == other.SourceRows &&
           IsThinned == other.IsThinned && UsesXAxisSeries == other.UsesXAxisSeries &&
           FitRun.Result == other.FitRun.Result && FitRun.Error == other.FitRun.Error;
}

TGraphSnapshot::TGraphSnapshot(const TxyGraph& graph, const TGraphSnapshot* earlier,
                               std::shared_ptr<TMemoryMeter> meter)
    : m_dataDirectory(graph.Appearance()->DataDirectory()),
      m_xAxisSerIndex(graph.Appearance()->XAxisSerIndex()),
      m_currSerIndex(graph.Appearance()->CurrSerIndex()), m_marks(graph.Marks()),
      m_views(graph.Mouse().Zoom().History()), m_meter(std::move(meter)),
      m_cost(m_meter, sizeof(*this) + graph.Series().size() * sizeof(TSeriesState) +
                          graph.Marks().Marks().size() * sizeof(TGraphMark) +
                          m_views.size() * sizeof(TGraphView)) {
    VisitSections(graph, [&](auto rows, const auto& object) {
        const TBytesPointer* before = earlier ? &earlier->m_settings[m_settings.size()] : nullptr;
        m_settings.push_back(Share(SectionOf(rows, object), before, m_meter));
    });
    m_series.reserve(graph.Series().size());
    for (const auto& series : graph.Series())
        m_series.push_back(
            StateOf(*series, EarlierState(earlier, m_series.size(), series->DataStamp()), m_meter));
    m_children.reserve(graph.ChildGraphs().size());
    for (const auto& child : graph.ChildGraphs()) {
        const bool hasEarlier = earlier && m_children.size() < earlier->m_children.size();
        m_children.emplace_back(*child, hasEarlier ? &earlier->m_children[m_children.size()] : nullptr,
                                m_meter);
    }
}

std::vector<TFedAtStep> TGraphSnapshot::FedSince(const TGraphSnapshot& before) const {
    std::vector<TFedAtStep> fed;
    AddFed(*this, before, fed);
    return fed;
}

void TGraphSnapshot::TakeFed(const TGraphSnapshot& present, const std::vector<TFedAtStep>& step) {
    for (TSeriesState& state : m_series) {
        const TSeriesState* now = FedState(present, state.FeedId);
        const auto fed = std::ranges::find(step, state.FeedId, &TFedAtStep::FeedId);
        if (!now || fed == step.end() || SamePoints(state, *now)) continue;
        state.RegressionStale = true;
        if (!fed->IsEdited) {
            state.Points = now->Points;
            state.Extents = now->Extents;
            state.SourceRows = now->SourceRows;
            state.DataStamp = now->DataStamp;
            continue;
        }
        const TPointChain points = JoinFed(*state.Points, *now->Points, fed->LastId);
        state.Points = std::make_shared<const TPointSnapshot>(points, state.Points.get(), m_meter);
        state.Extents.Stale = true;
        state.DataStamp = 0;
    }
    for (TGraphSnapshot& child : m_children) child.TakeFed(present, step);
}

bool TGraphSnapshot::SameSettings(const TGraphSnapshot& other) const {
    return m_dataDirectory == other.m_dataDirectory && m_xAxisSerIndex == other.m_xAxisSerIndex &&
           std::ranges::equal(m_settings, other.m_settings, [](const auto& a, const auto& b) {
               return a == b || a->Bytes() == b->Bytes();
           });
}

bool TGraphSnapshot::operator==(const TGraphSnapshot& other) const {
    return m_series == other.m_series && Marks() == other.Marks() && SameSettings(other) &&
           m_children == other.m_children;
}

void TGraphSnapshot::Restore(TxyGraph& graph, int currSerIndex) const {
    const TUpdateHold hold(graph);
    const bool hasX = graph.Appearance()->XAxisSerIndex() > 0 || m_xAxisSerIndex > 0;
    graph.Appearance()->FollowXAxisSeries(0); // nothing is said about a data set on its way
    RestoreSettings(graph);
    RestoreSeries(graph);
    graph.Mouse().Zoom().RestoreHistory(m_views);
    // Not by the setter: it refuses a data set that has allowed duplicates since it became X.
    graph.Appearance()->FollowXAxisSeries(m_xAxisSerIndex);
    for (std::size_t i = 0; i < m_series.size(); ++i)
        graph.Series()[i]->RestoreUseXAxisSeries(m_series[i].UsesXAxisSeries);
    for (std::size_t i = 0; i < m_series.size(); ++i) {
        if (hasX) graph.Series()[i]->XSourceChanged();
        graph.Series()[i]->RestoreExtents(m_series[i].Extents);
    }
    for (std::size_t i = 0; i < m_series.size(); ++i) RestoreResults(*graph.Series()[i], m_series[i]);
    graph.SetMarks(m_marks);
    RestoreChildren(graph);
    graph.Appearance()->SetCurrSerIndex(currSerIndex);
    graph.NeedRescale();
    graph.RequestRepaint(true);
}

void TGraphSnapshot::RestoreSettings(TxyGraph& graph) const {
    std::size_t section = 0;
    VisitSections(graph, [&](auto rows, auto& object) {
        const TBytes& wanted = m_settings[section++]->Bytes();
        if (SectionOf(rows, std::as_const(object)) == wanted) return;
        ReadSection(rows, wanted, object);
    });
    graph.Appearance()->SetDataDirectory(m_dataDirectory);
}

void TGraphSnapshot::RestoreSeries(TxyGraph& graph) const {
    while (graph.Series().size() > m_series.size()) graph.DeleteSeries(graph.Series().back()->SeriesIndex());
    while (graph.Series().size() < m_series.size()) graph.AddSeries();
    graph.RenumberSeries();
    const TGraphSnapshot present(graph, this, m_meter);
    for (std::size_t i = 0; i < m_series.size(); ++i)
        if (!m_series[i].SameContent(present.m_series[i]))
            RestoreContent(*graph.Series()[i], m_series[i], present.m_series[i]);
}

// A child graph keeps its place in the chain, so only their number tells which ones are wanted.
void TGraphSnapshot::RestoreChildren(TxyGraph& graph) const {
    if (graph.ChildGraphs().size() != m_children.size()) {
        graph.ClearChildGraphs();
        for (std::size_t i = 0; i < m_children.size(); ++i) graph.AddChildGraph();
    }
    for (std::size_t i = 0; i < m_children.size(); ++i)
        m_children[i].Restore(*graph.ChildGraphs()[i], m_children[i].m_currSerIndex);
}

} // namespace lumoplot
