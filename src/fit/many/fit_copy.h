// A copy of a fit that has run, with the points and weights that it ended with, to be fitted again.
#pragma once

#include "fit/many/uncertainty.h"
#include "fit/procedures/fit_rows.h"

namespace lumoplot {

struct TFitCopy {
    /// Throws EFitError where there is no result or no degree of freedom.
    explicit TFitCopy(const TFittedData& data);

    TProgress& ProgressOf(const TFittedData& data) {
        return data.Run.Progress ? *data.Run.Progress : m_silent;
    }
    /// Of weighted residuals: 1 where the errors of the points are what they say.
    double VarianceOf(double rss) const;

    TCurFit Fit; ///< compiled
    std::vector<TDBLParameter*> Varied;
    TFitPoints Points;

private:
    bool m_isAbsolute;
    TSilentProgress m_silent;
};

/// The deviation that bounds an interval: Student's t, or that of a normal number where the errors of the
/// points are what they say.
double TOfConfidence(const TFittedData& data);

} // namespace lumoplot
