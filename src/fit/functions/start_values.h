// Start values for the parameters of a fit, found from its data.
#pragma once

#include "fit/run/curve_fitter.h"

namespace lumoplot {

/// Where start values came from.
enum class TStartSource {
    Shape,  ///< what the data look like: peaks, slopes, plateaus, periods
    Search, ///< scattered places, for an equation of which only the formula is known
};

struct TStartValues {
    TStartSource Source = TStartSource::Search;
    double Rss = 0; ///< of the curve at the start, weighted, in units of the largest Y (a power of two)
};

/// Puts start values into the varied parameters of the fit, which becomes stale: for a ready function from
/// the shape of the data, else from a scan of places and short runs from the best of them; what the equation
/// is linear in is always put to its best. A second at most. The run's progress and errors of points are
/// used, its other settings are not. Throws EFitError where no place has a value at all points, or nothing is
/// to be varied, and what TCurFit::Compile throws; the parameters then stay as they were.
XYGRAPH_EXPORT TStartValues FindStartValues(TCurFit& fit, std::span<const double> x,
                                            std::span<const double> y, const TFitRun& run = {});

} // namespace lumoplot
