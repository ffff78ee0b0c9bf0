#include "dialog/frame/undo_keys.h"

#include "session/graph_session.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace lumoplot {
namespace {

template <class TEdit>
bool CanStep(const TEdit& edit, bool redo) {
    return redo ? edit.isRedoAvailable() : edit.isUndoAvailable();
}

bool UndoesItself(const QWidget* control, bool redo) {
    if (const auto* spin = qobject_cast<const QAbstractSpinBox*>(control))
        control = spin->findChild<QLineEdit*>();
    if (const auto* list = qobject_cast<const QComboBox*>(control); list && list->lineEdit())
        control = list->lineEdit();
    if (const auto* edit = qobject_cast<const QLineEdit*>(control))
        return !edit->isReadOnly() && CanStep(*edit, redo);
    if (const auto* edit = qobject_cast<const QPlainTextEdit*>(control))
        return !edit->isReadOnly() && CanStep(*edit->document(), redo);
    if (const auto* edit = qobject_cast<const QTextEdit*>(control))
        return !edit->isReadOnly() && CanStep(*edit->document(), redo);
    return false;
}

} // namespace

TUndoKeys::TUndoKeys(QWidget& window, const TGraphSession& session)
    : QObject(&window), m_window(window), m_session(session) {
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { MoveTo(now); });
}

void TUndoKeys::MoveTo(QWidget* focus) {
    if (m_focus) m_focus->removeEventFilter(this);
    m_focus = focus && m_window.isAncestorOf(focus) ? focus : nullptr;
    if (m_focus) m_focus->installEventFilter(this);
    Q_EMIT FocusMoved();
}

bool TUndoKeys::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::ShortcutOverride || watched != m_focus) return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool redo = key->matches(QKeySequence::Redo);
    if (!redo && !key->matches(QKeySequence::Undo)) return false;
    const bool isSessionFirst = redo && m_session.CanRedo();
    event->setAccepted(!isSessionFirst && UndoesItself(m_focus, redo));
    return true;
}

} // namespace lumoplot
