// The search for a lower value along a line, without derivatives. The values of a fit may be infinite.
#pragma once

#include "fit/procedures/fit_problem.h"

namespace lumoplot {

struct TLineMinimum {
    double Step = 0; ///< in units of the direction; 0 where no lower value was found
    double Value = 0;
};

/// Looks for the minimum along a direction, of either sign: brackets it by growing steps, then narrows the
/// bracket by parabolas and golden sections (Brent, Algorithms for Minimization without Derivatives, 1973,
/// chapter 5), to `tolerance` of the step found. `value` is that at `from`; `firstStep` is not 0.
TLineMinimum MinimiseAlong(TFitProblem& problem, const TVector& from, double value, const TVector& direction,
                           double firstStep, double tolerance);

} // namespace lumoplot
