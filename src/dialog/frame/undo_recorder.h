// Watches the input events of the data editor and makes what they change of its working graph steps of a
// history, so that no page has to say that it changes something. An event's changes are looked for when the
// next one comes or the event loop is back. Changes that follow from showing something (axes that follow the
// data, another current data set) belong to no step.
#pragma once

#include "session/undo_history.h"

#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QWidget>

class QKeyEvent;

namespace lumoplot {

class TUndoRecorder : public QObject {
    Q_OBJECT

public:
    /// `window` holds the controls, and the graph as one of them.
    TUndoRecorder(QWidget& window, TxyGraph& graph);

    /// Starts with the graph as it is, without any step.
    void Start();
    /// Forgets all steps and records no more.
    void Stop();

    /// Looks for changes now. A window in front of the editor leaves them for later.
    void Note();
    /// Runs what changes the graph without being an edit of the user's.
    template <class TAction>
    void Quietly(TAction&& action) {
        Note();
        action();
        Absorb();
    }
    /// What the event that is going on changes gets this name, and a step of its own.
    void NameStep(const std::string& name) { m_stepName = name; }

    const TUndoHistory& History() const { return m_history; }
    void Undo() { m_history.Undo(); }
    void Redo() { m_history.Redo(); }

Q_SIGNALS:
    /// There may be other steps now.
    void Changed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool IsInEditor(const QWidget* widget) const;
    bool IsBlocked() const;
    void NoteLater();
    void BeginEvent(QWidget& control, QEvent::Type type);
    void Absorb();
    std::string NameOf(const TGraphSnapshot& before, const TGraphSnapshot& after) const;
    TMergeKey MergeKey() const;

    QWidget& m_window;
    TxyGraph& m_graph;
    TUndoHistory m_history;
    QPointer<QWidget> m_control; ///< that got the last input
    std::string m_stepName;
    std::uint64_t m_session = 1; ///< another one when the input goes elsewhere
    bool m_isRecording = false;
    bool m_isPending = false; ///< an event may have changed something that nobody has looked for
    bool m_isQueued = false;
};

/// The control has steps of its own that this key undoes or redoes before the editor's.
bool UndoesItself(const QWidget* control, bool redo);

} // namespace lumoplot
