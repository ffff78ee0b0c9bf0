// Draws the curve of a data set's fit.
#pragma once

#include "graph/drawing/picture/graph_layout.h"
#include "graph/model/series.h"

namespace lumoplot {

/// Draws the curve that the data set was prepared with, in the look of its fit. The model stands for
/// corrected Y, so it is drawn as it is. A data set whose X come from another one has no curve.
void DrawFittedCurve(const TCanvas& canvas, const TSeries& series, const TGraphLayout& layout,
                     const QRectF& visible);

} // namespace lumoplot
