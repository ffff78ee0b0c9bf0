// The graph as a widget: what it is made of, how it paints itself and what the mouse does on it.
#include "graph/model/child_graph.h"
#include "graph/model/graph.h"
#include "graph/model/holder.h"
#include "graph/mouse/drawing_hook.h"
#include "graph/mouse/graph_mouse.h"
#include "graph/plotted/drawn_extent.h"

#include <QEvent>
#include <QPainter>
#include <cmath>
#include <utility>

namespace lumoplot {
namespace {

TDrawPanel g_drawPanel = nullptr;

constexpr double kLargestPicture = 5e7; // pixels; a larger one is drawn anew for each paint event

} // namespace

void InstallDrawing(TDrawPanel draw) {
    g_drawPanel = draw;
}

TxyGraph::TxyGraph(QWidget* parent)
    : TReSizablePanel(parent), m_dimensions(std::make_unique<TDimensions>(*this)),
      m_appearance(std::make_unique<TAppearance>(*this)),
      m_xAxis(std::make_unique<TAxis>(*this, TAxisRole::X)),
      m_yAxis(std::make_unique<TAxis>(*this, TAxisRole::Y)),
      m_yAxisSecond(std::make_unique<TAxis>(*this, TAxisRole::SecondY)),
      m_legend(std::make_unique<TLegend>(*this)), m_holder(std::make_unique<TxyHolder>()),
      m_extents(std::make_unique<TDrawnExtents>()) {
    resize(200, 200);
    setAttribute(Qt::WA_OpaquePaintEvent);
    ResetToDefaults();
    m_mouse = std::make_unique<TGraphMouse>(*this);
}

// Data sets tell their listeners that they go, so they go while the rest of the graph still stands.
TxyGraph::~TxyGraph() {
    BeginUpdate();
    std::exchange(m_series, {}).clear();
    m_children.clear();
}

void TxyGraph::ForgetZoomHistory() {
    if (m_mouse) m_mouse->Zoom().ForgetHistory();
}

void TxyGraph::DrawPicture(QPainter& painter) {
    if (g_drawPanel) m_mouse->SetMap(g_drawPanel(painter, *this, rect()));
    Q_EMIT OnPaintEnd(&painter);
}

void TxyGraph::RenewPicture(double pixelRatio) {
    m_picture = QImage(QSize(static_cast<int>(std::ceil(width() * pixelRatio)),
                             static_cast<int>(std::ceil(height() * pixelRatio))),
                       QImage::Format_RGB32);
    m_picture.setDevicePixelRatio(pixelRatio);
    if (m_picture.isNull()) return;
    QPainter painter(&m_picture);
    painter.setFont(font());
    DrawPicture(painter);
}

// What the mouse shows over the picture needs no new one.
void TxyGraph::paintEvent(QPaintEvent*) {
    const bool isStale = m_repaintRequested || m_needsRescale || m_picture.isNull();
    UpdateForDrawing();
    SchedulePendingFits();
    RequestRepaint(false);
    QPainter painter(this);
    const QTransform device = painter.deviceTransform();
    const double ratio = devicePixelRatioF();
    const bool isScreen =
        device.type() <= QTransform::TxScale && device.m11() == ratio && device.m22() == ratio;
    const bool fits = isScreen && width() * ratio * height() * ratio <= kLargestPicture;
    if (fits && (isStale || m_picture.devicePixelRatio() != ratio)) RenewPicture(ratio);
    if (fits && !m_picture.isNull())
        painter.drawImage(QPointF(), m_picture);
    else
        DrawPicture(painter);
    m_mouse->Paint(painter);
}

void TxyGraph::resizeEvent(QResizeEvent* event) {
    TReSizablePanel::resizeEvent(event);
    m_picture = {};
    for (const auto& child : m_children) child->FollowParent();
}

void TxyGraph::changeEvent(QEvent* event) {
    TReSizablePanel::changeEvent(event);
    m_picture = {};
}

TxyChildGr::TxyChildGr(TxyGraph& parentGraph) : TxyGraph(&parentGraph), m_parentGraph(&parentGraph) {
    Mouse().SetPlacedIn(*this);
}

} // namespace lumoplot
