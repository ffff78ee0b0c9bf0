#include "host/sheet/sheet_table.h"

#include <QGuiApplication>
#include <QKeyEvent>

namespace lumoplot {

void TSheetTable::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    QTableView::closeEditor(editor, hint);
    const bool isShifted = QGuiApplication::keyboardModifiers().testFlag(Qt::ShiftModifier);
    if (hint == QAbstractItemDelegate::SubmitModelCache) GoDown(isShifted ? -1 : 1);
}

void TSheetTable::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isEnter || state() == EditingState || event->modifiers().testFlag(Qt::ControlModifier))
        return QTableView::keyPressEvent(event);
    GoDown(event->modifiers().testFlag(Qt::ShiftModifier) ? -1 : 1);
}

void TSheetTable::GoDown(int rows) {
    const QModelIndex below = currentIndex().siblingAtRow(currentIndex().row() + rows);
    if (below.isValid()) setCurrentIndex(below);
}

} // namespace lumoplot
