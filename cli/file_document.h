// What a file of the system holds, as a document: every section with the entries of its table, in their
// order.
#pragma once

#include "cli/output.h"
#include "graph/model/graph.h"

namespace lumoplot {

class TCurFit;

/// Sections as objects; data sets, marks and child graphs (each a graph again) as arrays of objects.
TDocument GraphDocument(const TxyGraph& graph);
/// The entries of the Series section and of the series record as one object, and the extent of the points.
TDocument SeriesDocument(const TSeries& series);
/// Adds the number of points and, where there are any, their extents.
void AppendPoints(TDocument& document, const TDataSeries& series);
/// The fields of the curve fit's three composite records as one object.
TDocument CurveFitDocument(const TCurFit& fit);

} // namespace lumoplot
