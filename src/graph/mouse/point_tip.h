// Reading points off a graph: the text about one, and how keys walk from one to the next.
#pragma once

#include "graph/plotted/nearest_point.h"

#include <QString>

namespace lumoplot {

/// The name of the data set and the point's X and Y, as rich text.
QString PointTip(const TPointHit& hit);

enum class TPointStep { Previous, Next, TenBack, TenOn, First, Last, PreviousSeries, NextSeries };

/// What a key with Ctrl means: an arrow, Page Up and Page Down (by ten), Home and End; nothing for others.
std::optional<TPointStep> PointStepOf(int key);

/// The point of the plot that lies a step from `from`: in its data set by one or by ten, at its ends, or of
/// the data set before or after it (in a circle) the one nearest in X. From nothing, the leftmost point of
/// the first data set. Nothing where there is no such point.
std::optional<TPointHit> NextPoint(const TxyGraph& graph, const TPlotMap& map,
                                   const std::optional<TPointHit>& from, TPointStep step);

} // namespace lumoplot
