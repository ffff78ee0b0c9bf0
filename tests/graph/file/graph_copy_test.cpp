// What a copy of a graph, and a graph that could not be loaded or saved, look like.
#include "common/graph_state.h"
#include "common/recording_sink.h"
#include "common/seeds.h"
#include "common/thrown_text.h"
#include "data/series/series_data.h"
#include "fit/definition/cur_fit.h"
#include "graph/file/graph_file.h"
#include "graph/loading/source_loading.h"
#include "graph/model/child_graph.h"
#include "support/errors.h"
#include "support/replace_file.h"

#include <QTemporaryDir>
#include <array>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>

namespace lumoplot {
namespace {

/// Each field of a reading that the user may choose, alone, and all of them.
std::vector<TTextWishes> WishesOfEachKind() {
    std::vector<TTextWishes> wishes(9);
    wishes[1].encoding = TTextEncoding::CodePage;
    wishes[2].decimalSign = ',';
    wishes[3].dateOrder = TDateOrder::MonthDayYear;
    wishes[4].shortTimes = TShortTimes::MinutesAndSeconds;
    wishes[5].midnight = TMidnight::RunsOn;
    wishes[6].columns = TColumnLayout::Aligned;
    wishes[7].quotes = "";
    wishes[8] = {
        TTextEncoding::Utf16LittleEndian, '.', TDateOrder::YearMonthDay, TShortTimes::HoursAndMinutes,
        TMidnight::BeginsAgain,           "'", TColumnLayout::InTurn};
    return wishes;
}

void ExpectEqual(const TxyGraph& a, const TxyGraph& b) {
    EXPECT_EQ(TGraphState::Difference(TGraphState(a), TGraphState(b)), "");
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
    series.SetTextWishes(WishesOfEachKind()[random() % 9]);
    series.SetSourceRows({static_cast<std::int64_t>(random() % 100), 7});
    series.SetThinned(chance());
    series.DataSourceInfo().SetNeedsReload(chance());
    series.DataSourceInfo().SetSamplingChosen(chance());
    series.SetUseXAxisSeries(chance());
    if (chance()) series.UpdateRegression();
    TFitRunState run = series.CurveFit().RunState();
    run.Modified = chance();
    run.Stale = run.Stale || chance();
    series.CurveFit().RestoreRunState(run);
}

void FillAll(TxyGraph& graph, TRandom& random) {
    FillRandomly(graph, random);
    for (const auto& series : graph.Series()) FillUnfiled(*series, random);
    for (const auto& child : graph.ChildGraphs())
        for (const auto& series : child->Series()) FillUnfiled(*series, random);
    if (random() % 4 == 0) graph.Appearance()->RestoreIndices(graph.Appearance()->XAxisSerIndex(), 0);
    graph.Appearance()->SetDataDirectory(random() % 2 ? "data" : "");
    graph.Appearance()->SetErrorCaption(random() % 2 ? "out of range" : "none");
    graph.SelectMark(static_cast<int>(random() % 30));
}

TEST(GraphCopy, EqualsTheOriginalInEveryRespect) {
    const TRecordingSink sink; // of data sets that are X no longer
    TRandom random(31);
    for (unsigned round = 0; round < Seeds(150) && !testing::Test::HasFailure(); ++round) {
        SCOPED_TRACE(round);
        TxyGraph graph, copy;
        FillAll(graph, random);
        FillAll(copy, random); // what the target holds must not matter
        copy.CopyFrom(graph);
        ExpectEqual(graph, copy);
        for (const auto& series : graph.Series()) {
            EXPECT_EQ(copy.FindSeries(series->SeriesIndex())->LastId(), series->LastId());
            TSeries& other = *copy.FindSeries(copy.AddSeries());
            other.CopyFrom(*series);
            EXPECT_EQ(PointBitsOf(other), PointBitsOf(*series));
            const bool sharesX = (other.XSource() == nullptr) == (series->XSource() == nullptr);
            if (!sharesX) continue;
            EXPECT_EQ(other.CurveFit().RunState(), series->CurveFit().RunState());
        }
    }
}

TEST(GraphCopy, WhatIsLoadedIsSavedAndLoadedAgainAsItIs) {
    TRandom random(32);
    for (unsigned round = 0; round < Seeds(60); ++round) {
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
    for (std::size_t size = 0; size < bytes.size(); size += 7) {
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

TEST(GraphCopy, TheReadingThatTheUserChoseIsFiled) {
    for (const TTextWishes& wishes : WishesOfEachKind()) {
        SCOPED_TRACE(&wishes - WishesOfEachKind().data());
        TxyGraph graph, back;
        graph.FindSeries(graph.AddSeries())->SetTextWishes(wishes);
        LoadBytes(back, FileOf(graph));
        EXPECT_EQ(back.FirstSeries()->TextWishes(), wishes);
        EXPECT_FALSE(back.FirstSeries()->DataSourceInfo().NeedsReload());
    }
}

// Each text reads otherwise by itself.
TEST(GraphCopy, WhatIsSavedOpenedAndReloadedHasEqualValues) {
    struct TCase {
        const char* text;
        TTextWishes wishes;
        double x, y; ///< of the second point
    };
    const auto with = [](auto field, auto value) {
        TTextWishes wishes;
        wishes.*field = value;
        return wishes;
    };
    const TCase cases[] = {
        {"x;y\n1,234;5,5\n2,345;6,5\n", with(&TTextWishes::decimalSign, ','), 2.345, 6.5},
        {"t;y\n1:30;1\n2:30;2\n", with(&TTextWishes::shortTimes, TShortTimes::MinutesAndSeconds),
         150.0 / 86400, 2},
        {"t;y\n23:00;1\n01:00;2\n", with(&TTextWishes::midnight, TMidnight::RunsOn), 25.0 / 24, 2},
    };
    QTemporaryDir folder;
    const std::string text = folder.filePath("run.txt").toStdString();
    for (const TCase& c : cases) {
        SCOPED_TRACE(c.text);
        ReplaceFile(text, std::vector<std::uint8_t>(c.text, c.text + std::strlen(c.text)));
        TxyGraph graph, back;
        TSilentProgress progress;
        TSeries& series = *graph.FindSeries(graph.AddSeries());
        series.DataSourceInfo().SetKind(TSourceKind::TextFile);
        series.DataSourceInfo().SetSourceName(text);
        series.SetTextWishes(c.wishes);
        ASSERT_TRUE(LoadFromSource(series, progress));
        LoadBytes(back, FileOf(graph));
        ASSERT_TRUE(LoadFromSource(*back.FirstSeries(), progress));
        EXPECT_EQ(PointBitsOf(*back.FirstSeries()), PointBitsOf(series));
        ASSERT_EQ(series.Count(), 2);
        EXPECT_NEAR(series.First().Next().X(), c.x, 1e-12);
        EXPECT_EQ(series.First().Next().Y(), c.y);
    }
}

// Thinned or whole, chosen by number or by X, merged or not, read as the user chose.
TEST(GraphCopy, ASourceThatIsSavedOpenedAndReloadedGivesTheSamePoints) {
    const TRecordingSink sink; // of results that lack rows
    QTemporaryDir folder;
    const std::string name = folder.filePath("rows.txt").toStdString();
    std::string rows = "t;u;v\n";
    for (int i = 0; i < 300; ++i)
        rows += std::to_string(i * 7 % 50) + ",5;" +
                (i % 40 == 39 ? "-inf;" : std::to_string(i) + (i % 9 ? ",25;" : ";")) + "1e3\n";
    ReplaceFile(name, std::vector<std::uint8_t>(rows.begin(), rows.end()));
    TRandom random(34);
    const auto chance = [&] { return random() % 2 == 0; };
    for (unsigned round = 0; round < Seeds(80) && !testing::Test::HasFailure(); ++round) {
        SCOPED_TRACE(round);
        TxyGraph graph, copy, back;
        graph.SetPointBudget(50);
        TSeries& series = *graph.FindSeries(graph.AddSeries());
        graph.Appearance()->SetCurrSerIndex(1); // as in every graph that is opened
        TDSInfo& info = series.DataSourceInfo();
        info.SetKind(TSourceKind::TextFile);
        info.SetSourceName(name);
        series.SetDuplicatesAllowed(chance());
        if (chance()) series.SetNumericalTolerance(1.5);
        if (chance()) info.SetAutoRowHitFreq(chance());
        if (chance()) info.SetRowSamplingFrequency(1 + static_cast<int>(random() % 4));
        if (chance()) info.SetYDataColumn("3");
        if (chance()) info.SetFileHasHeaders(3);
        info.SetRowChoiceMode(static_cast<TRowChoice>(random() % 3));
        info.SetRowChoiceValue1(5);
        info.SetRowChoiceValue2(40);
        series.SetTextWishes(WishesOfEachKind()[chance() ? 0 : 2]);
        if (chance()) series.SetYColExpr("Y*2");
        if (chance()) series.SetRegressionType(TRegressionType::Linear);
        TSilentProgress progress;
        ASSERT_TRUE(LoadFromSource(series, progress));
        graph.PrepareForDrawing();
        copy.CopyFrom(graph);
        ExpectEqual(graph, copy);
        LoadBytes(back, FileOf(graph));
        copy.SetPointBudget(50);
        back.SetPointBudget(50);
        for (TxyGraph* each : {&graph, &copy, &back}) {
            ASSERT_TRUE(LoadFromSource(*each->FirstSeries(), progress));
            each->PrepareForDrawing();
        }
        {
            SCOPED_TRACE("copy");
            ExpectEqual(graph, copy);
        }
        SCOPED_TRACE("opened file");
        ExpectEqual(graph, back);
    }
}

} // namespace
} // namespace lumoplot
