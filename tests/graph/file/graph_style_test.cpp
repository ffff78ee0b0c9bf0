#include "graph/file/graph_style.h"

#include "common/random_graph.h"
#include "graph/model/graph.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

TEST(GraphStyles, TakeTheLookAndNothingElse) {
    TxyGraph style;
    style.AddSeries();
    style.Appearance()->SetShowFrame(true);
    style.Appearance()->SetGraphTitle("style");
    style.XAxis()->SetTitle("style");
    style.XAxis()->SetGridlines(false);
    style.XAxis()->SetLogScale(true);
    style.YAxis()->SetMax(77);
    style.Legend()->Setvisible(true);
    style.Dimensions()->SetLeftMargin(99);
    style.FirstSeries()->SetLineColor(kLime);
    style.FirstSeries()->SetActive(false);
    style.FirstSeries()->SetSeriesName("style");
    TxyGraph graph;
    for (int i = 0; i < 2; ++i) graph.FindSeries(graph.AddSeries())->AddPoint(1, 2);
    const TColor second = graph.FindSeries(2)->LineColor();
    TakeLook(graph, style);
    EXPECT_TRUE(graph.Appearance()->ShowFrame());
    EXPECT_FALSE(graph.XAxis()->Gridlines());
    EXPECT_TRUE(graph.Legend()->visible());
    EXPECT_EQ(graph.Dimensions()->LeftMargin(), 99);
    EXPECT_EQ(graph.FindSeries(1)->LineColor(), kLime);
    EXPECT_EQ(graph.FindSeries(2)->LineColor(), second);
    EXPECT_EQ(graph.Appearance()->GraphTitle(), "");
    EXPECT_EQ(graph.XAxis()->Title(), "X axis");
    EXPECT_FALSE(graph.XAxis()->LogScale());
    EXPECT_TRUE(graph.YAxis()->AutoSizing());
    EXPECT_TRUE(graph.FindSeries(1)->Active());
    EXPECT_NE(graph.FindSeries(1)->SeriesName(), "style");
    EXPECT_EQ(graph.FindSeries(1)->Count(), 1);
}

// What is saved as a style gives an empty graph the same look, and has no data.
TEST(GraphStyles, SurviveTheFile) {
    const QTemporaryDir folder;
    const std::string name = folder.filePath(QStringLiteral("style.ltp")).toStdString();
    for (unsigned seed = 1; seed <= 20; ++seed) {
        TxyGraph graph;
        TRandom random(seed);
        FillRandomly(graph, random);
        SaveStyle(graph, name);
        TxyGraph style;
        style.LoadFromFile(name);
        for (const auto& series : style.Series()) {
            EXPECT_EQ(series->Count(), 0);
            EXPECT_TRUE(series->DataSourceInfo().SourceName().empty());
        }
        EXPECT_EQ(style.Appearance()->GraphTitle(), "");
        EXPECT_EQ(style.Marks().Count(), 0);
        EXPECT_EQ(style.Appearance()->GridColor(), graph.Appearance()->GridColor());
        EXPECT_EQ(style.Legend()->font(), graph.Legend()->font());
        EXPECT_EQ(style.YAxis()->LabelFormat(), graph.YAxis()->LabelFormat());
        if (!graph.Series().empty()) {
            EXPECT_EQ(style.FirstSeries()->PointShape(), graph.FirstSeries()->PointShape());
        }
    }
}

} // namespace
} // namespace lumoplot
