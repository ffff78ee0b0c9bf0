// The figures of a fit as a document, with the names that scripts read.
#pragma once

#include "cli/output.h"
#include "fit/many/uncertainty.h"

namespace lumoplot {

/// Parameters, their errors, how good the fit is and how it ended. The fit has run.
TDocument FitDocument(const TCurFit& fit);
/// Where a robust fit has outliers: "outlier_points", each with x and y.
void AddOutliers(TDocument& document, const TFittedData& data);
/// For each varied parameter "error", "low" and "high", and how many resamples were fitted.
TDocument BootstrapDocument(const TCurFit& fit, const TBootstrap& bootstrap);
/// For each varied parameter "low" and "high", and the places of its profile. `profiles` has one of each.
TDocument ProfileDocument(const TCurFit& fit, std::span<const TProfile> profiles);

} // namespace lumoplot
