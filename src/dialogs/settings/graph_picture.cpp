#include "dialogs/settings/graph_picture.h"

#include "graph/drawing/picture/drawing.h"

#include <QPainter>
#include <algorithm>
#include <utility>

namespace lumoplot {

void TGraphPicture::SetGraph(TxyGraph* graph) {
    m_graph = graph;
    Renew();
}

void TGraphPicture::Renew() {
    m_isStale = true;
    update();
}

void TGraphPicture::paintEvent(QPaintEvent*) {
    if (!m_graph) return;
    if (std::exchange(m_isStale, false)) PrepareWithChildGraphs(*m_graph);
    const QSizeF size = m_graph->size();
    const double scale = std::min(width() / size.width(), height() / size.height());
    QPainter painter(this);
    painter.translate((width() - size.width() * scale) / 2, 0);
    painter.scale(scale, scale);
    DrawGraph(painter, *m_graph, QRectF(QPointF(), size));
}

} // namespace lumoplot
