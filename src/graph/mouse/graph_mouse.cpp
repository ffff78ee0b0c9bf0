#include "graph/mouse/graph_mouse.h"

#include "graph/model/child_graph.h"
#include "graph/model/graph.h"
#include "graph/mouse/coords_panel.h"
#include "graph/mouse/graph_access.h"
#include "graph/mouse/point_tip.h"
#include "graph/mouse/zoom_mode.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>
#include <cmath>
#include <utility>

namespace lumoplot {
namespace {

constexpr double kWheelStep = 1.2;    // magnification by one notch of a wheel
constexpr double kNotch = 120;        // eighths of a degree
constexpr std::uint64_t kPause = 500; // ms, after which turning the wheel or pressing keys is another step
constexpr double kKeyStep = 1.4;
constexpr double kKeyMove = 0.1; // of the plot
constexpr double kRing = 6;      // radius of the ring around the nearest point

} // namespace

TGraphMouse::TGraphMouse(TxyGraph& graph)
    : m_graph(graph), m_zoom(graph), m_mode(std::make_unique<TZoomMode>(*this)),
      m_coords(new TCoordsPanel(graph)) {
    graph.setMouseTracking(true);
    graph.setFocusPolicy(Qt::StrongFocus);
    graph.installEventFilter(this);
}

TGraphMouse::~TGraphMouse() = default;

TCoordsPanel* TGraphMouse::CoordsPanel() const {
    return m_coords;
}

// The picture has changed below the mouse, so what was near may be no more.
void TGraphMouse::SetMap(std::optional<TPlotMap> map) {
    m_map = std::move(map);
    if (std::exchange(m_near, std::nullopt)) QToolTip::hideText();
    if (!m_map) CancelDrag();
}

void TGraphMouse::SetMode(std::unique_ptr<TMouseMode> mode) {
    CancelDrag();
    m_mode = mode ? std::move(mode) : std::make_unique<TZoomMode>(*this);
    AskForPaint();
}

void TGraphMouse::AskForPaint() {
    m_graph.update();
}

void TGraphMouse::Paint(QPainter& painter) const {
    painter.setRenderHint(QPainter::Antialiasing, false);
    m_mode->Paint(painter);
    if (m_showsFocus) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(m_graph.palette().color(QPalette::Highlight), 2));
        painter.drawRect(m_graph.rect().adjusted(1, 1, -1, -1));
    }
    if (!m_near) return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    // Light below dark: seen on any colour.
    for (const auto& [color, width] : {std::pair(Qt::white, 4.0), {Qt::black, 1.5}}) {
        painter.setPen(QPen(color, width));
        painter.drawEllipse(m_near->Place, kRing, kRing);
    }
}

bool TGraphMouse::eventFilter(QObject* watched, QEvent* event) {
    return (watched == &m_graph && Handle(*event)) || QObject::eventFilter(watched, event);
}

bool TGraphMouse::Handle(QEvent& event) {
    switch (event.type()) {
    case QEvent::MouseButtonPress: return Press(static_cast<QMouseEvent&>(event));
    case QEvent::MouseMove: return Move(static_cast<QMouseEvent&>(event));
    case QEvent::MouseButtonRelease: return Release(static_cast<QMouseEvent&>(event));
    case QEvent::MouseButtonDblClick: return DoubleClick(static_cast<QMouseEvent&>(event));
    case QEvent::Wheel: return Wheel(static_cast<QWheelEvent&>(event));
    case QEvent::KeyPress: return Key(static_cast<QKeyEvent&>(event));
    case QEvent::ContextMenu: return ShowMenu(static_cast<QContextMenuEvent&>(event));
    case QEvent::Leave:
    case QEvent::Hide: Leave(); break;
    case QEvent::FocusIn: TakeFocus(static_cast<QFocusEvent&>(event).reason()); break;
    case QEvent::FocusOut: TakeFocus(Qt::OtherFocusReason); [[fallthrough]];
    case QEvent::WindowDeactivate: CancelDrag(); break;
    default: break;
    }
    return false;
}

bool TGraphMouse::Press(const QMouseEvent& event) {
    if (m_isDragging) return false;
    const bool places =
        m_placing && event.button() == Qt::LeftButton && m_placing->Press(Map(), event.position());
    m_isDragging =
        places || (Map() && m_mode->Press(*Map(), {event.position(), event.button(), event.modifiers()}));
    m_dragButton = event.button();
    if (m_isDragging) SetNear(std::nullopt);
    ShowCursor(event.position());
    return m_isDragging;
}

bool TGraphMouse::Move(const QMouseEvent& event) {
    if (IsPlacing())
        m_placing->Drag(event.position());
    else if (m_isDragging)
        m_mode->Drag({event.position(), m_dragButton, event.modifiers()});
    Hover(event.position());
    return m_isDragging;
}

bool TGraphMouse::Release(const QMouseEvent& event) {
    if (!m_isDragging || event.button() != m_dragButton) return false;
    m_isDragging = false;
    if (IsPlacing()) {
        if (m_placing->Release()) Q_EMIT m_graph.OnUserChange();
        return true;
    }
    m_mode->Release({event.position(), event.button(), event.modifiers()});
    ShowCursor(event.position());
    return true;
}

bool TGraphMouse::DoubleClick(const QMouseEvent& event) {
    if (event.button() != Qt::LeftButton) return false;
    CancelDrag();
    const TGraphPart part = Map() ? Map()->PartAt(event.position()) : TGraphPart::None;
    if (part == TGraphPart::Plot)
        m_zoom.ShowAll();
    else
        AskForSettings(part);
    return true;
}

void TGraphMouse::AskForSettings(TGraphPart part) {
    m_wantedPart = part;
    Q_EMIT m_graph.OnWantDesigner();
    m_wantedPart = TGraphPart::None;
}

void TGraphMouse::BeginStep(TStepBy by, std::uint64_t now) {
    if (by != m_stepBy || now - m_lastStep > kPause) m_zoom.EndGesture();
    m_stepBy = by;
    m_lastStep = now;
}

bool TGraphMouse::Wheel(const QWheelEvent& event) {
    const auto axes = Map() ? AxesAt(*Map(), event.position()) : std::nullopt;
    if (!axes || m_isDragging || event.angleDelta().y() == 0) return false;
    BeginStep(TStepBy::Wheel, event.timestamp());
    m_zoom.Magnify(*Map(), event.position(), std::pow(kWheelStep, event.angleDelta().y() / kNotch), *axes);
    return true;
}

void TGraphMouse::Leave() {
    if (m_isDragging) return;
    SetNear(std::nullopt);
    m_mode->Hover(nullptr, {});
    if (m_coords) m_coords->Clear();
}

void TGraphMouse::CancelDrag() {
    if (!m_isDragging) return;
    m_isDragging = false;
    if (IsPlacing())
        m_placing->Cancel();
    else
        m_mode->Cancel();
    m_graph.unsetCursor();
}

void TGraphMouse::TakeFocus(Qt::FocusReason reason) {
    const bool byKeys = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
    if (std::exchange(m_showsFocus, byKeys) != byKeys) AskForPaint();
}

void TGraphMouse::Hover(QPointF place) {
    ShowCursor(place);
    if (!Map()) return Leave();
    if (m_coords && Map()->Plot.contains(place))
        m_coords->ShowPlace(*Map(), place);
    else if (m_coords)
        m_coords->Clear();
    if (m_isDragging) return;
    m_mode->Hover(Map(), place);
    m_isWalking = false;
    SetNear(NearestPoint(m_graph, *Map(), place, kReach));
}

void TGraphMouse::SetNear(const std::optional<TPointHit>& hit) {
    const bool isSame = hit.has_value() == m_near.has_value() &&
                        (!hit || (hit->Series == m_near->Series && hit->Id == m_near->Id));
    if (isSame) return;
    m_near = hit;
    if (hit)
        ShowTip(*hit);
    else
        QToolTip::hideText();
    TellNearPoint(m_graph);
    AskForPaint();
}

void TGraphMouse::ShowTip(const TPointHit& hit) const {
    const QPoint corner = hit.Place.toPoint() + QPoint(static_cast<int>(kRing), 0);
    QToolTip::showText(m_graph.mapToGlobal(corner), PointTip(hit), &m_graph);
}

void TGraphMouse::ShowCursor(QPointF place) {
    const auto placing = m_placing ? m_placing->CursorAt(Map(), place) : std::nullopt;
    if (placing && (IsPlacing() || !m_isDragging))
        m_graph.setCursor(*placing);
    else if (Map())
        m_graph.setCursor(m_mode->CursorAt(*Map(), place, m_isDragging));
    else
        m_graph.unsetCursor();
}

bool TGraphMouse::Key(const QKeyEvent& event) {
    if (event.key() == Qt::Key_Escape && m_isDragging) {
        CancelDrag();
        return true;
    }
    if (!Map()) return false;
    if (!m_isDragging) BeginStep(TStepBy::Key, event.timestamp());
    if (m_mode->PressKey(event)) return true;
    return !m_isDragging && (WalkPoints(event) || MoveByKey(event) || ZoomByKey(event));
}

bool TGraphMouse::ZoomByKey(const QKeyEvent& event) {
    const QPointF middle = Map()->Plot.center();
    switch (event.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal: m_zoom.Magnify(*Map(), middle, kKeyStep); return true;
    case Qt::Key_Minus: m_zoom.Magnify(*Map(), middle, 1 / kKeyStep); return true;
    case Qt::Key_Home: m_zoom.ShowAll(); return true;
    case Qt::Key_Backspace: m_zoom.GoBack(); return true;
    default: return false;
    }
}

// The arrows say where to look: the picture goes the other way.
bool TGraphMouse::MoveByKey(const QKeyEvent& event) {
    const QRectF& plot = Map()->Plot;
    switch (event.key()) {
    case Qt::Key_Left: m_zoom.Move(*Map(), {plot.width() * kKeyMove, 0}, TZoomAxes::X); return true;
    case Qt::Key_Right: m_zoom.Move(*Map(), {-plot.width() * kKeyMove, 0}, TZoomAxes::X); return true;
    case Qt::Key_Up: m_zoom.Move(*Map(), {0, plot.height() * kKeyMove}, TZoomAxes::BothY); return true;
    case Qt::Key_Down: m_zoom.Move(*Map(), {0, -plot.height() * kKeyMove}, TZoomAxes::BothY); return true;
    default: return false;
    }
}

bool TGraphMouse::WalkPoints(const QKeyEvent& event) {
    m_isWalking = m_near && m_isWalking;
    if (m_isWalking && event.key() == Qt::Key_Escape) {
        SetNear(std::nullopt);
        return true;
    }
    if (!m_isWalking && !event.modifiers().testFlag(Qt::ControlModifier)) return false;
    const auto step = PointStepOf(event.key());
    if (!step) return false;
    if (const auto hit = NextPoint(m_graph, *Map(), m_near, *step)) SetNear(hit);
    m_isWalking = m_near.has_value();
    return true;
}

bool TGraphMouse::ShowMenu(const QContextMenuEvent& event) {
    if (!Map() || m_isDragging) return false;
    SetNear(std::nullopt);
    const QPoint place =
        event.reason() == QContextMenuEvent::Mouse ? event.pos() : Map()->Plot.center().toPoint();
    QMenu menu(&m_graph);
    QAction* all = menu.addAction(tr("Show &All"), this, [this] { m_zoom.ShowAll(); });
    all->setShortcut(Qt::Key_Home);
    QAction* back = menu.addAction(tr("Zoom &Back"), this, [this] { m_zoom.GoBack(); });
    back->setShortcut(Qt::Key_Backspace);
    back->setEnabled(m_zoom.CanGoBack());
    if (m_graph.HasDesigner()) {
        menu.addSeparator();
        menu.addAction(tr("&Graph Settings…"), this,
                       [this, part = Map()->PartAt(place)] { AskForSettings(part); });
    }
    Q_EMIT MenuRequested(&menu, place);
    menu.exec(m_graph.mapToGlobal(place));
    return true;
}

} // namespace lumoplot
