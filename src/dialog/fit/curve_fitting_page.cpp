#include "dialog/fit/curve_fitting_page.h"

#include "controls/number_edit.h"
#include "data/series/ds_info.h"
#include "dialog/common/color_button.h"
#include "dialog/common/typing_key.h"
#include "dialog/fit/fit_result_text.h"
#include "dialog/fit/generate_points.h"
#include "dialog/fit/template_group.h"
#include "dialogs/edit_script.h"
#include "fit/equation_editor/equation_editor.h"
#include "fit/equation_editor/fit_settings_group.h"
#include "fit/equation_editor/formula_group.h"
#include "fit/equation_editor/parameter_group.h"
#include "graph/fitting/series_fitting.h"
#include "support/update_hold.h"
#include "ui_curve_fitting_page.h"

#include <QClipboard>
#include <QGuiApplication>
#include <sstream>

namespace lumoplot {
namespace {

constexpr int kResultDigits = 6;
constexpr int kCopiedDigits = 12;

} // namespace
TCurveFittingPage::TCurveFittingPage(TWizardContext& context, QWidget* parent)
    : TWizardPage(context, parent), m_ui(std::make_unique<Ui::TCurveFittingPage>()) {
    m_ui->setupUi(this);
    MakeGroups();
    ConnectCurve();
    ConnectActions();
}

// An edit that loses the focus while the page's base destroys it must not reach the groups.
TCurveFittingPage::~TCurveFittingPage() {
    delete m_formula;
    delete m_parameters;
    delete m_templates;
    delete m_settings;
}

void TCurveFittingPage::MakeGroups() {
    m_parameters = new TParameterGroup(*this,
                                       {.List = m_ui->lb_Parameters,
                                        .New = m_ui->btnAddParam,
                                        .Delete = m_ui->btnDeleteParam,
                                        .Name = m_ui->e_ParamName,
                                        .Value = m_ui->e_ParamValue,
                                        .Units = m_ui->e_ParamUnits,
                                        .Description = m_ui->e_ParamDescription,
                                        .Vary = m_ui->cb_ParamVary,
                                        .ShowInLegend = m_ui->cb_ParamInLegend},
                                       this);
    m_formula = new TFormulaGroup(*this,
                                  {.Formula = m_ui->m_Equation,
                                   .XVarName = m_ui->e_XVarName,
                                   .Fault = m_ui->lblFault,
                                   .AddUnknown = m_ui->btnAddUnknown},
                                  *m_parameters, this);
    m_templates = new TTemplateGroup(*this,
                                     {.List = m_ui->lb_Templates,
                                      .New = m_ui->btnAddTemplate,
                                      .Delete = m_ui->btnDeleteTemplate,
                                      .First = m_ui->btnTemplateFirst,
                                      .Up = m_ui->btnTemplateUp,
                                      .Down = m_ui->btnTemplateDown,
                                      .Name = m_ui->e_TemplateName,
                                      .Description = m_ui->e_TemplateDescription,
                                      .Text = m_ui->m_TemplateText},
                                     this);
    m_settings = new TFitSettingsGroup(*this,
                                       {.NPoints = m_ui->e_NPoints,
                                        .Tolerance = m_ui->e_Tolerance,
                                        .Status = m_ui->cbx_Status,
                                        .LeftMargin = m_ui->e_LeftMargin,
                                        .RightMargin = m_ui->e_RightMargin,
                                        .IterMax = m_ui->e_IterMax,
                                        .Procedure = m_ui->cbx_Procedure},
                                       this);
}

TCurFit* TCurveFittingPage::Fit() {
    TSeries* series = Context().CurrSeries();
    return series ? &series->CurveFit() : nullptr;
}

TCurFit* TCurveFittingPage::FitToEdit() {
    return Context().Filling() ? nullptr : Fit();
}

void TCurveFittingPage::ChangeFit(const char* what, const std::function<void()>& change) {
    Edit("fit of ", TypingKey(), [&](TSeries& series) {
        Context().Session().NameStep("fit of " + series.SeriesName() + ": " + what);
        change();
    });
}

void TCurveFittingPage::FitEdited() {
    EnableControls();
    ShowFunction();
    ShowResult();
}

void TCurveFittingPage::ConnectCurve() {
    connect(m_ui->cbx_CurveLine, &QComboBox::currentIndexChanged, this, [this](int item) {
        EnableControls();
        Edit("curve of ", {m_ui->cbx_CurveLine}, [&](TSeries& series) {
            const TUpdateHold hold(series);
            series.CurveFit().SetShowCurve(item > 0);
            if (item > 0) series.CurveFit().SetCurveStyle(item - 1);
        });
        ShowFunction();
    });
    connect(m_ui->se_CurveWidth, &QSpinBox::valueChanged, this,
            [this](int width) { EditFit("curve width", [&](TCurFit& fit) { fit.SetCurveWidth(width); }); });
    connect(m_ui->b_CurveColor, &TColorButton::ColorPicked, this, [this](TColor color) {
        EditFit("curve colour", [&](TCurFit& fit) { fit.SetCurveColor(color); });
    });
}

void TCurveFittingPage::ConnectActions() {
    connect(m_ui->btnFit, &QPushButton::clicked, this, &TCurveFittingPage::RunFit);
    connect(m_ui->btnCopyResult, &QPushButton::clicked, this, [this] {
        if (const TCurFit* fit = Fit())
            QGuiApplication::clipboard()->setText(QString::fromStdString(FitResultText(*fit, kCopiedDigits)));
    });
    connect(m_ui->btnReport, &QPushButton::clicked, this, &TCurveFittingPage::ShowSettings);
    connect(m_ui->btnGenerate, &QPushButton::clicked, this, &TCurveFittingPage::Generate);
    connect(m_ui->btnMore, &QPushButton::clicked, this, &TCurveFittingPage::RunEditor);
}

void TCurveFittingPage::FillFrom(TSeries& series) {
    const TFillingScope filling(Context());
    m_settings->Fill();
    m_parameters->Refill();
    m_templates->Refill();
    m_formula->Fill();
    ShowCurveLook(series.CurveFit());
    FitEdited();
}

void TCurveFittingPage::ShowCurveLook(const TCurFit& fit) {
    m_ui->cbx_CurveLine->setCurrentIndex(fit.ShowCurve() ? fit.CurveStyle() + 1 : 0);
    ShowInteger(*m_ui->se_CurveWidth, fit.CurveWidth());
    m_ui->b_CurveColor->SetColor(fit.CurveColor());
}

void TCurveFittingPage::ShowNothing() {
    m_settings->Fill();
    m_parameters->Fill();
    m_templates->Fill();
    m_formula->ShowNothing();
    m_ui->plot->ShowNothing();
    m_ui->m_FitResult->hide();
}

void TCurveFittingPage::Commit(TSeries&) {
    m_settings->TakeMargins();
}

void TCurveFittingPage::Leave(TSeries&) {
    m_settings->TakeMargins();
}

// The graph has run the fit.
void TCurveFittingPage::RefreshAfterPreview(TSeries& series) {
    FillFrom(series);
}

void TCurveFittingPage::showEvent(QShowEvent* event) {
    TWizardPage::showEvent(event);
    ShowFunction();
}

void TCurveFittingPage::EnableControls() {
    const TCurFit* fit = Fit();
    const bool enabled = fit && fit->IsEnabled();
    for (QWidget* control :
         {static_cast<QWidget*>(m_ui->e_NPoints), static_cast<QWidget*>(m_ui->e_Tolerance),
          static_cast<QWidget*>(m_ui->e_LeftMargin), static_cast<QWidget*>(m_ui->e_RightMargin),
          static_cast<QWidget*>(m_ui->e_IterMax), static_cast<QWidget*>(m_ui->e_XVarName),
          static_cast<QWidget*>(m_ui->m_Equation), static_cast<QWidget*>(m_ui->cbx_CurveLine)})
        control->setEnabled(enabled);
    const bool hasLine = enabled && m_ui->cbx_CurveLine->currentIndex() > 0;
    m_ui->se_CurveWidth->setEnabled(hasLine);
    m_ui->b_CurveColor->setVisible(hasLine);
    m_ui->btnFit->setEnabled(fit && fit->ShowsResult());
}

void TCurveFittingPage::ShowResult() {
    const TCurFit* fit = Fit();
    const std::string text = fit && fit->ShowsResult() ? FitResultText(*fit, kResultDigits) : "";
    const QString shown = QString::fromStdString(text).trimmed();
    if (m_ui->m_FitResult->toPlainText() != shown) m_ui->m_FitResult->setPlainText(shown);
    m_ui->m_FitResult->setVisible(!shown.isEmpty());
    m_ui->btnCopyResult->setEnabled(!shown.isEmpty());
}

// Only for those who look: taking the data of a large set takes its time.
void TCurveFittingPage::ShowFunction() {
    TSeries* series = Context().CurrSeries();
    if (!series || !isVisible()) return;
    Guarded([&] {
        const TCurFit& fit = series->CurveFit();
        const TFormulaCheck check = m_formula->Check();
        if (!fit.IsEnabled()) m_ui->m_Equation->Mark({});
        if (series->ExtentsStale()) series->RecalcExtents();
        const QString note =
            fit.IsEnabled() ? QString() : QStringLiteral("Choose a Curve Fitting Status to draw a function");
        m_ui->plot->Show(*series, fit.IsEnabled() ? check.Model.get() : nullptr, note);
    });
}

// As the graph does before it draws, but from the values as they stand.
void TCurveFittingPage::RunFit() {
    Edit("fit ", [&](TSeries& series) {
        m_settings->TakeMargins();
        RunPendingFit(series);
        Context().RefillPages();
    });
}

void TCurveFittingPage::Generate() {
    Edit("generate points of ", [&](TSeries& series) {
        m_settings->TakeMargins();
        const bool isManual = series.DataSourceInfo().Kind() == TSourceKind::Manual;
        if (isManual && series.Count() > 0 && !AskYesNo("Data from Current DataSet Will be lost, Continue?"))
            return;
        GeneratePoints(series);
        Context().Session().NameStep("generate " + std::to_string(series.Count()) + " points");
        Context().RefillPages();
    });
}

// What is edited in the report goes nowhere.
void TCurveFittingPage::ShowSettings() {
    TCurFit* fit = FitToEdit();
    if (!fit) return;
    Guarded([&] {
        m_settings->TakeMargins();
        std::vector<std::string> lines = fit->SettingsReport();
        std::istringstream result(FitResultText(*fit, kCopiedDigits));
        for (std::string line; std::getline(result, line);) lines.push_back(line);
        EditScript(window(), &lines, QStringLiteral("LumoPlot Curve Fitting Settings"));
    });
}

void TCurveFittingPage::RunEditor() {
    Edit("edit fit of ", [&](TSeries& series) {
        m_settings->TakeMargins();
        if (!EditCurFit(window(), series.CurveFit())) return;
        Context().RefillPages();
    });
}

} // namespace lumoplot
