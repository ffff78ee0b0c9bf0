// The result of a curve fit in words and numbers.
#pragma once

#include <string>

namespace lumoplot {

class TCurFit;

/// What is known of the last run of the fit: how it ended and what there is to say of that, a line with the
/// residual standard deviation and R², with weights where the standard errors come from, what the residuals
/// say where they are not random, and a line for each parameter with its standard error and units; or why it
/// was not possible. Empty when there was none. When the data or the definition have changed since, the
/// parameters are left out, as they may not be those of the run. Numbers have `digits` significant digits,
/// standard errors up to 4.
std::string FitResultText(const TCurFit& fit, int digits);

} // namespace lumoplot
