// How a graph brings its axes up to date with its data before it is drawn.
#include "graph/graph.h"
#include "support/errors.h"

#include <algorithm>
#include <array>

namespace lumoplot {
namespace {

struct TExtent {
    double min;
    double max;
};

void Widen(TAxis& axis, const TExtent& extent) {
    if (axis.HasData())
        axis.SetDataExtent(std::min(axis.DataMin(), extent.min), std::max(axis.DataMax(), extent.max));
    else
        axis.SetDataExtent(extent.min, extent.max);
}

TExtent ExtentOfX(const TSeries& series, bool logScale) {
    return {logScale ? series.PositiveMinX() : series.MinX(), series.MaxX()};
}

TExtent ExtentOfY(const TSeries& series, bool logScale) {
    return {logScale ? series.PositiveMinY() : series.MinY(), series.MaxY()};
}

} // namespace

void TxyGraph::CollectExtents() {
    for (TAxis* axis : {XAxis(), YAxis(), YAxis_Second()}) axis->ClearDataExtent();
    const TSeries* xSeries = FindSeries(m_appearance->XAxisSerIndex());
    for (const auto& series : m_series)
        if (series->ExtentsStale()) series->RecalcExtents();
    for (const auto& series : m_series) {
        if (!series->Active() || series->Count() == 0) continue;
        const bool logX = m_xAxis->LogScale();
        const bool usesX = series->UseXAxisSeries() && xSeries && xSeries->Count() > 0;
        Widen(*m_xAxis, usesX ? ExtentOfY(*xSeries, logX) : ExtentOfX(*series, logX));
        TAxis& yAxis = *series->YAxisOfSeries();
        Widen(yAxis, ExtentOfY(*series, yAxis.LogScale()));
    }
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
    if (m_scaleFailed)
        Q_EMIT OnScaleError();
    else
        Q_EMIT OnRescale();
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
        series->UpdateRegression();
        series->UpdateFittedCurve(m_xAxis->LogScale());
    }
}

bool TxyGraph::HasContent() const {
    return m_marks.Count() > 0 || std::ranges::any_of(m_series, [](const auto& s) { return s->Count() > 0; });
}

} // namespace lumoplot
