// The mouse and the keys over a graph: wheel, read-out of coordinates, the nearest point and its tooltip, the
// menu; and the mode that gets the drags. Belongs to its graph.
//
// Left drag: the mode (the usual one zooms); beside the plot of a child graph it moves the child, at its
// edges it resizes it. Wheel: zoom about the mouse, over the labels of an axis that axis alone. Double click
// on the plot: the axes follow the data again; on the legend or beside the plot: OnWantDesigner. Keys: + and
// − zoom, arrows move, Home shows all, Backspace goes back, Ctrl with arrows walks over the points, from then
// on the arrows alone do so until Esc, which also ends a drag.
#pragma once

#include "graph/mouse/child_placing.h"
#include "graph/mouse/graph_zoom.h"
#include "graph/mouse/mouse_mode.h"
#include "graph/plotted/nearest_point.h"

#include <QObject>
#include <QPointer>
#include <memory>
#include <optional>
#include <utility>

class QContextMenuEvent;
class QKeyEvent;
class QMenu;
class QMouseEvent;
class QWheelEvent;

namespace lumoplot {

class TCoordsPanel;
class TxyChildGr;

class TGraphMouse : public QObject {
    Q_OBJECT

public:
    /// How far from the mouse the nearest point may lie, in pixels.
    static constexpr double kReach = 10;

    explicit TGraphMouse(TxyGraph& graph);
    ~TGraphMouse() override;

    TxyGraph& Graph() const { return m_graph; }
    TGraphZoom& Zoom() { return m_zoom; }
    const TGraphZoom& Zoom() const { return m_zoom; }
    /// The panel of the coordinates; null when its new owner has deleted it.
    TCoordsPanel* CoordsPanel() const;

    /// The plot as it was painted last; null while none is shown.
    const TPlotMap* Map() const { return m_map ? &*m_map : nullptr; }
    /// The graph lies in a parent graph, where the mouse may move and resize it.
    void SetPlacedIn(TxyChildGr& child) { m_placing.emplace(child); }
    /// Called by the graph for every new picture.
    void SetMap(std::optional<TPlotMap> map);

    /// The part of the picture whose settings the last OnWantDesigner asked for; asked once.
    TGraphPart TakeWantedPart() { return std::exchange(m_wantedPart, TGraphPart::None); }

    /// Another mode takes the drags; null puts the usual one back. Cancels a drag.
    XYGRAPH_EXPORT void SetMode(std::unique_ptr<TMouseMode> mode);
    TMouseMode& Mode() const { return *m_mode; }
    bool IsDragging() const { return m_isDragging; }
    /// The point under the mouse, or the one that the keys have walked to.
    const std::optional<TPointHit>& NearPoint() const { return m_near; }

    /// Paints the graph's widget again from the picture that it has.
    void AskForPaint();
    /// Draws what lies over the picture.
    void Paint(QPainter& painter) const;

Q_SIGNALS:
    /// A menu is about to be shown over the graph; a host may add to it. `place` is in pixels of the widget.
    void MenuRequested(QMenu* menu, QPointF place);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool Handle(QEvent& event);
    bool Press(const QMouseEvent& event);
    bool Move(const QMouseEvent& event);
    bool Release(const QMouseEvent& event);
    bool DoubleClick(const QMouseEvent& event);
    bool Wheel(const QWheelEvent& event);
    bool Key(const QKeyEvent& event);
    bool ShowMenu(const QContextMenuEvent& event);
    void Leave();
    void CancelDrag();
    void TakeFocus(Qt::FocusReason reason);
    void AskForSettings(TGraphPart part);

    /// What changes the view step by step; steps by the same without a pause are one.
    enum class TStepBy { Drag, Wheel, Key };
    void BeginStep(TStepBy by, std::uint64_t now);
    bool IsPlacing() const { return m_placing && m_placing->IsGoing(); }
    bool ZoomByKey(const QKeyEvent& event);
    bool MoveByKey(const QKeyEvent& event);
    bool WalkPoints(const QKeyEvent& event);
    void Hover(QPointF place);
    void SetNear(const std::optional<TPointHit>& hit);
    void ShowTip(const TPointHit& hit) const;
    void ShowCursor(QPointF place);

    TxyGraph& m_graph;
    TGraphZoom m_zoom;
    std::optional<TPlotMap> m_map;
    std::unique_ptr<TMouseMode> m_mode;
    QPointer<TCoordsPanel> m_coords;
    std::optional<TPointHit> m_near;
    TGraphPart m_wantedPart = TGraphPart::None;
    Qt::MouseButton m_dragButton = Qt::NoButton;
    bool m_isDragging = false;
    bool m_isWalking = false; ///< the keys have brought m_near
    TStepBy m_stepBy = TStepBy::Drag;
    std::uint64_t m_lastStep = 0;           ///< ms
    bool m_showsFocus = false;              ///< the keys have brought the focus here
    std::optional<TChildPlacing> m_placing; ///< of a child graph
};

} // namespace lumoplot
