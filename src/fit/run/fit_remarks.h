// What there is to say of a result in words.
#pragma once

#include "fit/run/local_fit.h"

namespace lumoplot {

/// Adds which parameters are not determined, on a bound or strongly correlated, and at how many of the points
/// the model has no value. The result has its end and its covariance, the fit the parameters found.
void AddRemarks(TFitResult& result, const TFitTask& task, const TLocalFit& found, const TFitPoints& used,
                const TFitPoints& points);

} // namespace lumoplot
