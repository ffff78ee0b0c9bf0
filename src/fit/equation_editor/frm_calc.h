// The equation editor: edits a curve fit's formula with a keypad, its parameters and the settings of the
// fitting run, evaluates it at one x, and keeps it in function files. It works on a fit that belongs to its
// caller and writes every change straight into it.
#pragma once

#include "fit/equation_editor/fit_access.h"

#include <QDialog>
#include <memory>

namespace Ui {
class TfrmCalc;
}

namespace lumoplot {

class TFitSettingsGroup;
class TFormulaGroup;
class TParameterGroup;

class TfrmCalc : public QDialog, private TFitAccess {
    Q_OBJECT

public:
    // Modal results.
    static constexpr int kOk = 1;
    static constexpr int kCancel = 2;

    /// Borrows the fit. The folder for function files is made here and filled when it has none.
    explicit TfrmCalc(TCurFit& fit, QWidget* parent = nullptr);
    ~TfrmCalc() override;

    void reject() override { done(kCancel); }

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    TCurFit* Fit() override { return &m_fit; }
    TCurFit* FitToEdit() override { return &m_fit; }
    void FitEdited() override;

    void FitOnScreen(const QSize& room);
    void MakeGroups();
    void ConnectEvaluation();
    void ConnectPieces();
    void ConnectClosing();
    void PrepareFolder();
    void Fill();
    void ShowFunctionHelp(int item);
    void ShowXName();
    void Insert(const QString& piece);
    void InsertFunction();
    void InsertParameter();
    void Evaluate();
    void SaveAs();
    void Open();
    void ShowFileName(const QString& name);

    std::unique_ptr<Ui::TfrmCalc> m_ui;
    TCurFit& m_fit;
    TParameterGroup* m_parameters = nullptr;
    TFormulaGroup* m_formula = nullptr;
    TFitSettingsGroup* m_settings = nullptr;
    QString m_folder;
    QString m_fileName = QStringLiteral("noname.lfn");
    double m_x = 0;
};

} // namespace lumoplot
