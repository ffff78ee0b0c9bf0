// Which part of a graph its own plot may take: panels that span its width leave it what is above or below
// them.
#pragma once

#include "graph/model/child_graph.h"

#include <QRectF>

namespace lumoplot {

/// A child graph that spans the width of its parent and lies at its top or foot, or beside another such one.
XYGRAPH_EXPORT bool IsStacked(const TxyChildGr& child);

/// The part of `rectangle`, in which the graph is drawn, that stacked panels leave to its own plot; all of it
/// where they leave nothing.
QRectF BesidePanels(const TxyGraph& graph, const QRectF& rectangle);

} // namespace lumoplot
