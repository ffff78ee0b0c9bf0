#include "dialog/wizard_fixture.h"

#include "common/fit_parameters.h"
#include "common/values_of.h"
#include "controls/value_edit.h"
#include "data/series/ds_info.h"
#include "dialog/common/color_button.h"
#include "dialog/fit/fit_plot.h"
#include "dialog/fit/fit_result_text.h"
#include "dialog/fit/generate_points.h"
#include "dialogs/hand_edit.h"
#include "fit/definition/cur_fit.h"
#include "fit/equation_editor/formula_edit.h"
#include "fit/equation_editor/frm_calc.h"
#include "graph/loading/rows_text.h"
#include "graph/loading/source_loading.h"

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableView>

namespace lumoplot {
namespace {

/// The dialog on a data set with its Curve Fitting page in front and a function drawn.
class CurveFittingPage : public TWizardTest {
protected:
    void SetUp() override {
        Wizard.SetStartPage(TxyDataWizard::kCurveFittingPage);
        Show({"a"});
        Choose("cbx_Status", 1);
    }
    TCurFit& Fit() { return Current().CurveFit(); }
    TFitPlot& Plot() { return Find<TFitPlot>("plot"); }
    std::string TextOf(const char* edit) { return Find<QLineEdit>(edit).text().toStdString(); }
    std::string Fault() { return Find<QLabel>("lblFault").text().toStdString(); }
    QStringList Items(const char* list) {
        QStringList items;
        for (int i = 0; i < Find<QListWidget>(list).count(); ++i)
            items << Find<QListWidget>(list).item(i)->text();
        return items;
    }
    QStringList ParameterNames() {
        QStringList names;
        const QAbstractItemModel& model = *Find<QTableView>("t_Parameters").model();
        for (int row = 0; row < model.rowCount(); ++row) names << model.index(row, 0).data().toString();
        return names;
    }
    /// Types into a cell of the table of parameters and takes it with the key.
    void TypeInCell(int row, int column, const QString& text, Qt::Key key = Qt::Key_Return) {
        auto& table = Find<QTableView>("t_Parameters");
        table.setFocus();
        table.setCurrentIndex(table.model()->index(row, column));
        QTest::keyClick(&table, Qt::Key_Return);
        auto& cell = dynamic_cast<QLineEdit&>(*QApplication::focusWidget());
        QTest::keyClick(&cell, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&cell, Qt::Key_Delete);
        QTest::keyClicks(&cell, text);
        QTest::keyClick(&cell, key);
        QCoreApplication::processEvents(); // the view takes a text when the key has been handled
    }
    QString CellText(int row, int column) {
        return Find<QTableView>("t_Parameters").model()->index(row, column).data().toString();
    }
    /// Pixels of the plot that differ between two pictures of it.
    static int Difference(const QImage& a, const QImage& b) {
        int count = 0;
        for (int y = 0; y < a.height(); ++y)
            for (int x = 0; x < a.width(); ++x) count += a.pixel(x, y) != b.pixel(x, y);
        return count;
    }
};

// What the groups of controls do is shown by the tests of the equation editor, which has the same.
TEST_F(CurveFittingPage, EveryGroupWritesIntoTheFitOfTheDataSet) {
    Type("e_NPoints", QStringLiteral("321"));
    Choose("cbx_Procedure", 2);
    Type("m_Equation", QStringLiteral("2*x"));
    Type("e_RightMargin", QStringLiteral("1.98765"));
    Find<QWidget>("e_NPoints").setFocus();
    EXPECT_EQ(Fit().NPoints(), 321);
    EXPECT_EQ(Fit().ProcType(), TFitProcedure::ConjugateGradient);
    EXPECT_EQ(Fit().Expression(), "2*x");
    EXPECT_EQ(Fit().RightMargin(), 1.98765);
    Click("btnAddParam");
    Type("e_ParamName", QStringLiteral("rate"));
    Type("e_ParamValue", QStringLiteral("0.25"));
    Type("e_ParamUnits", QStringLiteral("1/s"));
    Click("cb_ParamVary");
    Click("cb_ParamInLegend");
    EXPECT_EQ(ParameterNames(), QStringList({"rate"}));
    EXPECT_EQ(Current().LegendText(), "a (rate=0.25 1/s)");
    EXPECT_TRUE(Fit().Parameter(1)->Vary());
    Click("btnDeleteParam");
    EXPECT_EQ(Fit().NParams(), 0);
    EXPECT_FALSE(Find<QLineEdit>("e_ParamValue").isEnabled());
}

TEST_F(CurveFittingPage, DeleteEmptiesTheCellsThatMayBeEmpty) {
    Click("btnAddParam");
    TypeInCell(0, 5, QStringLiteral("10"));
    TypeInCell(0, 4, QStringLiteral("1"));
    auto& table = Find<QTableView>("t_Parameters");
    for (const int column : {0, 1, 5, 4}) {
        table.setCurrentIndex(table.model()->index(0, column));
        QTest::keyClick(&table, column == 5 ? Qt::Key_Backspace : Qt::Key_Delete);
    }
    EXPECT_FALSE(Fit().Parameter(1)->IsBounded());
    EXPECT_EQ(Fit().Parameter(1)->Name(), "P1");
    EXPECT_EQ(Fit().Parameter(1)->Value(), 1.2);
    Click("btnUndoStep");
    EXPECT_EQ(Fit().Parameter(1)->Min(), 1) << "it is a step";
}

// A sentence below the equation and the result of a fit take room from what can give some.
TEST_F(CurveFittingPage, NothingScrollsInASmallWindow) {
    Wizard.resize(784, 545);
    const auto scrolls = [&](const QString& when) {
        QCoreApplication::processEvents();
        const auto& area = Find<QScrollArea>("scroll");
        EXPECT_FALSE(area.verticalScrollBar()->isVisible()) << when.toStdString();
        EXPECT_FALSE(area.horizontalScrollBar()->isVisible()) << when.toStdString();
    };
    scrolls("empty");
    Type("m_Equation", QStringLiteral("amplitude*exp(-rate*x)+offset"));
    EXPECT_TRUE(Find<QWidget>("btnAddUnknown").isVisible());
    scrolls("unknown names");
    Type("m_Equation", QStringLiteral("3x+1"));
    EXPECT_TRUE(Find<QWidget>("btnRewrite").isVisible());
    scrolls("a fault");
    Type("m_Equation", QStringLiteral("p*x"));
    Click("btnAddUnknown");
    Click("btnFit");
    EXPECT_TRUE(Find<QPlainTextEdit>("m_FitResult").isVisible());
    EXPECT_TRUE(Find<QPlainTextEdit>("m_FitResult")
                    .toPlainText()
                    .startsWith(QStringLiteral("The fit has converged (2 points)")));
    scrolls("a result");
    const auto& list = Find<QComboBox>("cbx_Procedure");
    EXPECT_GE(list.width(), list.fontMetrics().horizontalAdvance(list.itemText(3)) + 24);
}

TEST_F(CurveFittingPage, ParametersAreEditedInTheTable) {
    AddParameter(Fit(), "a", 9);
    AddParameter(Fit(), "b", 2);
    Wizard.RefillPages();
    Type("m_Equation", QStringLiteral("a*x+b"));
    const TDBLParameter& b = *Fit().Parameter(2);
    TypeInCell(1, 0, QStringLiteral("slope"));
    TypeInCell(1, 1, QStringLiteral("0.123456789"));
    TypeInCell(1, 4, QStringLiteral("-1"));
    TypeInCell(1, 5, QStringLiteral("1,5"), Qt::Key_Tab);
    TypeInCell(1, 6, QStringLiteral("m/s"));
    EXPECT_EQ(b.Name(), "slope");
    EXPECT_EQ(b.Value(), 0.123456789);
    EXPECT_EQ(b.Min(), -1);
    EXPECT_EQ(b.Max(), 1.5);
    EXPECT_EQ(b.Units, "m/s");
    EXPECT_EQ(TextOf("e_ParamName"), "slope") << "the edits show the row that is selected";
    struct TRefused {
        int column;
        const char* text;
    };
    for (const TRefused& c :
         {TRefused{0, "A"}, {0, "sin"}, {1, "y"}, {4, "2"}, {5, "-2"}, {5, "1e"}, {1, "."}}) {
        const QString before = CellText(1, c.column);
        TypeInCell(1, c.column, QLatin1String(c.text));
        EXPECT_EQ(CellText(1, c.column), before) << c.text;
    }
    TypeInCell(1, 4, QString());
    EXPECT_EQ(b.Min(), -INFINITY);
    TypeInCell(1, 1, QStringLiteral("7"), Qt::Key_Escape);
    EXPECT_EQ(b.Value(), 0.123456789);
    EXPECT_TRUE(Wizard.isVisible());
    auto& table = Find<QTableView>("t_Parameters");
    table.setCurrentIndex(table.model()->index(1, 3));
    QTest::keyClick(&table, Qt::Key_Space);
    EXPECT_TRUE(b.Vary());
    EXPECT_TRUE(Find<QCheckBox>("cb_ParamVary").isChecked());
    QTest::keyClick(&table, Qt::Key_Return);
    EXPECT_FALSE(b.Vary());
    Click("btnUndoStep");
    EXPECT_TRUE(Fit().Parameter(2)->Vary());
    Click("btnUndoStep");
    Click("btnUndoStep");
    EXPECT_EQ(Fit().Parameter(2)->Min(), -1) << "each edit is a step";
    EXPECT_TRUE(Sink.Texts.empty());
}

// (1, 10) and (2, 20) and one more: y = 10 x.
TEST_F(CurveFittingPage, TheTableShowsStandardErrorsUntilSomethingChanges) {
    Current().AddPoint(3, 30.3);
    AddParameter(Fit(), "a", 1).SetVary(true);
    AddParameter(Fit(), "b", 0);
    Wizard.RefillPages();
    Type("m_Equation", QStringLiteral("a*x+b"));
    Click("btnFit");
    EXPECT_EQ(Fit().Status(), TFitStatus::FinalResult) << "its result is to be seen";
    EXPECT_EQ(CellText(0, 2), QStringLiteral("0.0339")); // √(0.0321/2/14)
    EXPECT_EQ(CellText(1, 2), QStringLiteral("held"));
    TypeInCell(0, 1, QStringLiteral("3"));
    EXPECT_EQ(CellText(0, 2), QString());
    Fit().Parameter(2)->SetTie("a/10");
    Click("btnFit");
    EXPECT_GT(CellText(1, 2).toDouble(), 0);
    EXPECT_NEAR(10 * CellText(1, 2).toDouble(), CellText(0, 2).toDouble(), 1e-4);
    EXPECT_TRUE(QString::fromStdString(FitResultText(Fit(), 3))
                    .contains(QRegularExpression("b = [0-9.]+ ± [0-9.]+ \\(tied to a/10\\)")));
}

TEST_F(CurveFittingPage, WhatIsProbablyMeantIsTakenByOneClick) {
    struct TCase {
        const char* typed;
        const char* told;
        const char* rewritten;
    };
    const TCase cases[] = {
        {"exp(-x^2)", "a sign binds tighter than ^: write -(x^2)", "exp(-(x^2))"},
        {"2*log(x)", "log at 3: not known; ln, log10?", "2*ln(x)"},
    };
    for (const TCase& c : cases) {
        SCOPED_TRACE(c.typed);
        Type("m_Equation", QLatin1String(c.typed));
        EXPECT_NE(Fault().find(c.told), std::string::npos) << Fault();
        EXPECT_EQ(Find<TFormulaEdit>("m_Equation").extraSelections().size(), 1);
        Click("btnRewrite");
        EXPECT_EQ(Fit().Expression(), c.rewritten);
        EXPECT_EQ(Find<TFormulaEdit>("m_Equation").toPlainText(), QLatin1String(c.rewritten));
        EXPECT_FALSE(Find<QPushButton>("btnRewrite").isVisible());
        Click("btnUndoStep");
        EXPECT_EQ(Fit().Expression(), c.typed);
    }
}

TEST_F(CurveFittingPage, ReturnTakesAValueAndDoesNotClose) {
    AddParameter(Fit(), "a", 1);
    Wizard.RefillPages();
    for (const char* name :
         {"e_NPoints", "e_LeftMargin", "e_ParamValue", "e_ParamName", "se_CurveWidth", "cb_ParamVary"})
        QTest::keyClick(&Find<QWidget>(name), Qt::Key_Return);
    EXPECT_TRUE(Wizard.isVisible());
    Find<QWidget>("btnAddParam").setFocus();
    QTest::keyClick(&Find<QWidget>("btnAddParam"), Qt::Key_Return);
    EXPECT_EQ(Fit().NParams(), 2) << "a button is pressed";
}

TEST_F(CurveFittingPage, TemplatesAreArranged) {
    auto& lists = Find<QTabWidget>("lists");
    lists.setCurrentIndex(1);
    for (int i = 0; i < 3; ++i) Click("btnAddTemplate");
    ASSERT_EQ(Items("lb_Templates"), QStringList({"Func1", "Func2", "Func3"}));
    EXPECT_EQ(Fit().Template(3)->Text, "Enter Expression");
    EXPECT_EQ(Fit().Template(3)->Description, "Function Func3");
    struct TCase {
        const char* button;
        QStringList order;
        const char* selected;
    };
    const TCase cases[] = {
        {"btnTemplateFirst", {"Func3", "Func1", "Func2"}, "Func3"},
        {"btnTemplateUp", {"Func3", "Func1", "Func2"}, "Func3"}, // is the first already
        {"btnTemplateDown", {"Func1", "Func3", "Func2"}, "Func3"},
        {"btnTemplateDown", {"Func1", "Func2", "Func3"}, "Func3"},
        {"btnTemplateDown", {"Func1", "Func2", "Func3"}, "Func3"},
        {"btnTemplateUp", {"Func1", "Func3", "Func2"}, "Func3"},
        {"btnDeleteTemplate", {"Func1", "Func2"}, "Func1"},
    };
    for (const TCase& c : cases) {
        Click(c.button);
        EXPECT_EQ(Items("lb_Templates"), c.order) << c.button;
        EXPECT_EQ(TextOf("e_TemplateName"), c.selected) << c.button;
    }
    Type("e_TemplateName", QStringLiteral("line"));
    Type("e_TemplateDescription", QStringLiteral("A straight line"));
    Type("m_TemplateText", QStringLiteral("(2*x+1)"));
    Type("m_Equation", QStringLiteral("LINE^2"));
    Fit().Compile();
    EXPECT_EQ(Fit().EvaluateAt(1), 9);
    EXPECT_EQ(Fit().Template(1)->Description, "A straight line");
    EXPECT_EQ(Items("lb_Templates"), QStringList({"line", "Func2"}));
}

TEST_F(CurveFittingPage, FaultsAreToldWhileTheEquationIsTyped) {
    AddParameter(Fit(), "a", 1);
    Type("m_Equation", QStringLiteral("a*(x"));
    EXPECT_EQ(Fault(), "Unequal brackets");
    EXPECT_FALSE(Plot().ShowsCurve());
    QTest::keyClicks(&Find<QWidget>("m_Equation"), QStringLiteral(")*y"));
    EXPECT_EQ(Fault(), "Not known as variable or parameter: y");
    EXPECT_TRUE(Sink.Texts.empty());
}

// The points are (1, 10) and (2, 20).
TEST_F(CurveFittingPage, ThePlotFollowsAValueThatIsNudged) {
    AddParameter(Fit(), "a", 9);
    Wizard.RefillPages();
    Type("m_Equation", QStringLiteral("a*x"));
    EXPECT_TRUE(Plot().ShowsCurve());
    const QImage before = Plot().grab().toImage();
    auto& value = Find<TValueEdit>("e_ParamValue");
    value.setFocus();
    QTest::keyClick(&value, Qt::Key_Up, Qt::NoModifier);
    EXPECT_EQ(Fit().Parameter(1)->Value(), 9.1);
    const QImage nudged = Plot().grab().toImage();
    EXPECT_GT(Difference(before, nudged), 20);
    QTest::keyClick(&value, Qt::Key_Down);
    EXPECT_EQ(Difference(before, Plot().grab().toImage()), 0);
    Type("e_ParamValue", QStringLiteral("500"));
    EXPECT_FALSE(Plot().ShowsCurve());
    Type("e_ParamValue", QStringLiteral("10"));
    Choose("cbx_Status", 0);
    EXPECT_FALSE(Plot().ShowsCurve());
}

TEST_F(CurveFittingPage, GenerateFillsTheDataSetAndAsksFirst) {
    Type("m_Equation", QStringLiteral("1/(x-2)"));
    Type("e_NPoints", QStringLiteral("5"));
    Type("e_RightMargin", QStringLiteral("3"));
    Sink.Answer = false;
    Click("btnGenerate");
    EXPECT_EQ(Sink.Only(), "Data from Current DataSet Will be lost, Continue?");
    EXPECT_EQ(Current().Count(), 2);
    Sink.Answer = true;
    int changes = 0;
    Current().AddChangeHandler(7, [&](TDataSeries&, TChangeReasons) { ++changes; });
    Click("btnGenerate");
    EXPECT_EQ(changes, 1);
    Current().AddChangeHandler(7, {});
    EXPECT_EQ(PairsOf(Current()), (TPairs{{1, -1}, {1.5, -2}, {2.5, 2}, {3, 1}})) << "at 2 it has no value";
    Sink.Texts.clear();
    Current().DataSourceInfo().SetKind(TSourceKind::TextFile);
    Click("btnGenerate");
    EXPECT_TRUE(Sink.Texts.empty()) << "data of a file are not asked for";
}

TEST_F(CurveFittingPage, PointsAreGeneratedOverEveryRowAndStayWhenTheFileIsRead) {
    const QString file = WriteRows(1503, ",");
    Graph.SetEditorMode(true);
    Choose("cbx_Status", 1); // draws the function and fits nothing
    TSeries& series = Current();
    series.DataSourceInfo().SetKind(TSourceKind::TextFile);
    series.DataSourceInfo().SetSourceName(file.toStdString());
    series.DataSourceInfo().SetAutoRowHitFreq(true);
    TSilentProgress progress;
    ASSERT_TRUE(LoadFromSource(series, progress));
    ASSERT_TRUE(series.HoldsSomeRows());
    const double lastX = 1502;
    ASSERT_LT(series.MaxX(), lastX);
    Type("m_Equation", QStringLiteral("x"));
    Type("e_NPoints", QStringLiteral("5"));
    Click("btnGenerate");
    EXPECT_EQ(series.MaxX(), lastX);
    EXPECT_EQ(RowsText(RowsOf(series)), "all 5 rows");
    series.SetRegressionType(TRegressionType::Linear);
    ReadEveryRow(series, nullptr);
    EXPECT_EQ(series.Count(), 5);
    TxyGraph host;
    host.CopyFrom(Graph);
    LoadThinnedAgain(host, Graph, progress);
    EXPECT_EQ(host.FindSeries(series.SeriesIndex())->Count(), 5);
}

TEST_F(CurveFittingPage, PointsAreGeneratedOverWhatIsLeftOfTheData) {
    TxyGraph graph;
    TSeries& series = *graph.AddSeriesNumbered(1);
    for (int i = 0; i <= 10; ++i) series.AddPoint(i, i);
    series.DeletePoint(series.LastId());
    series.CurveFit().SetExpression("x");
    series.CurveFit().SetNPoints(2);
    GeneratePoints(series);
    EXPECT_EQ(PairsOf(series), (TPairs{{0, 0}, {9, 9}}));
}

TEST_F(CurveFittingPage, WhatCanNotBeGeneratedLeavesTheData) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "There is no equation to generate points from"},
        {"ln(-x)", "The equation has no value between 1 and 2"},
        {"(x", "Unequal brackets"},
        {"x", "There is no range of X between 2 and 2; set the margins"},
    };
    Current().DataSourceInfo().SetKind(TSourceKind::TextFile);
    for (const auto& [equation, reason] : cases) {
        Type("m_Equation", QLatin1String(equation));
        if (*equation == 'x') Type("e_LeftMargin", QStringLiteral("2"));
        Click("btnGenerate");
        EXPECT_EQ(Sink.Texts.back(), reason);
    }
    EXPECT_EQ(Current().Count(), 2);
}

TEST_F(CurveFittingPage, MoreRunsTheEditorOnTheFit) {
    for (const bool accept : {false, true}) {
        WhenModal<TfrmCalc>([&](TfrmCalc& editor) {
            lumoplot::Type(editor, "m_Equation", QStringLiteral("P1*x"));
            lumoplot::Click(editor, "btnAddParam");
            lumoplot::Click(editor, accept ? "btnOk" : "btnCancel");
        });
        Click("btnMore");
        EXPECT_EQ(Fit().Expression(), accept ? "P1*x" : "");
        EXPECT_EQ(Find<TFormulaEdit>("m_Equation").toPlainText().toStdString(), Fit().Expression());
        EXPECT_EQ(ParameterNames().size(), accept ? 1 : 0);
    }
}

TEST_F(CurveFittingPage, WithoutADataSetThePageIsEmptyAndInert) {
    AddParameter(Fit(), "a", 1);
    Type("m_Equation", QStringLiteral("a*(x"));
    Click("btnDelete");
    EXPECT_FALSE(Wizard.CurrSeries());
    EXPECT_EQ(Fault(), "");
    EXPECT_TRUE(ParameterNames().isEmpty());
    EXPECT_FALSE(Find<QPushButton>("btnGenerate").isEnabled());
}

} // namespace
} // namespace lumoplot
