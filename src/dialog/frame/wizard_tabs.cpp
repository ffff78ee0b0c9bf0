#include "dialog/frame/wizard_tabs.h"

#include <QPainter>
#include <QStyleOptionTab>
#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

// A tab's size in pixels on a screen of 120 dpi, and the largest side of its picture there.
constexpr int kTabWidthAt120 = 92;
constexpr int kTabHeightAt120 = 64;
constexpr int kPictureAt120 = 36;

int Scaled(const QWidget& widget, int pixelsAt120) {
    return static_cast<int>(std::lround(widget.logicalDpiX() * pixelsAt120 / 120.0));
}

QFont ActiveFont(QFont font) {
    font.setPointSizeF(font.pointSizeF() + 1);
    font.setBold(true);
    return font;
}

} // namespace

TWizardTabBar::TWizardTabBar(QWidget* parent) : QTabBar(parent) {
    setShape(QTabBar::RoundedWest);
    setDrawBase(false);
    setUsesScrollButtons(false);
}

int TWizardTabBar::PictureSize() const {
    return Scaled(*this, kPictureAt120);
}

QSize TWizardTabBar::tabSizeHint(int index) const {
    const QFontMetrics metrics(ActiveFont(font()));
    const int captionWidth = metrics.size(Qt::TextShowMnemonic, tabText(index)).width();
    const int width = std::max(Scaled(*this, kTabWidthAt120), captionWidth + Scaled(*this, 12));
    const int height =
        std::max(Scaled(*this, kTabHeightAt120), PictureSize() + metrics.height() + Scaled(*this, 10));
    return {width, height};
}

void TWizardTabBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int index = 0; index < count(); ++index)
        if (index != currentIndex()) PaintTab(painter, index);
    if (currentIndex() >= 0) PaintTab(painter, currentIndex());
}

void TWizardTabBar::PaintTab(QPainter& painter, int index) const {
    const bool active = index == currentIndex();
    const QRect tab = tabRect(index);
    const QPalette::ColorGroup group = isTabEnabled(index) ? QPalette::Active : QPalette::Disabled;
    if (active) {
        painter.fillRect(tab, palette().color(QPalette::Base));
        painter.fillRect(QRect(tab.left(), tab.top(), Scaled(*this, 4), tab.height()),
                         palette().color(QPalette::Highlight));
    } else {
        painter.fillRect(tab, palette().color(QPalette::Button));
    }
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(tab.bottomLeft(), tab.bottomRight());
    const int side = PictureSize();
    const QFont font = active ? ActiveFont(this->font()) : this->font();
    const int captionHeight = QFontMetrics(font).height();
    const int top = tab.top() + (tab.height() - side - captionHeight - Scaled(*this, 2)) / 2;
    const QRect picture(tab.center().x() - side / 2, top, side, side);
    tabIcon(index).paint(&painter, picture, Qt::AlignCenter, active ? QIcon::Normal : QIcon::Disabled);
    painter.setFont(font);
    painter.setPen(palette().color(group, QPalette::ButtonText));
    const QRect caption(tab.left(), picture.bottom() + Scaled(*this, 2), tab.width(), captionHeight);
    painter.drawText(caption, Qt::AlignHCenter | Qt::AlignTop | Qt::TextShowMnemonic, tabText(index));
    if (active && hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.rect = tab.adjusted(3, 3, -3, -3);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

TWizardTabs::TWizardTabs(QWidget* parent) : QTabWidget(parent) {
    setTabBar(new TWizardTabBar(this));
    setTabPosition(QTabWidget::West);
}

} // namespace lumoplot
