// Leaves Ctrl+Z and its like to the edit that has the focus while that has typing of its own to undo or redo;
// else they are the window's. Edits claim these keys even when they have nothing to undo, and tables never
// do. A step of the session that was undone was undone after any typing, and is done again before it.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace lumoplot {

class TGraphSession;

class TUndoKeys : public QObject {
    Q_OBJECT

public:
    /// Belongs to the window.
    TUndoKeys(QWidget& window, const TGraphSession& session);

Q_SIGNALS:
    /// Another widget has the focus.
    void FocusMoved();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MoveTo(QWidget* focus);

    QWidget& m_window;
    const TGraphSession& m_session;
    QPointer<QWidget> m_focus; ///< in the window
};

} // namespace lumoplot
