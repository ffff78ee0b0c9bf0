// A copy of a fit that has run, with the points and weights that it ended with, to be fitted again.
#pragma once

#include "fit/many/uncertainty.h"
#include "fit/procedures/fit_rows.h"

#include <optional>

namespace lumoplot {

struct TFitCopy {
    /// Throws EFitError where there is no result or no degree of freedom.
    explicit TFitCopy(const TFittedData& data);

    TProgress& ProgressOf(const TFittedData& data) {
        return data.Run.Progress ? *data.Run.Progress : m_silent;
    }
    /// The standard deviation of weighted residuals that are multiplied by `scale`, from their sum of
    /// squares; `scale` where the errors of the points are what they say.
    double DeviationOf(double scaledRss, double scale) const;

    TCurFit Fit; ///< compiled
    std::vector<TDBLParameter*> Varied;
    TFitPoints Points;

private:
    bool m_isAbsolute;
    std::optional<double> m_robustDeviation;
    TSilentProgress m_silent;
};

/// The deviation that bounds an interval: Student's t, or that of a normal number where the errors of the
/// points are what they say.
double TOfConfidence(const TFittedData& data);

} // namespace lumoplot
