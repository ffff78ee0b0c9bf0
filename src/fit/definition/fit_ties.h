// Parameters that follow from others by a formula ("b2 = 2*b1"). A fit puts the formula where the parameter
// stands, so that whatever works on the equation (derivatives, projection, bounds) works on the others.
#pragma once

#include "fit/definition/cur_fit.h"

#include <string>

namespace lumoplot {

/// The formula with each tied parameter replaced by its own formula in brackets, and so on in these. Throws
/// EParserException "The parameter "b" is tied to itself" for a circle, "The formula of the parameter "b" can
/// not use "x": it is no parameter", and "… can not assign".
std::string WithTies(const TCurFit& fit, const std::string& formula);

/// The value of a tied parameter from those of the others; not-a-number where the formula has none or does
/// not compile.
double TiedValue(const TCurFit& fit, const TDBLParameter& parameter);

/// Gives each tied parameter its standard error, from the covariance of the varied ones in the result (to
/// first order); 0 where there is none.
void PropagateErrors(TCurFit& fit, const TFitResult& result);

} // namespace lumoplot
