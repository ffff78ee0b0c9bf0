#include "dialog/frame/undo_recorder.h"

#include "dialog/frame/undo_names.h"
#include "dialog/manual/manual_grid.h"
#include "dialogs/step_window.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QTimer>
#include <algorithm>

namespace lumoplot {
namespace {

constexpr int kLookAgainMs = 100;

bool IsInput(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::Shortcut:
    case QEvent::Wheel:
    case QEvent::InputMethod:
    case QEvent::Drop:
    case QEvent::FocusIn:
    case QEvent::FocusOut: return true;
    default: return false;
    }
}

// Events come to the edit inside a spin box or to the popup of a list; the user knows the whole.
QWidget* WholeControl(QWidget& widget) {
    for (QWidget* whole = &widget; whole; whole = whole->parentWidget())
        if (qobject_cast<QAbstractSpinBox*>(whole) || qobject_cast<QComboBox*>(whole)) return whole;
    return &widget;
}

// Events that a control does not want go on to its parents, which are not meant.
bool IsPassedOn(const QWidget& widget, const QEvent& event) {
    if (event.type() == QEvent::KeyPress) return widget.isAncestorOf(QApplication::focusWidget());
    if (const auto* point = dynamic_cast<const QSinglePointEvent*>(&event))
        return widget.childAt(point->position().toPoint()) != nullptr;
    return false;
}

/// Long work looks at the events before its window is shown.
bool IsWorkRunning() {
    return std::ranges::any_of(QApplication::topLevelWidgets(),
                               [](QWidget* window) { return qobject_cast<TStepWindow*>(window) != nullptr; });
}

template <class TEdit>
bool CanStep(const TEdit& edit, bool redo) {
    return redo ? edit.isRedoAvailable() : edit.isUndoAvailable();
}

} // namespace

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
    if (const auto* grid = qobject_cast<const TManualGrid*>(control)) {
        const TManualPointsModel& points = grid->Points();
        return redo ? points.CanRedo() : points.CanUndo();
    }
    return false;
}

TUndoRecorder::TUndoRecorder(QWidget& window, TxyGraph& graph)
    : QObject(&window), m_window(window), m_graph(graph), m_history(graph) {
    connect(&graph, &TxyGraph::OnPaintEnd, this, [this] { Absorb(); });
}

void TUndoRecorder::Start() {
    m_history.Start();
    m_isPending = false;
    m_stepName.clear();
    if (!m_isRecording) qApp->installEventFilter(this);
    m_isRecording = true;
    Q_EMIT Changed();
}

void TUndoRecorder::Stop() {
    qApp->removeEventFilter(this);
    m_isRecording = false;
    m_history.Stop();
}

bool TUndoRecorder::IsInEditor(const QWidget* widget) const {
    for (; widget; widget = widget->parentWidget()) {
        if (widget == &m_window) return true;
        if (widget->isWindow() && widget->windowType() != Qt::Popup) return false;
    }
    return false;
}

/// Another window asks or works: what it stands for may be half done.
bool TUndoRecorder::IsBlocked() const {
    const QWidget* modal = QApplication::activeModalWidget();
    return !m_isRecording || (modal && modal != &m_window) || IsWorkRunning();
}

bool TUndoRecorder::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (watched == &m_graph && type == QEvent::Paint && m_graph.RepaintRequested()) Note();
    if (watched == &m_window && type == QEvent::WindowUnblocked) NoteLater();
    if (type == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool redo = key->matches(QKeySequence::Redo);
        if (!(redo || key->matches(QKeySequence::Undo)) || !IsInEditor(qobject_cast<QWidget*>(watched)))
            return false;
        // Edits claim these keys even when they have nothing to undo, and tables never do.
        event->setAccepted(UndoesItself(QApplication::focusWidget(), redo));
        return true;
    }
    if (!IsInput(type)) return false;
    auto* widget = qobject_cast<QWidget*>(watched);
    if (widget && IsInEditor(widget) && !IsPassedOn(*widget, *event))
        BeginEvent(*WholeControl(*widget), type);
    return false;
}

void TUndoRecorder::BeginEvent(QWidget& control, QEvent::Type type) {
    if (m_isPending) Note();
    const bool isFocus = type == QEvent::FocusIn || type == QEvent::FocusOut;
    if (m_control != &control || isFocus || type == QEvent::MouseButtonPress) ++m_session;
    m_control = &control;
    m_isPending = true;
    NoteLater();
}

void TUndoRecorder::NoteLater() {
    if (m_isQueued) return;
    m_isQueued = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isQueued = false;
            if (IsWorkRunning())
                QTimer::singleShot(kLookAgainMs, this, &TUndoRecorder::NoteLater);
            else
                Note();
        },
        Qt::QueuedConnection);
}

void TUndoRecorder::Note() {
    if (IsBlocked()) return;
    m_isPending = false;
    const auto naming = [this](const TGraphSnapshot& before, const TGraphSnapshot& after) {
        return NameOf(before, after);
    };
    const bool noted = m_history.Note(naming, MergeKey());
    m_stepName.clear();
    if (noted) Q_EMIT Changed();
}

void TUndoRecorder::Absorb() {
    if (!IsBlocked()) m_history.Absorb();
}

std::string TUndoRecorder::NameOf(const TGraphSnapshot& before, const TGraphSnapshot& after) const {
    if (!m_stepName.empty()) return m_stepName;
    const bool isView =
        m_control == &m_graph && before.Series() == after.Series() && before.Marks() == after.Marks();
    if (isView) return "change of view";
    return NameOfChange(before, after, m_control ? CaptionOf(*m_control) : QString());
}

/// What is typed into one edit is one step, and so is a drag or a turn of the wheel over the graph.
TMergeKey TUndoRecorder::MergeKey() const {
    const QWidget* control = m_control;
    const bool merges = qobject_cast<const QLineEdit*>(control) ||
                        qobject_cast<const QAbstractSpinBox*>(control) ||
                        qobject_cast<const QPlainTextEdit*>(control) ||
                        qobject_cast<const QTextEdit*>(control) || control == &m_graph;
    return merges && m_stepName.empty() ? TMergeKey{this, m_session} : TMergeKey{};
}

} // namespace lumoplot
