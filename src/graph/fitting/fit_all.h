// The fit of one equation to all data sets of a graph.
#pragma once

#include "fit/many/fit_batch.h"
#include "graph/model/graph.h"

#include <string>
#include <vector>

namespace lumoplot {

/// What FitEach finds for the data sets that are shown and have points, read whole where they hold only some
/// rows of their source. The data sets and their own fits stay as they are.
std::vector<TBatchFit> FitAllDataSets(TxyGraph& graph, const TCurFit& definition, const TFitRun& run);
/// The same for FitTogether, with the parameters of the names in `shared` in common.
TGlobalFit FitDataSetsTogether(TxyGraph& graph, const TCurFit& definition,
                               const std::vector<std::string>& shared, const TFitRun& run);

/// Adds a data set for each parameter: its values with their standard errors over the numbers of the fits,
/// from 1. Fits that were not possible leave a gap. Returns the number of the first new data set, 0 for none.
XYGRAPH_EXPORT int AddParameterDataSets(TxyGraph& graph, std::span<const TBatchFit> fits);

} // namespace lumoplot
