#include "graph/model/child_graph.h"
#include "graph/mouse/coords_panel.h"
#include "graph/mouse/shown_graph.h"

#include <QToolTip>

namespace lumoplot {
namespace {

constexpr double kPixel = 0.05; // what a pixel of these plots is worth at most, in X

class GraphMouse : public TShownGraph {
protected:
    void SetUp() override { Show(); }

    TAxis& X() { return *Graph.XAxis(); }
    TAxis& Y() { return *Graph.YAxis(); }
};

TEST_F(GraphMouse, ARubberBandZoomsToWhatItHolds) {
    const double secondMax = Graph.YAxis_Second()->Max();
    DragAndDrop(PlaceOf(2, 64), PlaceOf(6, 16));
    EXPECT_NEAR(X().Min(), 2, kPixel);
    EXPECT_NEAR(X().Max(), 6, kPixel);
    EXPECT_NEAR(Y().Min(), 16, 0.5);
    EXPECT_NEAR(Y().Max(), 64, 0.5);
    EXPECT_EQ(Graph.YAxis_Second()->Max(), secondMax) << "nothing lies on it";
    EXPECT_NEAR(Map().X.Value(Map().Plot.left()), 2, kPixel);
}

TEST_F(GraphMouse, AFlatBandZoomsOneAxisAndAClickNone) {
    DragAndDrop(PlaceOf(2, 40), PlaceOf(2, 40) + QPoint(2, 2));
    EXPECT_TRUE(X().AutoSizing());
    DragAndDrop(PlaceOf(2, 40), PlaceOf(6, 40));
    EXPECT_NEAR(X().Max(), 6, kPixel);
    EXPECT_TRUE(Y().AutoSizing());
}

TEST_F(GraphMouse, EscapeLeavesTheRangesAsTheyWere) {
    Drag(PlaceOf(2, 64), PlaceOf(6, 16));
    Press(Qt::Key_Escape);
    QTest::mouseRelease(&Graph, Qt::LeftButton, {}, PlaceOf(6, 16));
    EXPECT_TRUE(X().AutoSizing());
    const double max = X().Max();
    Drag(PlaceOf(2, 64), PlaceOf(6, 16), Qt::MiddleButton);
    EXPECT_NE(X().Max(), max);
    Press(Qt::Key_Escape);
    EXPECT_DOUBLE_EQ(X().Max(), max);
    EXPECT_TRUE(X().AutoSizing());
    EXPECT_FALSE(Graph.Mouse().Zoom().CanGoBack());
}

TEST_F(GraphMouse, APictureMovesWithTheMouse) {
    const double span = X().Max() - X().Min();
    DragAndDrop(PlaceOf(5, 20), PlaceOf(7, 40), Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_NEAR(X().Min(), -3, kPixel); // from -1
    EXPECT_NEAR(X().Max() - X().Min(), span, 1e-9);
    EXPECT_NEAR(Y().Min(), -30, 0.7); // from -10
    DragAndDrop(LabelsOf(TAxisRole::Y), LabelsOf(TAxisRole::Y) + QPoint(60, -30));
    EXPECT_NEAR(X().Min(), -3, kPixel);
    EXPECT_LT(Y().Min(), -32);
}

TEST_F(GraphMouse, TheWheelKeepsWhatIsUnderTheMouse) {
    const QPoint place = PlaceOf(4, 60);
    const double x = Map().X.Value(place.x());
    const double y = Map().Y.Value(place.y());
    const double span = X().Max() - X().Min();
    Wheel(place, 2);
    EXPECT_NEAR(X().Max() - X().Min(), span / 1.44, 1e-9);
    EXPECT_NEAR(Map().X.Value(place.x()), x, 1e-9);
    EXPECT_NEAR(Map().Y.Value(place.y()), y, 1e-9);
    const double yMax = Y().Max();
    Wheel(LabelsOf(TAxisRole::X), -1);
    EXPECT_NEAR(X().Max() - X().Min(), span / 1.2, 1e-9);
    EXPECT_EQ(Y().Max(), yMax);
}

TEST_F(GraphMouse, LogarithmicAndReversedAxesZoomAsTheyLook) {
    X().SetMin(1);
    X().SetMax(100);
    X().SetLogScale(true);
    X().SetReversed(true);
    Repaint();
    Wheel(PlaceOf(10, 60), 1);
    EXPECT_NEAR(X().Min() * X().Max(), 100, 3);
    EXPECT_NEAR(X().Max() / X().Min(), std::pow(100, 1 / 1.2), 1e-6);
    DragAndDrop(PlaceOf(20, 60), PlaceOf(5, 20));
    EXPECT_NEAR(X().Min(), 5, 0.2);
    EXPECT_NEAR(X().Max(), 20, 0.5);
}

TEST_F(GraphMouse, AZoomStopsBeforeTheNumbersDo) {
    for (int i = 0; i < 400; ++i) Wheel(PlaceOf((X().Min() + X().Max()) / 2, (Y().Min() + Y().Max()) / 2), 5);
    EXPECT_LT(X().Min(), X().Max());
    EXPECT_LT(X().Max() - X().Min(), 1e-6);
    for (int i = 0; i < 2000; ++i) Wheel(Map().Plot.center().toPoint(), -5);
    EXPECT_TRUE(std::isfinite(X().Max() - X().Min()));
    EXPECT_TRUE(Graph.Mouse().Map());
    X().SetLogScale(true);
    for (const double least : {1e200, 1.0, 1e-200}) {
        X().SetMax(100 * std::max(X().Max(), least));
        X().SetMin(least);
        X().SetMax(100 * least);
        Repaint();
        for (int i = 0; i < 60; ++i) Wheel(LabelsOf(TAxisRole::X), -5); // Y can follow no further
        EXPECT_LT(X().Min(), least / 100) << least;
        EXPECT_GT(X().Min(), 0) << least;
        EXPECT_TRUE(std::isfinite(X().Max())) << least;
        EXPECT_TRUE(Graph.Mouse().Map()) << least;
    }
}

TEST_F(GraphMouse, EveryGestureGoesBackByItself) {
    Y().SetMax(150);
    Y().SetStepSize(30);
    DragAndDrop(PlaceOf(2, 64), PlaceOf(6, 16));
    EXPECT_TRUE(Y().AutoStepping()) << "30 is too coarse a step for 48";
    const double zoomed = X().Max();
    QTest::mouseDClick(&Graph, Qt::LeftButton, {}, Map().Plot.center().toPoint());
    Repaint();
    EXPECT_TRUE(Y().AutoSizing());
    EXPECT_FALSE(Y().AutoStepping()) << "the step of the user's own is there again";
    EXPECT_DOUBLE_EQ(Y().StepSize(), 30);
    EXPECT_NEAR(X().Min(), -1, 1e-6);
    Press(Qt::Key_Backspace);
    EXPECT_DOUBLE_EQ(X().Max(), zoomed);
    Press(Qt::Key_Backspace);
    EXPECT_TRUE(X().AutoSizing());
    EXPECT_DOUBLE_EQ(Y().Max(), 150);
    EXPECT_DOUBLE_EQ(Y().StepSize(), 30);
    EXPECT_FALSE(Graph.Mouse().Zoom().CanGoBack());
    Press(Qt::Key_Home);
    EXPECT_TRUE(Graph.Mouse().Zoom().CanGoBack());
    Press(Qt::Key_Home);
    Press(Qt::Key_Backspace);
    EXPECT_FALSE(Graph.Mouse().Zoom().CanGoBack()) << "a second Home changed nothing";
}

TEST_F(GraphMouse, WheelAndKeysAreStepsOfTheirOwn) {
    const QPoint middle = Map().Plot.center().toPoint();
    std::vector<double> widths{X().Max() - X().Min()};
    const auto look = [&] { widths.push_back(X().Max() - X().Min()); };
    for (int i = 0; i < 2; ++i) {
        Wheel(middle, 1);
        Wheel(middle, 1);
        look();
        Press(Qt::Key_Plus);
        look();
    }
    while (widths.size() > 1) {
        widths.pop_back();
        Press(Qt::Key_Backspace);
        EXPECT_DOUBLE_EQ(X().Max() - X().Min(), widths.back()) << widths.size();
    }
}

TEST_F(GraphMouse, AJitterZoomsNothing) {
    const auto range = std::pair(X().Min(), X().Max());
    for (const QPoint way : {QPoint(3, 0), QPoint(5, 5), QPoint(7, -7)}) {
        const QPoint middle = Map().Plot.center().toPoint();
        DragAndDrop(middle, middle + way);
        EXPECT_EQ(std::pair(X().Min(), X().Max()), range) << way.x();
        EXPECT_FALSE(Graph.Mouse().Zoom().CanGoBack()) << way.x();
    }
}

TEST_F(GraphMouse, KeysZoomAndMove) {
    const double span = X().Max() - X().Min();
    Press(Qt::Key_Plus);
    EXPECT_NEAR(X().Max() - X().Min(), span / 1.4, 1e-9);
    Press(Qt::Key_Minus);
    EXPECT_NEAR(X().Max() - X().Min(), span, 1e-9);
    const double min = X().Min();
    const bool autoY = Y().AutoSizing();
    Press(Qt::Key_Right);
    EXPECT_GT(X().Min(), min);
    EXPECT_EQ(Y().AutoSizing(), autoY);
    const double yMin = Y().Min();
    Press(Qt::Key_Up);
    EXPECT_GT(Y().Min(), yMin);
}

TEST_F(GraphMouse, APointNearTheMouseTellsAboutItself) {
    First.SetSeriesName("a <b> & c");
    First.SetZeroValue(4);
    Repaint();
    MoveTo(PlaceOf(5, 21) + QPoint(3, 3));
    ASSERT_TRUE(Graph.Mouse().NearPoint());
    EXPECT_EQ(Graph.Mouse().NearPoint()->X, 5);
    EXPECT_EQ(Graph.Mouse().NearPoint()->Y, 21);
    const QString tip = QToolTip::text();
    EXPECT_TRUE(tip.contains(QStringLiteral("a &lt;b&gt; &amp; c"))) << tip.toStdString();
    EXPECT_TRUE(tip.contains(QStringLiteral(">21<"))) << tip.toStdString();
    MoveTo(PlaceOf(5, 21) + QPoint(40, 40));
    EXPECT_FALSE(Graph.Mouse().NearPoint());
    First.SetActive(false);
    Repaint();
    MoveTo(PlaceOf(5, 21));
    EXPECT_FALSE(Graph.Mouse().NearPoint());
}

TEST_F(GraphMouse, KeysWalkOverThePoints) {
    TSeries& second = *Graph.FindSeries(Graph.AddSeries());
    second.AddPoint(2.2, 50);
    second.AddPoint(9, 50);
    Repaint();
    const auto near = [this] {
        return std::pair(Graph.Mouse().NearPoint()->X, Graph.Mouse().NearPoint()->Y);
    };
    for (int i = 0; i < 4; ++i) QTest::keyClick(&Graph, Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(near(), std::pair(3.0, 9.0));
    QTest::keyClick(&Graph, Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(near(), std::pair(2.0, 4.0));
    QTest::keyClick(&Graph, Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(near(), std::pair(2.2, 50.0));
    QTest::keyClick(&Graph, Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(near(), std::pair(2.2, 50.0)) << "the first point has none before it";
    const double left = X().Min();
    QTest::keyClick(&Graph, Qt::Key_Right);
    EXPECT_EQ(near(), std::pair(9.0, 50.0)) << "the arrows alone go on";
    EXPECT_EQ(X().Min(), left);
    QTest::keyClick(&Graph, Qt::Key_Escape);
    EXPECT_FALSE(Graph.Mouse().NearPoint());
    QTest::keyClick(&Graph, Qt::Key_Right);
    EXPECT_GT(X().Min(), left) << "they move the picture again";
}

TEST_F(GraphMouse, TheReadOutShowsTheCoordinates) {
    QWidget& panel = *Graph.Mouse().CoordsPanel();
    EXPECT_FALSE(panel.isVisible());
    MoveTo(PlaceOf(5, 25));
    ASSERT_TRUE(panel.isVisible());
    const auto labels = panel.findChildren<TCoordLabel*>();
    ASSERT_EQ(labels.size(), 3);
    EXPECT_TRUE(labels[0]->text().startsWith(QStringLiteral("X = 5"))) << labels[0]->text().toStdString();
    EXPECT_LE(labels[0]->text().size(), 8);
    EXPECT_FALSE(labels[2]->isVisible());
    MoveTo({2, 2});
    EXPECT_FALSE(panel.isVisible());
    X().SetShowAsTime(true);
    X().SetMin(45000);
    X().SetMax(46400);
    Repaint();
    MoveTo(PlaceOf(45500.4, 25));
    EXPECT_TRUE(labels[0]->text().startsWith(QStringLiteral("X = 2024-07-2")));
    EXPECT_EQ(labels[0]->text().size(), 14) << "a pixel is worth days";
}

TEST_F(GraphMouse, ADoubleClickBesideThePlotAsksForTheSettings) {
    int asked = 0;
    QObject::connect(&Graph, &TxyGraph::OnWantDesigner, &Graph, [&] { ++asked; });
    QTest::mouseDClick(&Graph, Qt::LeftButton, {}, LabelsOf(TAxisRole::X));
    EXPECT_EQ(asked, 1);
    QTest::mouseDClick(&Graph, Qt::LeftButton, {}, Map().Plot.center().toPoint());
    EXPECT_EQ(asked, 1);
}

TEST_F(GraphMouse, AChildGraphIsMovedAndResized) {
    TxyChildGr& child = *Graph.AddChildGraph();
    child.FindSeries(child.AddSeries())->AddPoint(1, 1);
    child.Dimensions()->SetHorPosition(0.2);
    child.Dimensions()->SetVerPosition(0.1);
    child.Dimensions()->SetHorSize(0.5);
    child.Dimensions()->SetVerSize(0.5);
    child.FollowParent();
    Repaint();
    int changes = 0;
    QObject::connect(&Graph, &TxyGraph::OnUserChange, &Graph, [&] { ++changes; });
    const auto drag = [&](QPoint from, QPoint way) {
        const QPoint target = child.mapToParent(from) + way;
        QTest::mousePress(&child, Qt::LeftButton, {}, from);
        const QPointF there = child.mapFromParent(target);
        QMouseEvent move(QEvent::MouseMove, there, child.mapToGlobal(there), Qt::NoButton, Qt::LeftButton,
                         {});
        QApplication::sendEvent(&child, &move);
    };
    const auto drop = [&] { QTest::mouseRelease(&child, Qt::LeftButton, {}, {}); };
    EXPECT_EQ(child.geometry(), QRect(100, 40, 250, 200));
    drag({240, 10}, {30, -500});
    drop();
    EXPECT_EQ(child.geometry(), QRect(130, 0, 250, 200)) << "moved, and kept inside";
    EXPECT_DOUBLE_EQ(child.Dimensions()->HorPosition(), 0.26);
    drag({248, 198}, {50, -20});
    drop();
    EXPECT_EQ(child.geometry(), QRect(130, 0, 300, 180));
    EXPECT_EQ(changes, 2);
    drag({2, 100}, {400, 0});
    EXPECT_EQ(child.width(), TChildPlacing::kSmallest.width());
    QTest::keyClick(&child, Qt::Key_Escape);
    drop();
    EXPECT_EQ(child.geometry(), QRect(130, 0, 300, 180));
    EXPECT_DOUBLE_EQ(child.Dimensions()->HorSize(), 0.6);
    EXPECT_EQ(changes, 2);
}

TEST_F(GraphMouse, WhatTheMouseShowsRedrawsNoPicture) {
    int pictures = 0;
    QObject::connect(&Graph, &TxyGraph::OnPaintEnd, &Graph, [&] { ++pictures; });
    Repaint();
    Drag(PlaceOf(2, 64), PlaceOf(6, 16));
    Repaint();
    EXPECT_EQ(pictures, 0);
    QTest::mouseRelease(&Graph, Qt::LeftButton, {}, PlaceOf(6, 16));
    Repaint();
    EXPECT_EQ(pictures, 1);
    First.AddPoint(3.5, 1);
    First.AddPoint(4.5, 1);
    Repaint();
    Repaint();
    EXPECT_EQ(pictures, 2);
}

TEST_F(GraphMouse, GoingBackLeavesAnAxisThatHasChangedItsScale) {
    DragAndDrop(PlaceOf(2, 64), PlaceOf(6, 16));
    X().SetMin(1);
    X().SetMax(100);
    X().SetLogScale(true);
    Press(Qt::Key_Backspace);
    EXPECT_EQ(X().Min(), 1);
    EXPECT_EQ(X().Max(), 100);
    EXPECT_TRUE(Y().AutoSizing());
}

TEST_F(GraphMouse, AHundredViewsAreKept) {
    TGraphZoom& zoom = Graph.Mouse().Zoom();
    for (int i = 0; i < 120; ++i) {
        zoom.Magnify(Map(), Map().Plot.center(), 1.01);
        zoom.EndGesture();
        Repaint();
    }
    int views = 0;
    for (; zoom.CanGoBack(); ++views) zoom.GoBack();
    EXPECT_EQ(views, 100);
    EXPECT_FALSE(X().AutoSizing()) << "the first views are the ones that were dropped";
}

TEST_F(GraphMouse, ADragIsLeftAloneByOtherButtonsAndTheWheel) {
    const double max = X().Max();
    Drag(PlaceOf(2, 64), PlaceOf(6, 16));
    QTest::mousePress(&Graph, Qt::MiddleButton, {}, PlaceOf(4, 40));
    Wheel(PlaceOf(4, 40), 2);
    QTest::mouseRelease(&Graph, Qt::MiddleButton, {}, PlaceOf(4, 40));
    EXPECT_EQ(X().Max(), max);
    QTest::mouseRelease(&Graph, Qt::LeftButton, {}, PlaceOf(6, 16));
    EXPECT_NEAR(X().Min(), 2, kPixel);
    EXPECT_NEAR(X().Max(), 6, kPixel);
}

} // namespace
} // namespace lumoplot
