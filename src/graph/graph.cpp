#include "graph/graph.h"

#include "graph/child_graph.h"
#include "graph/drawing_hook.h"
#include "graph/holder.h"
#include "support/errors.h"

#include <QPainter>

namespace lumoplot {
namespace {

TDrawPanel g_drawPanel = nullptr;

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
}

// Data sets tell their listeners that they go, so they go while the rest of the graph still stands.
TxyGraph::~TxyGraph() {
    m_updating = true;
    m_series.clear();
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

void TxyGraph::paintEvent(QPaintEvent*) {
    UpdateForDrawing();
    SchedulePendingFits();
    RequestRepaint(false);
    QPainter painter(this);
    if (g_drawPanel) g_drawPanel(painter, *this, rect());
    Q_EMIT OnPaintEnd(&painter);
}

void TxyGraph::resizeEvent(QResizeEvent* event) {
    TReSizablePanel::resizeEvent(event);
    for (const auto& child : m_children) child->FollowParent();
}

void TxyGraph::mouseDoubleClickEvent(QMouseEvent*) {
    Q_EMIT OnWantDesigner();
}

void TxyGraph::Assign(const QObject* source) {
    if (const auto* graph = qobject_cast<const TxyGraph*>(source)) CopyFrom(*graph);
}

} // namespace lumoplot
