// Mouse modes that edit the points of the current data set: add, move, delete. A drag only shows what it
// comes to; the data set changes when the button goes up, through its own operations, so that tolerance,
// duplicates and baseline are what they are for any other point. Outside the plot, and for the other buttons,
// the graph moves and zooms as ever.
#pragma once

#include "graph/mouse/hand_editing.h"
#include "graph/mouse/zoom_mode.h"

#include <optional>

namespace lumoplot {

enum class TPointAction { Add, Move, Delete };

/// Add: press, drag to the place, let go. Move: drag a point; with Shift its X stays. Delete: click a point.
/// The Delete key deletes the point that the keys or the mouse are at. Data sets that are drawn against
/// another one are not edited.
class TPointMode : public TMouseMode {
public:
    XYGRAPH_EXPORT TPointMode(TGraphMouse& mouse, TPointAction action,
                              std::shared_ptr<const THandEditing> editing);

    QCursor CursorAt(const TPlotMap& map, QPointF place, bool isDragging) const override;
    bool Press(const TPlotMap& map, const TMouseMoment& moment) override;
    void Drag(const TMouseMoment& moment) override;
    void Release(const TMouseMoment& moment) override;
    void Cancel() override;
    bool PressKey(const QKeyEvent& event) override;
    void Paint(QPainter& painter) const override;

private:
    struct TDragState {
        TPlotMap Map; ///< as it was at the press
        int Number;   ///< of the data set
        TSeriesPoint Point;
        QPointF Start; ///< of the point
        QPointF Grip;  ///< from the mouse to the point
        TPlotPlace Target;
        bool KeepsX;
    };

    TSeries* Current() const;
    /// Nothing but a visible data set with an X of its own can be edited.
    bool CanEdit(const TSeries& series) const;
    bool IsReady(TSeries& series) const;
    TPlotPlace TargetOf(const TDragState& drag, const TMouseMoment& moment) const;
    void Carry(TSeries& series, const TDragState& drag) const;
    void DeletePoint(TSeries& series, std::int32_t id) const;
    void Change(const char* what, const TSeries& series, const std::function<void()>& action) const;
    void PaintHandles(QPainter& painter) const;
    void End();

    TGraphMouse& m_mouse;
    TPointAction m_action;
    std::shared_ptr<const THandEditing> m_editing;
    TZoomMode m_zoom;
    bool m_zooms = false; ///< the drag belongs to m_zoom
    std::optional<TDragState> m_drag;
};

} // namespace lumoplot
