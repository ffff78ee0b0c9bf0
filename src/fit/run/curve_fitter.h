// Runs a curve fit: checks its definition, chooses its points, lets the
// procedure work and writes what was found back into the definition.
#pragma once

#include "fit/definition/cur_fit.h"
#include "fit/definition/fit_result.h"
#include "fit/run/fit_check.h"
#include "fit/run/robust_weights.h"
#include "support/progress.h"

#include <functional>
#include <span>

namespace lumoplot {

/// Where a run looks for the minimum.
enum class TFitStarts {
    Given,     ///< only from the parameters as they are
    Scattered, ///< also from others, where the first end is doubtful or a better
               ///< one is near; the better minimum is taken
    Offered,   ///< the same, but a minimum with sense from the given start stays, and a
               ///< better one is kept in the result for the user to take
};

struct TFitRun {
    TProgress* Progress = nullptr;     ///< null: nobody watches
    std::function<void()> OnIteration; ///< called after each iteration, with the
                                       ///< best parameters in the fit
    TFitStarts Starts = TFitStarts::Scattered;
    /// How many scattered starts are run from, however good the first end is; 0 for as many as are worth it
    /// within a second. A remark tells how many of them end in the minimum.
    int SearchRuns = 0;
    /// The standard error of each Y, by which it is weighted as 1/σ²; empty where
    /// all count the same. Points whose error is not above 0 are left out.
    std::span<const double> Errors = {};
    TErrorSource ErrorSource = TErrorSource::Residuals;
    TRobust Robust = TRobust::None;
};

/// Lets the run count points as the fit says. `yErrors` (borrowed) has one value a point, 0 for none; it is
/// not used when the fit does not weigh by errors. Throws EFitError "The fit weighs by the errors of Y, and
/// the points have none".
XYGRAPH_EXPORT void TakeWeighting(TFitRun& run, const TCurFit& fit, std::span<const double> yErrors);

/// Fits the model to the points between the margins in use, by least squares;
/// points whose X or Y is not finite are left out, as are those where the model
/// has no value. `x` and `y` (corrected) have the same length. Afterwards the
/// varied parameters hold the best values found, also after a cancelled run,
/// and FinalDeviation their standard errors (0 where there is none). Modified
/// is set, the fit is no longer stale, and OnChange is called once.
///
/// Throws EFitError, EParserException or EConvertError for a fit that cannot be
/// run; its parameters are then unchanged.
TFitResult RunFit(TCurFit& fit, std::span<const double> x, std::span<const double> y,
                  const TFitRun& run = {});

/// Puts the better minimum that the last run offers into the parameters, which
/// makes the fit stale: the next run, from there, has its errors. Does nothing
/// where there is none.
XYGRAPH_EXPORT void TakeBetterMinimum(TCurFit& fit);

} // namespace lumoplot
