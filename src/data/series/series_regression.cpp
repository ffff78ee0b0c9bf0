// What a data series works out from its points: statistics and the active regression.
#include "data/analysis/regression.h"
#include "data/analysis/spline.h"
#include "data/series/data_series.h"
#include "data/series/plotted_values.h"
#include "data/series/regression_task.h"
#include "data/series/series_results.h"
#include "fit/definition/cur_fit.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

using TField = std::span<const double> TPointSpans::*;

/// One field of all points as one array; copied only when the points lie in several blocks.
class TFieldOfAll {
public:
    TFieldOfAll(const TPointChain& points, TField field) {
        if (points.BlockCount() == 1) {
            m_values = points.Block(0).*field;
            return;
        }
        m_copy.reserve(static_cast<std::size_t>(points.Count()));
        for (std::size_t i = 0; i < points.BlockCount(); ++i) {
            const std::span<const double> values = points.Block(i).*field;
            m_copy.insert(m_copy.end(), values.begin(), values.end());
        }
        m_values = m_copy;
    }
    TFieldOfAll(const TFieldOfAll&) = delete;
    TFieldOfAll& operator=(const TFieldOfAll&) = delete;

    operator std::span<const double>() const { return m_values; }

private:
    std::vector<double> m_copy;
    std::span<const double> m_values;
};

} // namespace

TStatistics TDataSeries::XStatistics() const {
    auto& cached = m_results->XStatistics;
    if (!cached.IsValid && XSource())
        cached.Put(ComputeStatistics(PlottedValues(*this).X, m_numericalTolerance));
    if (!cached.IsValid)
        cached.Put(ComputeStatistics(TFieldOfAll(m_points, &TPointSpans::X), m_numericalTolerance,
                                     TValueOrder::AsWalked));
    return cached.Record;
}

TStatistics TDataSeries::YStatistics() const {
    auto& cached = m_results->YStatistics;
    if (!cached.IsValid)
        cached.Put(ComputeStatistics(TFieldOfAll(m_points, &TPointSpans::Y), m_numericalTolerance));
    return cached.Record;
}

std::optional<TSpread> TDataSeries::CorrectedSpread() const {
    auto& cached = m_results->CorrectedSpread;
    if (cached && cached->ZeroValue == m_zeroValue && cached->BaseLineSlope == m_baseLineSlope)
        return cached->Spread;
    std::vector<double> corrected;
    corrected.reserve(static_cast<std::size_t>(Count()));
    for (std::size_t i = 0; i < m_points.BlockCount(); ++i) {
        const TPointSpans block = m_points.Block(i);
        for (std::size_t k = 0; k < block.X.size(); ++k)
            corrected.push_back(CorrectedY(block.X[k], block.Y[k]));
    }
    cached = {m_zeroValue, m_baseLineSlope, ComputeSpread(corrected)};
    return cached->Spread;
}

// The mode depends on the tolerance.
void TDataSeries::SetNumericalTolerance(double value) {
    if (!(value >= 0) || !std::isfinite(value)) return;
    m_numericalTolerance = value;
    m_results->ClearStatistics();
}

void TDataSeries::MarkRegressionStale() {
    m_regressionStale = true;
    m_results->RegressionLine.reset();
}

void TDataSeries::ClearRegression() {
    m_regressionError.clear();
    m_results->RegressionLine.reset();
    m_regressionCurve = {};
    m_points.SetDerived({});
}

void TDataSeries::CalcRegression() {
    if (!m_regressionStale) return;
    try {
        TakeRegression(XSource() ? TRegressionTask(*this).Run() : ComputeOwnRegression(), {});
    } catch (const std::exception& error) {
        TakeRegression({}, error.what());
        throw;
    }
}

void TDataSeries::TakeRegression(TRegressionResult result, const std::string& error) {
    m_regressionStale = false;
    ClearRegression();
    m_regressionError = error;
    m_points.SetDerived(result.Derived);
    m_regressionCurve = std::move(result.Curve);
    m_results->RegressionLine = std::move(result.Line);
    if (m_regressionType == TRegressionType::SampledCurve && error.empty()) SampleCurveFit();
}

TRegressionResult TDataSeries::ComputeOwnRegression() const {
    return ComputeRegression(
        {m_regressionType, m_regressionControlValue1, m_regressionControlValue2, m_duplicatesAllowed},
        TFieldOfAll(m_points, &TPointSpans::X), TFieldOfAll(m_points, &TPointSpans::Y));
}

// The owner of the curve samples it: over the extent of X, from the fit's parameters as they are.
void TDataSeries::SampleCurveFit() {
    if (m_extentsStale) RecalcExtents();
    m_curveFit->Compile();
    if (!m_curveFit->Selected()) return;
    double from = m_minX;
    double to = m_maxX;
    if (XSource()) {
        TPlottedValues plotted = PlottedValues(*this);
        plotted.KeepFiniteX();
        if (plotted.X.empty()) return;
        const auto [smallest, largest] = std::ranges::minmax(plotted.X);
        from = smallest;
        to = largest;
    }
    for (const double x : CurveGrid(from, to, m_regressionControlValue1))
        m_regressionCurve.push_back({x, m_curveFit->EvaluateAt(x)});
}

const TFittedCurve* TDataSeries::RegressionLine() const {
    return m_results->RegressionLine ? &*m_results->RegressionLine : nullptr;
}

void TDataSeries::UpdateRegression() noexcept {
    if (!m_regressionStale) return;
    if (m_regressionType == TRegressionType::None) {
        m_regressionStale = false;
        return ClearRegression();
    }
    try {
        CalcRegression();
    } catch (const std::exception&) {
        // RegressionError has the text.
    }
}

} // namespace lumoplot
