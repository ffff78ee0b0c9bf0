#include "dialogs/transform/transform_dialog.h"

#include "common/clipping.h"
#include "common/keyboard_walk.h"
#include "common/recording_sink.h"
#include "common/window_driver.h"
#include "dialogs/editing/mark_editor.h"
#include "dialogs/editing/set_values_dialog.h"
#include "dialogs/transform/baseline_dialog.h"
#include "dialogs/transform/peaks_dialog.h"
#include "fit/definition/cur_fit.h"
#include "fit/definition/fit_result.h"
#include "graph/model/graph.h"
#include "graph/mouse/graph_mouse.h"

#include <QLabel>
#include <QTableWidget>
#include <cmath>

namespace lumoplot {
namespace {

class TransformDialog : public testing::Test {
protected:
    TransformDialog() {
        Series.SetSeriesName("Run");
        for (int i = 0; i <= 4; ++i) Series.AddPoint(i, i == 2 ? 8 : i);
        Series.SetZeroValue(1);
    }
    static std::string Ys(const TSeries& series) {
        std::string ys;
        for (TPointCursor point = series.First(); point; point = point.Next())
            ys += QString::number(series.CorrectedY(point.X(), point.Y())).toStdString() + ";";
        return ys;
    }
    template <class TDialog>
    static void Await(TDialog& dialog) {
        dialog.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    }

    TRecordingSink Sink;
    TxyGraph Graph;
    TSeries& Series = *Graph.FindSeries(Graph.AddSeries());
};

TEST_F(TransformDialog, WhatIsPreviewedReplacesThePoints) {
    TTransformDialog dialog(Series, TTransformKind::RunningMedian);
    Await(dialog);
    Type(dialog, "e_First", "4");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Control<QWidget>(dialog, "btnOk").isEnabled(); }));
    EXPECT_EQ(Control<QLabel>(dialog, "lblState").text(), "The number of neighbours must be odd");
    Type(dialog, "e_First", "3");
    EXPECT_TRUE(QTest::qWaitFor([&] { return Control<QWidget>(dialog, "btnOk").isEnabled(); }));
    EXPECT_EQ(Ys(*Control<TxyGraph>(dialog, "preview").FindSeries(2)), "-1;0;2;3;3;");
    EXPECT_EQ(Ys(Series), "-1;0;7;2;3;") << "nothing has changed yet";
    Click(dialog, "btnOk");
    EXPECT_EQ(Ys(Series), "-1;0;2;3;3;");
    EXPECT_EQ(Series.ZeroValue(), 0) << "the baseline is in the points now";
}

TEST_F(TransformDialog, TheResultMayBecomeANewDataSet) {
    TTransformDialog dialog(Series, TTransformKind::Shift);
    Await(dialog);
    Choose(dialog, "cbx_Kind", static_cast<int>(TTransformKind::CutRange));
    Type(dialog, "e_Second", "1.5");
    Click(dialog, "rb_NewSet");
    ExpectEveryControlReached(dialog);
    ExpectKeysAreClear(dialog);
    ExpectEveryControlNamed(dialog);
    QTest::keyClick(&dialog, Qt::Key_Return, Qt::ControlModifier);
    ASSERT_EQ(Graph.Series().size(), 2u);
    const TSeries& cut = *Graph.FindSeries(2);
    EXPECT_EQ(cut.SeriesName(), "Run cut");
    EXPECT_EQ(Ys(cut), "-1;0;");
    EXPECT_NE(cut.LineColor(), Series.LineColor());
    EXPECT_EQ(Ys(Series), "-1;0;7;2;3;");
}

TEST_F(TransformDialog, ReturnTakesTheNumberAndASecondOneTheResult) {
    TTransformDialog dialog(Series, TTransformKind::Shift);
    Await(dialog);
    Type(dialog, "e_Second", "2");
    QTest::keyClick(&Control<QWidget>(dialog, "e_Second"), Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(Ys(*Control<TxyGraph>(dialog, "preview").FindSeries(2)), "1;2;9;4;5;");
    QTest::keyClick(&Control<QWidget>(dialog, "e_Second"), Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(Ys(Series), "1;2;9;4;5;");
}

TEST_F(TransformDialog, TheIntegralGoesFromMarkToMark) {
    TTransformDialog before(Series, TTransformKind::Integral);
    EXPECT_FALSE(Control<QWidget>(before, "btnMarks").isEnabled());
    for (const double x : {3.0, 1.0}) {
        TGraphMark mark;
        mark.X1 = x;
        Graph.AddMark(mark);
    }
    TTransformDialog dialog(Series, TTransformKind::Integral);
    EXPECT_EQ(Control<QLineEdit>(dialog, "e_First").text(), "1");
    EXPECT_EQ(Control<QLineEdit>(dialog, "e_Second").text(), "3");
    EXPECT_EQ(Control<QLabel>(dialog, "lblState").text(), "3 points. The whole integral is 8.");
    dialog.accept();
    EXPECT_EQ(Ys(Series), "0;3.5;8;");
}

TEST_F(TransformDialog, ABaselineGoesThroughClickedPlaces) {
    TBaselineDialog dialog(Series);
    Await(dialog);
    ExpectEveryControlReached(dialog);
    ExpectKeysAreClear(dialog);
    ExpectEveryControlNamed(dialog);
    auto& plot = Control<TxyGraph>(dialog, "plot");
    const auto click = [&](double x, double y) {
        plot.repaint();
        const TPlotMap map = *plot.Mouse().Map();
        QTest::mouseClick(&plot, Qt::LeftButton, {}, QPointF(map.X.Position(x), map.Y.Position(y)).toPoint());
    };
    EXPECT_FALSE(Control<QWidget>(dialog, "btnOk").isEnabled());
    click(0.5, 0);
    click(3.5, 3);
    auto& places = Control<QTableWidget>(dialog, "t_Places");
    ASSERT_EQ(places.rowCount(), 2);
    EXPECT_NEAR(places.item(1, 0)->text().toDouble(), 3.5, 0.05);
    // By the keyboard to round numbers.
    const auto type = [&](int row, int column, const char* text) {
        places.setCurrentCell(row, column);
        places.setFocus();
        QTest::keyClick(&places, Qt::Key_F2);
        QWidget* editor = QApplication::focusWidget();
        QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(editor, QString::fromLatin1(text));
        QTest::keyClick(editor, Qt::Key_Return);
        QApplication::processEvents(); // the table takes it later
    };
    type(0, 0, "0"), type(0, 1, "-1"), type(1, 0, "4"), type(1, 1, "word");
    type(1, 1, "3");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(Ys(*plot.FindSeries(4)), "0;0;6;0;0;") << "the preview";
    Click(dialog, "btnAdd"); // amid both, on the peak
    ASSERT_EQ(places.rowCount(), 3);
    EXPECT_EQ(places.item(2, 0)->text(), "2");
    QTest::keyClick(&places, Qt::Key_Delete);
    ASSERT_EQ(places.rowCount(), 2);
    Click(dialog, "btnOk");
    EXPECT_EQ(Ys(Series), "0;0;6;0;0;");
    EXPECT_EQ(Series.ZeroValue(), 0);
}

TEST_F(TransformDialog, NoWindowCutsATextInAnyDress) {
    InEveryDress([this] {
        for (int kind = 0; kind < TransformCaptions().size(); ++kind) {
            TTransformDialog dialog(Series, static_cast<TTransformKind>(kind));
            Await(dialog);
            SCOPED_TRACE(kind);
            ExpectNothingClipped(dialog);
            ExpectKeysAreClear(dialog);
        }
        TPeaksDialog peaks(Series);
        TBaselineDialog baseline(Series);
        Txy_SetValues values(Series);
        TxyMark marks(Graph, nullptr);
        for (QDialog* dialog : std::initializer_list<QDialog*>{&peaks, &baseline, &values, &marks}) {
            Await(*dialog);
            SCOPED_TRACE(dialog->windowTitle().toStdString());
            ExpectNothingClipped(*dialog);
            ExpectKeysAreClear(*dialog);
        }
    });
}

TEST_F(TransformDialog, PeaksAreListedAndMarked) {
    TPeaksDialog dialog(Series);
    Await(dialog);
    const auto& table = Control<QTableWidget>(dialog, "t_Peaks");
    ASSERT_EQ(table.rowCount(), 1);
    EXPECT_EQ(table.item(0, 0)->text(), "2");
    EXPECT_EQ(table.item(0, 1)->text(), "7");
    ExpectEveryControlReached(dialog);
    ExpectKeysAreClear(dialog);
    Click(dialog, "btnMark");
    ASSERT_EQ(Graph.Marks().Count(), 1);
    EXPECT_EQ(Graph.Marks().Find(1)->X1, 2);
}

TEST_F(TransformDialog, SelectedPeaksAreFittedWhereTheyWereFound) {
    Series.Clear();
    for (int i = 0; i <= 100; ++i)
        Series.AddPoint(i, 4 * std::exp(-std::pow((i - 20) / 3.0, 2) / 2) +
                               2 * std::exp(-std::pow((i - 45) / 5.0, 2) / 2) +
                               3 * std::exp(-std::pow((i - 80) / 2.0, 2) / 2) + 0.05 * i);
    TPeaksDialog dialog(Series);
    Await(dialog);
    auto& table = Control<QTableWidget>(dialog, "t_Peaks");
    ASSERT_EQ(table.rowCount(), 3);
    table.setRangeSelected({0, 0, 1, 3}, true);
    Click(dialog, "btnFit");
    const TCurFit& fit = Series.CurveFit();
    EXPECT_EQ(fit.Expression(), "h1*exp(-sqr((x - m1)/s1)/2) + h2*exp(-sqr((x - m2)/s2)/2) + b + c*x");
    ASSERT_TRUE(fit.Result());
    EXPECT_NEAR(fit.Parameter(2)->Value(), 20, 0.5);
    EXPECT_NEAR(fit.Parameter(5)->Value(), 45, 0.5);
    EXPECT_TRUE(Control<QLabel>(dialog, "lblPeaks").text().startsWith("2 peaks fitted: converged"));
}

TEST_F(TransformDialog, NarrowFittedPeaksAreDrawnRoundAndAMissedTrendIsSaid) {
    for (int i = 5; i <= 400; ++i)
        Series.AddPoint(i, 4 * std::exp(-std::pow((i - 200) / 2.0, 2) / 2) + 1e-5 * i * i);
    TPeaksDialog dialog(Series);
    Await(dialog);
    Click(dialog, "btnFit");
    EXPECT_GT(Series.CurveFit().NPoints(), 1000);
    EXPECT_TRUE(Control<QLabel>(dialog, "lblPeaks").text().contains("the model misses a trend"));
}

TEST_F(TransformDialog, ItIsSaidWhatBecomesOfTheErrorsOfY) {
    Series.SetYErrors(std::vector<double>(5, 0.5));
    TTransformDialog dialog(Series, TTransformKind::Scale);
    Await(dialog);
    Type(dialog, "e_Second", "3");
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return Control<QLabel>(dialog, "lblState").text() == "5 points. Their errors of Y go along.";
    }));
    Choose(dialog, "cbx_Kind", static_cast<int>(TTransformKind::Derivative));
    EXPECT_EQ(Control<QLabel>(dialog, "lblState").text(), "5 points. They have no errors of Y any more.");
    Choose(dialog, "cbx_Kind", static_cast<int>(TTransformKind::Scale));
    Type(dialog, "e_Second", "3");
    Click(dialog, "btnOk");
    EXPECT_EQ(Series.YErrors(), std::vector<double>(5, 1.5));
}

} // namespace
} // namespace lumoplot
