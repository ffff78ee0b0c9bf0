#include "data/series/data_series.h"

#include "data/analysis/regression.h"
#include "data/series/ds_info.h"
#include "data/series/series_data.h"
#include "fit/definition/cur_fit.h"
#include "support/errors.h"
#include "support/update_hold.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace lumoplot {

TDataSeries::TDataSeries()
    : m_dataSourceInfo(std::make_unique<TDSInfo>()), m_results(std::make_unique<TSeriesResults>()),
      m_curveFit(std::make_unique<TCurFit>()) {
    m_curveFit->OnChange = [this](TCurFit&) { CurveFitChanged(); };
}

TDataSeries::~TDataSeries() {
    m_curveFit.reset();
    // Counted, as a handler may register another one now; it may also empty one that comes after it.
    for (std::size_t left = m_changeHandlers.size(); left > 0; --left) {
        const auto handler = m_changeHandlers.front().Handler;
        m_changeHandlers.erase(m_changeHandlers.begin());
        if (*handler) (*handler)(*this, kDestroyed);
    }
}

void TDataSeries::Changed(TChangeReasons reasons) {
    if (m_holds > 0)
        m_heldReasons |= reasons;
    else
        Tell(reasons);
}

void TDataSeries::EndUpdate() {
    if (--m_holds > 0) return;
    const TChangeReasons reasons = std::exchange(m_heldReasons, {});
    if (!reasons.IsEmpty()) Tell(reasons);
}

void TDataSeries::Tell(TChangeReasons reasons) {
    // By number: a handler may add handlers.
    for (std::size_t i = 0; i < m_changeHandlers.size(); ++i) {
        const auto handler = m_changeHandlers[i].Handler;
        if (*handler) (*handler)(*this, reasons);
    }
}

void TDataSeries::AddChangeHandler(std::intptr_t key, TChangeHandler handler) {
    auto shared = std::make_shared<const TChangeHandler>(std::move(handler));
    const auto same = std::find_if(m_changeHandlers.begin(), m_changeHandlers.end(),
                                   [key](const TChangeEntry& entry) { return entry.Key == key; });
    if (same != m_changeHandlers.end())
        same->Handler.swap(shared);
    else
        m_changeHandlers.push_back({key, std::move(shared)});
}

int TDataSeries::AddPoint(double x, double y, double yError) {
    if (!m_points.Add(x, y, MergeRule(), yError)) return Count();
    BeginUpdate();
    if (Count() == 1)
        StartExtents(x, y);
    else if (!LowerBaseline(y))
        WidenExtents(x, y);
    MarkResultsStale();
    Changed(kPointAdded);
    EndUpdate();
    return Count();
}

void TDataSeries::SetPointY(std::int32_t id, double y) {
    const TUpdateHold hold(*this);
    const std::optional<double> x = m_points.SetY(id, y);
    if (!x) y = 0;
    if (!LowerBaseline(y) && !m_extentsStale) WidenY(CorrectedY(x.value_or(0), y));
    MarkResultsStale();
    Changed(kPointChanged);
}

double TDataSeries::YError(std::int32_t id) const {
    const auto point = m_points.Find(id);
    return point ? point->YError : 0;
}

void TDataSeries::SetYError(std::int32_t id, double error) {
    if (error != 0 && UsableYError(error) == 0)
        throw EYError("The standard error of Y must be a number above 0");
    if (YError(id) != error && m_points.SetYError(id, error)) YErrorsChanged();
}

int TDataSeries::SetYErrors(std::span<const double> errors) {
    if (!errors.empty() && errors.size() != static_cast<std::size_t>(Count()))
        throw EYError("There are " + std::to_string(errors.size()) + " standard errors for " +
                      std::to_string(Count()) + " points");
    const bool hadErrors = HasYErrors();
    m_points.SetYErrors(errors);
    const auto isUsable = [](double error) { return UsableYError(error) > 0; };
    const auto usable = static_cast<int>(std::ranges::count_if(errors, isUsable));
    if (hadErrors || usable > 0) YErrorsChanged();
    return usable;
}

std::vector<double> TDataSeries::YErrors() const {
    if (!HasYErrors()) return {};
    std::vector<double> errors(static_cast<std::size_t>(Count()));
    auto place = errors.begin();
    for (std::size_t i = 0; i < m_points.BlockCount(); ++i) {
        const TPointSpans block = m_points.Block(i);
        std::ranges::copy(block.YErrors, place);
        place += static_cast<std::ptrdiff_t>(block.X.size());
    }
    return errors;
}

// Regressions and statistics do not look at them.
void TDataSeries::YErrorsChanged() {
    if (m_curveFit && m_curveFit->UsesYErrors()) m_curveFit->MarkStale();
    Changed(kPointChanged);
}

bool TDataSeries::DeletePoint(std::int32_t id) {
    const auto point = m_points.Erase(id);
    if (!point) return false;
    if (point->X == m_minX || point->X == m_maxX || point->Y == m_minY || point->Y == m_maxY ||
        (m_autoZero && point->Y <= m_zeroValue))
        m_extentsStale = true;
    MarkResultsStale();
    Changed(kPointChanged);
    return true;
}

bool TDataSeries::RemoveDuplicates() {
    if (m_points.EraseNeighbours(m_numericalTolerance) == 0) return false;
    m_extentsStale = true;
    MarkResultsStale();
    Changed(kPointChanged);
    return true;
}

void TDataSeries::Clear() {
    m_points = {};
    m_regressionCurve = {};
    m_minX = m_maxX = m_minY = m_maxY = 0;
    m_extentsStale = true;
    m_awaitsFiniteY = false;
    MarkResultsStale();
    Changed(kPointChanged);
}

TPointChain TDataSeries::SwapPoints(TPointChain points) {
    const TUpdateHold hold(*this);
    m_points.Swap(points);
    m_regressionCurve = {};
    m_minX = m_maxX = m_minY = m_maxY = 0;
    m_extentsStale = true;
    m_awaitsFiniteY = false;
    MarkResultsStale();
    RecalcExtents();
    Changed(kPointChanged);
    return points;
}

TSeriesData TDataSeries::Data() const {
    return {m_points, Extents(), *m_results, m_regressionCurve, m_regressionError, m_regressionStale};
}

void TDataSeries::SetData(TSeriesData data) {
    m_points.Swap(data.Points);
    RestoreExtents(data.Extents);
    *m_results = std::move(data.Results);
    m_regressionCurve = std::move(data.RegressionCurve);
    m_regressionError = std::move(data.RegressionError);
    m_regressionStale = data.RegressionStale;
    Changed(kPointChanged);
}

/// What follows from the data is out of date.
void TDataSeries::MarkResultsStale() {
    m_results->ClearStatistics();
    MarkRegressionStale();
    MarkFitStale();
}

// The sampled curve is that of the fit.
void TDataSeries::CurveFitChanged() {
    if (m_regressionType == TRegressionType::SampledCurve) MarkRegressionStale();
    Changed(kCurveFitChanged);
}

void TDataSeries::MarkFitStale() {
    if (m_curveFit) m_curveFit->MarkStale(); // none while the series is being destroyed
}

void TDataSeries::SetBaseline(double zeroValue, double slope) {
    if (zeroValue == m_zeroValue && slope == m_baseLineSlope) return;
    if (!std::isfinite(zeroValue) || !std::isfinite(slope)) return;
    m_zeroValue = zeroValue + 0.0; // never -0, which a file would bring back as 0
    m_baseLineSlope = slope + 0.0;
    m_extentsStale = true;
    if (XSource()) MarkRegressionStale(); // it is of what is plotted
    MarkFitStale();
    Changed(kBaselineChanged);
}

void TDataSeries::SetAutoZero(bool value) {
    if (value == m_autoZero) return;
    m_autoZero = value;
    m_extentsStale = true;
    Changed(kBaselineChanged);
}

void TDataSeries::RegressionSettingChanged() {
    MarkRegressionStale(); // the fit does not depend on it, and its result stays
    Changed(kRegressionChanged);
}

void TDataSeries::SetDuplicatesAllowed(bool value) {
    if (value == m_duplicatesAllowed) return;
    m_duplicatesAllowed = value;
    MarkRegressionStale();
    if (!value) RemoveDuplicates();
}

} // namespace lumoplot
