#include "graph/mouse/zoom_mode.h"

#include "graph/model/graph.h"
#include "graph/mouse/graph_mouse.h"

#include <QPainter>
#include <QPalette>
#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kZoomClickReach = 4; // pixels that a click on the legend may wander
constexpr double kFlatBand = 8;       // pixels; a band lower than this has no height

QPointF InsideOf(const QRectF& r, QPointF p) {
    return {std::clamp(p.x(), r.left(), r.right()), std::clamp(p.y(), r.top(), r.bottom())};
}

} // namespace

std::optional<TZoomAxes> AxesAt(const TPlotMap& map, QPointF place) {
    if (map.Plot.contains(place)) return TZoomAxes::All;
    constexpr std::array kAxes = {TZoomAxes::X, TZoomAxes::Y, TZoomAxes::SecondY};
    for (std::size_t i = 0; i < kAxes.size(); ++i)
        if (map.AxisPlaces[i].contains(place)) return kAxes[i];
    return std::nullopt;
}

QCursor TZoomMode::CursorAt(const TPlotMap& map, QPointF place, bool isDragging) const {
    if (isDragging) return m_drag && m_drag->Kind == TKind::Band ? Qt::CrossCursor : Qt::ClosedHandCursor;
    if (map.LegendPlace.contains(place)) return Qt::OpenHandCursor;
    const auto axes = AxesAt(map, place);
    if (!axes) return Qt::ArrowCursor;
    if (*axes == TZoomAxes::All) return Qt::CrossCursor;
    return *axes == TZoomAxes::X ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

bool TZoomMode::Press(const TPlotMap& map, const TMouseMoment& moment) {
    const bool isLeft = moment.Button == Qt::LeftButton;
    if (isLeft && moment.Modifiers == Qt::NoModifier && map.LegendPlace.contains(moment.Place)) {
        m_drag = TDragState{map, TKind::Legend, TZoomAxes::All, moment.Place, moment.Place};
        return true;
    }
    const auto axes = AxesAt(map, moment.Place);
    if (!axes || (!isLeft && moment.Button != Qt::MiddleButton)) return false;
    const bool moves = !isLeft || *axes != TZoomAxes::All || moment.Modifiers.testFlag(Qt::ShiftModifier);
    m_drag = TDragState{map, moves ? TKind::Move : TKind::Band, *axes, moment.Place, moment.Place};
    m_mouse.Zoom().EndGesture();
    return true;
}

void TZoomMode::Drag(const TMouseMoment& moment) {
    if (!m_drag) return;
    m_drag->Place = moment.Place;
    if (m_drag->Kind == TKind::Move)
        m_mouse.Zoom().Move(m_drag->Map, m_drag->Place - m_drag->Start, m_drag->Axes);
    else
        m_mouse.AskForPaint();
}

void TZoomMode::Release(const TMouseMoment& moment) {
    if (!m_drag) return;
    m_drag->Place = moment.Place;
    if (m_drag->Kind == TKind::Legend && !IsClick()) PlaceLegend();
    if (m_drag->Kind == TKind::Band && !IsClick()) m_mouse.Zoom().ShowPart(m_drag->Map, Band(), BandAxes());
    End();
}

void TZoomMode::Cancel() {
    m_mouse.Zoom().CancelGesture();
    End();
}

void TZoomMode::End() {
    m_drag.reset();
    m_mouse.Zoom().EndGesture();
    m_mouse.AskForPaint();
}

bool TZoomMode::IsClick() const {
    const QPointF way = m_drag->Place - m_drag->Start;
    const double reach = m_drag->Kind == TKind::Band ? kFlatBand : kZoomClickReach;
    return std::max(std::abs(way.x()), std::abs(way.y())) < reach;
}

TZoomAxes TZoomMode::BandAxes() const {
    const QPointF way = m_drag->Place - m_drag->Start;
    if (std::abs(way.y()) < kFlatBand && std::abs(way.x()) >= kFlatBand) return TZoomAxes::X;
    if (std::abs(way.x()) < kFlatBand && std::abs(way.y()) >= kFlatBand) return TZoomAxes::BothY;
    return TZoomAxes::All;
}

QRectF TZoomMode::Band() const {
    const QRectF& plot = m_drag->Map.Plot;
    QRectF band = QRectF(m_drag->Start, InsideOf(plot, m_drag->Place)).normalized();
    const TZoomAxes axes = BandAxes();
    if (axes == TZoomAxes::X) band = {band.left(), plot.top(), band.width(), plot.height()};
    if (axes == TZoomAxes::BothY) band = {plot.left(), band.top(), plot.width(), band.height()};
    return band;
}

QRectF TZoomMode::LegendPlace() const {
    QRectF place = m_drag->Map.LegendPlace.translated(m_drag->Place - m_drag->Start);
    const QRectF room = m_mouse.Graph().rect();
    const auto inside = [](double start, double length, double all) {
        return std::clamp(start, 0.0, std::max(0.0, all - length));
    };
    place.moveTo(inside(place.left(), place.width(), room.width()),
                 inside(place.top(), place.height(), room.height()));
    return place;
}

// It keeps the size that it had: without a width of its own, another place would break its rows elsewhere.
void TZoomMode::PlaceLegend() const {
    const QRectF place = LegendPlace();
    TxyGraph& graph = m_mouse.Graph();
    graph.ChangeByUser({"move legend"}, [&] {
        TLegend& legend = *graph.Legend();
        if (legend.AutoPlace()) {
            legend.Setwidth(static_cast<int>(std::ceil(place.width())));
            legend.Setheight(static_cast<int>(std::ceil(place.height())));
        }
        legend.SetAutoPlace(false);
        legend.Setleft(static_cast<int>(std::lround(place.left())));
        legend.Settop(static_cast<int>(std::lround(place.top())));
    });
    Q_EMIT graph.OnUserChange();
}

void TZoomMode::Paint(QPainter& painter) const {
    if (!m_drag || m_drag->Kind == TKind::Move || IsClick()) return;
    const QColor color = m_mouse.Graph().palette().color(QPalette::Highlight);
    QColor tint = color;
    tint.setAlpha(40);
    painter.setPen(QPen(color, 1));
    painter.setBrush(tint);
    const QRect band = (m_drag->Kind == TKind::Legend ? LegendPlace() : Band()).toRect();
    painter.drawRect(band.adjusted(0, 0, -1, -1));
}

} // namespace lumoplot
