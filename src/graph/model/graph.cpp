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

void TGraphSettings::AskForScaling() {
    m_graph.NeedRescale();
}

void TxyGraph::SetHolderID(const std::string& id) {
    m_holder->SetID(id);
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
    RequestRepaint(true);
}

int TxyGraph::AddMark(const TGraphMark& mark) {
    const int id = m_marks.Add(mark);
    RequestRepaint(true);
    return id;
}

bool TxyGraph::DeleteMark(int id) {
    const bool deleted = m_marks.Delete(id);
    if (deleted) RequestRepaint(true);
    return deleted;
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
    RequestRepaint(true);
}

void TxyGraph::SeriesChanged() {
    NeedRescale();
    RequestRepaint(true);
}

bool TxyGraph::HasDesigner() const {
    return isSignalConnected(QMetaMethod::fromSignal(&TxyGraph::OnWantDesigner));
}

} // namespace lumoplot
