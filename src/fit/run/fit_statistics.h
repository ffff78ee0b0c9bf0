// How good a fit is, and what its residuals say.
#pragma once

#include "fit/definition/fit_result.h"
#include "fit/procedures/fit_rows.h"

namespace lumoplot {

/// The probability of a |t| as large by chance (Student), of a χ² as large, and
/// of a standard normal |z| as large. Not-a-number without degrees of freedom.
XYGRAPH_EXPORT double StudentProbability(double t, double freedom);
XYGRAPH_EXPORT double ChiSquareProbability(double chiSquare, double freedom);
XYGRAPH_EXPORT double NormalProbability(double z);

/// From the weighted residuals in the order of X and the number of parameters.
TFitQuality QualityOf(const std::vector<double>& residuals, double rss, double rSquared, int parameters);

} // namespace lumoplot
