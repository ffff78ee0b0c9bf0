#include "graph/model/appearance.h"

#include "graph/model/graph.h"
#include "graph/model/holder.h"
#include "graph/model/setting_rows.h"
#include "support/message_sink.h"

namespace lumoplot {
namespace {

constexpr double kStepsRatio = 2.5;
constexpr int kLargestMaxSteps = 90;

} // namespace

void TAppearance::SetAllowDuplicates(bool value) {
    m_allowDuplicates = value;
    for (const auto& series : Graph().Series()) series->SetDuplicatesAllowed(value);
    Redraw();
}

void TAppearance::SetXAxisSerIndex(int value) {
    if (value == m_xAxisSerIndex) return;
    const TSeries* series = Graph().FindSeries(value);
    m_xAxisSerIndex = series && !series->DuplicatesAllowed() ? value : 0;
    for (const auto& each : Graph().Series()) each->SetUseXAxisSeries(m_xAxisSerIndex > 0);
    Graph().NeedRescale();
    Redraw();
}

void TAppearance::SetCurrSerIndex(int value) {
    const int count = Graph().SeriesCount();
    m_currSerIndex = value > count ? count : value > 0 ? value : count > 0 ? 1 : 0;
}

void TAppearance::ApplyHeldIndices() {
    SetCurrSerIndex(m_holdCurrSerIndex);
    SetXAxisSerIndex(m_holdXAxisSerIndex);
}

void TAppearance::DropUnusableXSeries() {
    const TSeries* series = Graph().FindSeries(m_xAxisSerIndex);
    if (!series || !series->DuplicatesAllowed()) return;
    SetXAxisSerIndex(0);
    ShowMessage("\"" + series->SeriesName() +
                    "\" may hold points with the same X now, so it is no longer the X of the other data sets",
                TMessageKind::Warning);
}

void TAppearance::RestoreIndices(int xAxisSerIndex, int currSerIndex) {
    FollowXAxisSeries(xAxisSerIndex);
    for (const auto& series : Graph().Series()) series->SetUseXAxisSeries(xAxisSerIndex > 0);
    m_currSerIndex = currSerIndex;
}

void TAppearance::SetGraphTitle(const std::string& value) {
    if (value == m_graphTitle) return;
    const std::string& id = Graph().Holder()->ID();
    if (id.empty() || id == m_graphTitle + " DATA") Graph().SetHolderID(value + " DATA");
    Store(m_graphTitle, value);
}

void TAppearance::SetMinSteps(int value) {
    if (value > 0 && value < m_maxSteps / kStepsRatio) m_minSteps = value;
    Redraw();
}

void TAppearance::SetMaxSteps(int value) {
    if (m_minSteps * kStepsRatio < value && value <= kLargestMaxSteps) m_maxSteps = value;
    Redraw();
}

void TAppearance::SetFiledMinSteps(int value) {
    m_filedMinSteps = value;
    SetMinSteps(value);
    SetMaxSteps(m_filedMaxSteps);
    SetMinSteps(value);
}

void TAppearance::SetFiledMaxSteps(int value) {
    m_filedMaxSteps = value;
    SetMaxSteps(value);
    SetMinSteps(m_filedMinSteps);
    SetMaxSteps(value);
}

void TAppearance::ResetToDefaults() {
    SetXAxisSerIndex(0); // the data sets know, too
    m_holdXAxisSerIndex = 0;
    m_holdCurrSerIndex = 0;
    m_filedMinSteps = 0;
    m_filedMaxSteps = 0;
    ResetSettings(AppearanceRows(), *this);
    Redraw();
}

} // namespace lumoplot
