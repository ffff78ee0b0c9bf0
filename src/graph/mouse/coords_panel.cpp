#include "graph/mouse/coords_panel.h"

#include "graph/model/graph.h"
#include "graph/plotted/value_text.h"

#include <QHBoxLayout>
#include <cmath>

namespace lumoplot {
namespace {

constexpr int kReadOutEdge = 2;

QString TextAt(const TAxis& axis, const TScaleMap& map, double place) {
    const double value = map.Value(place);
    return ValueText(axis, value, std::abs(map.Value(place + 1) - value));
}

} // namespace

TCoordLabel::TCoordLabel(const QString& axisName, QWidget* parent) : QLabel(parent), m_axisName(axisName) {
    setTextFormat(Qt::PlainText);
}

void TCoordLabel::ShowValue(const QString& value) {
    setText(m_axisName + QStringLiteral(" = ") + value);
    setMinimumWidth(std::max(minimumWidth(), sizeHint().width()));
}

void TCoordLabel::Clear() {
    clear();
    setMinimumWidth(0);
}

TCoordsPanel::TCoordsPanel(TxyGraph& graph)
    : QFrame(&graph), m_graph(graph), m_x(new TCoordLabel(tr("X"), this)),
      m_y(new TCoordLabel(tr("Y"), this)), m_secondY(new TCoordLabel(tr("Y2"), this)) {
    setObjectName(QStringLiteral("CoordsPanel"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(6, 2, 6, 2);
    row->setSpacing(12);
    for (TCoordLabel* label : {m_x, m_y, m_secondY}) row->addWidget(label);
    setAutoFillBackground(true);
    setFrameShape(QFrame::StyledPanel);
    hide();
}

bool TCoordsPanel::LiesOnGraph() const {
    return parentWidget() == &m_graph;
}

void TCoordsPanel::MoveToCorner() {
    adjustSize();
    move(std::max(0, m_graph.width() - width() - kReadOutEdge), kReadOutEdge);
    raise();
}

void TCoordsPanel::ShowPlace(const TPlotMap& map, QPointF place) {
    m_x->ShowValue(TextAt(*m_graph.XAxis(), map.X, place.x()));
    m_y->ShowValue(TextAt(*m_graph.YAxis(), map.Y, place.y()));
    const bool showsSecond = m_graph.YAxis_Second()->ShowAxis();
    m_secondY->setVisible(showsSecond);
    if (showsSecond) m_secondY->ShowValue(TextAt(*m_graph.YAxis_Second(), map.SecondY, place.y()));
    show();
    if (LiesOnGraph()) MoveToCorner();
}

void TCoordsPanel::Clear() {
    for (TCoordLabel* label : {m_x, m_y, m_secondY}) label->Clear();
    if (LiesOnGraph()) hide();
}

} // namespace lumoplot
