// Fills the data sets of a graph from their sources, with the graph's budget of points.
#pragma once

#include "graph/model/graph.h"
#include "sources/text/text_loader.h"
#include "sources/text/text_preview.h"
#include "support/progress.h"

namespace lumoplot {

/// Reads the points of a data set from the source that it describes and puts them in the place of its points,
/// with the budget of points of its graph; a manual data set is left as it is. `report` takes what became of
/// the rows of a text. False when the user cancelled. On false and on an error (EFileError and the texts of
/// the source's format) the data set keeps its points.
XYGRAPH_EXPORT bool LoadFromSource(TSeries& series, TProgress& progress, TTextReport* report = nullptr);

/// The first rows of the text file or sheet that the data set's source is, read as its description says.
/// Throws EFileError.
XYGRAPH_EXPORT TTextPreview PreviewSource(const TSeries& series, int maxRows);

/// Reads again, with the budget of `graph`, the data sets of which `edited` (a copy of it, the same data sets
/// in the same order) read fewer points for its preview. What cannot be read is told through the message sink
/// and keeps the points that it has, as does what the user cancels.
XYGRAPH_EXPORT void LoadThinnedAgain(TxyGraph& graph, const TxyGraph& edited, TProgress& progress);

/// The source's file: its name as it is when it is absolute or exists, else in the graph's data directory.
XYGRAPH_EXPORT std::string SourceFileOf(const TSeries& series);

} // namespace lumoplot
