#include "graph/model/appearance.h"

#include "graph/model/graph.h"
#include "graph/model/holder.h"
#include "graph/model/setting_rows.h"
#include "support/message_sink.h"
#include "support/message_text.h"

namespace lumoplot {
namespace {

constexpr double kStepsRatio = 2.5;
constexpr int kLargestMaxSteps = 90;
constexpr std::size_t kLongestShownName = 60;

} // namespace

void TAppearance::SetAllowDuplicates(bool value) {
    m_allowDuplicates = value;
    for (const auto& series : Graph().Series()) series->SetDuplicatesAllowed(value);
    Redraw();
}

void TAppearance::SetXAxisSerIndex(int value) {
    if (StoreXAxisSerIndex(value))
        for (const auto& each : Graph().Series()) each->XSourceChanged();
}

// True when another data set is X now.
bool TAppearance::StoreXAxisSerIndex(int value) {
    if (value == m_xAxisSerIndex) return false;
    const int before = m_xAxisSerIndex;
    const TSeries* series = Graph().FindSeries(value);
    m_xAxisSerIndex = series && !series->DuplicatesAllowed() ? value : 0;
    for (const auto& each : Graph().Series()) each->RestoreUseXAxisSeries(m_xAxisSerIndex > 0);
    Graph().NeedRescale();
    Redraw();
    return m_xAxisSerIndex != before;
}

void TAppearance::SetCurrSerIndex(int value) {
    const int count = Graph().SeriesCount();
    m_currSerIndex = value > count ? count : value > 0 ? value : count > 0 ? 1 : 0;
}

void TAppearance::ApplyHeldIndices() {
    SetCurrSerIndex(m_holdCurrSerIndex);
    std::vector<bool> wanted;
    for (const auto& each : Graph().Series()) wanted.push_back(each->UseXAxisSeries());
    StoreXAxisSerIndex(m_holdXAxisSerIndex); // results that were filed are of these X
    for (std::size_t i = 0; i < wanted.size(); ++i)
        Graph().Series()[i]->RestoreUseXAxisSeries(wanted[i] && m_xAxisSerIndex > 0);
}

void TAppearance::DropUnusableXSeries() {
    const TSeries* series = Graph().FindSeries(m_xAxisSerIndex);
    if (!series || !series->DuplicatesAllowed()) return;
    SetXAxisSerIndex(0);
    ShowMessage("\"" + ShownLine(series->SeriesName(), kLongestShownName) +
                    "\" may hold points with the same X now, so it is no longer the X of the other data sets",
                TMessageKind::Warning);
}

void TAppearance::RestoreIndices(int xAxisSerIndex, int currSerIndex) {
    FollowXAxisSeries(xAxisSerIndex);
    for (const auto& series : Graph().Series()) series->RestoreUseXAxisSeries(xAxisSerIndex > 0);
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
