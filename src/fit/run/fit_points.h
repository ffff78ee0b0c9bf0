// Which points take part in a fit.
#pragma once

#include "fit/procedures/fit_rows.h"

namespace lumoplot {

/// The finite points between the margins in use, with weights 1/σ where there are errors; those whose error
/// is not above 0 are left out. Throws EFitError where none is left. `places` gets where in `x` they stand.
TFitPoints PointsBetweenMargins(const TCurFit& fit, std::span<const double> x, std::span<const double> y,
                                std::span<const double> errors, std::vector<std::size_t>* places = nullptr);

/// The points where the model has a value with the parameters as they are. The fit is compiled.
TFitPoints PointsWithValue(TCurFit& fit, const TFitPoints& points);

} // namespace lumoplot
