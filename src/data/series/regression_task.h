// A regression that is worked out beside its data set: the task has copies of what it needs, so that the data
// set may change or go while it runs.
#pragma once

#include "data/analysis/regression.h"
#include "data/series/data_series.h"

#include <vector>

namespace lumoplot {

class TRegressionTask {
public:
    /// Of the points as they are plotted where the data set has an XSource, else of its own X and raw Y.
    explicit TRegressionTask(const TDataSeries& series);

    /// What the data set takes over (TakeRegression). Throws what ComputeRegression throws.
    TRegressionResult Run(TProgress* progress = nullptr) const;

private:
    void TakePlotted(const TDataSeries& series);

    TRegressionSettings m_settings;
    std::vector<double> m_x;
    std::vector<double> m_y;
    std::size_t m_count = 0;          ///< points of the data set
    std::vector<std::size_t> m_order; ///< which of them they are; empty for all, one after the other
};

} // namespace lumoplot
