// Draws a graph on any painter: the screen, paper, a picture file, which it saves, too. What the screen
// shows, the picture shows.
#pragma once

#include "graph/model/graph.h"

#include <QRectF>
#include <QSize>
#include <string>

namespace lumoplot {

/// On the screen child graphs are panels that draw themselves.
enum class TChildGraphs { Include, LeaveOut };

/// Whether margins and plot are filled with their colours, or what the painter has drawn before remains.
enum class TBackground { Fill, LeaveOut };

class TProgress;

struct TDrawOptions {
    TChildGraphs ChildGraphs = TChildGraphs::Include;
    /// Print obeys PrintBkgndColor and PrintLineStyle.
    TDrawPurpose Purpose = TDrawPurpose::Show;
    TBackground Background = TBackground::Fill;
    /// Told of each data set that is drawn, and asked whether to go on; borrowed, null for drawing at a
    /// stretch.
    TProgress* Progress = nullptr;
    const char* Caption = "Drawing"; ///< of the progress
};

/// Draws a graph that PrepareForDrawing has brought up to date (as it must have its child graphs when they
/// are included) into a rectangle of the painter. The painter's units are 1/96 inch: for a device with other
/// units the caller scales the painter. Nothing is drawn outside the rectangle; the painter's state is put
/// back. False when the user has cancelled; the picture is then not complete.
XYGRAPH_EXPORT bool DrawGraph(QPainter& painter, const TxyGraph& graph, const QRectF& rectangle,
                              const TDrawOptions& options = {});

/// PrepareForDrawing for the graph and its child graphs, at every depth.
XYGRAPH_EXPORT void PrepareWithChildGraphs(TxyGraph& graph);

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
