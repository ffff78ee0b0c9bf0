// What a definition must fulfil before it can be fitted.
#pragma once

#include "fit/definition/cur_fit.h"

namespace lumoplot {

/// At most so many parameters may be varied.
inline constexpr int kMaxVariedParameters = 50;

/// Compiles the fit and returns its varied parameters. Throws EFitError with what is wrong, or what
/// TCurFit::Compile throws.
std::vector<TDBLParameter*> CheckedParameters(TCurFit& fit);

} // namespace lumoplot
