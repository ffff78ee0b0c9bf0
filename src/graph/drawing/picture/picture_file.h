// Graphs as picture files.
#pragma once

#include "graph/drawing/picture/drawing.h"

#include <QSize>
#include <string>

namespace lumoplot {

struct TPictureOptions {
    double PixelsPerUnit = 1; ///< of a PNG
    /// How large a unit is on paper, in 1/96 inch: everything in the picture grows alike. A PNG notes it as
    /// its resolution.
    double PaperScale = 1;
    TBackground Background = TBackground::Fill; ///< LeaveOut: a PNG is transparent, too
};

/// Draws the graph, child graphs included, and saves it in the format that the name ends with: .png, .svg or
/// .pdf (any letter case). `size` counts units of 1/96 inch, in which the graph is laid out. The graph's axes
/// are brought up to date first. Throws EFileError "Can not save to file NAME: REASON", also for another
/// ending, an empty size or one that no picture can have (PNG: 32,767 pixels on a side, 400 million in all);
/// an old file is then untouched, and when the user has cancelled the progress (MakeProgress), which gives
/// false.
XYGRAPH_EXPORT bool SaveGraphPicture(TxyGraph& graph, const std::string& fileName, QSize size,
                                     const TPictureOptions& options = {});
inline bool SaveGraphPicture(TxyGraph& graph, const std::string& fileName, QSize size, double pixelsPerUnit) {
    return SaveGraphPicture(graph, fileName, size, TPictureOptions{.PixelsPerUnit = pixelsPerUnit});
}

} // namespace lumoplot
