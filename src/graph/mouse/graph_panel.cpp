// The graph as a widget: what it is made of, how it paints itself and what the mouse does on it.
#include "graph/fitting/fit_schedule.h"
#include "graph/model/child_graph.h"
#include "graph/model/graph.h"
#include "graph/model/holder.h"
#include "graph/mouse/drawing_hook.h"
#include "graph/mouse/graph_mouse.h"
#include "graph/plotted/graph_scaling.h"

#include <QEvent>
#include <QPainter>
#include <algorithm>
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
    : TReSizablePanel(parent), m_scaling(std::make_unique<TGraphScaling>(*this)),
      m_fits(std::make_unique<TFitSchedule>(*this)), m_dimensions(std::make_unique<TDimensions>(*this)),
      m_appearance(std::make_unique<TAppearance>(*this)),
      m_xAxis(std::make_unique<TAxis>(*this, TAxisRole::X)),
      m_yAxis(std::make_unique<TAxis>(*this, TAxisRole::Y)),
      m_yAxisSecond(std::make_unique<TAxis>(*this, TAxisRole::SecondY)),
      m_legend(std::make_unique<TLegend>(*this)), m_holder(std::make_unique<TxyHolder>()) {
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

void TxyGraph::NeedRescale() {
    m_scaling->SetStale();
}

bool TxyGraph::ScaleFailed() const {
    return m_scaling->HasFailed();
}

void TxyGraph::SetPlottedPointLimit(int value) {
    m_scaling->SetPlottedPointLimit(std::max(1, value));
    RequestRepaint(true);
}

void TxyGraph::PrepareForDrawing() {
    UpdateForDrawing();
    if (m_fits->RunPending()) UpdateForDrawing();
}

void TxyGraph::UpdateForDrawing() {
    const bool stale =
        std::ranges::any_of(m_series, [](const auto& series) { return series->ExtentsStale(); });
    if (m_scaling->IsStale() || m_repaintRequested || stale) m_scaling->Rescale();
    for (const auto& series : m_series) {
        if (!series->Active()) continue;
        if (!series->WaitsForEveryRow() && !HasLongRegression(*series)) series->UpdateRegression();
        series->UpdateFittedCurve(m_xAxis->LogScale());
    }
}

bool TxyGraph::HasContent() const {
    return m_marks.Count() > 0 || std::ranges::any_of(m_series, [](const auto& s) { return s->Count() > 0; });
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
    const bool isStale = m_repaintRequested || m_scaling->IsStale() || m_picture.isNull();
    UpdateForDrawing();
    m_fits->RunPendingSoon();
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
