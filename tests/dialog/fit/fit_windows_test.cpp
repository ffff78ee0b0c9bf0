#include "dialog/wizard_fixture.h"

#include "common/fit_parameters.h"
#include "common/keyboard_walk.h"
#include "dialog/fit/compare_window.h"
#include "dialog/fit/fit_all_window.h"
#include "dialog/fit/fit_result_window.h"
#include "dialog/fit/function_chooser.h"
#include "dialog/fit/print_whole.h"
#include "fit/definition/fit_result.h"

#include <QClipboard>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTableView>
#include <QTableWidget>
#include <QTextBrowser>
#include <QTextDocument>
#include <cmath>

namespace lumoplot {
namespace {

/// The dialog on data sets that fall by half with each 1, 2, … units of X, with the Curve Fitting page in
/// front.
class FitWindows : public TWizardTest {
protected:
    void SetUp() override {
        Wizard.SetStartPage(TxyDataWizard::kCurveFittingPage);
        Show({"a", "b"});
        double halfLife = 0;
        for (TSeries* series : Graph.Series()) {
            halfLife += 1;
            series->Clear();
            for (int i = 0; i < 30; ++i)
                series->AddPoint(0.25 * i,
                                 3 * std::pow(2, -0.25 * i / halfLife) + 1 + 0.01 * ((i * 7) % 5 - 2));
        }
        Wizard.RefillPages();
    }
    TCurFit& Fit() { return Current().CurveFit(); }
    void ChooseHalfLife() {
        WhenModal<TFunctionChooser>([](TFunctionChooser& chooser) {
            ExpectKeysAreClear(chooser);
            ExpectEveryControlReached(chooser);
            ExpectEveryControlNamed(chooser);
            lumoplot::Type(chooser, "e_Search", QStringLiteral("half-life"));
            QTest::keyClick(&Control<QLineEdit>(chooser, "e_Search"), Qt::Key_Return);
        });
        Click("btnFunctions");
    }
    static QString CellOf(QWidget& window, const char* table, int row, int column) {
        return Control<QTableWidget>(window, table).item(row, column)->text();
    }
};

TEST_F(FitWindows, AFunctionIsChosenByKeysAndStartsNearTheData) {
    ChooseHalfLife();
    EXPECT_EQ(Fit().Expression(), "a*2^(-x/t) + c");
    EXPECT_EQ(Fit().Status(), TFitStatus::Function);
    EXPECT_NEAR(Fit().Parameter(1)->Value(), 3, 0.5);
    EXPECT_NEAR(Fit().Parameter(2)->Value(), 1, 0.4);
    Click("btnUndoStep");
    EXPECT_EQ(Fit().Expression(), "") << "it is one step";
}

TEST_F(FitWindows, StartValuesAreFoundForOwnEquations) {
    for (const char* name : {"p", "q", "r"}) AddParameter(Fit(), name, 50).SetVary(true);
    Choose("cbx_Status", 1);
    Type("m_Equation", QStringLiteral("p*exp(-x*q)+r"));
    Wizard.RefillPages();
    Click("btnFindStart");
    EXPECT_NEAR(Fit().Parameter(2)->Value(), std::log(2), 0.1);
    Click("btnUndoStep");
    EXPECT_EQ(Fit().Parameter(2)->Value(), 50);
}

TEST_F(FitWindows, TheResultHasItsFiguresUncertaintiesAndReport) {
    ChooseHalfLife();
    Click("btnFit");
    WhenModal<TFitResultWindow>([](TFitResultWindow& window) {
        EXPECT_TRUE(
            Control<QLabel>(window, "lblEnd").text().startsWith(QStringLiteral("The fit has converged")));
        EXPECT_EQ(CellOf(window, "t_Figures", 1, 0), QStringLiteral("t"));
        EXPECT_EQ(CellOf(window, "t_Correlations", 0, 1), QStringLiteral("1"));
        window.ShowPage(TFitResultWindow::TPage::Uncertainty);
        EXPECT_EQ(CellOf(window, "t_Intervals", 1, 4), QString());
        lumoplot::Click(window, "btnProfiles");
        lumoplot::Click(window, "btnBootstrap");
        for (const int column : {3, 4, 5}) { // of t, three ways
            const QStringList ends = CellOf(window, "t_Intervals", 1, column).split(QStringLiteral(" … "));
            ASSERT_EQ(ends.size(), 2) << column;
            EXPECT_LT(ends[0].toDouble(), 1.0) << column;
            EXPECT_GT(ends[1].toDouble(), 1.0) << column;
            EXPECT_LT(ends[1].toDouble() - ends[0].toDouble(), 0.05) << column;
        }
        lumoplot::Click(window, "btnCopyTable");
        EXPECT_TRUE(
            QGuiApplication::clipboard()->text().startsWith(QStringLiteral("Name\tValue\tStd. error\t")));
        window.ShowPage(TFitResultWindow::TPage::Report);
        EXPECT_TRUE(Control<QTextBrowser>(window, "m_Report")
                        .toPlainText()
                        .contains(QStringLiteral("Durbin-Watson")));
        QTest::keyClick(&window, Qt::Key_Escape);
    });
    Click("btnResult");
    EXPECT_TRUE(Sink.Texts.empty());
}

TEST(PrintedReport, WideTablesFitOnThePage) {
    const QSizeF paper(600, 800);
    QTextDocument document;
    document.setHtml("<p>Some words that go on in the next line.</p>");
    EXPECT_EQ(PageThatHolds(document, paper), paper);
    const QString cells = QStringLiteral("<td class=\"line\">-0.123456</td>").repeated(20);
    document.setHtml("<style>.line { white-space: nowrap; }</style><table><tr>" + cells + "</tr></table>");
    const QSizeF page = PageThatHolds(document, paper);
    EXPECT_GT(page.width(), 20 * QFontMetricsF(document.defaultFont()).horizontalAdvance("-0.123456"));
    EXPECT_NEAR(page.width() / page.height(), 0.75, 1e-9);
}

TEST_F(FitWindows, AMinimumOfTheComparisonIsTaken) {
    ChooseHalfLife();
    Fit().Parameter(2)->SetValue(40);
    WhenModal<TCompareWindow>([](TCompareWindow& window) {
        Control<QSpinBox>(window, "se_Starts").setValue(5);
        EXPECT_FALSE(Control<QPushButton>(window, "btnTake").isEnabled());
        lumoplot::Click(window, "btnRun");
        EXPECT_EQ(Control<QTableWidget>(window, "t_Procedures").rowCount(), 4);
        EXPECT_TRUE(CellOf(window, "t_Procedures", 3, 1).endsWith(QStringLiteral(" of 5")));
        EXPECT_TRUE(Control<QLabel>(window, "lblMinima")
                        .text()
                        .contains(QStringLiteral("of 5 starts end in the best")));
        ExpectKeysAreClear(window);
        ExpectEveryControlReached(window);
        ExpectEveryControlNamed(window);
        QTest::keyClick(&Control<QTableWidget>(window, "t_Minima"), Qt::Key_Home, Qt::ControlModifier);
        lumoplot::Click(window, "btnTake");
    });
    Click("btnCompare");
    EXPECT_NEAR(Fit().Parameter(2)->Value(), 1, 0.02);
    Click("btnUndoStep");
    EXPECT_EQ(Fit().Parameter(2)->Value(), 40);
}

TEST_F(FitWindows, AllDataSetsAreFittedAndTheirParametersBecomeDataSets) {
    ChooseHalfLife();
    for (const char* wish : {"btnKeep", "btnMakeSets"}) {
        WhenModal<TFitAllWindow>([wish](TFitAllWindow& window) {
            EXPECT_FALSE(Control<QPushButton>(window, wish).isEnabled());
            lumoplot::Click(window, "btnRun");
            EXPECT_EQ(CellOf(window, "t_Results", 1, 2), QStringLiteral("converged"));
            EXPECT_TRUE(Control<QLabel>(window, "lblAgreement").isVisible());
            ExpectKeysAreClear(window);
            ExpectEveryControlReached(window);
            ExpectEveryControlNamed(window);
            lumoplot::Click(window, "btnShare");
            EXPECT_TRUE(Control<QLineEdit>(window, "e_Shared").text().endsWith(QLatin1Char('c')));
            EXPECT_NEAR(CellOf(window, "t_Results", 1, 5).toDouble(), 2, 0.05);
            lumoplot::Click(window, wish);
        });
        Click("btnFitAll");
    }
    EXPECT_NEAR(Graph.FindSeries(2)->CurveFit().Parameter(2)->Value(), 2, 0.05);
    EXPECT_TRUE(Graph.FindSeries(2)->CurveFit().Result());
    EXPECT_EQ(Names(), (std::vector<std::string>{"a", "b", "a", "t", "c"}));
    const TSeries& halfLives = *Graph.FindSeries(4);
    ASSERT_EQ(halfLives.Count(), 2);
    Click("btnUndoStep");
    EXPECT_EQ(Names().size(), 2u);
}

TEST_F(FitWindows, AParameterInCommonHasOneValueForAllDataSets) {
    ChooseHalfLife();
    WhenModal<TFitAllWindow>([](TFitAllWindow& window) {
        lumoplot::Type(window, "e_Shared", QStringLiteral("c"));
        lumoplot::Click(window, "btnRun");
        EXPECT_EQ(CellOf(window, "t_Results", 0, 7), CellOf(window, "t_Results", 1, 7));
        EXPECT_NEAR(CellOf(window, "t_Results", 0, 7).toDouble(), 1, 0.05);
        EXPECT_NE(CellOf(window, "t_Results", 0, 5), CellOf(window, "t_Results", 1, 5));
        window.reject();
    });
    Click("btnFitAll");
}

// The errors of the points count only where the page says so.
TEST_F(FitWindows, PointsAreWeighedWhereThatIsChosen) {
    ChooseHalfLife();
    Find<QTabWidget>("lists").setCurrentIndex(2);
    Click("cb_ByYErrors");
    EXPECT_TRUE(Fit().UsesYErrors());
    EXPECT_TRUE(Find<QWidget>("cbx_ErrorSource").isEnabled());
    for (const auto& [item, told] : {std::pair{1, "errors are absolute"}, {0, "errors are scaled"}}) {
        Choose("cbx_ErrorSource", item);
        Current().SetYErrors(std::vector<double>(30, 0.01));
        Click("btnFit");
        EXPECT_TRUE(Find<QPlainTextEdit>("m_FitResult").toPlainText().contains(QLatin1String(told)));
    }
    while (Fit().UsesYErrors()) Click("btnUndoStep");
    EXPECT_FALSE(Find<QWidget>("cbx_ErrorSource").isEnabled());
    Choose("cbx_Robust", 3);
    EXPECT_EQ(Fit().Weighting().Robust, TRobust::Tukey);
    EXPECT_TRUE(
        Find<QLabel>("lblWeights").text().startsWith(QStringLiteral("The points have no standard errors")));
    auto& table = *Wizard.findChild<QTableView*>(QStringLiteral("t_Parameters"));
    const QModelIndex tie = table.model()->index(2, 7);
    ASSERT_TRUE(table.model()->setData(tie, QStringLiteral("a/3")));
    EXPECT_TRUE(Fit().Parameter(3)->IsTied());
    Click("btnUndoStep");
    EXPECT_FALSE(Fit().Parameter(3)->IsTied());
}

TEST_F(FitWindows, WhatWasWorkedOutOfTheUncertaintyIsInTheReport) {
    ChooseHalfLife();
    Fit().Parameter(2)->SetBounds(0, 0.8);
    Click("btnFit");
    EXPECT_TRUE(Find<QPlainTextEdit>("m_FitResult")
                    .toPlainText()
                    .contains(QStringLiteral("t = 0.8 on its upper bound")));
    EXPECT_EQ(
        Wizard.findChild<QTableView*>(QStringLiteral("t_Parameters"))->model()->index(1, 2).data().toString(),
        QStringLiteral("on Max"));
    WhenModal<TFitResultWindow>([](TFitResultWindow& window) {
        window.ShowPage(TFitResultWindow::TPage::Report);
        const auto report = [&] { return Control<QTextBrowser>(window, "m_Report").toPlainText(); };
        EXPECT_FALSE(report().contains(QStringLiteral("Uncertainty")));
        EXPECT_TRUE(report().contains(QStringLiteral("on its bound")));
        window.ShowPage(TFitResultWindow::TPage::Uncertainty);
        Control<QSpinBox>(window, "se_Resamples").setValue(100);
        lumoplot::Click(window, "btnBootstrap");
        lumoplot::Click(window, "btnProfiles");
        EXPECT_TRUE(report().contains(QStringLiteral("The bootstrap has ")));
        ExpectEveryControlReached(window);
        window.ShowPage(TFitResultWindow::TPage::Report);
        ExpectKeysAreClear(window);
        ExpectEveryControlReached(window);
        ExpectEveryControlNamed(window);
        window.reject();
    });
    Click("btnResult");
}

} // namespace
} // namespace lumoplot
