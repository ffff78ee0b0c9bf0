#include "graph/model/graph.h"

#include "graph/model/child_graph.h"
#include "graph/model/holder.h"
#include "support/errors.h"

#include <QEvent>
#include <QMetaMethod>
#include <QPainter>
#include <cmath>
#include <utility>

namespace lumoplot {

void TGraphSettings::Redraw() {
    m_graph.RequestRepaint(true);
}

void TxyGraph::SetHolderID(const std::string& id) {
    m_holder->SetID(id);
}

void TxyGraph::SetPointBudget(int value) {
    m_pointBudget = std::max(1, value);
}

void TxyGraph::ResetToDefaults() {
    m_appearance->SetCurrSerIndex(m_highestNumber);
    m_marks.SelectNone();
    m_xAxis->ResetToDefaults();
    m_yAxis->ResetToDefaults();
    m_yAxisSecond->ResetToDefaults();
    m_dimensions->ResetToDefaults();
    m_appearance->ResetToDefaults();
    m_legend->ResetToDefaults();
    ForgetZoomHistory();
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

void TxyGraph::SetMarks(const TMarkChain& marks) {
    m_marks = marks;
    RequestFullRepaint();
}

TxyChildGr* TxyGraph::AddChildGraph() {
    m_children.push_back(std::make_unique<TxyChildGr>(*this));
    TxyChildGr* child = m_children.back().get();
    connect(child, &TxyGraph::OnUserChange, this, &TxyGraph::OnUserChange);
    child->SetChangeHook([this](const TUserChange& change, const std::function<void()>& action) {
        ChangeByUser(change, action);
    });
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
    if (repaint && m_holds == 0) update();
}

void TxyGraph::RequestFullRepaint() {
    RequestRepaint(true);
}

void TxyGraph::EndUpdate() {
    if (--m_holds == 0 && m_repaintRequested) update();
}

void TxyGraph::SeriesChanged() {
    NeedRescale();
    RequestRepaint(true);
}

void TxyGraph::ChangeByUser(const TUserChange& change, const std::function<void()>& action) {
    m_changeHook ? m_changeHook(change, action) : action();
}

bool TxyGraph::HasDesigner() const {
    return isSignalConnected(QMetaMethod::fromSignal(&TxyGraph::OnWantDesigner));
}

void TxyGraph::Assign(const QObject* source) {
    if (const auto* graph = qobject_cast<const TxyGraph*>(source)) CopyFrom(*graph);
}

} // namespace lumoplot
