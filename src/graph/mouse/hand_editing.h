// What the mouse modes that edit points and marks share: whom they ask, whom they tell, where they snap to,
// and how they show what a drag comes to.
#pragma once

#include "graph/model/mark.h"
#include "graph/plotted/nearest_point.h"

#include <QString>
#include <functional>
#include <memory>
#include <string>

class QPainter;

namespace lumoplot {

class TGraphMouse;

struct THandEditing {
    /// Asked before each edit of a data set's points; may make the data set one that can be edited.
    std::function<bool(TSeries& series)> MayEdit;
    /// Places that are near a point are its place.
    bool Snaps = false;
    /// The type of the marks that are placed.
    TMarkType MarkType = TMarkType::VerticalLine;
};

/// A place in a plot with what it means there.
struct TPlotPlace {
    QPointF Place;
    double X;
    double Y; ///< corrected, on the Y axis that was asked for
};

/// The values at a place, which is moved into the plot, with the digits that a pixel is worth; or those of
/// the nearest drawn point of a data set other than `except` (null for any) where `snaps` and one is within
/// the reach of the mouse.
TPlotPlace PlaceIn(const TxyGraph& graph, const TPlotMap& map, QPointF place, bool second, bool snaps,
                   const TSeries* except);

/// The value of an axis at a position of its map, with the digits that a pixel is worth.
double PointedAt(const TAxis& axis, const TScaleMap& map, double position);
/// A value as PointedAt would give it there.
double RoundedToPixel(const TAxis& axis, const TScaleMap& map, double position, double value);

/// "3.25, 17.1", with the digits that a pixel is worth.
QString PlaceText(const TxyGraph& graph, const TPlotMap& map, const TPlotPlace& place, bool second);

/// Draws a ring at a place and a text beside it, inside the plot.
void PaintDragLabel(QPainter& painter, const TxyGraph& graph, const TPlotMap& map, QPointF place,
                    const QString& text);

} // namespace lumoplot
