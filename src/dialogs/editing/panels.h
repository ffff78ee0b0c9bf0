// Graphs inside a graph: an inset over the plot, and panels one above the other that share the X axis.
#pragma once

#include "controls/widgets_export.h"
#include "graph/model/child_graph.h"

#include <QRectF>
#include <vector>

namespace lumoplot {

/// Adds a graph with the same data sets and smaller texts; `place` is in fractions of the graph's size.
XYWIDGETS_EXPORT TxyChildGr& AddInset(TxyGraph& graph, const QRectF& place);

/// Moves a data set into a panel of its own below the others, which make room. All panels have the X range of
/// the graph; the lowest one has the labels. Throws ELumoError when the data set is the only one.
XYWIDGETS_EXPORT TxyChildGr& StackBelow(TxyGraph& graph, TSeries& series);

/// The graph and its stacked panels from top to bottom; the graph alone without such panels.
XYWIDGETS_EXPORT std::vector<TxyGraph*> StackOf(TxyGraph& graph);

/// Gives the graphs of the stack margins with which their plots begin and end below one another. They have
/// been painted.
XYWIDGETS_EXPORT void AlignFrames(TxyGraph& graph);

/// Takes the X range of one graph of the stack over to the others.
XYWIDGETS_EXPORT void ShareXRange(TxyGraph& graph, const TxyGraph& changed);

/// Removes the panel with that place in the chain of child graphs. The data sets of a stacked one go back to
/// the graph, and the others take its room.
XYWIDGETS_EXPORT void RemovePanel(TxyGraph& graph, int place);

} // namespace lumoplot
