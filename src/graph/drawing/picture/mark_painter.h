// Draws the marks of a graph and the cross at the axes' zero.
#pragma once

#include "graph/drawing/picture/graph_layout.h"

namespace lumoplot {

/// Vertical and horizontal marks run across the plot, as does a line mark through its two points; a point is
/// a small cross. Does nothing unless the graph shows its marks.
void DrawMarks(const TCanvas& canvas, const TxyGraph& graph, const TGraphLayout& layout);
/// The captions of marks, beside them and inside the plot, where they cover least; never over `taken`. One
/// that had to move away has a thin line that leads to it.
void DrawCaptions(const TCanvas& canvas, const TxyGraph& graph, const TGraphLayout& layout,
                  const std::vector<QRectF>& taken);
/// The cross of CrossAtZero, where both axes show their zero.
void DrawCrossAtZero(const TCanvas& canvas, const TxyGraph& graph, const TGraphLayout& layout);

} // namespace lumoplot
