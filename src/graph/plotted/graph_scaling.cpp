#include "graph/plotted/graph_scaling.h"

#include "graph/model/graph.h"
#include "graph/plotted/paired_points.h"
#include "support/errors.h"

#include <algorithm>
#include <utility>

namespace lumoplot {
namespace {

void Widen(TAxis& axis, const TRange& range) {
    if (range.IsEmpty()) return;
    if (axis.HasData())
        axis.SetDataExtent(std::min(axis.DataMin(), range.Min), std::max(axis.DataMax(), range.Max));
    else
        axis.SetDataExtent(range.Min, range.Max);
}

TAxisRange RangeOf(const TAxis* axis) {
    return {axis->Min(), axis->Max(), axis->StepSize()};
}

} // namespace

TGraphScaling::TGraphScaling(TxyGraph& graph)
    : m_graph(graph), m_plottedPointLimit(TxyGraph::kPlottedPointLimit) {
}

std::array<TAxis*, 3> TGraphScaling::Axes() const {
    return {m_graph.XAxis(), m_graph.YAxis(), m_graph.YAxis_Second()};
}

void TGraphScaling::CollectExtents() {
    for (TAxis* axis : Axes()) axis->ClearDataExtent();
    for (TSeries* series : m_graph.Series())
        if (series->ExtentsStale()) series->RecalcExtents();
    for (TSeries* series : m_graph.Series()) {
        series->m_logErrors = 0;
        if (!IsDrawn(*series)) continue;
        const TDrawnExtent extent = m_extents.Of(*series);
        Widen(*m_graph.XAxis(), extent.X);
        Widen(*series->YAxisOfSeries(), extent.Y);
        series->m_logErrors = extent.LogErrors;
    }
    m_extents.DropUnused();
}

// Tells once about each data set that begins to meet a condition.
void TGraphScaling::TellAboutSeries() {
    std::vector<TSeries*> withLogErrors;
    std::vector<TSeries*> withManyPoints;
    for (TSeries* series : m_graph.Series()) {
        const bool hasMany = series->Active() && series->Count() > m_plottedPointLimit;
        const bool hasLogErrors = series->LogErrors() > 0;
        if (hasLogErrors && !series->m_toldLogError) withLogErrors.push_back(series);
        if (hasMany && !series->m_toldManyPoints) withManyPoints.push_back(series);
        series->m_toldLogError = hasLogErrors;
        series->m_toldManyPoints = hasMany;
    }
    // A listener may delete data sets.
    const auto isHere = [this](const TSeries* series) {
        const auto all = m_graph.Series();
        return std::ranges::find(all, series) != all.end();
    };
    for (TSeries* series : withLogErrors)
        if (isHere(series)) Q_EMIT m_graph.OnLogError(series);
    for (TSeries* series : withManyPoints)
        if (isHere(series)) Q_EMIT m_graph.OnTooManyPoints(series);
}

void TGraphScaling::Rescale() {
    CollectExtents();
    m_hasFailed = false;
    for (TAxis* axis : Axes()) {
        try {
            axis->Rescale();
        } catch (const EScaleError&) {
            m_hasFailed = true;
        }
    }
    m_isStale = false;
    TellAboutSeries();
    if (m_hasFailed) return Q_EMIT m_graph.OnScaleError();
    std::array<TAxisRange, 3> ranges;
    std::ranges::transform(Axes(), ranges.begin(), RangeOf);
    if (std::exchange(m_toldRanges, ranges) != ranges) Q_EMIT m_graph.OnRescale();
}

} // namespace lumoplot
