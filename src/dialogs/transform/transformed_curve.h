// What the windows that work out new curves share: the curve of a data set as it is seen, curves in a
// preview, and where a result goes.
#pragma once

#include "data/transform/transform.h"
#include "graph/model/series.h"

namespace lumoplot {

class TxyGraph;

/// The points without the data set's baseline.
TCurveValues CorrectedCurve(const TSeries& series);

/// Adds a curve without points to a preview, as a line of that width.
TSeries& AddPreviewCurve(TxyGraph& preview, const std::string& name, TColor color, int width);
/// Shows other points in a preview's curve.
void ShowCurve(TSeries& shown, const TCurveValues& curve);
/// A legend, and what the axes of the graph say of X and Y.
void SetUpPreview(TxyGraph& preview, const TSeries& of);

/// The curve takes the place of the points; the baseline is in it, so there is none any more.
void PutCurve(TSeries& target, const TCurveValues& curve);
/// Adds the curve as a data set of that name in the next style, which becomes the current one.
void AddCurve(TSeries& like, const TCurveValues& curve, const std::string& name);

} // namespace lumoplot
