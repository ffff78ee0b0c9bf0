// The usual mouse mode: a rubber band zooms into a part of the plot; with Shift or the middle button the
// picture moves with the mouse, as an axis does when its labels are dragged. The legend is dragged to its
// place.
#pragma once

#include "graph/mouse/graph_zoom.h"
#include "graph/mouse/mouse_mode.h"

#include <optional>

namespace lumoplot {

class TGraphMouse;

/// The axes that a place concerns: all inside the plot, one on its labels; nothing elsewhere.
std::optional<TZoomAxes> AxesAt(const TPlotMap& map, QPointF place);

class TZoomMode : public TMouseMode {
public:
    explicit TZoomMode(TGraphMouse& mouse) : m_mouse(mouse) {}

    QCursor CursorAt(const TPlotMap& map, QPointF place, bool isDragging) const override;
    bool Press(const TPlotMap& map, const TMouseMoment& moment) override;
    void Drag(const TMouseMoment& moment) override;
    void Release(const TMouseMoment& moment) override;
    void Cancel() override;
    void Paint(QPainter& painter) const override;

private:
    enum class TKind { Band, Move, Legend };
    struct TDragState {
        TPlotMap Map; ///< as it was at the press
        TKind Kind;
        TZoomAxes Axes;
        QPointF Start;
        QPointF Place;
    };

    bool IsClick() const;
    /// Which axes the band zooms: a flat one only X, a narrow one only Y.
    TZoomAxes BandAxes() const;
    QRectF Band() const;
    /// Where the dragged legend would come to lie, within the graph.
    QRectF LegendPlace() const;
    void PlaceLegend() const;
    void End();

    TGraphMouse& m_mouse;
    std::optional<TDragState> m_drag;
};

} // namespace lumoplot
