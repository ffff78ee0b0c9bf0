// What a data series has worked out from its points, each result with its valid flag: it is there until the
// points change.
#pragma once

#include "data/analysis/least_squares.h"
#include "data/analysis/statistics.h"

#include <optional>

namespace lumoplot {

/// The spread of the Y that remain when a baseline is taken off.
struct TCorrectedSpread {
    double ZeroValue = 0;
    double BaseLineSlope = 0;
    std::optional<TSpread> Spread;
};

struct TSeriesResults {
    std::optional<TStatistics> XStatistics;
    std::optional<TStatistics> YStatistics;
    std::optional<TFittedCurve> RegressionLine;
    std::optional<TCorrectedSpread> CorrectedSpread;

    void ClearStatistics() {
        XStatistics.reset();
        YStatistics.reset();
        CorrectedSpread.reset();
    }
};

} // namespace lumoplot
