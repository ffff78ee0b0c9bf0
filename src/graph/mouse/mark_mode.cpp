#include "graph/mouse/mark_mode.h"

#include "graph/model/graph.h"
#include "graph/mouse/graph_mouse.h"

#include <QKeyEvent>
#include <QLineF>
#include <QPainter>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kReach = 6;    // pixels from a mark to the mouse that grips it
constexpr double kEndReach = 9; // and from the end of a line
constexpr double kHandle = 3;   // half the side of a square on the selected mark
constexpr double kArm = 5;      // of the cross that is a point mark

bool IsSecond(const TGraphMark& mark) {
    return mark.WhenDrawn == TMarkDrawing::XAndSecondY;
}

QPointF FirstOf(const TPlotMap& map, const TGraphMark& mark) {
    return {map.X.Position(mark.X1), map.YOf(IsSecond(mark)).Position(mark.Y1)};
}

QPointF SecondOf(const TPlotMap& map, const TGraphMark& mark) {
    return {map.X.Position(mark.X2), map.YOf(IsSecond(mark)).Position(mark.Y2)};
}

double Distance(QPointF a, QPointF b) {
    return QLineF(a, b).length();
}

/// From the straight line through two points.
double DistanceFromLine(QPointF a, QPointF b, QPointF place) {
    const QPointF way = b - a;
    const double length = std::hypot(way.x(), way.y());
    if (!(length > 0)) return Distance(a, place);
    const QPointF from = place - a;
    return std::abs(way.x() * from.y() - way.y() * from.x()) / length;
}

/// The straight line through two points from edge to edge of the plot, as marks are drawn.
QLineF AcrossPlot(const QRectF& plot, QPointF a, QPointF b) {
    QLineF line(a, b);
    const double reach = 2 * (plot.width() + plot.height());
    if (line.length() > 0) {
        line.setLength(reach);
        line = QLineF(line.p2(), line.p1());
        line.setLength(2 * reach);
    }
    return line;
}

} // namespace

TMarkMode::TMarkMode(TGraphMouse& mouse, std::shared_ptr<const THandEditing> editing)
    : m_mouse(mouse), m_editing(std::move(editing)), m_zoom(mouse) {
}

std::optional<TMarkMode::TGrip> TMarkMode::GripAt(const TPlotMap& map, QPointF place) const {
    const TxyGraph& graph = m_mouse.Graph();
    std::optional<TGrip> found;
    if (!graph.Appearance()->ShowMarks()) return found;
    for (const auto& [id, mark] : graph.Marks().Marks()) {
        if (mark.WhenDrawn == TMarkDrawing::None) continue;
        const QPointF first = FirstOf(map, mark);
        const QPointF second = SecondOf(map, mark);
        const bool isLine = mark.TypeOfMark == TMarkType::Line;
        double distance = Distance(first, place);
        if (mark.TypeOfMark == TMarkType::VerticalLine) distance = std::abs(first.x() - place.x());
        if (mark.TypeOfMark == TMarkType::HorizontalLine) distance = std::abs(first.y() - place.y());
        if (isLine) distance = DistanceFromLine(first, second, place);
        if (!(distance <= kReach) && !(isLine && Distance(second, place) <= kEndReach)) continue;
        TPart part = TPart::Whole;
        if (isLine && Distance(first, place) <= kEndReach) part = TPart::First;
        if (isLine && Distance(second, place) <= kEndReach) part = TPart::Second;
        found = TGrip{mark, part};
    }
    return found;
}

QCursor TMarkMode::CursorAt(const TPlotMap& map, QPointF place, bool isDragging) const {
    if (m_zooms || !map.Plot.contains(place)) return m_zoom.CursorAt(map, place, isDragging);
    if (isDragging) return Qt::ClosedHandCursor;
    return GripAt(map, place) ? Qt::OpenHandCursor : Qt::CrossCursor;
}

bool TMarkMode::Press(const TPlotMap& map, const TMouseMoment& moment) {
    if (moment.Button != Qt::LeftButton || !map.Plot.contains(moment.Place))
        return m_zooms = m_zoom.Press(map, moment);
    const auto grip = GripAt(map, moment.Place);
    TDragState drag{map, {}, {}, TPart::Whole, moment.Place, {}};
    if (grip) {
        drag.Before = drag.Mark = grip->Mark;
        drag.Part = grip->Part;
        drag.Target = PlaceIn(m_mouse.Graph(), map, moment.Place, IsSecond(grip->Mark), false, nullptr);
    } else {
        drag.Mark.TypeOfMark = m_editing->MarkType;
        drag.Target = PlaceIn(m_mouse.Graph(), map, moment.Place, false, m_editing->Snaps, nullptr);
        drag.Mark.X1 = drag.Mark.X2 = drag.Target.X;
        drag.Mark.Y1 = drag.Mark.Y2 = drag.Target.Y;
        if (m_editing->MarkType == TMarkType::Line) drag.Part = TPart::Second;
        if (m_editing->MarkType == TMarkType::Point) drag.Mark.X2 = drag.Mark.Y2 = 0;
    }
    m_drag = drag;
    m_mouse.AskForPaint();
    return true;
}

void TMarkMode::Move(TDragState& drag, QPointF place) const {
    TGraphMark& mark = drag.Mark;
    const bool second = IsSecond(mark);
    const bool isWholeLine = mark.TypeOfMark == TMarkType::Line && drag.Part == TPart::Whole;
    drag.Target =
        PlaceIn(m_mouse.Graph(), drag.Map, place, second, m_editing->Snaps && !isWholeLine, nullptr);
    if (isWholeLine) {
        const QPointF way = drag.Target.Place - drag.Start;
        TxyGraph& graph = m_mouse.Graph();
        const auto shift = [&](QPointF end, double& x, double& y) {
            x = PointedAt(*graph.XAxis(), drag.Map.X, end.x() + way.x());
            y = PointedAt(second ? *graph.YAxis_Second() : *graph.YAxis(), drag.Map.YOf(second),
                          end.y() + way.y());
        };
        shift(FirstOf(drag.Map, drag.Before), mark.X1, mark.Y1);
        shift(SecondOf(drag.Map, drag.Before), mark.X2, mark.Y2);
    } else if (drag.Part == TPart::Second) {
        mark.X2 = drag.Target.X;
        mark.Y2 = drag.Target.Y;
    } else {
        if (mark.TypeOfMark != TMarkType::HorizontalLine) mark.X1 = drag.Target.X;
        if (mark.TypeOfMark != TMarkType::VerticalLine) mark.Y1 = drag.Target.Y;
    }
}

void TMarkMode::Drag(const TMouseMoment& moment) {
    if (m_zooms) return m_zoom.Drag(moment);
    if (!m_drag) return;
    Move(*m_drag, moment.Place);
    m_mouse.AskForPaint();
}

/// A line needs two ends.
bool TMarkMode::HasLength(const TDragState& drag) const {
    return drag.Mark.TypeOfMark != TMarkType::Line ||
           Distance(FirstOf(drag.Map, drag.Mark), SecondOf(drag.Map, drag.Mark)) > kReach;
}

void TMarkMode::Release(const TMouseMoment& moment) {
    if (std::exchange(m_zooms, false)) return m_zoom.Release(moment);
    const bool isClick = m_drag && Distance(m_drag->Start, moment.Place) < 2;
    if (!isClick) Drag(moment);
    const auto drag = m_drag;
    End();
    if (!drag || !HasLength(*drag)) return;
    TxyGraph& graph = m_mouse.Graph();
    if (drag->Before.ID == 0) {
        return graph.ChangeByUser({"add mark"}, [&] {
            Select(graph.AddMark(drag->Mark));
            graph.Appearance()->SetShowMarks(true);
        });
    }
    const TGraphMark* present = graph.Marks().Find(drag->Before.ID);
    if (present) Select(drag->Before.ID);
    if (!present || !(*present == drag->Before) || drag->Mark == drag->Before) return;
    graph.ChangeByUser({"move mark " + std::to_string(drag->Mark.ID)}, [&] { graph.SetMark(drag->Mark); });
}

/// The Delete key deletes it, and a baseline is read from it.
void TMarkMode::Select(int id) {
    m_selected = id;
    m_mouse.Graph().SelectMark(id);
    m_mouse.AskForPaint();
}

bool TMarkMode::PressKey(const QKeyEvent& event) {
    TxyGraph& graph = m_mouse.Graph();
    const int id = m_selected;
    if (event.key() != Qt::Key_Delete || m_mouse.IsDragging() || !graph.Marks().Find(id)) return false;
    graph.ChangeByUser({"delete mark " + std::to_string(id)}, [&] { graph.DeleteMark(id); });
    return true;
}

/// Squares where the selected mark can be gripped.
void TMarkMode::PaintSelected(QPainter& painter) const {
    const TPlotMap* map = m_mouse.Map();
    const TGraphMark* mark = m_mouse.Graph().Marks().Find(m_selected);
    if (!map || !mark || mark->WhenDrawn == TMarkDrawing::None) return;
    QPointF first = FirstOf(*map, *mark);
    if (mark->TypeOfMark == TMarkType::VerticalLine) first.setY(map->Plot.center().y());
    if (mark->TypeOfMark == TMarkType::HorizontalLine) first.setX(map->Plot.center().x());
    painter.setPen(QPen(m_mouse.Graph().palette().color(QPalette::Highlight), 1));
    painter.setBrush(Qt::white);
    const auto handle = [&](QPointF place) {
        if (map->Plot.contains(place))
            painter.drawRect(QRectF(place - QPointF(kHandle, kHandle), QSizeF(2, 2) * kHandle));
    };
    handle(first);
    if (mark->TypeOfMark == TMarkType::Line) handle(SecondOf(*map, *mark));
    painter.setBrush(Qt::NoBrush);
}

void TMarkMode::Cancel() {
    if (std::exchange(m_zooms, false)) m_zoom.Cancel();
    End();
}

void TMarkMode::End() {
    m_drag.reset();
    m_mouse.AskForPaint();
}

void TMarkMode::Paint(QPainter& painter) const {
    if (m_zooms) return m_zoom.Paint(painter);
    if (!m_drag) return PaintSelected(painter);
    const TGraphMark& mark = m_drag->Mark;
    const QRectF& plot = m_drag->Map.Plot;
    const QPointF first = FirstOf(m_drag->Map, mark);
    painter.save();
    painter.setClipRect(plot);
    painter.setPen(QPen(m_mouse.Graph().palette().color(QPalette::Highlight), 1.5, Qt::DashLine));
    switch (mark.TypeOfMark) {
    case TMarkType::VerticalLine:
        painter.drawLine(QLineF(first.x(), plot.top(), first.x(), plot.bottom()));
        break;
    case TMarkType::HorizontalLine:
        painter.drawLine(QLineF(plot.left(), first.y(), plot.right(), first.y()));
        break;
    case TMarkType::Point:
        painter.drawLine(first - QPointF(kArm, 0), first + QPointF(kArm, 0));
        painter.drawLine(first - QPointF(0, kArm), first + QPointF(0, kArm));
        break;
    case TMarkType::Line: painter.drawLine(AcrossPlot(plot, first, SecondOf(m_drag->Map, mark))); break;
    }
    painter.restore();
    PaintDragLabel(painter, m_mouse.Graph(), m_drag->Map, m_drag->Target.Place,
                   PlaceText(m_mouse.Graph(), m_drag->Map, m_drag->Target, IsSecond(mark)));
}

} // namespace lumoplot
