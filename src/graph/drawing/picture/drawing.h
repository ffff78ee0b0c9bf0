// Draws a graph on any painter: the screen, a picture file, paper. What the screen shows, the picture shows.
#pragma once

#include "graph/model/graph.h"

#include <QRectF>

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

} // namespace lumoplot
