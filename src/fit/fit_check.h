// What a definition must fulfil before it can be fitted.
#pragma once

#include "fit/cur_fit.h"

namespace lumoplot {

/// Compiles the fit and returns its varied parameters. Throws EFitError with what is wrong, or what
/// TCurFit::Compile throws.
std::vector<TDBLParameter*> CheckedParameters(TCurFit& fit);

} // namespace lumoplot
