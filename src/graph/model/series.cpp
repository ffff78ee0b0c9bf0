#include "graph/model/series.h"

#include "data/analysis/statistics.h"
#include "data/series/ds_info.h"
#include "fit/definition/cur_fit.h"
#include "graph/model/graph.h"
#include "graph/model/setting_rows.h"
#include "support/update_hold.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace lumoplot {
namespace {

/// The corrected Y of points are others.
constexpr TChangeReasons kValueReasons =
    TChangeReasons(TSeries::kPointChanged) | TSeries::kPointAdded | TSeries::kBaselineChanged;

/// The reasons that come with another DataStamp.
constexpr TChangeReasons kDataReasons = kValueReasons | TSeries::kRegressionChanged;

std::uint64_t NextStamp() {
    static std::uint64_t last = 0;
    return ++last;
}

// How many standard deviations away from the mean bounds lie.
std::vector<int> DistancesOf(TBoundsType type) {
    switch (type) {
    case TBoundsType::OneSD: return {-1, 1};
    case TBoundsType::TwoSD: return {-2, 2};
    case TBoundsType::ThreeSD: return {-3, 3};
    case TBoundsType::AllSD: return {-3, -2, -1, 1, 2, 3};
    case TBoundsType::None:
    case TBoundsType::SetValues: break;
    }
    return {};
}

} // namespace

TSeries::TSeries(TxyGraph& graph, int number)
    : m_graph(graph), m_seriesIndex(number), m_dataStamp(NextStamp()), m_yAxisOfSeries(graph.YAxis()),
      m_useXAxisSeries(graph.Appearance()->XAxisSerIndex() > 0) {
    ResetSettings(SeriesRows(), *this);
    SetSeriesName("DataSet " + std::to_string(number));
    SetDuplicatesAllowed(graph.Appearance()->AllowDuplicates());
}

bool TSeries::IsOnSecondY() const {
    return m_yAxisOfSeries == m_graph.YAxis_Second();
}

void TSeries::SetYAxisOfSeries(TAxis* value) {
    if (value == m_graph.YAxis() || value == m_graph.YAxis_Second()) Store(m_yAxisOfSeries, value);
}

int TSeries::FittingSize(int size) const {
    size = std::clamp(size, 0, 65535);
    if (m_pointShape == TPointShape::WidePoint) return size;
    size = std::clamp(size, 2, 65534); // the largest even one that fits
    return size + size % 2;
}

void TSeries::SetPointShape(TPointShape value) {
    const TUpdateHold hold(*this);
    StoreEnum(m_pointShape, value, TPointShape::DownTriangle);
    Store(m_pointSize, FittingSize(m_pointSize));
}

void TSeries::SetPointSize(int value) {
    Store(m_pointSize, FittingSize(value));
}

std::vector<double> TSeries::BoundLevels() const {
    std::vector<double> levels;
    if (m_boundsType == TBoundsType::SetValues) levels = {m_lowerBound, m_upperBound};
    const std::vector<int> distances = DistancesOf(m_boundsType);
    const auto spread = distances.empty() ? std::nullopt : CorrectedSpread();
    if (spread)
        for (const int distance : distances) levels.push_back(spread->Mean + distance * spread->Deviation);
    std::erase_if(levels, [](double level) { return !std::isfinite(level); });
    return levels;
}

const TDataSeries* TSeries::XSource() const {
    const int number = m_graph.Appearance()->XAxisSerIndex();
    return m_useXAxisSeries && number != m_seriesIndex ? m_graph.FindSeries(number) : nullptr;
}

void TSeries::SetUseXAxisSeries(bool value) {
    if (value == m_useXAxisSeries) return;
    m_useXAxisSeries = value;
    XSourceChanged();
}

// The data sets that are plotted over the values of this one.
void TSeries::TellPaired() {
    if (m_graph.Appearance()->XAxisSerIndex() != m_seriesIndex) return;
    for (const auto& series : m_graph.Series())
        if (series->XSource() == this) series->XSourceChanged();
}

void TSeries::Changed(TChangeReasons reasons) {
    if (reasons.HasAnyOf(kDataReasons)) m_dataStamp = NextStamp();
    if (reasons.HasAnyOf(kValueReasons)) TellPaired();
    TDataSeries::Changed(reasons);
}

void TSeries::Tell(TChangeReasons reasons) {
    TDataSeries::Tell(reasons);
    m_graph.SeriesChanged();
}

void TSeries::SetTextWishes(const TTextWishes& value) {
    if (m_textWishes == value) return;
    m_textWishes = value;
    DataSourceInfo().SetNeedsReload(true);
}

void TSeries::SetDuplicatesAllowed(bool value) {
    TDataSeries::SetDuplicatesAllowed(value);
    m_graph.Appearance()->DropUnusableXSeries();
}

bool TSeries::HoldsSomeRows() const {
    const TDSInfo& source = DataSourceInfo();
    const bool hasRows = source.Kind() == TSourceKind::TextFile || source.Kind() == TSourceKind::LumoSheet ||
                         source.Kind() == TSourceKind::Database;
    return hasRows && (m_isThinned || (source.AutoRowHitFreq() && source.RowSamplingFrequency() > 1));
}

bool TSeries::ShowsFigures() const {
    return RegressionType() != TRegressionType::None || m_boundsType >= TBoundsType::OneSD;
}

bool TSeries::ShowsResults() const {
    return ShowsFigures() || CurveFit().Status() > TFitStatus::Function;
}

bool TSeries::WaitsForEveryRow() const {
    return m_active && Count() > 0 && HoldsSomeRows() && (ShowsFigures() || CurveFit().IsPending()) &&
           m_everyRowTried != m_dataStamp;
}

TSeriesSource TSeries::SourceState() const {
    return {m_sourceRows, m_textWishes, m_isThinned, DataSourceInfo().NeedsReload(),
            DataSourceInfo().IsSamplingChosen()};
}

void TSeries::SetSourceState(const TSeriesSource& state) {
    m_sourceRows = state.Rows;
    m_textWishes = state.Wishes;
    m_isThinned = state.IsThinned;
    DataSourceInfo().SetNeedsReload(state.NeedsReload);
    DataSourceInfo().SetSamplingChosen(state.IsSamplingChosen);
}

} // namespace lumoplot
