#include "dialog/wizard_fixture.h"

#include "dialog/common/color_button.h"

#include <QLabel>
#include <QSpinBox>
#include <QTabWidget>

namespace lumoplot {
namespace {

/// The dialog on a data set Y = 1, 3, 8 at X = 0, 1, 2, with its Regressions page in front.
class RegressionsPage : public TWizardTest {
protected:
    void SetUp() override {
        Wizard.SetStartPage(TxyDataWizard::kRegressionsPage);
        Show({"a"});
        Current().Clear();
        for (const double y : {1, 3, 8}) Current().AddPoint(Current().Count(), y);
        Wizard.RefillPages();
    }
    std::string TextOf(const char* label) { return Find<QLabel>(label).text().toStdString(); }
};

TEST_F(RegressionsPage, EveryRegressionIsChosenAndKeepsTheControlValues) {
    Current().SetRegressionControlValue1(42);
    Current().SetRegressionControlValue2(0.00125);
    Wizard.RefillPages();
    for (int type = 6; type >= 0; --type) {
        Choose("cbx_Regression", type);
        EXPECT_EQ(Current().RegressionType(), TRegressionType{type});
        EXPECT_EQ(Find<QComboBox>("cbx_RegressionLineStyle").isEnabled(), type > 0);
        EXPECT_EQ(Find<QSpinBox>("se_RegressionLineWidth").isEnabled(), type > 0);
        EXPECT_EQ(Find<TColorButton>("b_RegressionColor").isVisible(), type > 0);
    }
    EXPECT_EQ(Current().RegressionControlValue1(), 42);
    EXPECT_EQ(Current().RegressionControlValue2(), 0.00125);
    EXPECT_EQ(Find<QLineEdit>("e_ControlValue2").text(), QStringLiteral("1.250E-03"));
}

TEST_F(RegressionsPage, OnlyNumbersReachTheDataSet) {
    struct TCase {
        const char* edit;
        const char* text;
        double expected; ///< of a value that was 7 before
        bool marked;
    };
    const TCase cases[] = {
        {"e_ControlValue1", "12", 12, false},   {"e_ControlValue1", "", 7, false},
        {"e_ControlValue1", "x", 7, true},      {"e_ControlValue1", "99999999999", 999999999, true},
        {"e_ControlValue2", "2.5", 2.5, false}, {"e_ControlValue2", "", 7, false},
        {"e_ControlValue2", "x", 7, true},      {"e_LowerBound", "-2.5", -2.5, false},
        {"e_LowerBound", "", 7, true},          {"e_LowerBound", "x", 7, true},
        {"e_UpperBound", "1e3", 1000, false},   {"e_UpperBound", "", 7, true},
        {"e_UpperBound", "nan", 7, true},       {"e_ControlValue2", "inf", 7, true},
    };
    Choose("cbx_Bounds", 1);
    for (const TCase& c : cases) {
        SCOPED_TRACE(std::string(c.edit) + ": " + c.text);
        Current().SetRegressionControlValue1(7);
        Current().SetRegressionControlValue2(7);
        Current().SetLowerBound(7);
        Current().SetUpperBound(7);
        Wizard.RefillPages();
        Type(c.edit, QLatin1String(c.text));
        const std::string edit = c.edit;
        const double value = edit == "e_ControlValue1"   ? Current().RegressionControlValue1()
                             : edit == "e_ControlValue2" ? Current().RegressionControlValue2()
                             : edit == "e_LowerBound"    ? Current().LowerBound()
                                                         : Current().UpperBound();
        EXPECT_EQ(value, c.expected);
        EXPECT_EQ(Find<QLineEdit>(c.edit).toolTip().contains(QStringLiteral("is not a valid")), c.marked);
    }
}

// The line through 1, 3, 8: slope 7 / 2, mean 4; the parabola goes through all three.
TEST_F(RegressionsPage, ResultsAreShownWithTheSettings) {
    EXPECT_EQ(TextOf("lblYStatistics"), "Mean of Y: 4, SD: 3.606, points: 3");
    EXPECT_EQ(TextOf("lblRegressionResult"), "");
    Choose("cbx_Regression", 1);
    EXPECT_EQ(TextOf("lblRegressionResult"), "Y = 0.5 + 3.5 X");
    Choose("cbx_Regression", 3);
    EXPECT_EQ(TextOf("lblRegressionResult"), "Y = 1 + 0.5 X + 1.5 X²");
    Current().SetPointY(3, -2); // by a click into another page
    Wizard.RefillPages();
    EXPECT_EQ(TextOf("lblRegressionResult"), "Y = 1 + 5.5 X - 3.5 X²");
    Current().SetZeroValue(2);
    Wizard.RefillPages();
    EXPECT_EQ(TextOf("lblRegressionResult"), "Y = 1 + 5.5 X - 3.5 X²  (before the baseline is subtracted)");
    Current().Clear();
    Wizard.RefillPages();
    EXPECT_EQ(TextOf("lblYStatistics"), "No Statistics are available unless more than one point exists");
}

TEST_F(RegressionsPage, ReasonsForNoLineStandBesideTheList) {
    Choose("cbx_Regression", 4);
    EXPECT_EQ(TextOf("lblRegressionError"), "");
    Type("e_ControlValue1", QStringLiteral("0"));
    EXPECT_EQ(TextOf("lblRegressionError"), "The number of points must lie between 1 and 1000000");
    Type("e_ControlValue1", QStringLiteral("50"));
    EXPECT_EQ(TextOf("lblRegressionError"), "");
    Current().SetDuplicatesAllowed(true);
    Wizard.RefillPages();
    EXPECT_EQ(TextOf("lblRegressionError"), "There is no spline while points may share their X");
    Choose("cbx_Regression", 5);
    EXPECT_EQ(TextOf("lblRegressionError"), "The curve fit of this data set gives no curve");
    Choose("cbx_Regression", 0);
    EXPECT_EQ(TextOf("lblRegressionError"), "");
}

// Hosts and files set it; the list does not offer it.
TEST_F(RegressionsPage, RunningAverageOfAHostIsLeftAlone) {
    Choose("cbx_Regression", 2);
    Current().SetRegressionType(TRegressionType::RunningAverage);
    Wizard.RefillPages();
    EXPECT_EQ(Current().RegressionType(), TRegressionType::RunningAverage);
    EXPECT_EQ(TextOf("lblRegressionResult"), "Running average of 19 points");
    Type("e_ControlValue2", QStringLiteral("0.6"));
    EXPECT_EQ(TextOf("lblRegressionError"), "Invalid Running Average limit");
    EXPECT_EQ(TextOf("lblRegressionResult"), "");
    EXPECT_EQ(Current().RegressionType(), TRegressionType::RunningAverage);
    auto& list = Find<QComboBox>("cbx_Regression");
    ASSERT_EQ(list.currentIndex(), 2) << "unchanged";
    list.showPopup();
    QTest::keyClick(list.view(), Qt::Key_Return);
    EXPECT_EQ(Current().RegressionType(), TRegressionType::RobustLine) << "chosen again";
}

} // namespace
} // namespace lumoplot
