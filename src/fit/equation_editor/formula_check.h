// Tells what is wrong with the equation of a curve fit, for marks while it is typed.
#pragma once

#include "fit/cur_fit.h"

#include <string>
#include <vector>

namespace lumoplot {

struct TFormulaCheck {
    /// Why the equation does not compile; empty when it does.
    std::string Fault;
    /// Names in it that are neither parameters nor assigned to, in the order of their first use. They make
    /// the equation not-a-number.
    std::vector<std::string> UnknownNames;
};

/// Compiles the equation in `scratch`, a fit that the caller keeps for nothing else, so that the half-typed
/// names leave no trace in `fit`. Afterwards `scratch` evaluates the equation, or not-a-number for a faulty
/// one.
TFormulaCheck CheckFormula(const TCurFit& fit, TCurFit& scratch);

/// Why formulas can not use the name for a parameter of the fit; empty when they can.
std::string ParameterNameFault(const TCurFit& fit, const std::string& name);
/// The same for the X variable.
std::string XNameFault(const TCurFit& fit, const std::string& name);

} // namespace lumoplot
