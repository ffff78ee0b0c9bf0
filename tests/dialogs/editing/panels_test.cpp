// Graphs inside a graph: their data sets, their places and the frames of a stack.
#include "dialogs/editing/panels.h"

#include "common/thrown_text.h"
#include "graph/mouse/graph_mouse.h"

#include <QImage>
#include <QTest>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

constexpr double kPixel = 1;

class Panels : public testing::Test {
protected:
    Panels() {
        Graph.resize(600, 480);
        for (const char* name : {"one", "two", "three"}) {
            TSeries& series = *Graph.FindSeries(Graph.AddSeries());
            series.SetSeriesName(name);
            for (int x = 0; x <= 10; ++x) series.AddPoint(x, 1e5 * x * Graph.Series().size());
        }
        Graph.show();
    }
    static std::string NamesOf(const TxyGraph& graph) {
        std::string names;
        for (const TSeries* series : graph.Series()) names += series->SeriesName() + ";";
        return names;
    }
    void Repaint() {
        for (TxyGraph* member : StackOf(Graph)) member->grab();
    }
    /// The plot of a member of the stack in pixels of the graph.
    QRectF PlotOf(TxyGraph& member) const {
        return member.Mouse().Map()->Plot.translated(&member == &Graph ? QPoint() : member.pos());
    }

    TxyGraph Graph;
};

TEST_F(Panels, AStackDividesTheHeightAndSharesTheXAxis) {
    StackBelow(Graph, *Graph.FindSeries(2));
    StackBelow(Graph, *Graph.FindSeries(1));
    const std::vector<TxyGraph*> stack = StackOf(Graph);
    ASSERT_EQ(stack.size(), 3u);
    EXPECT_EQ(NamesOf(*stack[0]), "three;");
    EXPECT_EQ(NamesOf(*stack[1]), "two;");
    EXPECT_EQ(NamesOf(*stack[2]), "one;");
    EXPECT_FALSE(ThrownText([&] { StackBelow(Graph, *Graph.FirstSeries()); }).empty());
    for (const QSize size : {QSize(600, 480), QSize(900, 360)}) {
        Graph.resize(size);
        Repaint();
        AlignFrames(Graph);
        Repaint();
        double above = 0;
        for (TxyGraph* member : stack) {
            ASSERT_TRUE(member->Mouse().Map());
            const QRectF plot = PlotOf(*member);
            EXPECT_GE(plot.top(), above);
            EXPECT_NEAR(plot.left(), PlotOf(Graph).left(), kPixel);
            EXPECT_NEAR(plot.right(), PlotOf(Graph).right(), kPixel);
            EXPECT_EQ(member->XAxis()->ShowAxis(), member == stack.back());
            EXPECT_EQ(member->XAxis()->Max(), Graph.XAxis()->Max());
            above = plot.bottom();
        }
    }
    stack[1]->XAxis()->SetMax(5);
    ShareXRange(Graph, *stack[1]);
    EXPECT_EQ(stack[2]->XAxis()->Max(), 5);
    RemovePanel(Graph, 1);
    EXPECT_EQ(NamesOf(Graph), "three;one;");
    RemovePanel(Graph, 0);
    EXPECT_EQ(NamesOf(Graph), "three;one;two;");
    EXPECT_TRUE(Graph.XAxis()->ShowAxis());
    Repaint();
    EXPECT_GT(PlotOf(Graph).height(), 0.6 * Graph.height()) << "it has all of its room again";
}

TEST_F(Panels, AnInsetLiesWhereItWasDrawnAndLeavesTheGraphItsRoom) {
    Repaint();
    const QRectF before = PlotOf(Graph);
    TxyChildGr& inset = AddInset(Graph, {0.5, 0.1, 0.4, 0.3});
    EXPECT_EQ(inset.geometry(), QRect(300, 48, 240, 144));
    EXPECT_EQ(NamesOf(inset), NamesOf(Graph));
    Repaint();
    EXPECT_EQ(PlotOf(Graph), before);
    RemovePanel(Graph, 0);
    EXPECT_EQ(Graph.ChildGraphCount(), 0);
    EXPECT_EQ(NamesOf(Graph), "one;two;three;");
}

} // namespace
} // namespace lumoplot
