// Moves and resizes a child graph inside its parent with the mouse: by what lies beside its plot, and by its
// edges.
#pragma once

#include "graph/plotted/plot_map.h"

#include <QRect>
#include <optional>

namespace lumoplot {

class TxyChildGr;

class TChildPlacing {
public:
    static constexpr QSize kSmallest{60, 45};

    /// The child graph has a parent graph.
    explicit TChildPlacing(TxyChildGr& child) : m_child(child) {}

    /// The cursor for a place (pixels of the child) that moves or resizes; nothing elsewhere. `map` is null
    /// where the child shows no plot.
    std::optional<Qt::CursorShape> CursorAt(const TPlotMap* map, QPointF place) const;
    /// Starts a drag; false where the place is for something else.
    bool Press(const TPlotMap* map, QPointF place);
    bool IsGoing() const { return m_start.has_value(); }
    void Drag(QPointF place);
    /// Ends the drag; true when the child lies elsewhere now.
    bool Release();
    /// Puts the child back where it was.
    void Cancel();

private:
    struct TStart {
        QPointF Place; ///< in the parent
        QRect Bounds;
        Qt::Edges Edges; ///< that follow the mouse; none for a move
    };

    Qt::Edges EdgesAt(QPointF place) const;
    std::optional<Qt::Edges> GripAt(const TPlotMap* map, QPointF place) const;
    QRect Moved(QPoint way) const;
    QRect Resized(QPoint way) const;
    void Place(const QRect& bounds);

    TxyChildGr& m_child;
    std::optional<TStart> m_start;
};

} // namespace lumoplot
