// Tells what is wrong with the equation of a curve fit, for marks while it is typed.
#pragma once

#include "fit/definition/cur_fit.h"

#include <memory>
#include <string>
#include <vector>

namespace lumoplot {

/// A piece of a formula, in bytes.
struct TFormulaSpan {
    std::size_t Place = 0;
    std::size_t Length = 0;
};

struct TFormulaCheck {
    /// Why the equation does not compile or was not taken; empty when all is well.
    std::string Fault;
    /// Names in it that are neither parameters nor assigned to, in the order of their first use. They make
    /// the equation not-a-number.
    std::vector<std::string> UnknownNames;
    /// What was probably meant otherwise, though it compiles; empty for nothing.
    std::string Hint;
    /// The formula as it was probably meant, to take by one click on a button of that caption; empty for
    /// none.
    std::string Rewritten;
    std::string RewriteCaption;
    /// Where in the formula the fault or the hint is; empty where that is not known.
    std::vector<TFormulaSpan> Spans;
    /// A compiled copy of the fit, for plots; null when its equation is empty or does not compile.
    std::unique_ptr<TCurFit> Model;

    /// What to tell beside the equation: the fault, which names are not known, or the hint; empty when all is
    /// well.
    std::string Text() const;
};

/// Compiles a copy of the fit, so that half-typed names leave no trace in the fit itself. `typed` is what the
/// edit of the equation shows: an empty one, which a fit does not take, is a fault too.
TFormulaCheck CheckFormula(const TCurFit& fit, const std::string& typed);

/// Why formulas can not use the name for a parameter of the fit; empty when they can.
std::string ParameterNameFault(const TCurFit& fit, const std::string& name);
/// The same for the X variable.
std::string XNameFault(const TCurFit& fit, const std::string& name);

} // namespace lumoplot
