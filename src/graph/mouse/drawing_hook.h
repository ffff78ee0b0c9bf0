// How the component reaches its drawing without knowing it: graph/drawing installs its function when the
// library is loaded, and the panel calls it to paint itself.
#pragma once

#include "graph/plotted/plot_map.h"

#include <optional>

class QPainter;

namespace lumoplot {

class TxyGraph;

/// Draws a prepared graph, without its child graphs (they paint themselves), into a rectangle of the painter.
/// Returns where the plot lies, or nothing when none was drawn.
using TDrawPanel = std::optional<TPlotMap> (*)(QPainter& painter, const TxyGraph& graph,
                                               const QRectF& rectangle);

void InstallDrawing(TDrawPanel draw);

} // namespace lumoplot
