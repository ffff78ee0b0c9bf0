#include "dialog/wizard_fixture.h"

#include "dialog/common/color_button.h"
#include "fit/definition/cur_fit.h"
#include "graph/model/holder.h"

#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>
#include <cmath>

namespace lumoplot {
namespace {

TEST_F(TWizardTest, RenamingGoesIntoTheDataSetAndTheList) {
    Show({"a", "b"});
    Choose("cbx_DataSets", 1);
    Graph.SetHolderID("plot DATA");
    Type("e_SeriesName", QStringLiteral("Transmission"));
    EXPECT_EQ(Graph.FindSeries(2)->SeriesName(), "Transmission");
    EXPECT_EQ(Selected(), "Transmission");
    EXPECT_EQ(Graph.Holder()->ID(), "");
}

TEST_F(TWizardTest, ATypedNameStaysWhenTheSourceIsLoadedAgain) {
    QFile file(PathOf("run.csv"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("t,U\n1,2\n2,3\n");
    file.close();
    Show({"a"});
    Wizard.AttachSource(file.fileName().toStdString());
    ASSERT_TRUE(Find<QCheckBox>("cb_AutoName").isChecked());
    Type("e_SeriesName", QStringLiteral("Mine"));
    EXPECT_FALSE(Find<QCheckBox>("cb_AutoName").isChecked());
    Find<QTabWidget>("tabs").setCurrentIndex(TxyDataWizard::kDataSourcePage);
    Click("btnReload");
    EXPECT_EQ(Names(), std::vector<std::string>{"Mine"});
}

TEST_F(TWizardTest, ErrorsOfYComeFromARuleOrADataSet) {
    Show({"a", "b"}); // (1, 10), (2, 20)
    using TErrors = std::vector<double>;
    Choose("cbx_YErrors", 2);
    EXPECT_EQ(Current().YErrors(), (TErrors{0.5, 1})) << "5 percent";
    Type("e_YErrorValue", QStringLiteral("10"));
    EXPECT_EQ(Current().YErrors(), (TErrors{1, 2}));
    Type("e_YErrorValue", QStringLiteral("-3"));
    EXPECT_EQ(Current().YErrors(), (TErrors{1, 2})) << "what can be no percentage changes nothing";
    Choose("cbx_YErrors", 3);
    EXPECT_EQ(Current().YErrors(), (TErrors{std::sqrt(10.0), std::sqrt(20.0)}));
    Choose("cbx_YErrors", 4);
    EXPECT_EQ(Current().YErrors(), (TErrors{10, 20})) << "those of b";
    Wizard.RefillPages();
    EXPECT_EQ(Find<QComboBox>("cbx_YErrors").currentText(), QStringLiteral("As entered"));
    EXPECT_EQ(Find<QLabel>("lblYErrorState").text(), QStringLiteral("2 of 2 points have one"));
    Choose("cbx_YErrors", 0);
    EXPECT_FALSE(Current().HasYErrors());
}

TEST_F(TWizardTest, ShapesAndStylesFollowTheirLists) {
    Show({"a"});
    const TPointShape shapes[] = {TPointShape::Square,     TPointShape::Circle,       TPointShape::Diamond,
                                  TPointShape::UpTriangle, TPointShape::DownTriangle, TPointShape::Cross,
                                  TPointShape::XCross,     TPointShape::Star,         TPointShape::WidePoint};
    for (int item = 1; item <= 9; ++item) {
        Choose("cbx_PointShape", item);
        EXPECT_EQ(Current().PointShape(), shapes[item - 1]) << item;
        Wizard.RefillPages();
        EXPECT_EQ(Find<QComboBox>("cbx_PointShape").currentIndex(), item);
    }
    for (int item = 1; item <= 5; ++item) {
        Choose("cbx_LineStyle", item);
        EXPECT_EQ(static_cast<int>(Current().LineStyle()), item - 1);
    }
    Choose("cbx_LineStyle", 0);
    EXPECT_FALSE(Current().LinesShown());
    EXPECT_FALSE(Find<QSpinBox>("se_LineWidth").isEnabled());
    EXPECT_FALSE(Find<QWidget>("b_LineColor").isVisible());
}

TEST_F(TWizardTest, TheSizeThatIsShownIsTheOneThatIsStored) {
    Show({"a"});
    Current().SetPointShape(TPointShape::Square);
    Current().SetPointsShown(true);
    Current().SetPointSize(12);
    Wizard.FillList(1);
    auto& size = Find<QSpinBox>("se_PointSize");
    size.setFocus();
    QTest::keyClick(&size, Qt::Key_Down);
    EXPECT_EQ(Current().PointSize(), 10);
    EXPECT_EQ(size.value(), 10);
    Type("se_PointSize", "7");
    Find<QWidget>("se_LineWidth").setFocus();
    EXPECT_EQ(size.value(), Current().PointSize());
    EXPECT_EQ(Current().PointSize() % 2, 0);
}

TEST_F(TWizardTest, NothingIsShownOfADataSetThatIsGone) {
    Show({"a"});
    Current().SetPointSize(12);
    Current().SetZeroValue(2.5);
    Current().SetRegressionControlValue1(77);
    Current().CurveFit().SetLeftMargin(3.5);
    Current().CurveFit().SetUseLeftMargin(true);
    Wizard.FillList(1);
    Click("btnDelete");
    ASSERT_FALSE(Wizard.CurrSeries());
    for (const char* page :
         {"e_SeriesName", "e_ZeroValue", "e_ControlValue1", "e_SourceName", "e_LeftMargin", "e_NPoints"})
        EXPECT_EQ(Find<QLineEdit>(page).text(), "") << page;
    EXPECT_EQ(Find<QSpinBox>("se_PointSize").text(), "");
    Click("btnNew");
    EXPECT_EQ(Find<QSpinBox>("se_PointSize").text(), QString::number(Current().PointSize()));
    EXPECT_EQ(Find<QLineEdit>("e_LeftMargin").text(), "None");
}

TEST_F(TWizardTest, PointsSwitchedOnTakeTheColourOfTheLine) {
    Show({"a"});
    Current().SetLineColor(kRed);
    Current().SetPointColor(kBlue);
    Choose("cbx_PointShape", 2);
    EXPECT_EQ(Current().PointColor(), kRed);
    EXPECT_EQ(Find<TColorButton>("b_PointColor").Color(), kRed);
    Choose("cbx_LineStyle", 0);
    Current().SetPointColor(kLime);
    Choose("cbx_LineStyle", 1);
    EXPECT_EQ(Current().LineColor(), kLime);
    Choose("cbx_PointShape", 0);
    Choose("cbx_LineStyle", 0);
    Current().SetPointColor(kNavy);
    Choose("cbx_LineStyle", 1); // points are hidden: the line keeps its own colour
    EXPECT_EQ(Current().LineColor(), kLime);
}

TEST_F(TWizardTest, VisibilityOfOneAndOfAll) {
    Show({"a", "b", "c"});
    Choose("cbx_DataSets", 1);
    Click("cb_Active");
    EXPECT_FALSE(Current().Active());
    Click("btnHideOthers");
    for (int number = 1; number <= 3; ++number) EXPECT_EQ(Graph.FindSeries(number)->Active(), number == 2);
    EXPECT_TRUE(Find<QAbstractButton>("cb_Active").isChecked());
    Click("btnShowAll");
    for (int number = 1; number <= 3; ++number) EXPECT_TRUE(Graph.FindSeries(number)->Active());
}

TEST_F(TWizardTest, BaselineTextsThatAreNoNumbersChangeNothing) {
    Show({"a"});
    Type("e_ZeroValue", QStringLiteral("0.5"));
    EXPECT_EQ(Current().ZeroValue(), 0.5);
    for (const char* text : {".", "", "x1", "-", "inf"}) {
        Type("e_ZeroValue", QString::fromLatin1(text));
        EXPECT_EQ(Current().ZeroValue(), 0.5) << text;
    }
    EXPECT_EQ(Find<QLineEdit>("e_ZeroValue").toolTip().toStdString(),
              "'inf' is not a valid floating point value");
    Type("e_ZeroValue", QStringLiteral("1e-3"));
    EXPECT_EQ(Current().ZeroValue(), 0.001);
    EXPECT_EQ(Find<QLineEdit>("e_ZeroValue").toolTip(), "");
    Type("e_Slope", QStringLiteral("-2"));
    EXPECT_EQ(Current().BaseLineSlope(), -2);
    EXPECT_TRUE(Sink.Texts.empty()); // nothing pops up while a number is typed
}

TEST_F(TWizardTest, AutomaticBaselineShowsWhatItFound) {
    Show({"a"});
    Click("cb_AutoZero");
    EXPECT_EQ(Current().ZeroValue(), 10);
    EXPECT_EQ(Find<QLineEdit>("e_ZeroValue").text(), "10");
    EXPECT_FALSE(Find<QLineEdit>("e_ZeroValue").isEnabled());
    EXPECT_FALSE(Find<QWidget>("btnReadMark").isEnabled());
}

TEST_F(TWizardTest, TheBaselineIsReadFromAMarkOnTheMainAxisOnly) {
    Show({"a"});
    Click("btnReadMark");
    EXPECT_EQ(Sink.Only(), "No Mark Found!");
    Graph.AddMark({.X2 = 2, .Y2 = 5, .TypeOfMark = TMarkType::Line});
    Click("btnReadMark");
    EXPECT_EQ(Find<QLineEdit>("e_Slope").text(), "2.5");
    Click("rb_SecondAxis");
    EXPECT_TRUE(Current().IsOnSecondY());
    EXPECT_FALSE(Find<QWidget>("btnReadMark").isEnabled());
    Click("cb_AutoZero");
    Click("cb_AutoZero");
    EXPECT_FALSE(Find<QWidget>("btnReadMark").isEnabled());
    Click("rb_MainAxis");
    EXPECT_FALSE(Current().IsOnSecondY());
    EXPECT_TRUE(Find<QWidget>("btnReadMark").isEnabled());
}

} // namespace
} // namespace lumoplot
