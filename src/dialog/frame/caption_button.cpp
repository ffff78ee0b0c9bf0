#include "dialog/frame/caption_button.h"

#include <QStyleOptionButton>
#include <QStylePainter>

namespace lumoplot {

void TCaptionButton::SetKeyedCaption(const QString& caption) {
    m_keyed = caption;
    setShortcut(QKeySequence::mnemonic(caption));
    update();
}

void TCaptionButton::paintEvent(QPaintEvent* event) {
    if (m_keyed.isEmpty()) return QPushButton::paintEvent(event);
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text = m_keyed;
    painter.drawControl(QStyle::CE_PushButton, option);
}

} // namespace lumoplot
