#include "data/series/regression_task.h"

#include "data/series/plotted_values.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lumoplot {

TRegressionTask::TRegressionTask(const TDataSeries& series)
    : m_settings{series.RegressionType(), series.RegressionControlValue1(), series.RegressionControlValue2(),
                 series.DuplicatesAllowed()},
      m_count(static_cast<std::size_t>(series.Count())) {
    if (series.XSource()) {
        TakePlotted(series);
        return;
    }
    m_x.reserve(m_count);
    m_y.reserve(m_count);
    const TPointChain& points = series.Points();
    for (std::size_t i = 0; i < points.BlockCount(); ++i) {
        const TPointSpans block = points.Block(i);
        m_x.insert(m_x.end(), block.X.begin(), block.X.end());
        m_y.insert(m_y.end(), block.Y.begin(), block.Y.end());
    }
}

// Curves over X want it ascending; what smooths goes from point to point.
void TRegressionTask::TakePlotted(const TDataSeries& series) {
    const TPlottedValues plotted = PlottedValues(series);
    for (std::size_t i = 0; i < plotted.X.size(); ++i)
        if (std::isfinite(plotted.X[i])) m_order.push_back(i);
    if (m_settings.RegressionType <= TRegressionType::Spline)
        std::ranges::stable_sort(m_order, {}, [&](std::size_t place) { return plotted.X[place]; });
    for (const std::size_t place : m_order) {
        m_x.push_back(plotted.X[place]);
        m_y.push_back(plotted.Y[place]);
    }
    m_settings.DuplicatesAllowed = std::ranges::adjacent_find(m_x) != m_x.end();
}

TRegressionResult TRegressionTask::Run(TProgress* progress) const {
    TRegressionResult result = ComputeRegression(m_settings, m_x, m_y, progress);
    if (result.Derived.empty() || (m_order.empty() && m_x.size() == m_count)) return result;
    std::vector<double> derived(m_count, std::numeric_limits<double>::quiet_NaN());
    for (std::size_t i = 0; i < m_order.size(); ++i) derived[m_order[i]] = result.Derived[i];
    result.Derived = std::move(derived);
    return result;
}

} // namespace lumoplot
