#include "graph/graph.h"

#include "graph/child_graph.h"
#include "graph/drawing_hook.h"
#include "graph/graph_mouse.h"
#include "graph/holder.h"
#include "support/errors.h"

#include <QEvent>
#include <QMetaMethod>
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

void TGraphSettings::Redraw() {
    m_graph.RequestRepaint(true);
}

TxyGraph::TxyGraph(QWidget* parent)
    : TReSizablePanel(parent), m_dimensions(std::make_unique<TDimensions>(*this)),
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
    m_updating = true;
    std::exchange(m_series, {}).clear();
    m_children.clear();
}

void TxyGraph::SetHolderID(const std::string& id) {
    m_holder->SetID(id);
}

void TxyGraph::SetPointBudget(int value) {
    m_pointBudget = std::max(1, value);
}

void TxyGraph::ResetToDefaults() {
    m_appearance->SetCurrSerIndex(m_highestNumber);
    m_marks.Select(0);
    m_xAxis->ResetToDefaults();
    m_yAxis->ResetToDefaults();
    m_yAxisSecond->ResetToDefaults();
    m_dimensions->ResetToDefaults();
    m_appearance->ResetToDefaults();
    m_legend->ResetToDefaults();
    if (m_mouse) m_mouse->Zoom().ForgetHistory();
    NeedRescale();
}

void TxyGraph::SetMark(const TGraphMark& mark) {
    m_marks.Set(mark);
    RequestFullRepaint();
}

int TxyGraph::AddMark(const TGraphMark& mark) {
    const int id = m_marks.Add(mark);
    RequestFullRepaint();
    return id;
}

bool TxyGraph::DeleteMark(int id) {
    const bool deleted = m_marks.Delete(id);
    if (deleted) RequestFullRepaint();
    return deleted;
}

void TxyGraph::ClearMarks() {
    m_marks.Clear();
    RequestFullRepaint();
}

TxyChildGr* TxyGraph::AddChildGraph() {
    m_children.push_back(std::make_unique<TxyChildGr>(*this));
    TxyChildGr* child = m_children.back().get();
    child->FollowParent();
    if (isVisible()) child->show();
    return child;
}

void TxyGraph::ClearChildGraphs() {
    m_children.clear();
    RequestFullRepaint();
}

void TxyGraph::RequestRepaint(bool repaint) {
    if (repaint == m_repaintRequested) return;
    m_repaintRequested = repaint;
    if (repaint && !m_updating) update();
}

void TxyGraph::RequestFullRepaint() {
    RequestRepaint(true);
}

void TxyGraph::EndUpdate() {
    if (m_repaintRequested) update();
    m_updating = false;
}

void TxyGraph::SeriesChanged() {
    NeedRescale();
    RequestRepaint(true);
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

bool TxyGraph::HasDesigner() const {
    return isSignalConnected(QMetaMethod::fromSignal(&TxyGraph::OnWantDesigner));
}

void TxyGraph::SetPlottedPointLimit(int value) {
    m_plottedPointLimit = std::max(1, value);
    RequestRepaint(true);
}

void TxyGraph::Assign(const QObject* source) {
    if (const auto* graph = qobject_cast<const TxyGraph*>(source)) CopyFrom(*graph);
}

} // namespace lumoplot
