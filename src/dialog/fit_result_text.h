// The result of a curve fit in words and numbers.
#pragma once

#include <string>

namespace lumoplot {

class TCurFit;

/// What is known of the last run of the fit, one line a fact: how it ended, each parameter with its standard
/// error and units, the residual standard deviation and R²; or why it was not possible. Empty when there was
/// none. When the data or the definition have changed since, the parameters are left out, as they may not be
/// those of the run. Numbers have `digits` significant digits, standard errors up to 4.
std::string FitResultText(const TCurFit& fit, int digits);

} // namespace lumoplot
