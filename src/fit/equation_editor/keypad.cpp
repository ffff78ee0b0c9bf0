#include "fit/equation_editor/keypad.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <algorithm>

namespace lumoplot {

QGridLayout& TKeypad::Grid() const {
    return *qobject_cast<QGridLayout*>(layout());
}

void TKeypad::TakeKeys(QWidget& typing) {
    m_typing = &typing;
    for (auto* key : findChildren<QPushButton*>()) {
        key->setFocusPolicy(Qt::NoFocus);
        key->installEventFilter(this);
        connect(key, &QPushButton::clicked, this, [this, key] { Q_EMIT PieceChosen(key->text()); });
        if (!m_current) MakeCurrent(*key);
    }
}

// The mouse leaves the focus where it is.
void TKeypad::MakeCurrent(QPushButton& key) {
    if (m_current) m_current->setFocusPolicy(Qt::NoFocus);
    m_current = &key;
    key.setFocusPolicy(Qt::TabFocus);
}

bool TKeypad::eventFilter(QObject* watched, QEvent* event) {
    auto* key = qobject_cast<QPushButton*>(watched);
    if (key && event->type() == QEvent::KeyPress) return TakeKey(*key, static_cast<QKeyEvent&>(*event));
    return QWidget::eventFilter(watched, event);
}

bool TKeypad::TakeKey(QPushButton& key, QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Left: MoveFocus(key, 0, -1); return true;
    case Qt::Key_Right: MoveFocus(key, 0, 1); return true;
    case Qt::Key_Up: MoveFocus(key, -1, 0); return true;
    case Qt::Key_Down: MoveFocus(key, 1, 0); return true;
    case Qt::Key_Space: return false; // presses the button
    default: break;
    }
    const bool erases = event.key() == Qt::Key_Backspace || event.key() == Qt::Key_Delete;
    const bool isText = !event.text().isEmpty() && event.text().front().isPrint();
    if (!erases && !isText) return false;
    m_typing->setFocus(Qt::OtherFocusReason);
    QCoreApplication::sendEvent(m_typing, &event);
    return true;
}

void TKeypad::MoveFocus(QPushButton& from, int rows, int columns) {
    int row = 0;
    int column = 0;
    int rowSpan = 0;
    int columnSpan = 0;
    Grid().getItemPosition(Grid().indexOf(&from), &row, &column, &rowSpan, &columnSpan);
    for (;;) {
        row += rows;
        column += columns;
        if (row < 0 || column < 0 || row >= Grid().rowCount() || column >= Grid().columnCount()) return;
        QLayoutItem* item = Grid().itemAtPosition(row, column);
        auto* key = item ? qobject_cast<QPushButton*>(item->widget()) : nullptr;
        if (!key || key == &from) continue;
        MakeCurrent(*key);
        key->setFocus(Qt::OtherFocusReason);
        return;
    }
}

} // namespace lumoplot
