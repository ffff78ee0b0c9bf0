// Runs the curve fit of a data set that is to be drawn.
#pragma once

#include "graph/model/series.h"

namespace lumoplot {

/// The data set is drawn, its fit shows a result, and points, baseline or definition
/// have changed since it ran.
bool HasPendingFit(const TSeries& series);

/// A fit is pending, or rows that results are to come from are still in the data set's source.
bool HasPendingResult(const TSeries& series);

/// Reads the rows that the data set waits for, with a progress that the user can cancel. What can not be read
/// is told through the message sink, and results come from the points that are there.
XYGRAPH_EXPORT void ReadRowsForResults(TSeries& series);

/// Reads the rows that are missing, runs the fit that is pending and works the regression out anew where it
/// is stale.
void RunPendingResult(TSeries& series);

/// Works the regression out anew where it is stale, a robust line with a progress that the user can cancel:
/// it then has no result (RegressionError) until points or settings change. When these change meanwhile it
/// stays stale. The data set and its graph may be destroyed meanwhile.
XYGRAPH_EXPORT void UpdateRegressionOf(TSeries& series);

/// Fits the curve to the corrected Y, of every row of its source, with a progress that the user can cancel,
/// and puts what was found into the series' fit, which then is not pending: also after a cancelled run, and
/// after one that is not possible (FitError says why). With status EveryStep the graph is repainted after
/// each iteration. The run works on a copy: when the definition or the points change meanwhile, its result is
/// dropped and the fit stays pending. The data set and its graph may be destroyed meanwhile.
XYGRAPH_EXPORT void RunPendingFit(TSeries& series);

} // namespace lumoplot
