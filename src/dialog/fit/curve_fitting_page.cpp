#include "dialog/fit/curve_fitting_page.h"

#include "controls/number_edit.h"
#include "controls/tab_focus.h"
#include "controls/texts.h"
#include "data/series/ds_info.h"
#include "data/series/plotted_values.h"
#include "dialog/common/color_button.h"
#include "dialog/common/narrow_button.h"
#include "dialog/common/typing_key.h"
#include "dialog/fit/compare_window.h"
#include "dialog/fit/fit_all_window.h"
#include "dialog/fit/fit_result_text.h"
#include "dialog/fit/fit_result_window.h"
#include "dialog/fit/function_chooser.h"
#include "dialog/fit/generate_points.h"
#include "dialog/fit/template_group.h"
#include "dialogs/edit_script.h"
#include "dialogs/hand_edit.h"
#include "dialogs/messages/progress_window.h"
#include "fit/equation_editor/equation_editor.h"
#include "fit/equation_editor/fit_settings_group.h"
#include "fit/equation_editor/formula_group.h"
#include "fit/equation_editor/parameter_group.h"
#include "fit/functions/ready_functions.h"
#include "fit/functions/start_values.h"
#include "graph/fitting/series_fitting.h"
#include "graph/model/axis.h"
#include "support/update_hold.h"
#include "ui_curve_fitting_page.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QTabBar>
#include <sstream>

namespace lumoplot {
namespace {

constexpr int kResultDigits = 6;
constexpr int kCopiedDigits = 12;

} // namespace

TCurveFittingPage::TCurveFittingPage(TWizardContext& context, QWidget* parent)
    : TWizardPage(context, parent), m_ui(std::make_unique<Ui::TCurveFittingPage>()) {
    m_ui->setupUi(this);
    FocusByItsKeys(*m_ui->lists->tabBar());
    MakeGroups();
    ConnectCurve();
    ConnectActions();
    for (QPushButton* button : {m_ui->btnFunctions, m_ui->btnFindStart, m_ui->btnFit, m_ui->btnCompare,
                                m_ui->btnFitAll, m_ui->btnGenerate, m_ui->btnMore})
        AllowNarrow(*button);
}

// An edit that loses the focus while the page's base destroys it must not reach the groups.
TCurveFittingPage::~TCurveFittingPage() {
    delete m_formula;
    delete m_parameters;
    delete m_templates;
    delete m_settings;
}

void TCurveFittingPage::MakeGroups() {
    m_parameters = new TParameterGroup(*this, *this, this);
    m_formula = new TFormulaGroup(*this, *this, *m_parameters, this);
    m_templates = new TTemplateGroup(*this, *this, this);
    m_settings = new TFitSettingsGroup(*this, *this, this);
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
    m_parameters->ShowTable();
    ShowFunction();
    ShowResult();
    ShowWeightsText();
}

void TCurveFittingPage::ShowWeightsText() {
    const TSeries* series = Context().CurrSeries();
    if (!series) return m_ui->lblWeights->clear();
    const TCurFit& fit = series->CurveFit();
    QStringList sentences;
    if (!series->HasYErrors())
        sentences << TTexts::tr("The points have no standard errors. A column, a constant, a percentage or "
                                "counting statistics give them some: page General, Errors of Y.");
    else if (fit.UsesYErrors())
        sentences << TTexts::tr("Points without a standard error above 0 are left out and counted.");
    if (fit.Weighting().Robust != TRobust::None)
        sentences << TTexts::tr("Points far off the curve lose weight; those that count for little are "
                                "ringed in the plot.");
    m_ui->lblWeights->setText(sentences.join(QLatin1Char(' ')));
}

// Names that the equation uses become parameters when the user wants them to; false leaves all as it is.
bool TCurveFittingPage::KnowsAllNames() {
    if (!FitToEdit()) return false;
    const std::vector<std::string> names = m_formula->Check().UnknownNames;
    if (names.empty()) return true;
    std::string list;
    for (std::size_t i = 0; i < names.size(); ++i)
        list += (i == 0 ? "" : i + 1 == names.size() ? " and " : ", ") + names[i];
    const std::string question = names.size() == 1
                                     ? list + " is no parameter yet. Make it one that the fit varies?"
                                     : list + " are no parameters yet. Make them ones that the fit varies?";
    if (!AskYesNo(question)) return false;
    m_ui->btnAddUnknown->click();
    return true;
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
    m_ui->btnFit->setShortcut(Qt::Key_F5);
    connect(m_ui->btnFit, &QPushButton::clicked, this, &TCurveFittingPage::RunFit);
    connect(m_ui->btnTakeBetter, &QPushButton::clicked, this, &TCurveFittingPage::TakeBetter);
    connect(m_ui->btnCopyResult, &QPushButton::clicked, this, [this] {
        if (const TCurFit* fit = Fit())
            QGuiApplication::clipboard()->setText(QString::fromStdString(FitResultText(*fit, kCopiedDigits)));
    });
    connect(m_ui->btnReport, &QPushButton::clicked, this, &TCurveFittingPage::OpenReport);
    connect(m_ui->btnResult, &QPushButton::clicked, this, &TCurveFittingPage::OpenResult);
    connect(m_ui->btnFunctions, &QPushButton::clicked, this, &TCurveFittingPage::ChooseFunction);
    connect(m_ui->btnFindStart, &QPushButton::clicked, this, &TCurveFittingPage::FindStart);
    connect(m_ui->btnCompare, &QPushButton::clicked, this, &TCurveFittingPage::Compare);
    connect(m_ui->btnFitAll, &QPushButton::clicked, this, &TCurveFittingPage::FitAll);
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
    m_ui->lblBetter->hide();
    m_ui->btnTakeBetter->hide();
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

// Return takes what is typed or presses the button that has the focus; it does not close the window.
void TCurveFittingPage::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return TWizardPage::keyPressEvent(event);
    if (auto* button = qobject_cast<QAbstractButton*>(focusWidget())) button->click();
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
    const bool hasEquation = fit && !fit->Expression().empty();
    for (QWidget* button : {m_ui->btnFit, m_ui->btnFindStart, m_ui->btnCompare, m_ui->btnFitAll})
        button->setEnabled(enabled && hasEquation);
}

void TCurveFittingPage::ShowResult() {
    const TCurFit* fit = Fit();
    const std::string text = fit && fit->ShowsResult() ? FitResultText(*fit, kResultDigits) : "";
    const QString shown = QString::fromStdString(text).trimmed();
    if (m_ui->m_FitResult->toPlainText() != shown) m_ui->m_FitResult->setPlainText(shown);
    m_ui->m_FitResult->setVisible(!shown.isEmpty());
    m_ui->btnCopyResult->setEnabled(!shown.isEmpty());
    m_ui->btnResult->setEnabled(HasResult());
    const bool isOffered = fit && fit->Result() && !fit->IsStale() && !fit->Result()->BetterValues.empty();
    m_ui->lblBetter->setVisible(isOffered);
    m_ui->btnTakeBetter->setVisible(isOffered);
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
        const QString note = !fit.IsEnabled() ? TTexts::tr("Choose a Curve Fitting Status to draw a function")
                             : check.UnknownNames.empty()
                                 ? QString()
                                 : TTexts::tr("The function has names without a value");
        m_ui->plot->Show(*series, fit.IsEnabled() ? check.Model.get() : nullptr, note);
    });
}

// As the graph does before it draws, but from the values as they stand. A function that was only drawn shows
// its result from now on.
void TCurveFittingPage::RunFit() {
    if (!KnowsAllNames()) return;
    Edit("fit ", [&](TSeries& series) {
        m_settings->TakeMargins();
        if (!series.CurveFit().ShowsResult()) series.CurveFit().SetStatus(TFitStatus::FinalResult);
        RunPendingFit(series);
        Context().RefillPages();
    });
}

void TCurveFittingPage::TakeBetter() {
    Edit("better minimum of ", [&](TSeries& series) {
        TakeBetterMinimum(series.CurveFit());
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
        if (!ReadEveryRow(series, window())) return; // for the range of X
        const bool hadErrors = series.HasYErrors();
        GeneratePoints(series);
        Context().Session().NameStep("generate " + std::to_string(series.Count()) + " points");
        Context().RefillPages();
        if (hadErrors) ShowMessage("The points are those of the curve now: their errors of Y are gone.");
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
        EditScript(window(), &lines, TTexts::tr("LumoPlot Curve Fitting Settings"));
    });
}

bool TCurveFittingPage::HasResult() {
    const TCurFit* fit = Fit();
    return fit && fit->ShowsResult() && fit->Result() && !fit->IsStale() && fit->FitError().empty();
}

void TCurveFittingPage::OpenResult() {
    if (!HasResult()) return;
    Guarded([&] { TFitResultWindow(*Context().CurrSeries(), window()).exec(); });
}

// Of a fit that has not run there are its settings to report.
void TCurveFittingPage::OpenReport() {
    if (!HasResult()) return ShowSettings();
    Guarded([&] {
        TFitResultWindow report(*Context().CurrSeries(), window());
        report.ShowPage(TFitResultWindow::TPage::Report);
        report.exec();
    });
}

void TCurveFittingPage::ChooseFunction() {
    if (!FitToEdit()) return;
    TFunctionChooser chooser(window());
    if (chooser.exec() != QDialog::Accepted || !chooser.Chosen()) return;
    const TReadyFunction& function = *chooser.Chosen();
    Edit("function of ", [&](TSeries& series) {
        Context().Session().NameStep("function of " + series.SeriesName() + ": " + function.Title);
        TCurFit& fit = series.CurveFit();
        UseReadyFunction(function, fit, UnitIn(series.Graph().XAxis()->Title()),
                         UnitIn(series.YAxisOfSeries()->Title()));
        if (!fit.IsEnabled()) fit.SetStatus(TFitStatus::Function);
        if (chooser.FindsStart() && series.Count() > 0) FindStartOf(series);
        Context().RefillPages();
    });
}

void TCurveFittingPage::FindStart() {
    if (!KnowsAllNames()) return;
    Edit("start values of ", [&](TSeries& series) {
        m_settings->TakeMargins();
        FindStartOf(series);
        Context().RefillPages();
    });
}

void TCurveFittingPage::FindStartOf(TSeries& series) {
    ReadRowsForResults(series);
    const TPlottedValues values = PlottedValues(series);
    TProgressWindow progress;
    TFitRun run;
    run.Progress = &progress;
    TakeWeighting(run, series.CurveFit(), values.YErrors);
    FindStartValues(series.CurveFit(), values.X, values.Y, run);
}

void TCurveFittingPage::Compare() {
    if (!KnowsAllNames()) return;
    m_settings->TakeMargins();
    Guarded([&] {
        ReadRowsForResults(*Context().CurrSeries());
        TCompareWindow compare(*Context().CurrSeries(), window());
        if (compare.exec() != QDialog::Accepted || !compare.Taken()) return;
        Edit("minimum of ", [&](TSeries& series) {
            std::size_t place = 0;
            for (int i = 1; i <= series.CurveFit().NParams(); ++i)
                if (series.CurveFit().Parameter(i)->Vary())
                    series.CurveFit().Parameter(i)->SetValue(compare.Taken()->Values[place++]);
            if (series.CurveFit().ShowsResult()) RunPendingFit(series);
            Context().RefillPages();
        });
    });
}

void TCurveFittingPage::FitAll() {
    if (!KnowsAllNames()) return;
    m_settings->TakeMargins();
    Guarded([&] {
        TFitAllWindow all(Context().WorkGraph(), *Context().CurrSeries(), window());
        if (all.exec() != QDialog::Accepted) return;
        const bool makesSets = all.Wish() == TFitAllWindow::TWish::MakeDataSets;
        const int number = Context().CurrSeries()->SeriesIndex();
        Context().Session().Change(makesSets ? "data sets of parameters" : "fits of data sets",
                                   [&] { makesSets ? all.MakeDataSets() : all.KeepFits(); });
        if (makesSets)
            Context().FillList(number);
        else
            Context().RefillPages();
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
