// Graphs as picture files.
#pragma once

#include "graph/model/graph.h"

#include <QSize>
#include <string>

namespace lumoplot {

/// Draws the graph, child graphs included, and saves it in the format that the name ends with: .png, .svg or
/// .pdf (any letter case). `size` counts units of 1/96 inch; a PNG has `scale` pixels to the unit. SVG and
/// PDF have the size on paper, whatever the scale. The graph's axes are brought up to date first. Throws
/// EFileError "Can not save to file NAME", also for another ending, an empty size or a size that no picture
/// can have; an old file is then untouched, and when the user has cancelled the progress (MakeProgress),
/// which gives false.
XYGRAPH_EXPORT bool SaveGraphPicture(TxyGraph& graph, const std::string& fileName, QSize size,
                                     double scale = 1);

} // namespace lumoplot
