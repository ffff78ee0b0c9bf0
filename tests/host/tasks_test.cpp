// What a person does from a file to a figure, by events alone.
#include "graph/model/child_graph.h"
#include "graph/mouse/graph_mouse.h"
#include "host/window_fixture.h"

#include <QImage>
#include <QInputDialog>
#include <QListWidget>
#include <QMenu>
#include <QRadioButton>

namespace lumoplot {
namespace {

class TTasks : public TWindowTest {
protected:
    /// An entry by the letters of its menu and of itself.
    void Menu(Qt::Key menu, Qt::Key entry) {
        Press(menu, Qt::AltModifier);
        auto* shown = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_TRUE(shown) << static_cast<char>(menu);
        QTest::keyClick(shown, entry);
    }
    /// Types into what has the focus of the window that comes next, and takes it by Ctrl+Return.
    static void Answer(const char* window, const QString& text = {}) {
        WhenModal<QDialog>(
            [text](QDialog& dialog) {
                if (!text.isEmpty()) QTest::keyClicks(dialog.focusWidget(), text);
                QTest::keyClick(&dialog, Qt::Key_Return, Qt::ControlModifier);
            },
            window);
    }
    void OpenPeaks() {
        QByteArray rows = "t,U\n";
        for (int i = 0; i < 60; ++i)
            rows += QByteArray::number(i) + "," + QByteArray::number(i % 20 == 9 ? 50 : 2 + i % 3) + "\n";
        Open(Write("peaks.csv", rows));
    }
    void ExpectOneStep(const TBytes& before, const std::string& name) {
        EXPECT_NE(Content(), before) << name;
        EXPECT_EQ(Window->Document().Session().UndoName(), name);
        Control<QAction>(*Window, "a_Undo").trigger();
        EXPECT_EQ(Content(), before) << name;
    }
    TxyChildGr* Panel() const {
        const auto panels = Graph().ChildGraphs();
        return panels.empty() ? nullptr : *panels.begin();
    }
};

TEST_F(TTasks, ADataSetPastedBesideItselfIsAnotherOne) {
    Open(Example("enso.csv"));
    Press(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    Press(Qt::Key_V);
    ASSERT_EQ(Graph().Series().size(), 2u);
    const TSeries& pasted = *Graph().FindSeries(2);
    EXPECT_EQ(pasted.SeriesName(), First().SeriesName() + " 2");
    EXPECT_NE(pasted.LineColor(), First().LineColor());
}

TEST_F(TTasks, EachTransformIsANamedStepByKeysAlone) {
    OpenPeaks();
    const TBytes before = Content();
    const struct {
        Qt::Key key;
        const char* typed;
        const char* step;
    } transforms[] = {
        {Qt::Key_S, "3", "Shift"},
        {Qt::Key_C, "2", "Scale"},
        {Qt::Key_N, nullptr, "Normalise"},
        {Qt::Key_R, "7", "Cut Range"},
        {Qt::Key_M, "25", "Resample"},
        {Qt::Key_A, "4", "Average"},
        {Qt::Key_G, "7", "Smooth: Savitzky-Golay"},
        {Qt::Key_D, "3", "Smooth: Running Median"},
        {Qt::Key_V, nullptr, "Derivative"},
        {Qt::Key_I, nullptr, "Integral"},
    };
    for (const auto& [key, typed, step] : transforms) {
        Answer("TTransformDialog", QString::fromLatin1(typed));
        Menu(Qt::Key_T, key);
        ExpectOneStep(before, std::string(step) + " of U");
    }
}

TEST_F(TTasks, ABaselineGoesThroughTwoPlaces) {
    OpenPeaks();
    const TBytes before = Content();
    WhenModal<QDialog>(
        [](QDialog& dialog) {
            auto& plot = Control<TxyGraph>(dialog, "plot");
            plot.repaint();
            const TPlotMap map = *plot.Mouse().Map();
            for (const double x : {5.0, 50.0})
                QTest::mouseClick(&plot, Qt::LeftButton, {},
                                  QPointF(map.X.Position(x), map.Y.Position(20)).toPoint());
            Click(dialog, "btnOk");
        },
        "TBaselineDialog");
    Menu(Qt::Key_T, Qt::Key_B);
    ExpectOneStep(before, "Baseline of U");
}

TEST_F(TTasks, PeaksBecomeMarksAndAFit) {
    OpenPeaks();
    for (const char* button : {"btnMark", "btnFit"}) {
        const TBytes before = Content();
        WhenModal<QDialog>([button](QDialog& dialog) {
            EXPECT_EQ(dialog.findChild<QAbstractItemView*>(QStringLiteral("t_Peaks"))->model()->rowCount(),
                      3);
            Click(dialog, button);
            Click(dialog, "btnOk");
        });
        Menu(Qt::Key_T, Qt::Key_P);
        ExpectOneStep(before, "Peaks of U");
    }
}

TEST_F(TTasks, ADataSetGetsThePointsOfAnother) {
    Open(Write("a.csv", "t,u\n0,1\n2,1\n"));
    Open(Write("b.csv", "t,v\n1,5\n3,5\n5,5\n"));
    WhenModal<QInputDialog>([](QInputDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
    Menu(Qt::Key_T, Qt::Key_E);
    EXPECT_EQ(Graph().FindSeries(2)->Count(), 5);
    Press(Qt::Key_Z);
    EXPECT_EQ(Graph().FindSeries(2)->Count(), 3);
}

TEST_F(TTasks, TheSecondAxisComesAndGoes) {
    Open(Write("a.csv", "t,T\n0,1\n10,2\n"));
    Open(Write("b.csv", "t,p\n0,1000\n10,2000\n"));
    const auto choose = [&](const char* axis) {
        InEditor([axis](QDialog& editor) {
            ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));
            QTest::keyClick(&editor, Qt::Key_G, Qt::AltModifier);
            auto& button = Control<QRadioButton>(editor, axis);
            QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(8, button.height() / 2));
            Click(editor, "btnOk");
        });
        Control<QAction>(*Window, "a_EditData").trigger();
    };
    choose("rb_SecondAxis");
    Graph().PrepareForDrawing();
    EXPECT_TRUE(Graph().YAxis_Second()->ShowAxis());
    EXPECT_GE(Graph().YAxis_Second()->Max(), 2000);
    EXPECT_LE(Graph().YAxis()->Max(), 10) << "the first one is for the others alone";
    choose("rb_MainAxis");
    EXPECT_FALSE(Graph().YAxis_Second()->ShowAxis());
}

TEST_F(TTasks, PanelsComeByKeysAndMouse) {
    Open(Write("a.csv", "t,T\n0,1\n10,2\n"));
    Open(Write("b.csv", "t,p\n0,1000\n10,2000\n"));
    const TBytes before = Content();
    Menu(Qt::Key_A, Qt::Key_S);
    ASSERT_TRUE(Panel());
    EXPECT_EQ(Panel()->FirstSeries()->SeriesName(), "p");
    ExpectOneStep(before, "panel for p");
    Control<QAction>(*Window, "a_AddInset").trigger();
    QTest::mousePress(&Graph(), Qt::LeftButton, {}, {200, 100});
    QTest::mouseMove(&Graph(), {300, 180});
    QTest::mouseMove(&Graph(), {420, 260});
    QTest::mouseRelease(&Graph(), Qt::LeftButton, {}, {420, 260});
    ASSERT_TRUE(QTest::qWaitFor([&] { return Panel() != nullptr; }));
    EXPECT_NEAR(Panel()->width(), 220, 2);
    ExpectOneStep(before, "add inset");
}

TEST_F(TTasks, SeveralColumnsOfAFileByThreeClicksOrByKeys) {
    const QString file = Write("lab.csv", "t;U1;U2;T\n0;1;2;300\n1;2;4;301\n2;3;6;303\n");
    const auto choose = [&](const std::function<void(QDialog&)>& how) {
        WhenModal<QFileDialog>([&](QFileDialog& files) {
            WhenModal<QDialog>(how, "TxyGetDataSource");
            EnterPath(files, file);
        });
        Press(Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
    };
    choose([](QDialog& dialog) {
        auto& columns = Control<QListWidget>(dialog, "l_YColumns");
        const QRect second = columns.visualItemRect(columns.item(1));
        QTest::mouseClick(columns.viewport(), Qt::LeftButton, {}, {second.left() + 8, second.center().y()});
        const QAbstractItemModel& preview = *Control<QAbstractItemView>(dialog, "t_Preview").model();
        for (const int column : {1, 2})
            EXPECT_TRUE(preview.headerData(column, Qt::Horizontal).toString().startsWith(u'Y')) << column;
        Click(dialog, "btnOk");
    });
    ASSERT_EQ(Graph().Series().size(), 2u);
    EXPECT_EQ(Graph().FindSeries(2)->SeriesName(), "U2");
    EXPECT_NE(First().LineColor(), Graph().FindSeries(2)->LineColor());
    const TBytes byMouse = Content();
    Press(Qt::Key_Z);
    choose([](QDialog& dialog) {
        QTest::keyClick(&dialog, Qt::Key_Y, Qt::AltModifier);
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Space}) QTest::keyClick(dialog.focusWidget(), key);
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return, Qt::ControlModifier);
    });
    EXPECT_EQ(Content(), byMouse);
}

TEST_F(TTasks, DatesMakeADateAxisWithoutAQuestion) {
    Open(Write("log.csv", "when,level\n2026-03-01 06:00,1\n2026-03-01 18:00,3\n2026-03-03 00:00,2\n"));
    EXPECT_TRUE(Graph().XAxis()->ShowAsTime());
    EXPECT_EQ(First().Count(), 3);
    Press(Qt::Key_Z);
    Open(Write("run.csv", "t,level\n0,1\n1,3\n"));
    EXPECT_FALSE(Graph().XAxis()->ShowAsTime());
}

TEST_F(TTasks, AStyleIsAppliedByTwoKeysOfTheMenu) {
    Open(Example("enso.csv"));
    First().SetLineWidth(5);
    QDir().mkpath(PathOf("templates"));
    AnswerPath(PathOf("templates/wide.ltp"));
    Menu(Qt::Key_F, Qt::Key_M);
    ASSERT_TRUE(QFile::exists(PathOf("templates/wide.ltp")));
    First().SetLineWidth(1);
    Press(Qt::Key_E, Qt::AltModifier);
    auto* edit = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_TRUE(edit);
    QTest::keyClick(edit, Qt::Key_T);
    ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activePopupWidget() != edit; }));
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Return);
    EXPECT_EQ(First().LineWidth(), 5);
    EXPECT_EQ(Window->Document().Session().UndoName(), "apply style wide");
}

TEST_F(TTasks, APictureForPaperIsRemembered) {
    Open(Example("enso.csv"));
    const auto save = [this](const QString& file, std::optional<int> place) {
        WhenModal<QDialog>(
            [&](QDialog& dialog) {
                if (place) Choose(dialog, "cbx_Place", *place);
                AnswerPath(file);
                QTest::keyClick(dialog.focusWidget(), Qt::Key_Return, Qt::ControlModifier);
            },
            "PictureExportDialog");
        Press(Qt::Key_E);
        const QImage picture(file);
        EXPECT_NEAR(picture.width(), 85 / 25.4 * 600, 1);
        EXPECT_NEAR(picture.dotsPerMeterX(), 600 / 0.0254, 1);
    };
    save(PathOf("one.png"), 1);
    Window = std::make_unique<TMainWindow>(PathOf("templates"));
    Window->show();
    Open(Example("enso.csv"));
    save(PathOf("two.png"), {});
}

} // namespace
} // namespace lumoplot
