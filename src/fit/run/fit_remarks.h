// What there is to say of a result in words.
#pragma once

#include "fit/run/local_fit.h"

namespace lumoplot {

/// Adds which parameters are not determined, on a bound or strongly correlated, at how many of the points
/// the model has no value, and whether a horizontal line would do as well by chance. The result has its end,
/// its figures and its errors, the fit the parameters found.
void AddRemarks(TFitResult& result, const TFitTask& task, const TLocalFit& found, const TFitPoints& used,
                const TFitPoints& points);

/// The X of the first of the points that is not among those used, which are some of them in their order;
/// there is one.
double FirstLeftOut(const TFitPoints& used, const TFitPoints& points);

} // namespace lumoplot
