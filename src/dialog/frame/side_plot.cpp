#include "dialog/frame/side_plot.h"

#include "graph/drawing/picture/drawing.h"
#include "session/graph_session.h"
#include "support/guard.h"

#include <QPainter>

namespace lumoplot {
namespace {

constexpr int kDelayMs = 120; // typing and held arrows stay fluent

} // namespace

TSidePlot::TSidePlot(QWidget* parent) : QWidget(parent) {
    setAccessibleName(tr("Plot"));
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &TSidePlot::Draw);
}

void TSidePlot::SetSession(TGraphSession* session) {
    if (m_session) m_session->disconnect(this);
    m_session = session;
    if (m_session) connect(m_session, &TGraphSession::Changed, this, &TSidePlot::DrawSoon);
}

void TSidePlot::DrawSoon() {
    if (isVisible()) m_timer.start(kDelayMs);
}

void TSidePlot::Draw() {
    if (!m_session || !isVisible()) return;
    Guarded([this] {
        m_session->FollowUp([this] { m_session->Graph().PrepareForDrawing(); });
        m_picture = QImage(size() * devicePixelRatioF(), QImage::Format_RGB32);
        m_picture.setDevicePixelRatio(devicePixelRatioF());
        m_picture.fill(palette().color(QPalette::Window));
        QPainter painter(&m_picture);
        painter.setFont(font());
        DrawGraph(painter, m_session->Graph(), QRectF(QPointF(), QSizeF(size())));
    });
    update();
}

void TSidePlot::paintEvent(QPaintEvent*) {
    if (!m_picture.isNull()) QPainter(this).drawImage(QPointF(), m_picture);
}

void TSidePlot::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    DrawSoon();
}

void TSidePlot::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    DrawSoon();
}

} // namespace lumoplot
