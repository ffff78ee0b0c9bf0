#include "graph/model/axis.h"

#include "graph/model/axis_scale.h"
#include "graph/model/graph.h"
#include "graph/model/setting_rows.h"
#include "support/errors.h"

#include <cmath>

namespace lumoplot {

TAxis::TAxis(TxyGraph& graph, TAxisRole role) : TGraphSettings(graph), m_role(role) {
    ResetToDefaults();
}

void TAxis::ResetToDefaults() {
    ResetSettings(AxisRows(), *this);
    Redraw();
}

void TAxis::SetLogScale(bool value) {
    if (value == m_logScale) return;
    if (value && m_min <= 0) {
        if (m_max <= 0) m_max = 10;
        m_min = 0.001 * m_max;
    }
    Store(m_logScale, value);
}

void TAxis::SetMax(double value) {
    m_autoSizing = false;
    if (!std::isfinite(value) || value == m_max) return;
    m_max = value;
    UpdateStep();
    Redraw();
}

void TAxis::SetMin(double value) {
    m_autoSizing = false;
    if (!std::isfinite(value) || value == m_min) return;
    m_min = value;
    UpdateStep();
    Redraw();
}

void TAxis::SetStepSize(double value) {
    m_autoStepping = false;
    if (std::isfinite(value)) Store(m_stepSize, value);
}

void TAxis::SetMinScaleLength(double value) {
    if (!std::isfinite(value)) return;
    const double old = m_minScaleLength;
    m_minScaleLength = value;
    const double span = m_max - m_min;
    const bool alreadyLongEnough = span >= value && span != old;
    if (!alreadyLongEnough) Redraw();
}

void TAxis::SetDataExtent(double min, double max) {
    m_dataMin = min;
    m_dataMax = max;
}

void TAxis::ClearDataExtent() {
    SetDataExtent(0, -1);
}

void TAxis::Rescale() {
    if (!m_autoSizing || !HasData()) UpdateStep(); // which may turn AutoSizing on
    if (m_autoSizing && HasData()) {
        if (m_logScale)
            ApplyAutoLogRange();
        else
            ApplyAutoRange();
    }
    CheckRange();
}

void TAxis::ApplyAutoRange() {
    const TAppearance& appearance = *Graph().Appearance();
    const TAxisRange range = AutoRange(
        m_dataMin, m_dataMax, {appearance.MinSteps(), appearance.MaxSteps(), m_autoStepping, m_stepSize});
    const bool isTight = m_tightRange && m_dataMin < m_dataMax;
    m_min = isTight ? m_dataMin : range.min;
    m_max = isTight ? m_dataMax : range.max;
    m_stepSize = range.step;
    ApplyMinScaleLength();
}

// The graph hands over a positive minimum where the data have one.
void TAxis::ApplyAutoLogRange() {
    if (!(m_dataMax > 0)) throw EScaleError("SetMinMax failed");
    const double dataMin = m_dataMin > 0 ? m_dataMin : 0.001 * m_dataMax;
    const TAxisRange range = AutoLogRange(dataMin, m_dataMax);
    m_min = range.min;
    m_max = range.max;
    if (!(m_min > 0)) m_min = std::numeric_limits<double>::min();
    if (!std::isfinite(m_max)) m_max = std::numeric_limits<double>::max();
    UpdateStep();
}

void TAxis::ApplyMinScaleLength() {
    const double missing = m_minScaleLength - (m_max - m_min);
    if (!(missing > 0)) return;
    m_max += missing;
    UpdateStep();
}

void TAxis::UpdateStep() {
    const bool usable = m_stepSize > 0 && (m_max - m_min) / m_stepSize <= Graph().Appearance()->MaxSteps();
    if (!m_autoStepping && usable) return;
    if (m_max <= m_min) {
        m_autoSizing = true;
        m_autoStepping = true;
        return;
    }
    if (const auto step = TickStep(m_min, m_max, Graph().Appearance()->MinSteps())) m_stepSize = *step;
}

void TAxis::CheckRange() const {
    if (!(m_min < m_max) || (m_logScale && !(m_min > 0)))
        throw EScaleError(m_title + "Axis MIN exceeds axis MAX");
}

} // namespace lumoplot
