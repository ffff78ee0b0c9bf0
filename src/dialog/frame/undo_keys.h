// Leaves Ctrl+Z and its like to the edit that has the focus while that has typing of its own to undo or redo;
// else they are the window's. Edits claim these keys even when they have nothing to undo, and tables never
// do.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace lumoplot {

class TUndoKeys : public QObject {
    Q_OBJECT

public:
    /// Belongs to the window.
    explicit TUndoKeys(QWidget& window);

Q_SIGNALS:
    /// Another widget has the focus.
    void FocusMoved();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MoveTo(QWidget* focus);

    QWidget& m_window;
    QPointer<QWidget> m_focus; ///< in the window
};

} // namespace lumoplot
