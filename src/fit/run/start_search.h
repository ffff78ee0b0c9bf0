// Looks for better minima from other starts: a scan of scattered places, and short runs from the best.
#pragma once

#include "fit/run/local_fit.h"

#include <chrono>

namespace lumoplot {

struct TFoundStart {
    TVector Values; ///< of the varied parameters
    double Rss = 0; ///< over the points searched, weighted, in a unit that is the same for all of them
    bool IsKnown = false;
    int Count = 0; ///< of the scattered starts that end here
    /// Terms far larger than the data take each other away, as two equal peaks of opposite signs: it leads
    /// nowhere.
    bool Cancels = false;
};

/// How much a search may do.
struct TSearchLimits {
    int Places = 0; ///< that are looked at
    int Runs = 0;   ///< from the best of them
    int Rounds = 1; ///< in which this is done, each but the first near the best minimum
};

/// The minima found, best first, one for each; only those where the model has a value at all points. That
/// which is reached from `known` is among them as such, where one is given. The parameters of the fit, which
/// are the centre of the search, are left as they are. Ends early, with what there is, at the time `end` or
/// when cancelled.
std::vector<TFoundStart> SearchStarts(const TFitTask& task, const TFitPoints& points,
                                      const TSearchLimits& limits, const TVector& known,
                                      std::chrono::steady_clock::time_point end);

} // namespace lumoplot
