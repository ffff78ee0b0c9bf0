// The interface of the fitting procedures.
#pragma once

#include "fit/procedures/fit_problem.h"

#include <memory>

namespace lumoplot {

/// Why a procedure stopped.
enum class TStop {
    Tolerance,  ///< parameters and sum of squares changed by no more than the tolerance
    ExactFit,   ///< the residuals are only rounding
    NoProgress, ///< no step makes the sum of squares smaller
    IterationLimit,
};

class TMinimiser {
public:
    virtual ~TMinimiser() = default;
    /// Minimises from a place where the value is finite; where it got to is the problem's best place.
    /// Iterations are bounded by the problem, which also ends a cancelled run by throwing TFitCancelled.
    virtual TStop Minimise(TFitProblem& problem, const TVector& start, double tolerance) = 0;
};

/// Of Newton, and of a number that is no procedure, the variable metric.
std::unique_ptr<TMinimiser> MakeMinimiser(TFitProcedure procedure);

} // namespace lumoplot
