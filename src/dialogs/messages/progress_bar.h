// The larger progress window: as the small one, with room for a reason, for how far the work has come in
// words, and for an extra reason.
#pragma once

#include "dialogs/messages/step_window.h"

#include <memory>

namespace Ui {
class TfrmPrBar;
}

namespace lumoplot {

class TfrmPrBar : public TStepWindow {
    Q_OBJECT

public:
    explicit TfrmPrBar(QWidget* owner);
    ~TfrmPrBar() override;

    void SetReason(const QString& text);
    void SetProgressText(const QString& text);
    /// Shown below the bar; an empty text hides it.
    void SetExtraReason(const QString& text);

protected:
    /// In the middle of the screen.
    void showEvent(QShowEvent* event) override;

private:
    std::unique_ptr<Ui::TfrmPrBar> m_ui;
};

} // namespace lumoplot
