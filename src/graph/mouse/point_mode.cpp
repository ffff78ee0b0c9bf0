#include "graph/mouse/point_mode.h"

#include "data/series/ds_info.h"
#include "graph/model/graph.h"
#include "graph/mouse/graph_mouse.h"
#include "graph/plotted/paired_points.h"
#include "support/update_hold.h"

#include <QKeyEvent>
#include <QPainter>
#include <cmath>
#include <vector>

namespace lumoplot {
namespace {

constexpr double kClickReach = 3; // pixels that a press may wander without being a move
constexpr double kPointArm = 6;   // of the cross over a point that goes
constexpr double kHandleArm = 2.5;
constexpr std::size_t kMostHandles = 2000;

double RawY(const TSeries& series, const TPlotMap& map, const TPlotPlace& target) {
    const double baseline = series.ZeroValue() + series.BaseLineSlope() * target.X;
    if (baseline == 0) return target.Y;
    const double raw = target.Y + baseline;
    return RoundedToPixel(*series.YAxisOfSeries(), map.YOf(series), target.Place.y(), raw);
}

} // namespace

TPointMode::TPointMode(TGraphMouse& mouse, TPointAction action, std::shared_ptr<const THandEditing> editing)
    : m_mouse(mouse), m_action(action), m_editing(std::move(editing)), m_zoom(mouse) {
}

TSeries* TPointMode::Current() const {
    TxyGraph& graph = m_mouse.Graph();
    return graph.FindSeries(graph.Appearance()->CurrSerIndex());
}

bool TPointMode::CanEdit(const TSeries& series) const {
    return series.Active() && !XSeriesOf(series);
}

/// A data set that has only now become one that can be edited may have other points, so this press is over.
bool TPointMode::IsReady(TSeries& series) const {
    const std::uint64_t before = series.DataStamp();
    const TSourceKind kind = series.DataSourceInfo().Kind();
    return m_editing->MayEdit(series) && series.DataStamp() == before &&
           series.DataSourceInfo().Kind() == kind;
}

QCursor TPointMode::CursorAt(const TPlotMap& map, QPointF place, bool isDragging) const {
    if (m_zooms || !map.Plot.contains(place)) return m_zoom.CursorAt(map, place, isDragging);
    TSeries* series = Current();
    if (!series || !CanEdit(*series)) return Qt::ForbiddenCursor;
    if (m_action == TPointAction::Add) return Qt::CrossCursor;
    if (isDragging) return m_action == TPointAction::Move ? Qt::ClosedHandCursor : Qt::PointingHandCursor;
    const bool isNear = NearestPointOf(*series, map, place, TGraphMouse::kReach).has_value();
    if (!isNear) return Qt::ArrowCursor;
    return m_action == TPointAction::Move ? Qt::OpenHandCursor : Qt::PointingHandCursor;
}

bool TPointMode::Press(const TPlotMap& map, const TMouseMoment& moment) {
    if (moment.Button != Qt::LeftButton || !map.Plot.contains(moment.Place))
        return m_zooms = m_zoom.Press(map, moment);
    TSeries* series = Current();
    if (!series || !CanEdit(*series)) return false;
    TDragState drag{map, series->SeriesIndex(), {}, moment.Place, {}, {}, false};
    if (m_action != TPointAction::Add) {
        const auto hit = NearestPointOf(*series, map, moment.Place, TGraphMouse::kReach);
        if (!hit) return false;
        drag.Point = *series->GetPoint(hit->Id);
        drag.Start = hit->Place;
        drag.Grip = hit->Place - moment.Place;
        drag.Target = {hit->Place, hit->X, hit->Y};
    }
    if (!IsReady(*series)) return false;
    if (m_action == TPointAction::Add) drag.Target = TargetOf(drag, moment);
    m_drag = drag;
    m_mouse.AskForPaint();
    return true;
}

TPlotPlace TPointMode::TargetOf(const TDragState& drag, const TMouseMoment& moment) const {
    const TSeries* series = m_mouse.Graph().FindSeries(drag.Number);
    const bool second = series && series->IsOnSecondY();
    QPointF place = moment.Place + drag.Grip;
    if (!drag.KeepsX) return PlaceIn(m_mouse.Graph(), drag.Map, place, second, m_editing->Snaps, series);
    place.setX(drag.Start.x());
    TPlotPlace target = PlaceIn(m_mouse.Graph(), drag.Map, place, second, false, nullptr);
    target.X = drag.Point.X;
    return target;
}

void TPointMode::Drag(const TMouseMoment& moment) {
    if (m_zooms) return m_zoom.Drag(moment);
    if (!m_drag || m_action == TPointAction::Delete) return;
    m_drag->KeepsX = m_action == TPointAction::Move && moment.Modifiers.testFlag(Qt::ShiftModifier);
    m_drag->Target = TargetOf(*m_drag, moment);
    m_mouse.AskForPaint();
}

// What the press was about may have gone while the button was down.
void TPointMode::Release(const TMouseMoment& moment) {
    if (std::exchange(m_zooms, false)) return m_zoom.Release(moment);
    Drag(moment);
    const auto drag = m_drag;
    End();
    if (!drag) return;
    TSeries* series = m_mouse.Graph().FindSeries(drag->Number);
    if (!series) return;
    if (m_action == TPointAction::Add) {
        return Change("add point to ", *series,
                      [&] { series->AddPoint(drag->Target.X, RawY(*series, drag->Map, drag->Target)); });
    }
    const auto point = series->GetPoint(drag->Point.Id);
    if (!point || point->X != drag->Point.X) return;
    if (m_action == TPointAction::Move) return Carry(*series, *drag);
    const QPointF way = moment.Place + drag->Grip - drag->Start;
    if (std::hypot(way.x(), way.y()) <= TGraphMouse::kReach) DeletePoint(*series, point->Id);
}

/// Sets the point's Y, or where its X changes takes it out and adds it anew.
void TPointMode::Carry(TSeries& series, const TDragState& drag) const {
    const QPointF way = drag.Target.Place - drag.Start;
    if (std::max(std::abs(way.x()), std::abs(way.y())) < kClickReach) return;
    const double y = RawY(series, drag.Map, drag.Target);
    Change("move point of ", series, [&] {
        const TUpdateHold hold(series);
        if (drag.Target.X == drag.Point.X) {
            series.SetPointY(drag.Point.Id, y);
        } else {
            series.DeletePoint(drag.Point.Id);
            series.AddPoint(drag.Target.X, y);
        }
    });
}

void TPointMode::DeletePoint(TSeries& series, std::int32_t id) const {
    Change("delete point of ", series, [&] { series.DeletePoint(id); });
}

void TPointMode::Change(const char* what, const TSeries& series, const std::function<void()>& action) const {
    m_mouse.Graph().ChangeByUser({what + series.SeriesName()}, action);
}

void TPointMode::Cancel() {
    if (std::exchange(m_zooms, false)) m_zoom.Cancel();
    End();
}

void TPointMode::End() {
    m_drag.reset();
    m_mouse.AskForPaint();
}

bool TPointMode::PressKey(const QKeyEvent& event) {
    TSeries* series = Current();
    const auto& hit = m_mouse.NearPoint();
    if (event.key() != Qt::Key_Delete || m_mouse.IsDragging() || !hit || hit->Series != series) return false;
    if (const std::int32_t id = hit->Id; CanEdit(*series) && IsReady(*series)) DeletePoint(*series, id);
    return true;
}

/// What can be gripped is seen also where only the line is drawn, unless there are so many that they hide it.
void TPointMode::PaintHandles(QPainter& painter) const {
    const TSeries* series = Current();
    const TPlotMap* map = m_mouse.Map();
    if (m_action == TPointAction::Add || !map || !series || series->PointsShown() || !CanEdit(*series))
        return;
    std::vector<QPointF> places;
    TDrawnPoints(*series).ForEachRun([&](const TDrawnRun& run) {
        for (std::size_t i = 0; i < run.X.size() && places.size() <= kMostHandles; ++i) {
            const QPointF place(map->X.Position(run.X[i]), map->YOf(*series).Position(run.Y[i]));
            if (map->Plot.contains(place)) places.push_back(place);
        }
    });
    if (places.size() > kMostHandles) return;
    painter.setPen(QPen(m_mouse.Graph().palette().color(QPalette::Highlight), 1));
    painter.setBrush(Qt::white);
    for (const QPointF& place : places)
        painter.drawRect(QRectF(place - QPointF(kHandleArm, kHandleArm), QSizeF(2, 2) * kHandleArm));
    painter.setBrush(Qt::NoBrush);
}

void TPointMode::Paint(QPainter& painter) const {
    if (m_zooms) return m_zoom.Paint(painter);
    PaintHandles(painter);
    if (!m_drag) return;
    const TxyGraph& graph = m_mouse.Graph();
    const TSeries* series = graph.FindSeries(m_drag->Number);
    const bool second = series && series->IsOnSecondY();
    const QPointF& start = m_drag->Start;
    if (m_action == TPointAction::Delete) {
        painter.setPen(QPen(QColor(229, 57, 53), 2));
        painter.drawLine(start + QPointF(-kPointArm, -kPointArm), start + QPointF(kPointArm, kPointArm));
        painter.drawLine(start + QPointF(-kPointArm, kPointArm), start + QPointF(kPointArm, -kPointArm));
    }
    if (m_action == TPointAction::Move) {
        painter.setPen(QPen(graph.palette().color(QPalette::Highlight), 1, Qt::DotLine));
        painter.drawLine(start, m_drag->Target.Place);
    }
    PaintDragLabel(painter, graph, m_drag->Map, m_drag->Target.Place,
                   PlaceText(graph, m_drag->Map, m_drag->Target, second));
}

} // namespace lumoplot
