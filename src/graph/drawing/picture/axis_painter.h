// Draws axes where a layout has placed them: grid, line, ticks, labels and title.
#pragma once

#include "graph/drawing/picture/graph_layout.h"

namespace lumoplot {

/// Grid lines at the major ticks of every axis that shows them.
void DrawGrid(const TCanvas& canvas, const TxyGraph& graph, const TGraphLayout& layout);
/// The lines, ticks, labels and titles of the axes that are shown.
void DrawAxes(const TCanvas& canvas, const TxyGraph& graph, const TGraphLayout& layout);

} // namespace lumoplot
