// What a person does from a file to a figure, by events alone: with the keys, and with the mouse.
#include "dialogs/editing/panels.h"
#include "dialogs/import/get_data_source.h"
#include "graph/mouse/graph_mouse.h"
#include "host/window_fixture.h"

#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QTableWidget>
#include <cmath>

namespace lumoplot {
namespace {

class Tasks : public TWindowTest {
protected:
    Tasks() {
        QByteArray text = "t,drift,pulse\n";
        for (int i = 0; i <= 100; ++i) {
            const double x = i / 10.0;
            text += QByteArray::number(x) + ',' +
                    QByteArray::number(5 + x + 20 * std::exp(-(x - 4) * (x - 4))) + ',' +
                    QByteArray::number(100 * std::sin(x)) + '\n';
        }
        m_file = Write("run.csv", text);
    }
    /// The columns of the file as two data sets.
    void OpenBothColumns() {
        WhenModal<QFileDialog>([this](QFileDialog& dialog) {
            WhenModal<TxyGetDataSource>([](TxyGetDataSource& chooser) {
                Click(chooser, "btnAllY");
                QTest::keyClick(&chooser, Qt::Key_Return, Qt::ControlModifier);
            });
            EnterPath(dialog, m_file);
        });
        Press(Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
    }
    /// Opens a menu of the bar by its letter and presses the keys there.
    void ChooseByKeys(Qt::Key menu, std::initializer_list<Qt::Key> keys) {
        Press(menu, Qt::AltModifier);
        for (const Qt::Key key : keys) {
            ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activePopupWidget(); }));
            QTest::keyClick(QApplication::activePopupWidget(), key);
        }
    }
    QPoint PlaceOf(double x, double y) {
        Graph().repaint();
        const TPlotMap map = *Graph().Mouse().Map();
        return QPointF(map.X.Position(x), map.Y.Position(y)).toPoint();
    }
    QString Told() const { return Window->statusBar()->currentMessage(); }
    static double HeightAt(const TSeries& series, double x) {
        for (TPointCursor point = series.First(); point; point = point.Next())
            if (std::abs(point.X() - x) < 1e-9) return point.Y();
        return std::nan("");
    }

private:
    QString m_file;
};

TEST_F(Tasks, ABaselineIsTakenOffByKeysAloneAndUndone) {
    Open(Write("drift.csv", "x,y\n0,1\n1,2\n2,9\n3,4\n4,5\n"));
    WhenModal<QDialog>([](QDialog& dialog) {
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
        for (int i = 0; i < 2; ++i)
            QTest::keyClick(&dialog, Qt::Key_A, Qt::AltModifier); // the ends of the curve
        EXPECT_EQ(Control<QTableWidget>(dialog, "t_Places").rowCount(), 2);
        QTest::keyClick(&dialog, Qt::Key_Return, Qt::ControlModifier);
        if (dialog.isVisible()) dialog.reject(); // rather than wait for nobody
    });
    ChooseByKeys(Qt::Key_T, {Qt::Key_B});
    EXPECT_EQ(HeightAt(First(), 0), 0);
    EXPECT_EQ(HeightAt(First(), 2), 6);
    EXPECT_EQ(HeightAt(First(), 4), 0);
    Press(Qt::Key_Z);
    EXPECT_EQ(Told(), "Undone: Baseline of y");
    EXPECT_EQ(HeightAt(First(), 2), 9);
}

TEST_F(Tasks, AnInsetIsDraggedOpenAndRemoved) {
    Open(Example("enso.csv"));
    ChooseByKeys(Qt::Key_A, {Qt::Key_I});
    Graph().repaint();
    const QPoint from(Graph().width() / 2, 40);
    const QPoint to = from + QPoint(200, 150);
    QTest::mousePress(&Graph(), Qt::LeftButton, {}, from);
    QTest::mouseMove(&Graph(), to);
    QTest::mouseRelease(&Graph(), Qt::LeftButton, {}, to);
    ASSERT_TRUE(QTest::qWaitFor([this] { return Graph().ChildGraphCount() == 1; }));
    const QRect place = (*Graph().ChildGraphs().begin())->geometry();
    EXPECT_LE((place.topLeft() - from).manhattanLength(), 2);
    EXPECT_LE((place.bottomRight() - to).manhattanLength(), 4);
    Press(Qt::Key_Z);
    EXPECT_EQ(Graph().ChildGraphCount(), 0);
    ChooseByKeys(Qt::Key_A, {Qt::Key_I});
    QTest::keyClick(&Graph(), Qt::Key_Return); // where it usually is
    ASSERT_TRUE(QTest::qWaitFor([this] { return Graph().ChildGraphCount() == 1; }));
    ChooseByKeys(Qt::Key_A, {Qt::Key_R, Qt::Key_1});
    EXPECT_EQ(Graph().ChildGraphCount(), 0);
}

TEST_F(Tasks, TwoGraphsAreStackedAndZoomTogether) {
    OpenBothColumns();
    ASSERT_EQ(Graph().Series().size(), 2u);
    ChooseByKeys(Qt::Key_A, {Qt::Key_S});
    ASSERT_EQ(Graph().ChildGraphCount(), 1);
    TxyChildGr& below = **Graph().ChildGraphs().begin();
    EXPECT_EQ(Graph().Series().size(), 1u);
    EXPECT_EQ(below.Series().size(), 1u);
    Graph().repaint();
    below.repaint();
    EXPECT_NEAR(Graph().Mouse().Map()->Plot.left(), below.Mouse().Map()->Plot.left(), 1);
    QTest::mousePress(&below, Qt::LeftButton, {}, below.Mouse().Map()->Plot.center().toPoint());
    const QPoint corner = below.Mouse().Map()->Plot.bottomRight().toPoint() - QPoint(3, 3);
    QTest::mouseMove(&below, corner);
    QTest::mouseRelease(&below, Qt::LeftButton, {}, corner);
    EXPECT_GT(below.XAxis()->Min(), 4);
    EXPECT_EQ(Graph().XAxis()->Min(), below.XAxis()->Min());
    EXPECT_EQ(Graph().XAxis()->Max(), below.XAxis()->Max());
}

TEST_F(Tasks, AStyleIsAppliedInTwoSteps) {
    Open(Example("enso.csv"));
    Graph().Appearance()->SetGraphTitle("kept");
    Graph().Appearance()->SetShowFrame(true);
    Window->Document().SaveAsTemplate(PathOf("templates/journal.ltp"));
    Graph().Appearance()->SetShowFrame(false);
    auto& styles = *Window->findChild<QMenu*>(QStringLiteral("m_Styles"));
    Q_EMIT styles.aboutToShow(); // the pointer rests on Edit > Apply Style
    QAction* journal = nullptr;
    for (QAction* entry : styles.actions())
        if (entry->text() == "journal") journal = entry;
    ASSERT_TRUE(journal);
    journal->trigger();
    EXPECT_TRUE(Graph().Appearance()->ShowFrame());
    EXPECT_EQ(Graph().Appearance()->GraphTitle(), "kept");
}

TEST_F(Tasks, ADataSetPastedBesideItselfIsAnotherOne) {
    Open(Example("enso.csv"));
    Press(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    Press(Qt::Key_V);
    ASSERT_EQ(Graph().Series().size(), 2u);
    const TSeries& pasted = *Graph().FindSeries(2);
    EXPECT_EQ(pasted.SeriesName(), First().SeriesName() + " 2");
    EXPECT_NE(pasted.LineColor(), First().LineColor());
}

} // namespace
} // namespace lumoplot
