// The Regressions page: which regression the current data set draws, its control values, the look of its
// line, and its bounds. Says what the regression found, or why it found nothing.
#pragma once

#include "dialog/common/wizard_page.h"

#include <cstdint>
#include <memory>

namespace Ui {
class TRegressionsPage;
}

namespace lumoplot {

class TRegressionsPage : public TWizardPage {
    Q_OBJECT

public:
    explicit TRegressionsPage(TWizardContext& context, QWidget* parent = nullptr);
    ~TRegressionsPage() override;

    /// The regression list keeps its item for a regression that it does not offer.
    void FillFrom(TSeries& series) override;
    void ShowNothing() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void KeepControlsInPlace();
    void ConnectRegression();
    void ConnectBounds();
    void EnableLineControls();
    void EnableBoundsControls();
    void ShowControlCaptions();
    void ReadRows(TSeries& series);
    void ShowResults(TSeries& series);

    std::unique_ptr<Ui::TRegressionsPage> m_ui;
    std::uint64_t m_rowsTried = 0; ///< stamp of the data whose rows were read, or could not be
};

} // namespace lumoplot
