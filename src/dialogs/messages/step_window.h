// What the progress windows have in common: a bar that long work advances step by step, a Cancel button, and
// a timer that shows the window only when the work takes long. The work runs in the same thread; each step
// lets the application process what has come in meanwhile.
#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>

class QProgressBar;
class QPushButton;

namespace lumoplot {

class TStepWindow : public QDialog {
    Q_OBJECT

public:
    /// Between the start of the timer and its showing the window, unless it is started with another time.
    static constexpr int kShowAfterMs = 1000;
    /// Work of the programs waits no longer.
    static constexpr int kLongWorkMs = 300;
    /// Between two looks at what has come in: steps in a tight loop do little else than counting.
    static constexpr int kEventsEveryMs = 20;

    /// The user has closed the window. The work reads it after each step and stops.
    bool Cancelled() const { return m_cancelled; }
    /// The timer must not show the window.
    bool NoAutoShow() const { return m_noAutoShow; }
    void SetNoAutoShow(bool value) { m_noAutoShow = value; }
    /// Steps counted while the window was not visible.
    int HiddenSteps() const { return m_hiddenSteps; }
    /// Lets the timer show the window after so many milliseconds. While a window that was opened later asks
    /// something, it is waited for: the question must not be covered nor blocked.
    void StartTimer(int milliseconds = kShowAfterMs);

    /// A bar from 0 to the larger of 1 and `count`, at 0, and a new caption.
    void ResetProgress(const QString& caption, int count);
    /// Processes pending events, the user's own only while this window is there to hold them back from other
    /// windows; then advances the bar, or counts while the window is hidden. A cancelled bar stays.
    void StepProgress(int steps = 1);

    /// Esc closes the window as its Cancel button does; without the button it does nothing.
    void reject() override;

protected:
    explicit TStepWindow(QWidget* owner);
    /// The controls of the form, once it is set up.
    void SetControls(QProgressBar* bar, QPushButton* cancel);

    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void ShowUnlessAsked();
    void ProcessPending();
    void Advance(int steps);

    QProgressBar* m_bar = nullptr;
    QPushButton* m_cancel = nullptr;
    QTimer m_timer;
    QPointer<QWidget> m_over; ///< the modal window that the work was begun from
    QElapsedTimer m_sinceEvents;
    int m_hiddenSteps = 0;
    int m_stepsToShow = 0; ///< too few for the bar to move
    bool m_cancelled = false;
    bool m_noAutoShow = false;
    bool m_processing = false; ///< a step from inside the events processes none
};

} // namespace lumoplot
