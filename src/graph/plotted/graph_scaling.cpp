// How a graph brings its axes up to date with its data before it is drawn.
#include "graph/model/graph.h"
#include "graph/plotted/drawn_extent.h"
#include "graph/plotted/paired_points.h"
#include "support/errors.h"

#include <algorithm>
#include <array>
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

TAxisRange RangeOf(const TAxis& axis) {
    return {axis.Min(), axis.Max(), axis.StepSize()};
}

} // namespace

void TxyGraph::CollectExtents() {
    for (TAxis* axis : {XAxis(), YAxis(), YAxis_Second()}) axis->ClearDataExtent();
    for (const auto& series : m_series)
        if (series->ExtentsStale()) series->RecalcExtents();
    for (const auto& series : m_series) {
        series->m_logErrors = 0;
        if (!IsDrawn(*series)) continue;
        const TDrawnExtent extent = m_extents->Of(*series);
        Widen(*m_xAxis, extent.X);
        Widen(*series->YAxisOfSeries(), extent.Y);
        series->m_logErrors = extent.LogErrors;
    }
    m_extents->DropUnused();
}

// Tells once about each data set that begins to meet a condition.
void TxyGraph::TellAboutSeries() {
    std::vector<TSeries*> withLogErrors;
    std::vector<TSeries*> withManyPoints;
    for (const auto& series : m_series) {
        const bool hasMany = series->Active() && series->Count() > m_plottedPointLimit;
        const bool hasLogErrors = series->LogErrors() > 0;
        if (hasLogErrors && !series->m_toldLogError) withLogErrors.push_back(series.get());
        if (hasMany && !series->m_toldManyPoints) withManyPoints.push_back(series.get());
        series->m_toldLogError = hasLogErrors;
        series->m_toldManyPoints = hasMany;
    }
    // A listener may delete data sets.
    const auto isHere = [this](const TSeries* series) {
        return std::ranges::any_of(m_series, [series](const auto& each) { return each.get() == series; });
    };
    for (TSeries* series : withLogErrors)
        if (isHere(series)) Q_EMIT OnLogError(series);
    for (TSeries* series : withManyPoints)
        if (isHere(series)) Q_EMIT OnTooManyPoints(series);
}

void TxyGraph::Rescale() {
    CollectExtents();
    m_scaleFailed = false;
    for (TAxis* axis : {XAxis(), YAxis(), YAxis_Second()}) {
        try {
            axis->Rescale();
        } catch (const EScaleError&) {
            m_scaleFailed = true;
        }
    }
    m_needsRescale = false;
    TellAboutSeries();
    if (m_scaleFailed) return Q_EMIT OnScaleError();
    const std::array ranges = {RangeOf(*m_xAxis), RangeOf(*m_yAxis), RangeOf(*m_yAxisSecond)};
    if (std::exchange(m_toldRanges, ranges) != ranges) Q_EMIT OnRescale();
}

void TxyGraph::PrepareForDrawing() {
    UpdateForDrawing();
    if (RunPendingFits()) UpdateForDrawing();
}

void TxyGraph::UpdateForDrawing() {
    const bool stale =
        std::ranges::any_of(m_series, [](const auto& series) { return series->ExtentsStale(); });
    if (m_needsRescale || m_repaintRequested || stale) Rescale();
    for (const auto& series : m_series) {
        if (!series->Active()) continue;
        if (!series->WaitsForEveryRow()) series->UpdateRegression();
        series->UpdateFittedCurve(m_xAxis->LogScale());
    }
}

bool TxyGraph::HasContent() const {
    return m_marks.Count() > 0 || std::ranges::any_of(m_series, [](const auto& s) { return s->Count() > 0; });
}

} // namespace lumoplot
