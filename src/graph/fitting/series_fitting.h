// Runs the curve fit of a data set that is to be drawn.
#pragma once

#include "graph/model/series.h"

namespace lumoplot {

/// The data set is drawn, its fit shows a result, and points, baseline or definition
/// have changed since it ran.
bool HasPendingFit(const TSeries& series);

/// Fits the curve to the corrected Y, with a progress that the user can cancel, and puts what was found into
/// the series' fit, which then is not pending: also after a cancelled run, and after one that is not possible
/// (FitError says why). With status EveryStep the graph is repainted after each iteration. The run works on
/// a copy: when the definition or the points change meanwhile, its result is dropped and the fit stays
/// pending. The data set and its graph may be destroyed meanwhile.
XYGRAPH_EXPORT void RunPendingFit(TSeries& series);

} // namespace lumoplot
