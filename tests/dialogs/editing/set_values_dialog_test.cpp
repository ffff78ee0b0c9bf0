#include "dialogs/editing/set_values_dialog.h"

#include "common/keyboard_walk.h"
#include "common/recording_sink.h"
#include "common/window_driver.h"
#include "data/series/ds_info.h"
#include "dialogs/hand_edit.h"
#include "graph/loading/source_loading.h"
#include "graph/model/graph.h"

#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QTableWidget>
#include <QTemporaryDir>

namespace lumoplot {
namespace {

class SetValuesDialog : public testing::Test {
protected:
    SetValuesDialog() {
        Series.SetSeriesName("Run");
        for (int i = 1; i <= 3; ++i) Series.AddPoint(i, 10 * i);
    }
    void Show() {
        Dialog = std::make_unique<Txy_SetValues>(Series);
        Dialog->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(Dialog.get()));
    }
    std::string Text(const char* label) { return Control<QLabel>(*Dialog, label).text().toStdString(); }
    std::string NewYs() {
        const auto& table = Control<QTableWidget>(*Dialog, "t_Preview");
        std::string ys;
        for (int row = 0; row < table.rowCount(); ++row) ys += table.item(row, 2)->text().toStdString() + ";";
        return ys;
    }
    std::string Ys() {
        std::string ys;
        for (auto point = Series.First(); point; point = point.Next())
            ys += QString::number(point.Y()).toStdString() + ";";
        return ys;
    }

    TRecordingSink Sink;
    TxyGraph Graph;
    TSeries& Series = *Graph.FindSeries(Graph.AddSeries());
    std::unique_ptr<Txy_SetValues> Dialog;
};

TEST_F(SetValuesDialog, WhatIsWrongStandsBelowTheFormula) {
    Show();
    EXPECT_FALSE(Control<QWidget>(*Dialog, "btnOk").isEnabled());
    Type(*Dialog, "e_Formula", "2*(y");
    EXPECT_NE(Text("lblFormulaError"), "");
    EXPECT_EQ(NewYs(), "");
    EXPECT_FALSE(Control<QWidget>(*Dialog, "btnOk").isEnabled());
    QTest::keyClicks(&Control<QLineEdit>(*Dialog, "e_Formula"), ")");
    EXPECT_EQ(Text("lblFormulaError"), "");
    EXPECT_EQ(NewYs(), "20;40;60;");
    EXPECT_EQ(Ys(), "10;20;30;");
    Click(*Dialog, "btnOk");
    EXPECT_EQ(Ys(), "20;40;60;");
    EXPECT_FALSE(Dialog->isVisible());
}

TEST_F(SetValuesDialog, WhatIsProbablyMeantIsTakenByOneClick) {
    Show();
    Type(*Dialog, "e_Formula", "-x^2");
    EXPECT_EQ(Text("lblFormulaError"), "a sign binds tighter than ^: write -(x^2)");
    EXPECT_EQ(NewYs(), "1;4;9;") << "it can be meant so, too";
    Click(*Dialog, "btnRewrite");
    EXPECT_EQ(NewYs(), "-1;-4;-9;");
    EXPECT_FALSE(Control<QWidget>(*Dialog, "btnRewrite").isVisible());
    Type(*Dialog, "e_Formula", "square(x)");
    EXPECT_TRUE(Text("lblFormulaError").ends_with("square at 1: not known; sqr?")) << Text("lblFormulaError");
    Click(*Dialog, "btnRewrite");
    EXPECT_EQ(NewYs(), "1;4;9;");
    Type(*Dialog, "e_Formula", "2x(x+1)");
    EXPECT_TRUE(Text("lblFormulaError").ends_with("a product needs its sign: write 2*x(x+1)"))
        << Text("lblFormulaError");
    Click(*Dialog, "btnRewrite");
    EXPECT_EQ(NewYs(), "4;12;24;");
}

TEST_F(SetValuesDialog, ARangeLimitsThePointsAndMissingValuesAreCounted) {
    Show();
    Type(*Dialog, "e_Formula", "1/(x-2)");
    EXPECT_EQ(NewYs(), "-1;(stays);1;");
    EXPECT_EQ(Text("lblCount"), "3 of 3 points; 1 of them has no new value and keeps its Y.");
    Type(*Dialog, "e_To", "abc");
    EXPECT_NE(Text("lblFormulaError"), "");
    Type(*Dialog, "e_To", "2.5");
    EXPECT_EQ(NewYs(), "-1;(stays);");
    QTest::keyClick(&Control<QLineEdit>(*Dialog, "e_To"), Qt::Key_Return);
    EXPECT_EQ(Ys(), "10;20;30;") << "Return takes the value and leaves the dialog open";
    QTest::keyClick(&Control<QLineEdit>(*Dialog, "e_To"), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(Ys(), "-1;20;30;");
}

TEST_F(SetValuesDialog, NamesThatMeanNothingAndEmptyRangesAreTold) {
    Show();
    Type(*Dialog, "e_Formula", "y + zeta*Alpha + zeta");
    EXPECT_EQ(Text("lblFormulaError"), "Not known: zeta, Alpha. Click variables below to use them.");
    EXPECT_FALSE(Control<QWidget>(*Dialog, "btnOk").isEnabled());
    Type(*Dialog, "e_Formula", "2*");
    auto& variables = Control<QListWidget>(*Dialog, "m_Variables");
    QTest::mouseClick(variables.viewport(), Qt::LeftButton, {},
                      variables.visualItemRect(variables.item(1)).center());
    EXPECT_EQ(Control<QLineEdit>(*Dialog, "e_Formula").text(), "2*y");
    EXPECT_EQ(NewYs(), "20;40;60;");
    const std::pair<const char*, const char*> ends[] = {{"0.5", "The range ends before it begins."},
                                                        {"1", ""}};
    for (const auto& [to, told] : ends) {
        Type(*Dialog, "e_To", to);
        EXPECT_EQ(Text("lblFormulaError"), told);
    }
    Type(*Dialog, "e_From", "1.2");
    Type(*Dialog, "e_To", "1.3");
    EXPECT_EQ(Text("lblFormulaError"), "No point lies in the range: X goes from 1 to 3.");
}

TEST_F(SetValuesDialog, TheKeyboardReachesEverything) {
    Show();
    Type(*Dialog, "e_Formula", "y+1");
    ExpectEveryControlReached(*Dialog);
    ExpectKeysAreClear(*Dialog);
    ExpectEveryControlNamed(*Dialog);
}

TEST_F(SetValuesDialog, ASourcedDataSetAsksFirstAndIsManualThen) {
    Series.DataSourceInfo().SetKind(TSourceKind::TextFile);
    Series.DataSourceInfo().SetSourceName("run.txt");
    for (const char* button : {"btnCancel", "btnOk"}) {
        Sink.Answer = false;
        WhenModal<Txy_SetValues>([&](Txy_SetValues& dialog) {
            Type(dialog, "e_Formula", "y+1");
            lumoplot::Click(dialog, button);
            if (dialog.isVisible()) dialog.reject();
        });
        EXPECT_FALSE(SetValuesOf(Series, nullptr));
        EXPECT_EQ(Series.DataSourceInfo().Kind(), TSourceKind::TextFile) << button;
        EXPECT_EQ(Ys(), "10;20;30;");
    }
    Sink.Answer = true;
    for (int i = 0; i < 2; ++i) {
        WhenModal<Txy_SetValues>([](Txy_SetValues& dialog) {
            Type(dialog, "e_Formula", "y+1");
            lumoplot::Click(dialog, "btnOk");
        });
        EXPECT_TRUE(SetValuesOf(Series, nullptr));
    }
    EXPECT_EQ(Sink.Texts.size(), 2u);
    EXPECT_EQ(Series.DataSourceInfo().Kind(), TSourceKind::Manual);
    EXPECT_EQ(Ys(), "12;22;32;");
}

TEST_F(SetValuesDialog, EveryRowIsReadFirstWhateverTheBudgetAndTheNameStays) {
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("long.csv")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("time,volts\n");
    for (int i = 0; i < 2000; ++i) file.write(QByteArray::number(i) + ",1\n");
    file.close();
    Graph.SetPointBudget(1000);
    for (const bool inEditor : {true, false}) {
        SCOPED_TRACE(inEditor);
        Graph.SetEditorMode(inEditor);
        Series.DataSourceInfo().SetKind(TSourceKind::TextFile);
        Series.DataSourceInfo().SetSourceName(file.fileName().toStdString());
        Series.DataSourceInfo().SetAutoRowHitFreq(true);
        TSilentProgress progress;
        LoadFromSource(Series, progress);
        ASSERT_LE(Series.Count(), Graph.PointBudget());
        Series.SetSeriesName("mine");
        EXPECT_TRUE(MakeManual(Series, nullptr));
        EXPECT_EQ(Series.Count(), 2000);
        EXPECT_EQ(Series.SeriesName(), "mine");
        EXPECT_EQ(Graph.EditorMode(), inEditor);
        EXPECT_EQ(Graph.PlotBudget(), 1000);
    }
}

} // namespace
} // namespace lumoplot
