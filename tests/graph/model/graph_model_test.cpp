#include "common/random_graph.h"
#include "common/recording_sink.h"
#include "graph/model/child_graph.h"
#include "graph/model/holder.h"
#include "support/update_hold.h"

#include <array>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <tuple>

namespace lumoplot {
namespace {

class GraphModel : public testing::Test {
protected:
    void AddNamed(std::initializer_list<const char*> names) {
        for (const char* name : names) Graph.FindSeries(Graph.AddSeries())->SetSeriesName(name);
    }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const TSeries* series = Graph.FirstSeries(); series; series = series->Next())
            names.push_back(std::to_string(series->SeriesIndex()) + " " + series->SeriesName());
        return names;
    }
    TxyGraph Graph;
};

using TNames = std::vector<std::string>;

TEST_F(GraphModel, CurrentDataSetIsClampedToTheSeriesCount) {
    Graph.Appearance()->SetCurrSerIndex(3);
    EXPECT_EQ(Graph.Appearance()->CurrSerIndex(), 0);
    AddNamed({"a", "b", "c"});
    for (const auto& [set, expected] : {std::pair{5, 3}, {0, 1}, {-4, 1}, {2, 2}}) {
        Graph.Appearance()->SetCurrSerIndex(set);
        EXPECT_EQ(Graph.Appearance()->CurrSerIndex(), expected) << set;
    }
}

TEST_F(GraphModel, SeriesCountStopsAtTheFirstGap) {
    Graph.AddSeriesNumbered(2);
    Graph.AddSeriesNumbered(3);
    EXPECT_EQ(Graph.SeriesCount(), 0);
    Graph.AddSeriesNumbered(1);
    EXPECT_EQ(Graph.SeriesCount(), 3);
    EXPECT_EQ(Graph.FindSeries(1)->SeriesName(), "DataSet 1");
}

TEST_F(GraphModel, XDataSetMustExistAndHoldNoDuplicates) {
    AddNamed({"a", "b"});
    TAppearance& appearance = *Graph.Appearance();
    appearance.SetXAxisSerIndex(2);
    EXPECT_TRUE(Graph.FindSeries(1)->UseXAxisSeries());
    appearance.SetXAxisSerIndex(7);
    EXPECT_EQ(appearance.XAxisSerIndex(), 0);
    EXPECT_FALSE(Graph.FindSeries(1)->UseXAxisSeries());
    appearance.SetXAxisSerIndex(1);
    Graph.ResetToDefaults();
    EXPECT_EQ(appearance.XAxisSerIndex(), 0);
    EXPECT_FALSE(Graph.FindSeries(1)->UseXAxisSeries());
    Graph.FindSeries(2)->SetDuplicatesAllowed(true);
    appearance.SetXAxisSerIndex(2);
    EXPECT_EQ(appearance.XAxisSerIndex(), 0);
    appearance.SetXAxisSerIndex(1);
    Graph.FreeAllSeries();
    AddNamed({"a"});
    EXPECT_EQ(appearance.XAxisSerIndex(), 0);
    EXPECT_FALSE(Graph.FindSeries(1)->UseXAxisSeries());
}

TEST_F(GraphModel, AllowingDuplicatesInTheXDataSetEndsItsRoleAndSaysSo) {
    AddNamed({"a", "b"});
    TAppearance& appearance = *Graph.Appearance();
    appearance.SetCurrSerIndex(1);
    const std::array<std::function<void()>, 3> ways = {
        [&] { Graph.FindSeries(1)->SetDuplicatesAllowed(true); },
        [&] { appearance.SetAllowDuplicates(true); },
        [&] {
            Graph.FindSeries(2)->SetDuplicatesAllowed(true);
            Graph.FindSeries(1)->CopyFrom(*Graph.FindSeries(2));
        }};
    for (const auto& way : ways) {
        for (const auto& series : Graph.Series()) series->SetDuplicatesAllowed(false);
        appearance.SetXAxisSerIndex(1);
        const TRecordingSink sink;
        way();
        EXPECT_EQ(appearance.XAxisSerIndex(), 0);
        EXPECT_FALSE(Graph.FindSeries(2)->UseXAxisSeries());
        EXPECT_NE(sink.Only().find("no longer the X"), std::string::npos) << sink.Only();
        TxyGraph back;
        LoadBytes(back, FileOf(Graph));
        EXPECT_EQ(FileOf(back), FileOf(Graph));
    }
}

TEST_F(GraphModel, XDataSetKeepsItsRoleWhenNumbersChange) {
    AddNamed({"c", "a", "b"});
    Graph.Appearance()->SetXAxisSerIndex(1);
    Graph.SortSeriesByName();
    EXPECT_EQ(Graph.Appearance()->XAxisSerIndex(), 3);
    Graph.DeleteSeries(1);
    EXPECT_EQ(Graph.Appearance()->XAxisSerIndex(), 2);
    Graph.DeleteSeries(2);
    EXPECT_EQ(Graph.Appearance()->XAxisSerIndex(), 0);
}

TEST_F(GraphModel, SortingReversingAndMovingRenumber) {
    AddNamed({"beta", "Alpha", "gamma", "alpha"});
    Graph.SortSeriesByName();
    EXPECT_EQ(Names(), (TNames{"1 Alpha", "2 alpha", "3 beta", "4 gamma"}));
    EXPECT_EQ(Graph.Appearance()->CurrSerIndex(), 4);
    Graph.ReverseSeries();
    EXPECT_EQ(Names(), (TNames{"1 gamma", "2 beta", "3 alpha", "4 Alpha"}));
    Graph.MoveSeriesToFirst(3);
    EXPECT_EQ(Names(), (TNames{"1 alpha", "2 gamma", "3 beta", "4 Alpha"}));
    Graph.DeleteSeries(2);
    EXPECT_EQ(Names(), (TNames{"1 alpha", "2 beta", "3 Alpha"}));
    EXPECT_EQ(Graph.AddSeries(), 4);
    EXPECT_FALSE(Graph.DeleteSeries(9));
}

TEST_F(GraphModel, SymbolSizesAreEvenButForWidePoints) {
    AddNamed({"a"});
    TSeries& series = *Graph.FindSeries(1);
    const std::tuple<TPointShape, int, int> cases[] = {
        {TPointShape::Circle, 7, 8},
        {TPointShape::Circle, 1, 2},
        {TPointShape::Circle, 65535, 65534},
        {TPointShape::WidePoint, 7, 7},
    };
    for (const auto& [shape, set, size] : cases) {
        series.SetPointShape(shape);
        series.SetPointSize(set);
        EXPECT_EQ(series.PointSize(), size) << set;
    }
    series.SetPointShape(TPointShape::Square);
    EXPECT_EQ(series.PointSize(), 8);
    series.SetPointShape(static_cast<TPointShape>(9));
    EXPECT_EQ(series.PointShape(), TPointShape::Square);
}

TEST_F(GraphModel, StepLimitsRefuseWhatDoesNotSuitTheOther) {
    TAppearance& appearance = *Graph.Appearance();
    appearance.SetMaxSteps(91);
    EXPECT_EQ(appearance.MaxSteps(), 50);
    appearance.SetMaxSteps(12);
    EXPECT_EQ(appearance.MaxSteps(), 50);
    appearance.SetMinSteps(20);
    EXPECT_EQ(appearance.MinSteps(), 5);
    appearance.SetMinSteps(0);
    EXPECT_EQ(appearance.MinSteps(), 5);
    appearance.SetMaxSteps(13);
    EXPECT_EQ(appearance.MaxSteps(), 13);
}

TEST_F(GraphModel, AFilesLegalPairOfStepLimitsIsTakenInEitherOrder) {
    for (const auto& [min, max] : {std::pair{2, 6}, {30, 80}, {1, 3}, {5, 50}}) {
        for (const bool minFirst : {true, false}) {
            TxyGraph graph;
            TAppearance& appearance = *graph.Appearance();
            if (minFirst) appearance.SetFiledMinSteps(min);
            appearance.SetFiledMaxSteps(max);
            if (!minFirst) appearance.SetFiledMinSteps(min);
            EXPECT_EQ(appearance.MinSteps(), min) << minFirst;
            EXPECT_EQ(appearance.MaxSteps(), max) << minFirst;
        }
    }
}

TEST_F(GraphModel, AnEndlessLeastScaleLengthIsRefused) {
    Graph.XAxis()->SetMinScaleLength(3);
    for (const double value : {HUGE_VAL, -HUGE_VAL, std::nan("")}) Graph.XAxis()->SetMinScaleLength(value);
    EXPECT_EQ(Graph.XAxis()->MinScaleLength(), 3);
}

TEST_F(GraphModel, LogScaleMovesARangeThatIsNotPositive) {
    TAxis& axis = *Graph.YAxis();
    axis.SetMax(0);
    axis.SetMin(0);
    axis.SetLogScale(true);
    EXPECT_EQ(axis.Max(), 10);
    EXPECT_EQ(axis.Min(), 0.01);
    axis.SetMin(-1);
    axis.SetLogScale(true);
    EXPECT_EQ(axis.Min(), -1) << "it was on already";
}

TEST_F(GraphModel, SettingARangeTurnsItsAutomaticOff) {
    TAxis& axis = *Graph.XAxis();
    axis.SetMax(axis.Max());
    EXPECT_FALSE(axis.AutoSizing());
    EXPECT_TRUE(axis.AutoStepping());
    axis.SetStepSize(axis.StepSize());
    EXPECT_FALSE(axis.AutoStepping());
}

TEST_F(GraphModel, TheHolderIdFollowsTheTitleUnlessItWasGivenAnother) {
    Graph.Appearance()->SetGraphTitle("Run");
    EXPECT_EQ(Graph.Holder()->ID(), "Run DATA");
    Graph.Appearance()->SetGraphTitle("Walk");
    EXPECT_EQ(Graph.Holder()->ID(), "Walk DATA");
    Graph.SetHolderID("own");
    Graph.Appearance()->SetGraphTitle("Sit");
    EXPECT_EQ(Graph.Holder()->ID(), "own");
}

TEST_F(GraphModel, RepaintRequestsCoalesceAndHoldsSendOneNotification) {
    AddNamed({"a"});
    TSeries& series = *Graph.FindSeries(1);
    std::vector<TChangeReasons> told;
    series.AddChangeHandler(1, [&](TDataSeries&, TChangeReasons reasons) { told.push_back(reasons); });
    series.SetUpdateDepth(true);
    series.SetLineWidth(9);
    {
        const TUpdateHold hold(series);
        series.SetUpdateDepth(true);
        series.AddPoint(1, 1);
    }
    EXPECT_TRUE(told.empty());
    Graph.RequestRepaint(false);
    series.SetUpdateDepth(false);
    const TChangeReasons both = TChangeReasons(TSeries::kStyleChanged) | TDataSeries::kPointAdded;
    EXPECT_EQ(told, std::vector{both});
    EXPECT_TRUE(Graph.RepaintRequested());
    series.SetUpdateDepth(false);
    series.SetLineWidth(9);
    EXPECT_EQ(told.size(), 1u);
    series.AddChangeHandler(1, {});
}

TEST_F(GraphModel, ListenersOfADataSetThatGoesMayWalkTheChain) {
    TNames seen;
    QObject::connect(&Graph, &TxyGraph::OnNewSeries,
                     [&](TSeries* s) { seen.push_back("new " + s->SeriesName()); });
    QObject::connect(&Graph, &TxyGraph::OnDeleteSeries,
                     [&](TSeries* s) { seen.push_back("delete " + s->SeriesName()); });
    const auto walk = [&](TDataSeries& series, TChangeReasons reasons) {
        if (!reasons.Has(TDataSeries::kDestroyed)) return;
        seen.push_back("without " + series.SeriesName());
        for (const auto& name : Names()) seen.push_back(name);
    };
    for (int i = 0; i < 3; ++i) Graph.FindSeries(Graph.AddSeries())->AddChangeHandler(1, walk);
    EXPECT_EQ(seen, (TNames{"new DataSet 1", "new DataSet 2", "new DataSet 3"}));
    seen.clear();
    Graph.DeleteSeries(1);
    EXPECT_EQ(seen, (TNames{"delete DataSet 1", "without DataSet 1", "1 DataSet 2", "2 DataSet 3"}));
    seen.clear();
    Graph.FreeAllSeries();
    EXPECT_EQ(seen,
              (TNames{"delete DataSet 2", "delete DataSet 3", "without DataSet 2", "without DataSet 3"}));
}

TEST_F(GraphModel, ACopySharesNothingWithItsSource) {
    TRandom random(2);
    FillRandomly(Graph, random);
    AddNamed({"last"});
    TxyGraph copy;
    copy.Assign(&Graph);
    const TBytes before = FileOf(Graph);
    EXPECT_EQ(FileOf(copy), before);
    copy.FindSeries(1)->AddPoint(1e6, 5);
    copy.Appearance()->SetGraphTitle("changed");
    copy.ClearMarks();
    EXPECT_EQ(FileOf(Graph), before);
    QObject notAGraph;
    copy.Assign(&notAGraph);
    EXPECT_EQ(copy.Appearance()->GraphTitle(), "changed");
}

TEST_F(GraphModel, ChildGraphsFollowTheirParent) {
    Graph.resize(400, 200);
    TxyChildGr* child = Graph.AddChildGraph();
    child->Dimensions()->SetHorPosition(0.25);
    child->Dimensions()->SetVerPosition(0.1);
    child->Dimensions()->SetHorSize(0.5);
    child->Dimensions()->SetVerSize(0.333);
    EXPECT_EQ(child->geometry(), QRect(100, 20, 200, 67));
    child->setGeometry(40, 100, 100, 50);
    child->TakeFractionsFromBounds();
    EXPECT_EQ(child->Dimensions()->HorPosition(), 0.1);
    EXPECT_EQ(child->Dimensions()->VerSize(), 0.25);
    EXPECT_EQ(child->geometry(), QRect(40, 100, 100, 50));
    child->Dimensions()->SetHorSize(1e300); // as a file may have it
    EXPECT_LE(child->width(), 32000);
}

TEST(Marks, TheSmallestFreeNumberIsGiven) {
    TMarkChain marks;
    for (const int id : {4, 1, 2}) marks.Set({.ID = id});
    EXPECT_EQ(marks.Add({}), 3);
    EXPECT_EQ(marks.Find(3)->Caption, "3");
    EXPECT_EQ(marks.CurrentID(), 3);
    EXPECT_EQ(marks.Add({.Caption = "peak"}), 5);
    EXPECT_EQ(marks.Find(5)->Caption, "peak");
    marks.Set({.ID = 0});
    EXPECT_EQ(marks.Marks().begin()->first, 0);
}

TEST(Marks, SelectingAMissingMarkTakesTheLast) {
    TMarkChain marks;
    marks.Select(7);
    EXPECT_EQ(marks.CurrentID(), 0);
    for (const int id : {1, 3, 5}) marks.Set({.ID = id});
    marks.Select(7);
    EXPECT_EQ(marks.CurrentID(), 5);
    EXPECT_TRUE(marks.Delete(3));
    EXPECT_FALSE(marks.Delete(3));
    EXPECT_EQ(marks.Count(), 2);
}

struct TBaselineCase {
    TGraphMark mark;
    const char* message;
    double zeroValue;
    double slope;
};

TEST_F(GraphModel, BaselineIsTakenFromALineOrSaidWhyNot) {
    const TBaselineCase cases[] = {
        {{.ID = 1, .Y1 = 7, .TypeOfMark = TMarkType::HorizontalLine}, "", 7, 0},
        {{.ID = 1, .X1 = 0, .Y1 = 1, .X2 = 2, .Y2 = 5, .TypeOfMark = TMarkType::Line}, "", 1, 2},
        {{.ID = 1, .X1 = 3, .Y1 = 1, .X2 = 3, .Y2 = 5, .TypeOfMark = TMarkType::Line},
         "Mark Can Not be a Vertical Line",
         9,
         8},
        {{.ID = 1, .TypeOfMark = TMarkType::Point}, "Mark must be Either Linier or Horizontal", 9, 8},
        {{.ID = 2, .TypeOfMark = TMarkType::HorizontalLine}, "No Mark Found!", 9, 8},
    };
    AddNamed({"a"});
    TSeries& series = *Graph.FindSeries(1);
    for (const auto& c : cases) {
        const TRecordingSink sink;
        series.SetZeroValue(9);
        series.SetBaseLineSlope(8);
        Graph.ClearMarks();
        Graph.SetMark(c.mark);
        Graph.SetBaselineFromMark(1, 1);
        EXPECT_EQ(sink.Texts, *c.message ? TNames{c.message} : TNames{});
        EXPECT_EQ(series.ZeroValue(), c.zeroValue);
        EXPECT_EQ(series.BaseLineSlope(), c.slope);
    }
}

} // namespace
} // namespace lumoplot
