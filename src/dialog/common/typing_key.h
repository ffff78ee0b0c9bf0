// Joins what is typed into one edit, the steps of a spin box that is held down and the walk of the cursor
// keys through a list to one step each: the session ends it when the focus moves.
#pragma once

#include "session/merge_key.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace lumoplot {

/// The key of the edit or list that has the focus; empty when that is something else.
inline TMergeKey TypingKey() {
    const QWidget* focus = QApplication::focusWidget();
    const bool isEdit = qobject_cast<const QLineEdit*>(focus) || qobject_cast<const QPlainTextEdit*>(focus) ||
                        qobject_cast<const QAbstractSpinBox*>(focus) || qobject_cast<const QComboBox*>(focus);
    return {isEdit ? focus : nullptr};
}

} // namespace lumoplot
