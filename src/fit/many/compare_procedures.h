// The same fit by several procedures from several starts, side by side.
#pragma once

#include "fit/run/curve_fitter.h"

namespace lumoplot {

/// One run of a comparison.
struct TComparedRun {
    TFitProcedure Procedure = TFitProcedure::Powell;
    int Start = 0; ///< 0 for the given values, else the number of a scattered start
    TFitEnd End = TFitEnd::Cancelled;
    std::string Trouble; ///< why it could not be run; empty when it could
    double Rss = 0;      ///< weighted; not-a-number where it could not be run
    int Iterations = 0;
    int Evaluations = 0;
    double Seconds = 0;
    std::vector<double> Values; ///< of the varied parameters
    int Minimum = 0;            ///< which of the minima found, 1 for the best; 0 for none
};

struct TCompareOptions {
    int Starts = 20; ///< with the given one, at least 1
    /// Called in the calling thread after each run, with what there is.
    std::function<void(const std::vector<TComparedRun>&)> OnRun;
};

/// All four procedures from each start, start by start; fewer runs when cancelled. The fit stays as it is.
/// Throws as RunFit does for a definition that cannot be fitted at all.
XYGRAPH_EXPORT std::vector<TComparedRun> CompareProcedures(const TCurFit& fit, std::span<const double> x,
                                                           std::span<const double> y, const TFitRun& run,
                                                           const TCompareOptions& options);

} // namespace lumoplot
