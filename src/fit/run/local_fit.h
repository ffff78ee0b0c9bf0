// One run of a procedure over given points, from the parameters as they are to the last digits of the place
// that it finds.
#pragma once

#include "fit/definition/fit_result.h"
#include "fit/procedures/polish.h"

#include <cmath>

namespace lumoplot {

/// What a run works on; all borrowed.
struct TFitTask {
    TCurFit& Fit; ///< compiled
    std::vector<TDBLParameter*> Varied;
    TProgress& Progress;
    TFitProblem::TIterationHandler OnIteration;
};

struct TLocalFit {
    TFitEnd End = TFitEnd::Cancelled;
    TVector Values; ///< of the varied parameters
    double Rss = 0; ///< weighted
    /// A power of two that residuals are multiplied by in their sum of squares, which then neither overflows
    /// nor vanishes.
    double ResidualScale = 1;
    double ScaledRss = 0;
    /// Of Rss, also where that is 0 or infinite only because numbers end.
    double LogRss() const { return std::log(ScaledRss) - 2 * std::log(ResidualScale); }
    int Iterations = 0;
    int Evaluations = 0;
    /// The varied parameters that no bound holds, and R of their Jacobian in the units of the parameters and
    /// of Y; empty where it is not known.
    std::vector<TDBLParameter*> Free;
    TMatrix Triangle;
    /// The points determine all parameters; then R has an inverse.
    bool IsDetermined = false;
};

/// Runs the procedure; afterwards the fit has the best parameters found. A cancelled run ends
/// as such. Throws EFitError where the model has no values that can be squared at the start.
TLocalFit FitLocally(const TFitTask& task, const TFitPoints& points, TFitProcedure procedure);

} // namespace lumoplot
