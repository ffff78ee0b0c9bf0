#include "dialog/color_button.h"
#include "dialog/data_wizard.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QColorDialog>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

/// The dialog on a data set Y = 1, 3, 8 at X = 0, 1, 2, with its Regressions page in front.
class RegressionsPage : public testing::Test {
protected:
    void SetUp() override {
        Wizard.WorkGraph().AddSeries();
        Wizard.WorkGraph().Appearance()->SetCurrSerIndex(1);
        for (const double y : {1, 3, 8}) Series().AddPoint(Series().Count(), y);
        Show();
    }

    void Show() {
        Wizard.hide();
        Wizard.SetStartPage(TxyDataWizard::kRegressionsPage);
        Wizard.show();
    }
    TSeries& Series() { return *Wizard.WorkGraph().FindSeries(1); }
    template <class TControl>
    TControl& Control(const char* name) {
        TControl* control = Wizard.findChild<TControl*>(QLatin1String(name));
        if (!control) throw std::runtime_error(std::string("no control ") + name);
        return *control;
    }
    std::string TextOf(const char* label) { return Control<QLabel>(label).text().toStdString(); }
    /// Walks to an item with the arrow keys.
    void Choose(const char* list, int item) {
        auto& box = Control<QComboBox>(list);
        QTest::keyClick(&box, Qt::Key_Home);
        for (int i = 0; i < item; ++i) QTest::keyClick(&box, Qt::Key_Down);
        ASSERT_EQ(box.currentIndex(), item);
    }
    void Type(const char* edit, const char* text) {
        auto& line = Control<QLineEdit>(edit);
        QTest::keyClick(&line, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&line, Qt::Key_Delete);
        QTest::keyClicks(&line, QLatin1String(text));
    }
    void PickColor(const char* button, QColor color) {
        QTimer::singleShot(0, [color] {
            auto* dialog = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            dialog->setCurrentColor(color);
            dialog->accept();
        });
        QTest::mouseClick(&Control<TColorButton>(button), Qt::LeftButton);
    }

    TxyDataWizard Wizard;
};

TEST_F(RegressionsPage, IsTheThirdPage) {
    auto& tabs = Control<QTabWidget>("tabs");
    EXPECT_EQ(tabs.tabText(2), QStringLiteral("&Regressions"));
    EXPECT_EQ(tabs.currentIndex(), 2);
}

TEST_F(RegressionsPage, EachRegressionNamesItsControlValuesAndKeepsThem) {
    struct TCase {
        const char* item;
        const char* first;
        const char* second;
    };
    constexpr const char* kUnused = "Value not used";
    const TCase cases[] = {
        {"None", kUnused, kUnused},
        {"Linear Least Squares", kUnused, kUnused},
        {"Passing / Bablok", kUnused, kUnused},
        {"Quadratic", kUnused, kUnused},
        {"Spline", "Number of Points:", "Gradient at ends:"},
        {"Nonlinear Least Squares ", "Number of Points:", "Fitting Tension:"},
        {"Running Average", kUnused, "Alpha value:"},
    };
    Series().SetRegressionControlValue1(42);
    Series().SetRegressionControlValue2(0.00125);
    Show();
    for (int type = 6; type >= 0; --type) {
        const TCase& c = cases[type];
        Choose("cbx_Regression", type);
        EXPECT_EQ(Control<QComboBox>("cbx_Regression").currentText(), QLatin1String(c.item));
        EXPECT_EQ(TextOf("lblControlValue1"), c.first);
        EXPECT_EQ(TextOf("lblControlValue2"), c.second);
        EXPECT_EQ(Series().RegressionType(), type);
        EXPECT_EQ(Control<QComboBox>("cbx_RegressionLineStyle").isEnabled(), type > 0);
        EXPECT_EQ(Control<QSpinBox>("se_RegressionLineWidth").isEnabled(), type > 0);
        EXPECT_EQ(Control<TColorButton>("b_RegressionColor").isVisible(), type > 0);
    }
    EXPECT_EQ(Series().RegressionControlValue1(), 42);
    EXPECT_EQ(Series().RegressionControlValue2(), 0.00125);
    EXPECT_EQ(Control<QLineEdit>("e_ControlValue2").text(), QStringLiteral("1.250E-03"));
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
        {"e_UpperBound", "nan", 7, true},
    };
    Choose("cbx_Bounds", 1);
    for (const TCase& c : cases) {
        SCOPED_TRACE(std::string(c.edit) + ": " + c.text);
        Series().SetRegressionControlValue1(7);
        Series().SetRegressionControlValue2(7);
        Series().SetLowerBound(7);
        Series().SetUpperBound(7);
        Show();
        Type(c.edit, c.text);
        const std::string edit = c.edit;
        const double value = edit == "e_ControlValue1"   ? Series().RegressionControlValue1()
                             : edit == "e_ControlValue2" ? Series().RegressionControlValue2()
                             : edit == "e_LowerBound"    ? Series().LowerBound()
                                                         : Series().UpperBound();
        EXPECT_EQ(value, c.expected);
        EXPECT_EQ(Control<QLineEdit>(c.edit).toolTip().contains(QStringLiteral("is not a valid")), c.marked);
    }
}

TEST_F(RegressionsPage, LookOfTheLinesIsStored) {
    Choose("cbx_Regression", 1);
    Choose("cbx_RegressionLineStyle", 2);
    Control<QSpinBox>("se_RegressionLineWidth").selectAll();
    QTest::keyClicks(&Control<QSpinBox>("se_RegressionLineWidth"), QStringLiteral("17"));
    PickColor("b_RegressionColor", QColor(1, 2, 3));
    Choose("cbx_Bounds", 5);
    Choose("cbx_BoundsLineStyle", 4);
    PickColor("b_BoundsColor", QColor(4, 5, 6));
    EXPECT_EQ(Series().RegressionLineStyle(), TPenStyle::Dot);
    EXPECT_EQ(Series().RegressionLineWidth(), 17);
    EXPECT_EQ(Series().RegressionColor(), MakeColor(1, 2, 3));
    EXPECT_EQ(Series().BoundsType(), TBoundsType::AllSD);
    EXPECT_EQ(Series().BoundsLineStyle(), TPenStyle::DashDotDot);
    EXPECT_EQ(Series().BoundsColor(), MakeColor(4, 5, 6));
}

TEST_F(RegressionsPage, BoundsEnableWhatTheyUse) {
    const char* captions[] = {"None",
                              "As Set Below",
                              "at 1SD from Mean",
                              "at 2SD from Mean ",
                              "at 3SD from Mean",
                              "at 1, 2 and 3 SD"};
    for (int item = 5; item >= 0; --item) {
        Choose("cbx_Bounds", item);
        EXPECT_EQ(Control<QComboBox>("cbx_Bounds").currentText(), QLatin1String(captions[item]));
        EXPECT_EQ(static_cast<int>(Series().BoundsType()), item);
        EXPECT_EQ(Control<QComboBox>("cbx_BoundsLineStyle").isEnabled(), item > 0);
        EXPECT_EQ(Control<TColorButton>("b_BoundsColor").isVisible(), item > 0);
        EXPECT_EQ(Control<QLineEdit>("e_LowerBound").isEnabled(), item == 1);
        EXPECT_EQ(Control<QLineEdit>("e_UpperBound").isEnabled(), item == 1);
    }
}

TEST_F(RegressionsPage, FillingShowsTheDataSetAndChangesNothing) {
    Series().SetRegressionType(4);
    Series().SetRegressionColor(MakeColor(9, 8, 7));
    Series().SetRegressionLineWidth(300); // more than the page offers
    Series().SetBoundsType(TBoundsType::SetValues);
    Series().SetLowerBound(1.23456789);
    Series().SetUpperBound(1e300);
    Show();
    EXPECT_EQ(TextOf("lblControlValue1"), "Number of Points:");
    EXPECT_EQ(Control<TColorButton>("b_RegressionColor").Color(), MakeColor(9, 8, 7));
    EXPECT_EQ(Control<QLineEdit>("e_ControlValue1").text(), QStringLiteral("100"));
    EXPECT_EQ(Control<QLineEdit>("e_ControlValue2").text(), QStringLiteral("5.000E-02"));
    EXPECT_EQ(Control<QLineEdit>("e_LowerBound").text(), QStringLiteral("1.2346"));
    EXPECT_EQ(Control<QLineEdit>("e_UpperBound").text(), QStringLiteral("1.000E+300"));
    EXPECT_TRUE(Control<QLineEdit>("e_LowerBound").isEnabled());
    EXPECT_EQ(Series().RegressionLineWidth(), 300);
    EXPECT_EQ(Series().LowerBound(), 1.23456789);
    EXPECT_EQ(Series().UpperBound(), 1e300);
}

// The line through 1, 3, 8: slope 7 / 2, mean 4; the parabola goes through all three.
TEST_F(RegressionsPage, ResultsAreShownWithTheSettings) {
    EXPECT_EQ(TextOf("lblYStatistics"), "Mean of Y: 4, SD: 3.606, points: 3");
    EXPECT_EQ(TextOf("lblRegressionResult"), "");
    Choose("cbx_Regression", 1);
    EXPECT_EQ(TextOf("lblRegressionResult"), "Y = 0.5 + 3.5 X");
    Choose("cbx_Regression", 3);
    EXPECT_EQ(TextOf("lblRegressionResult"), "Y = 1 + 0.5 X + 1.5 X²");
    Series().SetPointY(3, -2); // by a click into another page
    Show();
    EXPECT_EQ(TextOf("lblRegressionResult"), "Y = 1 + 5.5 X - 3.5 X²");
    Series().SetZeroValue(2);
    Show();
    EXPECT_EQ(TextOf("lblRegressionResult"), "Y = 1 + 5.5 X - 3.5 X²  (before the baseline is subtracted)");
    Series().Clear();
    Show();
    EXPECT_EQ(TextOf("lblYStatistics"), "No Statistics are available unless more than one point exists");
}

TEST_F(RegressionsPage, ReasonsForNoLineStandBesideTheList) {
    Choose("cbx_Regression", 4);
    EXPECT_EQ(TextOf("lblRegressionError"), "");
    Type("e_ControlValue1", "0");
    EXPECT_EQ(TextOf("lblRegressionError"), "The number of points must lie between 1 and 1000000");
    Type("e_ControlValue1", "50");
    EXPECT_EQ(TextOf("lblRegressionError"), "");
    Series().SetDuplicatesAllowed(true);
    Show();
    EXPECT_EQ(TextOf("lblRegressionError"), "There is no spline while points may share their X");
    Choose("cbx_Regression", 5);
    EXPECT_EQ(TextOf("lblRegressionError"), "The curve fit of this data set gives no curve");
    Choose("cbx_Regression", 0);
    EXPECT_EQ(TextOf("lblRegressionError"), "");
}

// Hosts and files set it; the list does not offer it.
TEST_F(RegressionsPage, RunningAverageOfAHostIsLeftAlone) {
    Choose("cbx_Regression", 2);
    Series().SetRegressionType(7);
    Show();
    EXPECT_EQ(Series().RegressionType(), 7);
    EXPECT_EQ(TextOf("lblRegressionResult"), "Running average of 19 points");
    Type("e_ControlValue2", "0.6");
    EXPECT_EQ(TextOf("lblRegressionError"), "Invalid Running Average limit");
    EXPECT_EQ(TextOf("lblRegressionResult"), "");
    EXPECT_EQ(Series().RegressionType(), 7);
    auto& list = Control<QComboBox>("cbx_Regression");
    ASSERT_EQ(list.currentIndex(), 2) << "unchanged";
    list.showPopup();
    QTest::keyClick(list.view(), Qt::Key_Return);
    EXPECT_EQ(Series().RegressionType(), 2) << "chosen again";
}

TEST_F(RegressionsPage, WithoutADataSetThePageIsEmptyAndInert) {
    Choose("cbx_Regression", 1);
    Wizard.WorkGraph().FreeAllSeries();
    Show();
    EXPECT_EQ(TextOf("lblRegressionResult"), "");
    EXPECT_EQ(TextOf("lblYStatistics"), "");
    EXPECT_FALSE(Control<QComboBox>("cbx_Regression").isEnabled());
}

TEST_F(RegressionsPage, TabWalksTheControlsAsTheyLie) {
    Choose("cbx_Regression", 1);
    Choose("cbx_Bounds", 1);
    const char* order[] = {
        "cbx_Regression",         "e_ControlValue1",   "e_ControlValue2", "cbx_RegressionLineStyle",
        "se_RegressionLineWidth", "b_RegressionColor", "cbx_Bounds",      "cbx_BoundsLineStyle",
        "b_BoundsColor",          "e_LowerBound",      "e_UpperBound"};
    Wizard.activateWindow();
    Control<QWidget>(order[0]).setFocus();
    for (const char* name : order) {
        ASSERT_TRUE(Wizard.focusWidget());
        EXPECT_EQ(Wizard.focusWidget()->objectName(), QLatin1String(name));
        QTest::keyClick(&Wizard, Qt::Key_Tab);
    }
}

} // namespace
} // namespace lumoplot
