// Finds the point of a graph that lies nearest to a place on the screen.
#pragma once

#include "graph/plotted/plot_map.h"

#include <cstdint>
#include <optional>

namespace lumoplot {

struct TPointHit {
    const TSeries* Series;
    std::int32_t Id;
    double X; ///< on the X axis: the point's own, or the corrected Y of the X data set
    double Y; ///< corrected
    QPointF Place;
    double Distance; ///< from the place that was asked for
};

/// The point nearest to `place` that is drawn and at most `reach` away (both in the map's units). Of equally
/// near ones that which is drawn last. Only points inside the plot count, unless the graph draws points off
/// it. Points of large data sets are looked up by X, in the order that overwrites within their X tolerance
/// leave.
std::optional<TPointHit> NearestPoint(const TxyGraph& graph, const TPlotMap& map, QPointF place,
                                      double reach);
/// As NearestPoint among the points of one data set.
std::optional<TPointHit> NearestPointOf(const TSeries& series, const TPlotMap& map, QPointF place,
                                        double reach);

} // namespace lumoplot
