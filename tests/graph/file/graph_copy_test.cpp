// What a copy of a graph, and a graph that could not be loaded or saved, look like.
#include "common/random_graph.h"
#include "common/recording_sink.h"
#include "common/thrown_text.h"
#include "data/series/series_data.h"
#include "fit/definition/cur_fit.h"
#include "fit/definition/fit_result.h"
#include "graph/file/graph_file.h"
#include "graph/loading/source_loading.h"
#include "graph/model/child_graph.h"
#include "support/errors.h"
#include "support/replace_file.h"

#include <QTemporaryDir>
#include <array>
#include <bit>
#include <gtest/gtest.h>
#include <limits>
#include <tuple>

namespace lumoplot {
namespace {

/// With a decimal comma.
TTextWishes Wishes(TTextEncoding encoding, std::optional<TDateOrder> dateOrder) {
    TTextWishes wishes;
    wishes.encoding = encoding;
    wishes.decimalSign = ',';
    wishes.dateOrder = dateOrder;
    return wishes;
}

using TPointBits = std::tuple<std::int32_t, std::uint64_t, std::uint64_t, std::uint64_t>;

std::vector<TPointBits> PointsOf(const TDataSeries& series) {
    std::vector<TPointBits> points;
    const auto bits = [](double value) { return std::bit_cast<std::uint64_t>(value); };
    for (TPointCursor point = series.First(); point; point = point.Next())
        points.emplace_back(point.Id(), bits(point.X()), bits(point.Y()), bits(point.Derived()));
    return points;
}

std::array<std::uint64_t, 6> ExtentsOf(const TDataSeries& series) {
    const TSeriesExtents e = series.Extents();
    return std::bit_cast<std::array<std::uint64_t, 6>>(
        std::array{e.MinX, e.MaxX, e.MinY, e.MaxY, e.ZeroValue, e.BaseLineSlope});
}

void ExpectEqual(const TSeries& a, const TSeries& b) {
    EXPECT_EQ(PointsOf(a), PointsOf(b));
    EXPECT_EQ(a.LastId(), b.LastId());
    EXPECT_EQ(ExtentsOf(a), ExtentsOf(b));
    EXPECT_EQ(a.ExtentsStale(), b.ExtentsStale());
    EXPECT_EQ(a.RegressionStale(), b.RegressionStale());
    EXPECT_EQ(a.RegressionError(), b.RegressionError());
    EXPECT_EQ(a.RegressionCurve().size(), b.RegressionCurve().size());
    EXPECT_EQ(a.RegressionLine() != nullptr, b.RegressionLine() != nullptr);
    EXPECT_EQ(a.CurveFit().RunState(), b.CurveFit().RunState());
    EXPECT_EQ(a.SourceRows(), b.SourceRows());
    EXPECT_EQ(a.TextWishes(), b.TextWishes());
    EXPECT_EQ(a.IsThinned(), b.IsThinned());
    EXPECT_EQ(a.DataSourceInfo().NeedsReload(), b.DataSourceInfo().NeedsReload());
    EXPECT_EQ(a.UseXAxisSeries(), b.UseXAxisSeries());
    EXPECT_EQ(a.SeriesIndex(), b.SeriesIndex());
}

void ExpectEqual(const TxyGraph& a, const TxyGraph& b) {
    EXPECT_EQ(FileOf(a), FileOf(b));
    EXPECT_EQ(a.Appearance()->CurrSerIndex(), b.Appearance()->CurrSerIndex());
    EXPECT_EQ(a.Appearance()->ErrorCaption(), b.Appearance()->ErrorCaption());
    EXPECT_EQ(a.Marks().CurrentID(), b.Marks().CurrentID());
    ASSERT_EQ(a.Series().size(), b.Series().size());
    for (std::size_t i = 0; i < a.Series().size(); ++i) ExpectEqual(*a.Series()[i], *b.Series()[i]);
    ASSERT_EQ(a.ChildGraphCount(), b.ChildGraphCount());
    for (std::size_t i = 0; i < a.ChildGraphs().size(); ++i)
        ExpectEqual(*a.ChildGraphs()[i], *b.ChildGraphs()[i]);
}

/// What a file would not bring back: points that its reading would merge or sort, and what is only known
/// in memory.
void FillUnfiled(TSeries& series, TRandom& random) {
    const auto chance = [&] { return random() % 2 == 0; };
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const std::array kValues = {kInfinity, -kInfinity, std::numeric_limits<double>::quiet_NaN(), -0.0};
    if (chance()) series.SetNumericalTolerance(1.75);
    for (unsigned i = random() % 12; i > 0; --i)
        series.AddPoint(0.5 * (random() % 40), chance() ? kValues[random() % 4] : random() % 9);
    if (chance()) series.SetNumericalTolerance(3);
    if (series.Count() > 0 && chance()) series.DeletePoint(series.First().Id());
    if (chance()) series.SetDuplicatesAllowed(true);
    if (chance()) series.UpdateRegression();
    if (chance()) series.SetTextWishes(Wishes(TTextEncoding::Utf8, {}));
    series.SetSourceRows({static_cast<std::int64_t>(random() % 100), 7});
    series.SetThinned(chance());
    series.DataSourceInfo().SetNeedsReload(chance());
    auto result = std::make_shared<TFitResult>();
    series.CurveFit().RestoreRunState(
        {chance(), chance(), chance() ? result : nullptr, chance() ? "no" : ""});
}

void FillAll(TxyGraph& graph, TRandom& random) {
    FillRandomly(graph, random);
    for (const auto& series : graph.Series()) FillUnfiled(*series, random);
    for (const auto& child : graph.ChildGraphs())
        for (const auto& series : child->Series()) FillUnfiled(*series, random);
    if (random() % 4 == 0) graph.Appearance()->RestoreIndices(graph.Appearance()->XAxisSerIndex(), 0);
    graph.Appearance()->SetErrorCaption(random() % 2 ? "out of range" : "none");
    graph.SelectMark(static_cast<int>(random() % 30));
}

TEST(GraphCopy, EqualsTheOriginalInEveryRespect) {
    const TRecordingSink sink; // of data sets that are X no longer
    TRandom random(31);
    for (int round = 0; round < 150 && !testing::Test::HasFailure(); ++round) {
        SCOPED_TRACE(round);
        TxyGraph graph, copy;
        FillAll(graph, random);
        FillAll(copy, random); // what the target holds must not matter
        copy.CopyFrom(graph);
        ExpectEqual(graph, copy);
        for (const auto& series : graph.Series()) {
            TSeries& other = *copy.FindSeries(copy.AddSeries());
            other.CopyFrom(*series);
            EXPECT_EQ(PointsOf(other), PointsOf(*series));
            EXPECT_EQ(other.CurveFit().RunState(), series->CurveFit().RunState());
        }
    }
}

TEST(GraphCopy, WhatIsLoadedIsSavedAndLoadedAgainAsItIs) {
    TRandom random(32);
    for (int round = 0; round < 60; ++round) {
        TxyGraph graph, once, twice;
        FillRandomly(graph, random);
        LoadBytes(once, FileOf(graph));
        LoadBytes(twice, FileOf(once));
        ExpectEqual(once, twice);
    }
}

TEST(GraphCopy, AFileThatBreaksOffLeavesTheGraphAsItWas) {
    TRandom random(33);
    TxyGraph graph, other, before;
    FillAll(graph, random);
    before.CopyFrom(graph);
    FillRandomly(other, random);
    const TBytes bytes = FileOf(other);
    for (std::size_t size = 0; size < bytes.size(); size += 97) {
        EXPECT_THROW(
            LoadBytes(graph, TBytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size))),
            ELumoError);
    }
    ExpectEqual(graph, before);
}

TEST(GraphCopy, WhatNoFileCouldHoldIsRefusedOnSavingAndCopiedInMemory) {
    TxyGraph deep, wide, copy;
    TxyGraph* innermost = &deep;
    for (int i = 0; i <= TxyGraph::kMaxNesting; ++i) innermost = innermost->AddChildGraph();
    for (int i = 0; i <= TxyGraph::kMaxChildGraphs; ++i) wide.AddChildGraph();
    for (const TxyGraph* graph : {&deep, &wide}) {
        const std::string text = ThrownText<EGraphFileError>([&] { FileOf(*graph); });
        EXPECT_NE(text.find(graph == &deep ? "64" : "4096"), std::string::npos) << text;
    }
    copy.CopyFrom(deep);
    EXPECT_EQ(copy.ChildGraphs()[0]->ChildGraphs()[0]->ChildGraphCount(), 1);
}

TEST(GraphCopy, TheReadingThatTheUserChoseIsFiledAndUsedOnReload) {
    QTemporaryDir folder;
    const std::string text = folder.filePath("run.txt").toStdString();
    const std::string content = "x;y\n1,234;5,5\n2,345;6,5\n";
    ReplaceFile(text, std::vector<std::uint8_t>(content.begin(), content.end()));
    TxyGraph graph, back;
    TSeries& series = *graph.FindSeries(graph.AddSeries());
    series.DataSourceInfo().SetKind(TSourceKind::TextFile);
    series.DataSourceInfo().SetSourceName(text);
    series.SetTextWishes(Wishes(TTextEncoding::CodePage, TDateOrder::DayMonthYear));
    LoadBytes(back, FileOf(graph));
    TSeries& opened = *back.FindSeries(1);
    EXPECT_EQ(opened.TextWishes(), series.TextWishes());
    EXPECT_FALSE(opened.DataSourceInfo().NeedsReload());
    TSilentProgress progress;
    EXPECT_TRUE(LoadFromSource(opened, progress));
    ASSERT_EQ(opened.Count(), 2);
    EXPECT_EQ(opened.First().X(), 1.234);
    EXPECT_EQ(opened.First().Y(), 5.5);
}

} // namespace
} // namespace lumoplot
