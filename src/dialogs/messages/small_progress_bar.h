// The small progress window that long operations show: a bar with a Cancel button, or the reason of a wait.
#pragma once

#include "dialogs/messages/step_window.h"

#include <memory>

namespace Ui {
class TfrmSmallPrBar;
}

namespace lumoplot {

class TfrmSmallPrBar : public TStepWindow {
    Q_OBJECT

public:
    explicit TfrmSmallPrBar(QWidget* owner);
    ~TfrmSmallPrBar() override;

    /// The forms of the window that ShowBusy and ShowProgress make.
    void BecomeBusy(const QString& reason);
    void BecomeProgress(const QString& caption, int count, bool withCancel, bool showNow);

private:
    void PlaceAtTopRight();

    std::unique_ptr<Ui::TfrmSmallPrBar> m_ui;
};

/// A window of the application's main window, captioned with the application's name, that shows a reason and
/// no bar, in the middle of the screen. Its timer is started. The caller deletes it.
TfrmSmallPrBar* ShowBusy(const QString& reason);

/// A window of the application's main window with a bar of `count` steps, at the top of the screen near the
/// main window's right edge. Its timer is started and shows it only with `showNow`. Without cancel it has a
/// wider bar, and neither button nor system menu. The caller deletes it.
TfrmSmallPrBar* ShowProgress(const QString& caption, int count, bool withCancel, bool showNow);

} // namespace lumoplot
