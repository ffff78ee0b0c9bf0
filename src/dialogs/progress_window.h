// Shows how far long work has come and lets the user cancel it. Lives on the stack of whoever runs the work
// and is handed to it as its progress. Short work never shows it; while it is shown the rest of the
// application gets no input, so nothing that the work stands on can be changed meanwhile.
#pragma once

#include "support/progress.h"

#include <QDialog>
#include <QElapsedTimer>
#include <memory>

namespace Ui {
class TProgressWindow;
}

namespace lumoplot {

class TProgressWindow : public QDialog, public TProgress {
    Q_OBJECT

public:
    static constexpr int kShowAfterMs = 300;
    /// Between two looks at the events; a cancelled run ends after that and the work's next step.
    static constexpr int kEventsEveryMs = 30;

    explicit TProgressWindow(QWidget* parent);
    ~TProgressWindow() override;

    void Begin(const std::string& caption, std::int64_t minimum, std::int64_t maximum) override;
    [[nodiscard]] bool StepTo(std::int64_t position) override;

    bool IsCancelled() const { return m_cancelled; }

    void reject() override { m_cancelled = true; }

private:
    void ShowPosition();

    std::unique_ptr<Ui::TProgressWindow> m_ui;
    QElapsedTimer m_sinceStart;
    QElapsedTimer m_sinceEvents;
    std::int64_t m_minimum = 0;
    std::int64_t m_maximum = 0;
    std::int64_t m_position = 0;
    bool m_cancelled = false;
    bool m_processing = false; ///< events are being processed: a step from inside them only counts
};

} // namespace lumoplot
