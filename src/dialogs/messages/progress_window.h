// Long work's progress as a small progress window. Lives on the stack of whoever runs the work and is handed
// to it. Short work never shows the window; while it is shown the rest of the application gets no input, so
// nothing that the work stands on can be changed meanwhile.
#pragma once

#include "controls/widgets_export.h"
#include "dialogs/messages/small_progress_bar.h"
#include "support/progress.h"

namespace lumoplot {

class TProgressWindow : public TProgress {
public:
    XYWIDGETS_EXPORT TProgressWindow();
    XYWIDGETS_EXPORT ~TProgressWindow() override;

    void Begin(const std::string& caption, std::int64_t minimum, std::int64_t maximum) override;
    [[nodiscard]] bool StepTo(std::int64_t position) override;

    TfrmSmallPrBar& Window() { return *m_window; }

private:
    std::unique_ptr<TfrmSmallPrBar> m_window;
    std::int64_t m_minimum = 0;
    std::int64_t m_maximum = 0;
    int m_partsDone = 0;
};

/// The progress of work whose length says nothing: shows a reason in the place of a bar.
XYWIDGETS_EXPORT std::unique_ptr<TProgress> MakeBusyProgress(const std::string& reason);

/// A larger window in the middle of the screen for work on one thing that is named, with how far it has come.
XYWIDGETS_EXPORT std::unique_ptr<TProgress> MakeLargeProgress(const std::string& reason);

} // namespace lumoplot
