// The mouse mode that places marks and drags those that are there. The graph changes when the button goes up.
#pragma once

#include "graph/mouse/hand_editing.h"
#include "graph/mouse/zoom_mode.h"

#include <optional>

namespace lumoplot {

/// Press on a mark to drag it (a line by an end or as a whole), elsewhere to place one of the type that
/// THandEditing names; a line goes from the press to where the button goes up. Marks are shown from then on.
/// The one that was clicked, dragged or placed last has handles, and the Delete key deletes it.
class TMarkMode : public TMouseMode {
public:
    XYGRAPH_EXPORT TMarkMode(TGraphMouse& mouse, std::shared_ptr<const THandEditing> editing);

    QCursor CursorAt(const TPlotMap& map, QPointF place, bool isDragging) const override;
    bool Press(const TPlotMap& map, const TMouseMoment& moment) override;
    void Drag(const TMouseMoment& moment) override;
    void Release(const TMouseMoment& moment) override;
    void Cancel() override;
    bool PressKey(const QKeyEvent& event) override;
    void Paint(QPainter& painter) const override;

private:
    enum class TPart { First, Second, Whole };
    struct TGrip {
        TGraphMark Mark;
        TPart Part;
    };
    struct TDragState {
        TPlotMap Map;
        TGraphMark Before; ///< ID 0 for a new one
        TGraphMark Mark;
        TPart Part;
        QPointF Start;
        TPlotPlace Target;
    };

    /// The mark at a place, the one drawn last of several.
    std::optional<TGrip> GripAt(const TPlotMap& map, QPointF place) const;
    void Move(TDragState& drag, QPointF place) const;
    bool HasLength(const TDragState& drag) const;
    void Select(int id);
    void PaintSelected(QPainter& painter) const;
    void End();

    TGraphMouse& m_mouse;
    std::shared_ptr<const THandEditing> m_editing;
    TZoomMode m_zoom;
    bool m_zooms = false;
    std::optional<TDragState> m_drag;
    int m_selected = 0; ///< the mark that was clicked, dragged or placed last; 0 for none
};

} // namespace lumoplot
