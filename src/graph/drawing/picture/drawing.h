// Draws a graph on any painter: the screen, a picture file, paper. What the screen shows, the picture shows.
#pragma once

#include "graph/model/graph.h"

#include <QRectF>

namespace lumoplot {

/// On the screen child graphs are panels that draw themselves.
enum class TChildGraphs { Include, LeaveOut };

struct TDrawOptions {
    TChildGraphs ChildGraphs = TChildGraphs::Include;
    /// Print obeys PrintBkgndColor and PrintLineStyle.
    TDrawPurpose Purpose = TDrawPurpose::Show;
};

/// Draws a graph that PrepareForDrawing has brought up to date (as it must have its child graphs when they
/// are included) into a rectangle of the painter. The painter's units are 1/96 inch: for a device with other
/// units the caller scales the painter. Nothing is drawn outside the rectangle; the painter's state is put
/// back.
XYGRAPH_EXPORT void DrawGraph(QPainter& painter, const TxyGraph& graph, const QRectF& rectangle,
                              const TDrawOptions& options = {});

/// PrepareForDrawing for the graph and its child graphs, at every depth.
XYGRAPH_EXPORT void PrepareWithChildGraphs(TxyGraph& graph);

} // namespace lumoplot
