#include "dialog/wizard_fixture.h"

#include "common/fit_parameters.h"
#include "common/values_of.h"
#include "controls/value_edit.h"
#include "data/series/ds_info.h"
#include "dialog/common/color_button.h"
#include "dialog/fit/fit_plot.h"
#include "fit/definition/cur_fit.h"
#include "fit/equation_editor/formula_edit.h"
#include "fit/equation_editor/frm_calc.h"

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QSpinBox>
#include <QTabWidget>

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
    EXPECT_EQ(Items("lb_Parameters"), QStringList({"rate"}));
    EXPECT_EQ(Current().LegendText(), "a (rate=0.25 1/s)");
    EXPECT_TRUE(Fit().Parameter(1)->Vary());
    Click("btnDeleteParam");
    EXPECT_EQ(Fit().NParams(), 0);
    EXPECT_FALSE(Find<QLineEdit>("e_ParamValue").isEnabled());
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
            lumoplot::Type(editor, "e_Expression", QStringLiteral("P1*x"));
            lumoplot::Click(editor, "btnNewParameter");
            lumoplot::Click(editor, accept ? "btnOk" : "btnCancel");
        });
        Click("btnMore");
        EXPECT_EQ(Fit().Expression(), accept ? "P1*x" : "");
        EXPECT_EQ(Find<TFormulaEdit>("m_Equation").toPlainText().toStdString(), Fit().Expression());
        EXPECT_EQ(Items("lb_Parameters").size(), accept ? 1 : 0);
    }
}

TEST_F(CurveFittingPage, WithoutADataSetThePageIsEmptyAndInert) {
    AddParameter(Fit(), "a", 1);
    Type("m_Equation", QStringLiteral("a*(x"));
    Click("btnDelete");
    EXPECT_FALSE(Wizard.CurrSeries());
    EXPECT_EQ(Fault(), "");
    EXPECT_TRUE(Items("lb_Parameters").isEmpty());
    EXPECT_FALSE(Find<QPushButton>("btnGenerate").isEnabled());
}

} // namespace
} // namespace lumoplot
