// Where the plot of a graph lies and how places in it and values of its axes belong together, as it was drawn
// last.
#pragma once

#include "graph/model/series.h"
#include "graph/plotted/graph_part.h"
#include "graph/plotted/scale_map.h"

#include <QPointF>
#include <QRectF>
#include <array>

namespace lumoplot {

/// Places are units of the rectangle that the graph was drawn in; on the screen, pixels of the graph's
/// widget.
struct TPlotMap {
    QRectF Plot;
    TScaleMap X;
    TScaleMap Y;
    TScaleMap SecondY;
    /// Where the labels and the titles of X, Y and the second Y axis lie; null for one without.
    std::array<QRectF, 3> AxisPlaces;
    QRectF TitlePlace = {};  ///< of the graph's title; null for none
    QRectF LegendPlace = {}; ///< the box of the legend; null where none is shown

    const TScaleMap& YOf(bool second) const { return second ? SecondY : Y; }
    const TScaleMap& YOf(const TSeries& series) const { return YOf(series.IsOnSecondY()); }
    /// What lies at a place; the legend lies over the plot.
    TGraphPart PartAt(QPointF place) const;
};

} // namespace lumoplot
