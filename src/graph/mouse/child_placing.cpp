#include "graph/mouse/child_placing.h"

#include "graph/model/child_graph.h"
#include "graph/mouse/zoom_mode.h"

#include <algorithm>

namespace lumoplot {
namespace {

constexpr int kEdge = 5; // pixels from the edge that take hold of it

} // namespace

Qt::Edges TChildPlacing::EdgesAt(QPointF place) const {
    Qt::Edges edges;
    if (place.x() < kEdge) edges |= Qt::LeftEdge;
    if (place.x() >= m_child.width() - kEdge) edges |= Qt::RightEdge;
    if (place.y() < kEdge) edges |= Qt::TopEdge;
    if (place.y() >= m_child.height() - kEdge) edges |= Qt::BottomEdge;
    return edges;
}

// No edges for a place that moves the whole child.
std::optional<Qt::Edges> TChildPlacing::GripAt(const TPlotMap* map, QPointF place) const {
    const Qt::Edges edges = EdgesAt(place);
    const bool isTaken = !edges && map && AxesAt(*map, place);
    return isTaken ? std::nullopt : std::optional(edges);
}

std::optional<Qt::CursorShape> TChildPlacing::CursorAt(const TPlotMap* map, QPointF place) const {
    const auto edges = m_start ? std::optional(m_start->Edges) : GripAt(map, place);
    if (!edges) return std::nullopt;
    const bool isAcross = *edges & (Qt::LeftEdge | Qt::RightEdge);
    const bool isUp = *edges & (Qt::TopEdge | Qt::BottomEdge);
    if (!isAcross && !isUp) return Qt::SizeAllCursor;
    if (!isUp) return Qt::SizeHorCursor;
    if (!isAcross) return Qt::SizeVerCursor;
    const bool falls = edges->testFlag(Qt::LeftEdge) == edges->testFlag(Qt::TopEdge);
    return falls ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor;
}

bool TChildPlacing::Press(const TPlotMap* map, QPointF place) {
    const auto edges = GripAt(map, place);
    if (edges) m_start = TStart{m_child.mapToParent(place), m_child.geometry(), *edges};
    return edges.has_value();
}

QRect TChildPlacing::Moved(QPoint way) const {
    const QRect room = m_child.ParentGraph()->rect();
    const auto inside = [](int start, int length, int all) {
        return std::clamp(start, std::min(0, all - length), std::max(0, all - length));
    };
    QRect bounds = m_start->Bounds;
    bounds.moveTo(inside(bounds.left() + way.x(), bounds.width(), room.width()),
                  inside(bounds.top() + way.y(), bounds.height(), room.height()));
    return bounds;
}

QRect TChildPlacing::Resized(QPoint way) const {
    const QRect room = m_child.ParentGraph()->rect();
    QRect bounds = m_start->Bounds;
    const Qt::Edges edges = m_start->Edges;
    if (edges & Qt::LeftEdge)
        bounds.setLeft(
            std::min(std::max(bounds.left() + way.x(), 0), bounds.right() + 1 - kSmallest.width()));
    if (edges & Qt::TopEdge)
        bounds.setTop(
            std::min(std::max(bounds.top() + way.y(), 0), bounds.bottom() + 1 - kSmallest.height()));
    if (edges & Qt::RightEdge)
        bounds.setRight(std::max(std::min(bounds.right() + way.x(), room.right()),
                                 bounds.left() - 1 + kSmallest.width()));
    if (edges & Qt::BottomEdge)
        bounds.setBottom(std::max(std::min(bounds.bottom() + way.y(), room.bottom()),
                                  bounds.top() - 1 + kSmallest.height()));
    return bounds;
}

void TChildPlacing::Place(const QRect& bounds) {
    if (bounds == m_child.geometry()) return;
    m_child.setGeometry(bounds);
    m_child.TakeFractionsFromBounds();
}

void TChildPlacing::Drag(QPointF place) {
    if (!m_start) return;
    const QPoint way = (m_child.mapToParent(place) - m_start->Place).toPoint();
    Place(m_start->Edges ? Resized(way) : Moved(way));
}

bool TChildPlacing::Release() {
    const bool hasMoved = m_start && m_child.geometry() != m_start->Bounds;
    m_start.reset();
    return hasMoved;
}

void TChildPlacing::Cancel() {
    if (m_start) Place(m_start->Bounds);
    m_start.reset();
}

} // namespace lumoplot
