// The look of a graph apart from what it shows: colours, fonts, lines, symbols, margins, the legend and how
// axes are labelled. Titles, ranges, scales, data sets with their sources and names, marks and child graphs
// are no look.
#pragma once

#include "graph/model/graph.h"

#include <string>

namespace lumoplot {

/// Gives a graph the look of another one. Data sets take the look of those with their numbers; those beyond
/// keep theirs.
void TakeLook(TxyGraph& graph, const TxyGraph& from);
/// TakeLook from a graph file or template. Throws what LoadFromFile throws; the graph is then unchanged.
XYGRAPH_EXPORT void ApplyStyle(TxyGraph& graph, const std::string& fileName);
/// Saves the look as a template without titles, data, sources and marks. Throws EFileError.
XYGRAPH_EXPORT void SaveStyle(const TxyGraph& graph, const std::string& fileName);

} // namespace lumoplot
