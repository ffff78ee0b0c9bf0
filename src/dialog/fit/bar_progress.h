// Progress of work that a window does itself: its bar moves, its Cancel button and closing it stop the work,
// and its other controls wait.
#pragma once

#include "support/progress.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QWidget>

class QProgressBar;
class QPushButton;

namespace lumoplot {

class TBarProgress final : public QObject, public TProgress {
public:
    /// While it lives the bar and the button are shown, and of `waiting` nothing can be used.
    TBarProgress(QProgressBar& bar, QPushButton& cancel, std::initializer_list<QWidget*> waiting);
    ~TBarProgress() override;

    void Begin(const std::string& caption, std::int64_t minimum, std::int64_t maximum) override;
    /// Lets the window work about every 20 ms.
    [[nodiscard]] bool StepTo(std::int64_t position) override;

    bool WasCancelled() const { return m_wasCancelled; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPointer<QProgressBar> m_bar;
    QPointer<QPushButton> m_cancel;
    std::vector<QPointer<QWidget>> m_waiting;
    std::int64_t m_minimum = 0;
    std::int64_t m_maximum = 1;
    QElapsedTimer m_sinceEvents;
    bool m_wasCancelled = false;
};

} // namespace lumoplot
