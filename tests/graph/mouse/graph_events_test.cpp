// What the axes collect from the data, and what a graph tells its host.
#include "graph/mouse/shown_graph.h"

#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

class GraphEvents : public TShownGraph {
protected:
    template <class TSignal>
    void Count(TSignal signal, int& count) {
        QObject::connect(&Graph, signal, &Graph, [&count] { ++count; });
    }
    TSeries& Add() { return *Graph.FindSeries(Graph.AddSeries()); }
    void Prepare() {
        Graph.PrepareForDrawing();
        Graph.RequestRepaint(false);
    }
};

TEST_F(GraphEvents, ALogarithmicErrorIsToldWhenItAppears) {
    int errors = 0;
    Count(&TxyGraph::OnLogError, errors);
    First.SetPointY(1, 0.5); // the point at 0
    Prepare();
    EXPECT_EQ(errors, 0);
    Graph.YAxis()->SetLogScale(true);
    Prepare();
    EXPECT_EQ(errors, 0);
    First.AddPoint(11, -1);
    Prepare();
    First.SetLineColor(kRed);
    Prepare();
    EXPECT_EQ(errors, 1);
    First.DeletePoint(First.LastId());
    Prepare();
    First.AddPoint(11, 0);
    Prepare();
    EXPECT_EQ(errors, 2);
}

TEST_F(GraphEvents, TooManyPointsAreToldAndDrawn) {
    int told = 0;
    Count(&TxyGraph::OnTooManyPoints, told);
    Prepare();
    Graph.SetPlottedPointLimit(10);
    Prepare();
    First.SetLineColor(kRed);
    Prepare();
    EXPECT_EQ(told, 1);
    EXPECT_EQ(Graph.XAxis()->DataMax(), 10);
}

TEST_F(GraphEvents, RescalingIsToldWhenARangeIsAnotherOne) {
    int rescaled = 0;
    int failed = 0;
    Count(&TxyGraph::OnRescale, rescaled);
    Count(&TxyGraph::OnScaleError, failed);
    Prepare();
    First.SetLineColor(kRed);
    Prepare();
    EXPECT_EQ(rescaled, 1);
    First.AddPoint(50, 1);
    Prepare();
    Graph.YAxis()->SetMax(33);
    Prepare();
    EXPECT_EQ(rescaled, 3);
    Graph.YAxis()->SetAutoStepping(false); // a step that stays keeps the range too
    Graph.YAxis()->SetMin(44);
    Prepare();
    EXPECT_EQ(failed, 1);
    EXPECT_TRUE(Graph.ScaleFailed());
}

TEST_F(GraphEvents, TheUserIsToldApartFromTheData) {
    int byUser = 0;
    Count(&TxyGraph::OnUserChange, byUser);
    Show();
    First.AddPoint(50, 1);
    Repaint();
    EXPECT_EQ(byUser, 0);
    Press(Qt::Key_Plus);
    EXPECT_EQ(byUser, 1);
}

TEST_F(GraphEvents, WhatAListenerPaintsIsPartOfThePicture) {
    QObject::connect(&Graph, &TxyGraph::OnPaintEnd, &Graph,
                     [](QPainter* painter) { painter->fillRect(10, 10, 20, 20, Qt::magenta); });
    Show();
    EXPECT_EQ(Graph.grab().toImage().pixelColor(20, 20), QColor(Qt::magenta));
}

using TExtentTest = GraphEvents;

TEST_F(TExtentTest, AnXDataSetGivesXAtTheSamePlaceAndIsNotDrawn) {
    TSeries& second = Add();
    for (int i = 0; i < 5; ++i) second.AddPoint(1000 + i, -i);
    Graph.Appearance()->SetXAxisSerIndex(1);
    Prepare();
    // Five pairs: the X data set's Y is 0 to 16 there, and its Y of up to 100 is on no axis.
    EXPECT_EQ(Graph.XAxis()->DataMin(), 0);
    EXPECT_EQ(Graph.XAxis()->DataMax(), 16);
    EXPECT_EQ(Graph.YAxis()->DataMin(), -4);
    EXPECT_EQ(Graph.YAxis()->DataMax(), 0);
    First.SetPointY(1, -7);
    Prepare();
    EXPECT_EQ(Graph.XAxis()->DataMin(), -7);
    First.SetZeroValue(1);
    Prepare();
    EXPECT_EQ(Graph.XAxis()->DataMin(), -8);
}

TEST_F(TExtentTest, AnAxisHoldsEveryDataSetOnIt) {
    for (const auto& [x, y] : {std::pair(-3.0, 50.0), {4.0, 170.0}, {5.0, -20.0}}) Add().AddPoint(x, y);
    Prepare();
    EXPECT_EQ(Graph.XAxis()->DataMin(), -3);
    EXPECT_EQ(Graph.XAxis()->DataMax(), 10);
    EXPECT_EQ(Graph.YAxis()->DataMin(), -20);
    EXPECT_EQ(Graph.YAxis()->DataMax(), 170);
}

TEST_F(TExtentTest, OnlyWhatCanBeShownCounts) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    First.Clear();
    for (const auto& [x, y] : {std::pair(-5.0, 3.0), {1.0, 0.2}, {2.0, -40.0}, {3.0, 70.0}, {4.0, nan}})
        First.AddPoint(x, y);
    Add().AddPoint(1000, nan);
    Graph.XAxis()->SetLogScale(true);
    Graph.YAxis()->SetLogScale(true);
    Prepare();
    EXPECT_EQ(Graph.XAxis()->DataMin(), 1);
    EXPECT_EQ(Graph.XAxis()->DataMax(), 3);
    EXPECT_EQ(Graph.YAxis()->DataMin(), 0.2);
    EXPECT_EQ(Graph.YAxis()->DataMax(), 70);
}

TEST_F(TExtentTest, RegressionsAndOtherAxesCountForNothing) {
    First.SetRegressionType(TRegressionType::Linear);
    TSeries& second = Add();
    second.AddPoint(0, 5000);
    second.SetYAxisOfSeries(Graph.YAxis_Second());
    Prepare();
    EXPECT_EQ(Graph.YAxis()->DataMin(), 0);
    EXPECT_EQ(Graph.YAxis()->DataMax(), 100);
    EXPECT_EQ(Graph.YAxis_Second()->DataMax(), 5000);
    second.SetActive(false);
    Prepare();
    EXPECT_FALSE(Graph.YAxis_Second()->HasData());
}

} // namespace
} // namespace lumoplot
