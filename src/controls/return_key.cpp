#include "controls/return_key.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <utility>

namespace lumoplot {
namespace {

bool IsReturn(const QEvent& event) {
    if (event.type() != QEvent::KeyPress) return false;
    const int key = static_cast<const QKeyEvent&>(event).key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

/// The button that Ctrl+Return presses. The one of a button box is no default while another has the focus.
QPushButton* ClosingButton(const QDialog& dialog) {
    if (const auto* box = dialog.findChild<QDialogButtonBox*>())
        for (QAbstractButton* button : box->buttons())
            if (box->buttonRole(button) == QDialogButtonBox::AcceptRole)
                return qobject_cast<QPushButton*>(button);
    for (QPushButton* button : dialog.findChildren<QPushButton*>())
        if (button->isDefault()) return button;
    return nullptr;
}

void PressClosing(QDialog& dialog) {
    QPushButton* button = ClosingButton(dialog);
    if (!button || !button->isEnabled()) return;
    button->setFocus(Qt::ShortcutFocusReason); // the edit that had it takes its value
    button->click();
}

/// Sees what the focused control of the dialog has left of a Return.
class TReturnFilter : public QObject {
public:
    TReturnFilter(QDialog& dialog, TSecondReturn second)
        : QObject(&dialog), m_dialog(dialog), m_second(second) {
        if (second == TSecondReturn::Nothing) return;
        for (QLineEdit* edit : dialog.findChildren<QLineEdit*>())
            connect(edit, &QLineEdit::textEdited, this, [this] { m_isTyped = true; });
        connect(qApp, &QApplication::focusChanged, this, [this] { m_isTyped = false; });
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (!IsReturn(*event)) return false;
        const bool isFirst = std::exchange(m_isTyped, false);
        const bool closes = m_second == TSecondReturn::Closes && !isFirst;
        auto* button = qobject_cast<QAbstractButton*>(m_dialog.focusWidget());
        if (button && !(closes && button->isCheckable()))
            button->click();
        else if (closes)
            PressClosing(m_dialog);
        return true;
    }

private:
    QDialog& m_dialog;
    TSecondReturn m_second;
    bool m_isTyped = false; ///< since the last Return, in the edit that has the focus
};

} // namespace

void KeepOpenOnReturn(QDialog& dialog, TSecondReturn second) {
    dialog.installEventFilter(new TReturnFilter(dialog, second));
    CloseOnCtrlReturn(dialog);
}

void CloseOnCtrlReturn(QDialog& dialog) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | key), &dialog);
        QObject::connect(shortcut, &QShortcut::activated, &dialog, [&dialog] { PressClosing(dialog); });
    }
}

} // namespace lumoplot
