#include "dialog/frame/page_scroll.h"

#include <QApplication>
#include <QEvent>
#include <QLayout>
#include <QScrollBar>
#include <algorithm>

namespace lumoplot {
namespace {

constexpr QSize kSmallest(240, 120);

int LeastHeight(const QWidget& page, int width) {
    const QLayout* layout = page.layout();
    return layout && layout->hasHeightForWidth() ? layout->minimumHeightForWidth(width)
                                                 : page.minimumSizeHint().height();
}

} // namespace

TPageScroll::TPageScroll(QWidget& page, QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus); // its controls have the focus, and bring themselves into view
    setWidget(&page);
    viewport()->setAutoFillBackground(false);
    page.setAutoFillBackground(false);
    // Also where the focus comes from a button beside the page.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (now && widget() && widget()->isAncestorOf(now)) ensureWidgetVisible(now);
    });
}

QSize TPageScroll::sizeHint() const {
    return widget()->sizeHint() + QSize(verticalScrollBar()->sizeHint().width(), 0);
}

QSize TPageScroll::minimumSizeHint() const {
    return kSmallest;
}

void TPageScroll::resizeEvent(QResizeEvent* event) {
    FitPage();
    QScrollArea::resizeEvent(event);
}

bool TPageScroll::eventFilter(QObject* watched, QEvent* event) {
    if (watched == widget() && event->type() == QEvent::LayoutRequest) FitPage();
    return QScrollArea::eventFilter(watched, event);
}

// Plots and tables of the page shrink to their least height before it is scrolled.
void TPageScroll::FitPage() {
    const QSize room = maximumViewportSize();
    const QSize least = widget()->minimumSizeHint();
    int width = std::max(room.width(), least.width());
    if (LeastHeight(*widget(), width) > room.height())
        width = std::max(room.width() - verticalScrollBar()->sizeHint().width(), least.width());
    widget()->resize(width, std::max(room.height(), LeastHeight(*widget(), width)));
}

} // namespace lumoplot
