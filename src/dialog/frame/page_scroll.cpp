#include "dialog/frame/page_scroll.h"

#include <QScrollBar>

namespace lumoplot {
namespace {

constexpr QSize kSmallest(240, 120);

} // namespace

TPageScroll::TPageScroll(QWidget& page, QWidget* parent) : QScrollArea(parent) {
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus); // its controls have the focus, and bring themselves into view
    setWidget(&page);
    viewport()->setAutoFillBackground(false);
    page.setAutoFillBackground(false);
}

QSize TPageScroll::sizeHint() const {
    return widget()->sizeHint() + QSize(verticalScrollBar()->sizeHint().width(), 0);
}

QSize TPageScroll::minimumSizeHint() const {
    return kSmallest;
}

} // namespace lumoplot
