// The General page: name, visibility, Y axis, baseline and drawing style of the current data set.
#pragma once

#include "dialog/common/wizard_page.h"

#include <memory>

namespace Ui {
class TGeneralPage;
}

class QLineEdit;
class QSpinBox;

namespace lumoplot {

class TYErrorGroup;

class TGeneralPage : public TWizardPage {
    Q_OBJECT

public:
    explicit TGeneralPage(TWizardContext& context, QWidget* parent = nullptr);
    ~TGeneralPage() override;

    void FillFrom(TSeries& series) override;
    void ShowNothing() override;
    void RefreshAfterPreview(TSeries& series) override;

private:
    void ConnectNameAndVisibility();
    void ConnectBaseline();
    void ConnectStyle();
    void ShowPointSize(const TSeries& series);
    void ShowBaseline(const TSeries& series);
    void EnableBaseline(bool secondAxis);
    void EnablePointControls();
    void EnableLineControls();
    void SetActiveOfAll(bool others);
    void StyleOthers();
    void ChangePointShape(TSeries& series, int item);
    void ChangeLineStyle(TSeries& series, int item);

    std::unique_ptr<Ui::TGeneralPage> m_ui;
    TYErrorGroup* m_yErrors;
    std::string m_filledName; ///< a name that is typed switches the automatic one off, unless it is this one
    bool m_filledAutoName = false;
};

} // namespace lumoplot
