#include "dialogs/editing/graph_edit_bar.h"

#include "common/window_driver.h"
#include "data/series/ds_info.h"
#include "graph/mouse/shown_graph.h"

#include <QVBoxLayout>

namespace lumoplot {
namespace {

// Of places that are rounded to pixels, in X and in Y of these plots.
constexpr double kPixelX = 0.05;
constexpr double kPixelY = 0.7;

class GraphEditBar : public TShownGraph {
protected:
    void SetUp() override {
        auto* layout = new QVBoxLayout(&Window);
        layout->addWidget(Bar);
        layout->addWidget(&Graph, 1);
        Window.resize(700, 460);
        Window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Window));
        Graph.Appearance()->SetCurrSerIndex(1);
        Graph.SetChangeHook([this](const TUserChange& change, const std::function<void()>& action) {
            action();
            if (change.Gesture == 0) Steps.push_back(change.Name);
        });
        Repaint();
    }
    void TearDown() override { Graph.setParent(nullptr); }

    void Mode(const char* button) {
        lumoplot::Click(Window, button);
        Graph.setFocus();
    }
    bool HasPointAt(double x, double y) {
        for (auto point = First.First(); point; point = point.Next())
            if (std::abs(point.X() - x) < kPixelX && std::abs(point.Y() - y) < kPixelY) return true;
        return false;
    }

    QWidget Window;
    TGraphEditBar* Bar = new TGraphEditBar(Graph, &Window);
    std::vector<std::string> Steps;
};

TEST_F(GraphEditBar, APointIsAddedWhereTheButtonGoesUp) {
    Mode("btnAddPoint");
    DragAndDrop(PlaceOf(2, 80), PlaceOf(3.5, 60));
    EXPECT_EQ(First.Count(), 12);
    EXPECT_TRUE(HasPointAt(3.5, 60));
    EXPECT_EQ(Steps, std::vector<std::string>{"add point to " + First.SeriesName()});
    First.SetZeroValue(10);
    First.SetBaseLineSlope(2);
    Repaint();
    DragAndDrop(PlaceOf(2.5, 40), PlaceOf(2.5, 40));
    EXPECT_TRUE(HasPointAt(2.5, 40 + 10 + 2 * 2.5)); // what is seen is corrected
}

TEST_F(GraphEditBar, APointIsMovedAndKeepsItsXWithShift) {
    Mode("btnMovePoint");
    DragAndDrop(PlaceOf(5, 25), PlaceOf(5.5, 60));
    EXPECT_EQ(First.Count(), 11);
    EXPECT_TRUE(HasPointAt(5.5, 60));
    EXPECT_FALSE(HasPointAt(5, 25));
    DragAndDrop(PlaceOf(7, 49), PlaceOf(8.4, 70), Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_EQ(First.GetPoint(8)->X, 7);
    EXPECT_NEAR(First.GetPoint(8)->Y, 70, kPixelY);
    DragAndDrop(PlaceOf(2, 70), PlaceOf(3, 80)); // from nothing
    EXPECT_EQ(Steps.size(), 2u);
}

TEST_F(GraphEditBar, APointThatComesWithinTheToleranceOfAnotherTakesItsPlace) {
    First.SetNumericalTolerance(0.2);
    Mode("btnMovePoint");
    DragAndDrop(PlaceOf(5, 25), PlaceOf(6.05, 80));
    EXPECT_EQ(First.Count(), 10);
    EXPECT_TRUE(HasPointAt(6.05, 80));
}

TEST_F(GraphEditBar, EscapeAndAnotherModeTakeADragBack) {
    const std::uint64_t before = First.DataStamp();
    Mode("btnMovePoint");
    Drag(PlaceOf(5, 25), PlaceOf(5.5, 60));
    Press(Qt::Key_Escape);
    QTest::mouseRelease(&Graph, Qt::LeftButton, {}, PlaceOf(5.5, 60));
    Mode("btnAddPoint");
    Drag(PlaceOf(5, 25), PlaceOf(5.5, 60));
    Press(Qt::Key_Escape);
    QTest::mouseRelease(&Graph, Qt::LeftButton, {}, PlaceOf(5.5, 60));
    Drag(PlaceOf(5, 25), PlaceOf(5.5, 60));
    Mode("btnMovePoint");
    QTest::mouseRelease(&Graph, Qt::LeftButton, {}, PlaceOf(5.5, 60));
    EXPECT_EQ(First.DataStamp(), before);
    EXPECT_TRUE(Steps.empty());
}

TEST_F(GraphEditBar, APointIsDeletedByAClickOrByItsKey) {
    Mode("btnDeletePoint");
    QTest::mouseClick(&Graph, Qt::LeftButton, {}, PlaceOf(2, 70)); // beside all points
    EXPECT_EQ(First.Count(), 11);
    QTest::mouseClick(&Graph, Qt::LeftButton, {}, PlaceOf(5, 25) + QPoint(2, -3));
    EXPECT_FALSE(First.GetPoint(6));
    Repaint();
    MoveTo(PlaceOf(8, 64));
    Press(Qt::Key_Delete);
    EXPECT_FALSE(First.GetPoint(9));
    EXPECT_EQ(First.Count(), 9);
}

TEST_F(GraphEditBar, PlacesSnapToPointsOfOtherDataSets) {
    TSeries& other = *Graph.FindSeries(Graph.AddSeries());
    other.AddPoint(3.25, 61.5);
    other.AddPoint(4, 70);
    Repaint();
    Mode("btnAddPoint");
    lumoplot::Click(Window, "btnSnap");
    Graph.setFocus();
    DragAndDrop(PlaceOf(2, 80), PlaceOf(3.25, 61.5) + QPoint(4, 4));
    const auto added = First.GetPoint(12);
    ASSERT_TRUE(added);
    EXPECT_EQ(added->X, 3.25);
    EXPECT_NEAR(added->Y, 61.5, 1e-9);
}

TEST_F(GraphEditBar, ASourcedDataSetAsksOnceAndIsManualThen) {
    TRecordingSink sink(false);
    First.DataSourceInfo().SetKind(TSourceKind::TextFile);
    Mode("btnDeletePoint");
    const auto clickPoint = [this](double x) {
        QTest::mouseClick(&Graph, Qt::LeftButton, {}, PlaceOf(x, x * x));
        Repaint();
    };
    clickPoint(5);
    EXPECT_EQ(sink.Texts.size(), 1u);
    EXPECT_EQ(First.Count(), 11);
    sink.Answer = true;
    clickPoint(5); // answers the question
    EXPECT_EQ(First.DataSourceInfo().Kind(), TSourceKind::Manual);
    clickPoint(5);
    clickPoint(6);
    EXPECT_EQ(sink.Texts.size(), 2u);
    EXPECT_EQ(First.Count(), 9);
}

TEST_F(GraphEditBar, MarksArePlacedAndDragged) {
    lumoplot::Choose(Window, "cbx_MarkType", 1);
    Graph.setFocus();
    DragAndDrop(PlaceOf(2, 80), PlaceOf(3, 60));
    const auto mark = [this](int id) { return *Graph.Marks().Find(id); };
    ASSERT_EQ(Graph.Marks().Count(), 1);
    EXPECT_EQ(mark(1).TypeOfMark, TMarkType::HorizontalLine);
    EXPECT_NEAR(mark(1).Y1, 60, kPixelY);
    EXPECT_TRUE(Graph.Appearance()->ShowMarks());
    DragAndDrop(PlaceOf(8, 60), PlaceOf(6, 20));
    EXPECT_EQ(Graph.Marks().Count(), 1);
    EXPECT_NEAR(mark(1).Y1, 20, kPixelY);
    Drag(PlaceOf(8, 20), PlaceOf(6, 40));
    Press(Qt::Key_Escape);
    EXPECT_NEAR(mark(1).Y1, 20, kPixelY);
    lumoplot::Choose(Window, "cbx_MarkType", 3);
    Graph.setFocus();
    DragAndDrop(PlaceOf(1, 40), PlaceOf(3, 80));
    EXPECT_NEAR(mark(2).X2, 3, kPixelX);
    DragAndDrop(PlaceOf(2, 60), PlaceOf(4, 60)); // as a whole
    EXPECT_NEAR(mark(2).X1, 3, kPixelX);
    EXPECT_NEAR(mark(2).Y1, 40, kPixelY);
    DragAndDrop(PlaceOf(5, 80), PlaceOf(5, 90)); // by its end
    EXPECT_NEAR(mark(2).X1, 3, kPixelX);
    EXPECT_NEAR(mark(2).Y2, 90, kPixelY);
    EXPECT_EQ(Steps, (std::vector<std::string>{"add mark", "move mark 1", "add mark", "move mark 2",
                                               "move mark 2"}));
}

TEST_F(GraphEditBar, TheMarkThatWasPlacedOrClickedLastIsDeletedByItsKey) {
    Mode("btnPlaceMark");
    for (const double x : {2.0, 5.0, 8.0}) DragAndDrop(PlaceOf(x, 40), PlaceOf(x, 40));
    ASSERT_EQ(Graph.Marks().Count(), 3);
    Press(Qt::Key_Delete);
    EXPECT_FALSE(Graph.Marks().Find(3));
    Press(Qt::Key_Delete);
    DragAndDrop(PlaceOf(2, 60), PlaceOf(2, 60));
    Press(Qt::Key_Delete);
    EXPECT_EQ(Graph.Marks().Count(), 1);
    EXPECT_TRUE(Graph.Marks().Find(2));
}

TEST_F(GraphEditBar, OtherButtonsStillMoveThePicture) {
    Mode("btnAddPoint");
    const double max = Graph.XAxis()->Max();
    DragAndDrop(PlaceOf(5, 40), PlaceOf(4, 40), Qt::MiddleButton);
    EXPECT_EQ(First.Count(), 11);
    EXPECT_NEAR(Graph.XAxis()->Max(), max + 1, kPixelX);
}

} // namespace
} // namespace lumoplot
