#include "graph/drawing/picture/crowd.h"
#include "graph/drawing/picture/drawing.h"
#include "graph/drawing/picture/graph_layout.h"
#include "graph/drawing/picture/legend_painter.h"
#include "graph/drawing/recording_device.h"

#include <gtest/gtest.h>

namespace lumoplot {
namespace {

const QRectF kLegendPanel(0, 0, 600, 400);

class Legends : public testing::Test {
protected:
    Legends() {
        Graph.Appearance()->SetGraphTitle("The title");
        Graph.Legend()->Setvisible(true);
    }
    void Add(int count, const std::string& name) {
        for (int i = 0; i < count; ++i) {
            TSeries& series = *Graph.FindSeries(Graph.AddSeries());
            series.AddPoint(i, i);
            series.SetSeriesName(name);
            series.SetShowInLegend(true);
        }
    }
    TGraphLayout Layout() {
        Graph.PrepareForDrawing();
        QPainter painter(&Device);
        return TGraphLayout(TCanvas(painter, TDrawPurpose::Show), Graph, kLegendPanel);
    }

    TxyGraph Graph;
    TRecordingDevice Device;
};

// The place of a new graph's legend is that of the title.
TEST_F(Legends, TheTitleKeepsOffALegendAboveThePlot) {
    Graph.resize(600, 400);
    Graph.ResetToDefaults();
    Graph.Appearance()->SetGraphTitle("The title");
    Graph.Legend()->Setvisible(true);
    Add(2, "a data set");
    for (const int top : {10, 0, 40, 22}) {
        Graph.Legend()->Settop(top);
        const TGraphLayout layout = Layout();
        const QRectF box = LayOutLegend(Graph, kLegendPanel).Box;
        EXPECT_FALSE(layout.TitlePlace().intersects(box)) << top;
        EXPECT_LE(layout.TitlePlace().bottom(), layout.Plot().top()) << top;
        EXPECT_GE(layout.TitlePlace().top(), 0) << top;
        EXPECT_GT(layout.Plot().height(), 200) << top;
    }
}

TEST_F(Legends, EntriesStayInsideTheBoxInBothLayouts) {
    Add(9, "a data set with a name that goes on and on");
    TLegend& legend = *Graph.Legend();
    for (const auto style : {TLegend::lsAcross, TLegend::lsDown})
        for (const int width : {60, 200, 500, 0}) {
            legend.SetLayout(style);
            legend.Setwidth(width);
            const TLegendLayout layout = LayOutLegend(Graph, kLegendPanel);
            ASSERT_EQ(layout.Entries.size(), 9u);
            const TTextStyle text(legend.font());
            for (const TLegendEntry& entry : layout.Entries) {
                EXPECT_TRUE(layout.Box.contains(entry.Symbol)) << style << ' ' << width;
                EXPECT_LE(entry.Text.left() + text.Width(entry.Label), layout.Box.right() + 1)
                    << style << ' ' << width;
                EXPECT_TRUE(&entry == &layout.Entries.front() ||
                            !entry.Text.intersects(layout.Entries.front().Text));
            }
        }
}

// The same graph in a column of a journal.
TEST_F(Legends, ASmallGraphHasItsLegendInThePlot) {
    Add(2, "a data set"); // one alone would name the axis, too
    for (const QPoint corner : {QPoint(900, 100), QPoint(100, 700), QPoint(560, 390)}) {
        Graph.Legend()->Setleft(corner.x());
        Graph.Legend()->Settop(corner.y());
        const QRectF plot = Layout().Plot();
        TRecordingDevice device;
        QPainter painter(&device);
        DrawGraph(painter, Graph, kLegendPanel);
        const TRecordedText* name = device.FindText(QStringLiteral("a data set"));
        ASSERT_TRUE(name) << corner.x();
        EXPECT_TRUE(plot.contains(name->Place)) << corner.x();
    }
}

TEST_F(Legends, EntriesStandInTheMiddleOfABoxThatIsTooHigh) {
    Add(1, "a data set");
    Graph.Legend()->Setheight(120);
    const TLegendLayout layout = LayOutLegend(Graph, kLegendPanel);
    EXPECT_EQ(layout.Box.height(), 120);
    EXPECT_NEAR(layout.Entries.at(0).Text.center().y(), layout.Box.center().y(), 0.01);
}

TEST_F(Legends, OnlyWhatIsDrawnHasAnEntryAndNoLineIsWiderThanItsRow) {
    Add(3, "a data set");
    Graph.Series()[0]->SetActive(false);
    Graph.Series()[1]->SetShowInLegend(false);
    Graph.Series()[2]->SetLinesShown(true);
    Graph.Series()[2]->SetLineWidth(200);
    Graph.Series()[2]->SetLineColor(0x123456);
    const TGraphLayout graph = Layout();
    const TLegendLayout layout = LayOutLegend(Graph, kLegendPanel);
    ASSERT_EQ(layout.Entries.size(), 1u);
    QPainter painter(&Device);
    DrawLegend(TCanvas(painter, TDrawPurpose::Show), Graph, layout, graph.Plot());
    const auto lines = Device.LinesIn(ToQColor(0x123456));
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_LE(lines[0].Pen.widthF(), layout.Entries[0].Symbol.height());
}

TEST_F(Legends, WhatHasNoRoomIsCounted) {
    Add(60, "a data set");
    TLegend& legend = *Graph.Legend();
    for (const auto style : {TLegend::lsAcross, TLegend::lsDown})
        for (const int width : {120, 250, 580, 0}) {
            legend.SetLayout(style);
            legend.Setwidth(width);
            const TLegendLayout layout = LayOutLegend(Graph, kLegendPanel);
            EXPECT_TRUE(kLegendPanel.contains(layout.Box)) << style << ' ' << width;
            const std::size_t left = 60 - layout.Entries.size();
            EXPECT_EQ(layout.More.isEmpty(), left == 0);
            if (left == 0) continue;
            EXPECT_EQ(layout.More, QStringLiteral("… and %1 more").arg(left));
            EXPECT_TRUE(layout.Box.contains(layout.MorePlace)) << style << ' ' << width;
            for (const TLegendEntry& entry : layout.Entries)
                EXPECT_FALSE(entry.Text.intersects(layout.MorePlace));
        }
}

struct TCornerCase {
    const char* Name;
    std::vector<QPointF> Points; ///< in parts of the plot, from its lower left corner
    QPointF Corner;              ///< where the legend goes
};

TEST_F(Legends, AutomaticPlaceIsTheCornerWithTheFewestPoints) {
    const TCornerCase cases[] = {
        {"rising", {{0, 0}, {0.5, 0.5}, {1, 1}}, {0, 1}},
        {"falling", {{0, 1}, {0.5, 0.5}, {1, 0}}, {1, 1}},
        {"arch", {{0, 0}, {0.02, 0.95}, {0.98, 0.95}, {1, 0.9}}, {1, 0}},
        {"all but the lower left", {{0, 1}, {0.1, 0.9}, {1, 1}, {0.9, 0.9}, {1, 0}, {0.9, 0.06}}, {0, 0}}};
    Graph.Legend()->SetAutoPlace(true);
    Graph.Legend()->SetLayout(TLegend::lsDown);
    for (TAxis* axis : {Graph.XAxis(), Graph.YAxis()}) {
        axis->SetMin(0);
        axis->SetMax(1);
    }
    for (const TCornerCase& c : cases) {
        Graph.FreeAllSeries();
        TSeries& series = *Graph.FindSeries(Graph.AddSeries());
        series.SetSeriesName("of medium length");
        series.SetShowInLegend(true);
        series.SetDuplicatesAllowed(true);
        for (const QPointF point : c.Points) series.AddPoint(point.x(), point.y());
        const TGraphLayout layout = Layout();
        const TLegendLayout legend = LayOutLegendInCorner(Graph, layout, TCrowd(Graph, layout), {});
        const QRectF plot = layout.Plot();
        EXPECT_TRUE(plot.contains(legend.Box)) << c.Name;
        EXPECT_EQ(legend.Box.center().x() > plot.center().x(), c.Corner.x() > 0.5) << c.Name;
        EXPECT_EQ(legend.Box.center().y() < plot.center().y(), c.Corner.y() > 0.5) << c.Name;
    }
}

TEST_F(Legends, AutomaticPlaceIsAsWideAsTheTextsUpToHalfThePlot) {
    Add(2, "s");
    Graph.Legend()->SetAutoPlace(true);
    Graph.Legend()->SetLayout(TLegend::lsDown);
    const auto legend = [&] {
        const TGraphLayout layout = Layout();
        return std::pair(LayOutLegendInCorner(Graph, layout, TCrowd(Graph, layout), {}), layout.Plot());
    };
    EXPECT_LT(legend().first.Box.width(), 80);
    Add(90, "a name");
    const auto [many, plot] = legend();
    EXPECT_LE(many.Box.width(), plot.width() / 2);
    EXPECT_TRUE(plot.contains(many.Box));
    EXPECT_EQ(many.More, QStringLiteral("… and %1 more").arg(92 - many.Entries.size()));
    EXPECT_NE(many.Entries.front().Text.left(), many.Entries.back().Text.left());
}

} // namespace
} // namespace lumoplot
