#include "controls/return_key.h"

#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QPushButton>
#include <QShortcut>

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

/// Sees what the focused control of the dialog has left of a Return.
class TReturnFilter : public QObject {
public:
    explicit TReturnFilter(QDialog& dialog) : QObject(&dialog), m_dialog(dialog) {}

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (!IsReturn(*event)) return false;
        if (auto* button = qobject_cast<QAbstractButton*>(m_dialog.focusWidget())) button->click();
        return true;
    }

private:
    QDialog& m_dialog;
};

} // namespace

void KeepOpenOnReturn(QDialog& dialog) {
    dialog.installEventFilter(new TReturnFilter(dialog));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | key), &dialog);
        QObject::connect(shortcut, &QShortcut::activated, &dialog, [&dialog] {
            QPushButton* button = ClosingButton(dialog);
            if (!button || !button->isEnabled()) return;
            button->setFocus(Qt::ShortcutFocusReason); // the edit that had it takes its value
            button->click();
        });
    }
}

} // namespace lumoplot
