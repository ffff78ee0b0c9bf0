// What a data series has worked out from its points, each result with its valid flag: it is there until the
// points change.
#pragma once

#include "data/analysis/least_squares.h"
#include "data/analysis/statistics.h"

#include <optional>
#include <utility>

namespace lumoplot {

/// The spread of the Y that remain when a baseline is taken off.
struct TCorrectedSpread {
    double ZeroValue = 0;
    double BaseLineSlope = 0;
    std::optional<TSpread> Spread;
};

/// A record of statistics, which stays when it is no longer valid: too few values leave its order values as
/// they are.
struct TKeptStatistics {
    TStatistics Record;
    bool IsValid = false;

    void Put(TStatistics statistics) {
        if (statistics.Count < 5) statistics.Quantile20 = Record.Quantile20;
        if (statistics.Count < 4) statistics.Quantile25 = Record.Quantile25;
        Record = std::move(statistics);
        IsValid = true;
    }
};

struct TSeriesResults {
    TKeptStatistics XStatistics;
    TKeptStatistics YStatistics;
    std::optional<TFittedCurve> RegressionLine;
    std::optional<TCorrectedSpread> CorrectedSpread;

    void ClearStatistics() {
        XStatistics.IsValid = false;
        YStatistics.IsValid = false;
        CorrectedSpread.reset();
    }
};

} // namespace lumoplot
