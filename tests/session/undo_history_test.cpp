#include "session/undo_history.h"

#include "common/random_graph.h"
#include "common/special_values.h"
#include "data/series/ds_info.h"
#include "fit/definition/cur_fit.h"

#include <gtest/gtest.h>
#include <limits>

namespace lumoplot {
namespace {

std::string AnyName(const TGraphSnapshot&, const TGraphSnapshot&) {
    return "change";
}

int Int(TRandom& random, int low, int high) {
    return std::uniform_int_distribution(low, high)(random);
}

double Number(TRandom& random) {
    return std::uniform_real_distribution(-100.0, 100.0)(random);
}

/// Everything that an undo has to bring back, beyond what a file holds.
struct TContent {
    TBytes File;
    std::vector<std::vector<std::int32_t>> Ids;
    std::vector<double> Extents;
    std::vector<bool> SourceFlags;

    bool operator==(const TContent&) const = default;
};

// Which data set is current is no content; another test looks at that.
TContent ContentOf(const TxyGraph& graph) {
    graph.Appearance()->SetCurrSerIndex(1);
    TContent content{FileOf(graph), {}, {}, {}};
    for (const auto& series : graph.Series()) {
        auto& ids = content.Ids.emplace_back();
        for (auto point = series->First(); point; point = point.Next()) ids.push_back(point.Id());
        for (const double extent : {series->MinX(), series->MaxX(), series->MinY(), series->MaxY()})
            content.Extents.push_back(extent);
        content.SourceFlags.push_back(series->IsThinned());
        content.SourceFlags.push_back(series->DataSourceInfo().NeedsReload());
    }
    return content;
}

void EditPoints(TSeries& series, TRandom& random) {
    const int id = Int(random, 1, std::max(1, series.LastId()));
    switch (Int(random, 0, 6)) {
    case 0: series.AddPoint(Int(random, -9, 9), Number(random)); break;
    case 1: series.SetPointY(id, Int(random, 0, 9) == 0 ? kNaN : Number(random)); break;
    case 2: series.DeletePoint(id); break;
    case 3:
        for (int i = Int(random, 1, 600); i > 0; --i) series.AddPoint(Number(random), Number(random));
        break;
    case 4: series.SetNumericalTolerance(Int(random, 0, 3)); break;
    case 5: series.SetDuplicatesAllowed(!series.DuplicatesAllowed()); break;
    default: series.Clear();
    }
}

void EditSettings(TSeries& series, TRandom& random) {
    switch (Int(random, 0, 8)) {
    case 0: series.SetSeriesName("Run " + std::to_string(Int(random, 0, 99))); break;
    case 1: series.SetAutoZero(!series.AutoZero()); break;
    case 2: series.SetZeroValue(Number(random)); break;
    case 3: series.RecalcExtents(); break;
    case 4: series.DataSourceInfo().SetKind(static_cast<TSourceKind>(Int(random, 0, 3))); break;
    case 5: series.SetThinned(!series.IsThinned()), series.SetLineWidth(Int(random, 1, 20)); break;
    case 6: series.CurveFit().SetExpression("x*" + std::to_string(Int(random, 1, 9))); break;
    case 7: series.CurveFit().ClearParameters(); break;
    default: series.SetLineColor(Int(random, 0, 0xFFFFFF));
    }
}

void EditMarks(TxyGraph& graph, TRandom& random) {
    if (Int(random, 0, 2) == 0)
        graph.DeleteMark(Int(random, 1, 5));
    else
        graph.SetMark({Int(random, 1, 5), Number(random), Number(random)});
}

void EditOnce(TxyGraph& graph, TRandom& random) {
    const int count = graph.SeriesCount();
    const int number = Int(random, 1, std::max(1, count));
    switch (Int(random, 0, count == 0 ? 1 : 13)) {
    case 0: graph.AddSeries(); break;
    case 1: EditMarks(graph, random); break;
    case 2: graph.DeleteSeries(number); break;
    case 3: graph.MoveSeriesToFirst(number); break;
    case 4: graph.ReverseSeries(); break;
    case 5: graph.SortSeriesByName(); break;
    case 6: graph.Appearance()->SetXAxisSerIndex(Int(random, 0, count)); break;
    case 7: graph.YAxis()->SetLogScale(!graph.YAxis()->LogScale()); break;
    case 8: graph.Appearance()->SetShowMarks(!graph.Appearance()->ShowMarks()); break;
    case 9: EditSettings(*graph.FindSeries(number), random); break;
    default: EditPoints(*graph.FindSeries(number), random);
    }
}

TEST(TUndoHistoryTest, WhatIsUndoneAndRedoneIsTheSameFileByteForByte) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        TRandom random(seed);
        TxyGraph graph;
        FillRandomly(graph, random);
        TUndoHistory history(graph);
        history.Start();
        std::vector<TContent> states = {ContentOf(graph)};
        for (int edits = 0; edits < 60; ++edits) {
            EditOnce(graph, random);
            const TContent content = ContentOf(graph);
            if (history.Note(AnyName))
                states.push_back(content);
            else
                states.back() = content; // what changed is worked out from the rest
        }
        ASSERT_EQ(history.StepCount() + 1, static_cast<int>(states.size()));
        std::size_t at = states.size() - 1;
        for (int walk = 0; walk < 150; ++walk) {
            const bool back = walk < 70 || (walk > 110 && Int(random, 0, 1) == 0);
            if (back ? history.CanUndo() : history.CanRedo()) {
                back ? history.Undo() : history.Redo();
                at += back ? -1 : 1;
            }
            ASSERT_TRUE(ContentOf(graph).File == states[at].File) << "seed " << seed << " state " << at;
            ASSERT_TRUE(ContentOf(graph) == states[at]) << "seed " << seed << " state " << at;
        }
    }
}

TEST(TUndoHistoryTest, StepsWithOneKeyAreOneUntilSomethingElseHappens) {
    TxyGraph graph;
    graph.AddSeries();
    TUndoHistory history(graph);
    history.Start();
    const auto rename = [&](const char* name, TUndoHistory::TMergeKey key) {
        graph.FirstSeries()->SetSeriesName(name);
        history.Note(AnyName, key);
    };
    rename("R", 7);
    rename("Ru", 7);
    EXPECT_EQ(history.StepCount(), 1);
    rename("DataSet 1", 7); // typed back to where it began
    EXPECT_EQ(history.StepCount(), 0);
    rename("R", 7);
    rename("Ru", 8);
    EXPECT_EQ(history.StepCount(), 2);
    history.Undo();
    rename("Ra", 7);
    EXPECT_EQ(history.StepCount(), 2);
    history.Undo();
    EXPECT_EQ(graph.FirstSeries()->SeriesName(), "R");
}

TEST(TUndoHistoryTest, TheDataSetThatAStepWasMadeOnIsCurrentAgain) {
    TxyGraph graph;
    for (int i = 0; i < 3; ++i) graph.AddSeries();
    graph.Appearance()->SetCurrSerIndex(1);
    TUndoHistory history(graph);
    history.Start();
    for (const int number : {2, 3}) {
        graph.Appearance()->SetCurrSerIndex(number);
        history.Absorb();
        graph.FindSeries(number)->SetLineWidth(9);
        history.Note(AnyName);
    }
    graph.Appearance()->SetCurrSerIndex(1);
    history.Absorb();
    history.Undo();
    EXPECT_EQ(graph.Appearance()->CurrSerIndex(), 3);
    history.Undo();
    EXPECT_EQ(graph.Appearance()->CurrSerIndex(), 2);
    history.Redo();
    EXPECT_EQ(graph.Appearance()->CurrSerIndex(), 2);
    history.Redo();
    EXPECT_EQ(graph.Appearance()->CurrSerIndex(), 3);
}

TEST(TUndoHistoryTest, StepsOnLongDataSetsShareWhatStaysAndTheOldestAreDropped) {
    constexpr std::size_t kLimit = 4u << 20;
    TxyGraph graph;
    TSeries& series = *graph.FindSeries(graph.AddSeries());
    for (int i = 0; i < 100000; ++i) series.AddPoint(i, i);
    TUndoHistory history(graph, kLimit);
    history.Start();
    for (int i = 0; i < 60; ++i) {
        series.SetPointY(1 + i * 1600, -1);
        history.Note(AnyName);
    }
    EXPECT_EQ(history.StepCount(), 60);
    for (int i = 0; i < 60; ++i) {
        for (int id = 1; id <= 100000; id += 200) series.SetPointY(id, i + 0.5);
        history.Note(AnyName);
        EXPECT_LE(history.MemoryUsed(), kLimit);
    }
    EXPECT_TRUE(history.CanUndo());
    EXPECT_LT(history.StepCount(), 60);
    history.Undo();
    EXPECT_EQ(series.GetPoint(1)->Y, 58.5);
    for (int i = 100000; i < 300000; ++i) series.AddPoint(i, i);
    history.Note(AnyName); // too large to be kept even once
    EXPECT_FALSE(history.CanUndo() || history.CanRedo());
    EXPECT_EQ(history.MemoryUsed(), 0u);
}

} // namespace
} // namespace lumoplot
