// The page of the data editor that edits the curve fit of a data set: its equation, parameters and templates,
// the settings of the fitting run and the look of the curve. A small plot follows what is typed.
#pragma once

#include "dialog/common/wizard_page.h"
#include "fit/equation_editor/fit_access.h"

#include <memory>

namespace Ui {
class TCurveFittingPage;
}

namespace lumoplot {

class TFitSettingsGroup;
class TFormulaGroup;
class TParameterGroup;
class TTemplateGroup;

class TCurveFittingPage : public TWizardPage, private TFitAccess {
    Q_OBJECT

public:
    explicit TCurveFittingPage(TWizardContext& context, QWidget* parent = nullptr);
    ~TCurveFittingPage() override;

    void FillFrom(TSeries& series) override;
    void ShowNothing() override;
    void Commit(TSeries& series) override;
    void Leave(TSeries& series) override;
    void RefreshAfterPreview(TSeries& series) override;

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    TCurFit* Fit() override;
    TCurFit* FitToEdit() override;
    void ChangeFit(const char* what, const std::function<void()>& change) override;
    void FitEdited() override;

    void MakeGroups();
    void ConnectCurve();
    void ConnectActions();
    void ShowCurveLook(const TCurFit& fit);
    void EnableControls();
    void ShowFunction();
    void ShowResult();
    void RunFit();
    void TakeBetter();
    void Generate();
    void ShowSettings();
    void RunEditor();
    void ChooseFunction();
    void FindStart();
    void FindStartOf(TSeries& series);
    void Compare();
    void FitAll();
    void OpenResult();
    void OpenReport();
    bool HasResult();
    void ShowWeightsText();
    bool KnowsAllNames();

    std::unique_ptr<Ui::TCurveFittingPage> m_ui;
    TParameterGroup* m_parameters = nullptr;
    TFormulaGroup* m_formula = nullptr;
    TTemplateGroup* m_templates = nullptr;
    TFitSettingsGroup* m_settings = nullptr;
};

} // namespace lumoplot
