#include "dialog/common/color_button.h"

#include "controls/texts.h"
#include "dialogs/color_choice.h"
#include "graph/drawing/lines/canvas.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>

namespace lumoplot {

TColorButton::TColorButton(QWidget* parent) : QPushButton(parent) {
    setAutoDefault(false);
    SetColor(kBlack);
    connect(this, &QPushButton::clicked, this, &TColorButton::PickColor);
}

void TColorButton::SetColor(TColor color) {
    m_color = color;
    setAccessibleName(TTexts::tr("Color ") + ToQColor(color).name());
    update();
}

QSize TColorButton::sizeHint() const {
    return {fontMetrics().height() * 4, QPushButton::sizeHint().height()};
}

void TColorButton::paintEvent(QPaintEvent* event) {
    QPushButton::paintEvent(event);
    QStyleOptionButton option;
    initStyleOption(&option);
    const int inset = style()->pixelMetric(QStyle::PM_ButtonMargin, &option, this) / 2 + 3;
    QPainter painter(this);
    const QRect swatch = rect().adjusted(inset, inset, -inset, -inset);
    painter.fillRect(swatch, isEnabled() ? ToQColor(m_color) : palette().color(QPalette::Mid));
    painter.setPen(palette().color(QPalette::Dark));
    painter.drawRect(swatch.adjusted(0, 0, -1, -1));
}

void TColorButton::PickColor() {
    const QColor picked = ChooseColor(ToQColor(m_color), window(), TTexts::tr("Select Color"));
    if (!picked.isValid() || ToColor(picked) == m_color) return;
    SetColor(ToColor(picked));
    Q_EMIT ColorPicked(m_color);
}

} // namespace lumoplot
