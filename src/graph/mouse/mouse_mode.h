// What the left button does over a graph: a mode takes a press, follows the drag and ends it. The graph has
// one mode at a time; the usual one zooms. The wheel, the read-out of coordinates and the menu work in every
// mode.
#pragma once

#include "graph/plotted/plot_map.h"

#include <QCursor>

class QKeyEvent;
class QPainter;

namespace lumoplot {

struct TMouseMoment {
    QPointF Place; ///< in pixels of the graph's widget
    Qt::MouseButton Button = Qt::NoButton;
    Qt::KeyboardModifiers Modifiers = Qt::NoModifier;
};

class TMouseMode {
public:
    virtual ~TMouseMode() = default;

    /// The cursor over that place, while a drag goes on (`isDragging`) or not.
    virtual QCursor CursorAt(const TPlotMap& map, QPointF place, bool isDragging) const = 0;
    /// A button went down over a graph that shows a plot. True when the mode takes the drag that may begin
    /// here.
    virtual bool Press(const TPlotMap& map, const TMouseMoment& moment) = 0;
    /// The mouse has moved in a drag that the mode has taken.
    virtual void Drag(const TMouseMoment& moment) = 0;
    /// The button went up: the drag ends and does what it is for.
    virtual void Release(const TMouseMoment& moment) = 0;
    /// The drag ends and leaves no trace (Esc, another window).
    virtual void Cancel() = 0;
    /// The mouse moves without a drag, or has left the graph (a null map).
    virtual void Hover(const TPlotMap* /*map*/, QPointF /*place*/) {}
    /// A key; true when the mode has used it.
    virtual bool PressKey(const QKeyEvent& /*event*/) { return false; }
    /// Draws over the picture of the graph what the drag shows. TGraphMouse::AskForPaint asks for it.
    virtual void Paint(QPainter& /*painter*/) const {}
};

} // namespace lumoplot
