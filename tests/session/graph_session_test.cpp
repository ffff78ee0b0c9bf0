#include "session/graph_session.h"

#include "common/fit_parameters.h"
#include "common/graph_state.h"
#include "common/recording_sink.h"
#include "common/seeds.h"
#include "common/special_values.h"
#include "data/series/ds_info.h"
#include "fit/definition/cur_fit.h"
#include "graph/model/child_graph.h"
#include "graph/mouse/graph_mouse.h"
#include "session/undo_history.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace lumoplot {
namespace {

TTextWishes CommaWishes() {
    TTextWishes wishes;
    wishes.decimalSign = ',';
    return wishes;
}

int Int(TRandom& random, int low, int high) {
    return std::uniform_int_distribution(low, high)(random);
}

double Number(TRandom& random) {
    return std::uniform_real_distribution(-100.0, 100.0)(random);
}

/// Fits that are pending, or wait no more.
void SetStale(TxyGraph& graph, const std::vector<bool>& stale) {
    for (std::size_t i = 0; i < stale.size(); ++i) {
        TFitRunState run = graph.Series()[i]->CurveFit().RunState();
        run.Stale = stale[i];
        run.Held = false;
        graph.Series()[i]->CurveFit().RestoreRunState(run);
    }
}

// Which data set is current is no content, nor is a fit that waits to be run; other tests look at that.
TGraphState ContentOf(TxyGraph& graph) {
    const int current = graph.Appearance()->CurrSerIndex();
    graph.Appearance()->SetCurrSerIndex(1);
    std::vector<bool> stale;
    for (const auto& series : graph.Series()) stale.push_back(series->CurveFit().IsStale());
    SetStale(graph, std::vector<bool>(stale.size()));
    TGraphState content(graph);
    SetStale(graph, stale);
    graph.Appearance()->SetCurrSerIndex(current);
    return content;
}

std::ptrdiff_t PendingFits(TxyGraph& graph) {
    return std::ranges::count_if(graph.Series(),
                                 [](const TSeries* series) { return series->CurveFit().IsPending(); });
}

void EditPoints(TSeries& series, TRandom& random) {
    const int id = Int(random, 1, std::max(1, series.LastId()));
    switch (Int(random, 0, 6)) {
    case 0: series.AddPoint(Int(random, -9, 9), Number(random), Int(random, 0, 2)); break;
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

void FitLine(TSeries& series) {
    TCurFit& fit = series.CurveFit();
    fit.ClearParameters();
    AddVaried(fit, {"A", "B"});
    fit.SetExpression("A*x+B");
    fit.SetStatus(TFitStatus::FinalResult);
    series.Graph().PrepareForDrawing();
}

void EditFit(TCurFit& fit, TRandom& random) {
    TDBLParameter* first = fit.Parameter(1);
    switch (Int(random, 0, 3)) {
    case 0: fit.SetWeighting({true, TErrorSource{Int(random, 0, 1)}, TRobust{Int(random, 0, 3)}}); break;
    case 1: AddVaried(fit, {Int(random, 0, 1) == 0 ? "A" : "B"}); break;
    case 2:
        if (first) first->SetBounds(-Int(random, 1, 9), kInfinity);
        break;
    default:
        if (first) first->SetTie(Int(random, 0, 1) == 0 ? "2*B" : "");
    }
}

void EditSettings(TSeries& series, TRandom& random) {
    TDSInfo& source = series.DataSourceInfo();
    switch (Int(random, 0, 16)) {
    case 14: EditFit(series.CurveFit(), random); break;
    case 15: source.SetYErrorRule({TYErrorKind{Int(random, 2, 4)}, 5}); break;
    case 16:
        source.SetDatabase(
            {"runs", "SELECT t, u FROM run" + std::to_string(Int(random, 0, 9)), "t > 1", "t"});
        break;
    case 12: series.SetUseXAxisSeries(!series.UseXAxisSeries()); break;
    case 13: source.SetSourceName("lost" + std::to_string(Int(random, 0, 9))); break;
    case 0: series.SetSeriesName("Run " + std::to_string(Int(random, 0, 99))); break;
    case 1: series.SetAutoZero(!series.AutoZero()); break;
    case 2: series.SetZeroValue(Number(random)); break;
    case 3: series.RecalcExtents(); break;
    case 4: source.SetKind(TSourceKind{Int(random, 0, 4)}); break;
    case 5: series.SetThinned(!series.IsThinned()), series.SetSourceRows({Int(random, 0, 99), 7}); break;
    case 6: series.CurveFit().SetExpression("x*" + std::to_string(Int(random, 1, 9))); break;
    case 7: series.CurveFit().ClearParameters(); break;
    case 8: series.SetRegressionType(TRegressionType{Int(random, 0, 6)}); break;
    case 9: series.SetTextWishes(CommaWishes()); break;
    case 10: FitLine(series); break;
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

// What a picture works out, and what is selected.
void LookOnce(TxyGraph& graph, TRandom& random) {
    switch (Int(random, 0, 2)) {
    case 0: graph.PrepareForDrawing(); break;
    case 1: graph.SelectMark(Int(random, 1, 5)); break;
    default: graph.Appearance()->SetCurrSerIndex(Int(random, 0, 5));
    }
}

TEST(TGraphSessionTest, AStateThatIsPutBackEqualsTheStateAsItWasFiledOrNot) {
    const TRecordingSink sink; // of data sets that are X no longer, and of sources that are not there
    for (unsigned seed = 0; seed < Seeds(100); ++seed) {
        TRandom random(seed);
        TxyGraph graph;
        FillRandomly(graph, random);
        TGraphSession session(graph);
        session.Start();
        std::vector<TGraphState> states = {ContentOf(graph)};
        std::vector<std::ptrdiff_t> pending = {PendingFits(graph)};
        std::size_t at = 0;
        const auto walk = [&](bool back) {
            if (back ? session.CanUndo() : session.CanRedo()) {
                back ? session.Undo() : session.Redo();
                at += back ? -1 : 1;
            }
            // What a look has found for another state is there where the fit is the same.
            if (PendingFits(graph) < pending[at]) states[at] = ContentOf(graph);
            pending[at] = PendingFits(graph);
            ASSERT_EQ(TGraphState::Difference(ContentOf(graph), states[at]), "")
                << "seed " << seed << " state " << at;
        };
        const auto look = [&] {
            session.FollowUp([&] { LookOnce(graph, random); });
            states[at] = ContentOf(graph);
            pending[at] = PendingFits(graph);
        };
        for (int edits = 0; edits < 60; ++edits) {
            look();
            const bool isStep = session.Change("edit", [&] { EditOnce(graph, random); });
            if (isStep) states.push_back(ContentOf(graph));
            at = states.size() - 1;
            states[at] = ContentOf(graph);
            pending.resize(states.size());
            pending[at] = PendingFits(graph);
        }
        for (int i = 0; i < 60; ++i) walk(true);
        ASSERT_EQ(at, 0u);
        for (int i = 0; i < 60; ++i) walk(false);
        ASSERT_EQ(at, states.size() - 1);
        for (int i = 0; i < 60; ++i) {
            walk(Int(random, 0, 1) == 0);
            look(); // costs no redo
        }
    }
}

class TSessionTest : public testing::Test {
protected:
    TSessionTest() {
        for (int i = 0; i < 3; ++i) m_graph.AddSeries();
        m_session.Start();
    }

    bool Rename(const char* name, TMergeKey key = {}) {
        return m_session.Change(name, key, [&] { m_graph.FirstSeries()->SetSeriesName(name); });
    }
    std::string Name() const { return m_graph.FirstSeries()->SeriesName(); }
    int UndoAll() {
        int steps = 0;
        for (; m_session.CanUndo(); ++steps) m_session.Undo();
        return steps;
    }

    TxyGraph m_graph;
    TGraphSession m_session{m_graph};
};

TEST_F(TSessionTest, StepsWithOneKeyAreOneUntilSomethingElseHappens) {
    const TMergeKey edit{&m_graph, 1};
    Rename("R", edit);
    Rename("Ru", edit);
    EXPECT_EQ(m_session.UndoName(), "Ru");
    Rename("DataSet 1", edit); // typed back to where it began
    EXPECT_FALSE(m_session.CanUndo());
    const std::function<void()> kBetween[] = {
        [] {},
        [&] { m_session.EndMerging(); },
        [&] { m_session.MarkClean(); },
        [&] { m_session.Undo(), m_session.Redo(); },
        [&] { m_session.Change("width", [&] { m_graph.FirstSeries()->SetLineWidth(9); }); },
    };
    const int kSteps[] = {1, 2, 2, 2, 3};
    for (std::size_t i = 0; i < std::size(kBetween); ++i) {
        Rename("A", edit);
        kBetween[i]();
        Rename("B", edit);
        EXPECT_EQ(UndoAll(), kSteps[i]) << i;
        m_session.Start();
    }
}

TEST_F(TSessionTest, AnUndoneStepIsNotJoinedByTheNextOfItsKind) {
    const TMergeKey edit{&m_graph, 1};
    Rename("A", edit);
    m_session.Change("width", [&] { m_graph.FirstSeries()->SetLineWidth(9); });
    m_session.Undo();
    Rename("B", edit);
    EXPECT_EQ(UndoAll(), 2);
}

// Each alone makes a step, and what it changes comes back, filed or not.
TEST_F(TSessionTest, EverySingleChangeIsAStepThatIsUndoneAndRedone) {
    TSeries& series = *m_graph.FirstSeries();
    for (int i = 0; i < 4; ++i) series.AddPoint(i, i);
    TAxis& axis = *m_graph.XAxis();
    m_graph.resize(600, 400);
    TDimensions& inset = *m_graph.AddChildGraph()->Dimensions();
    inset.SetHorPosition(0.5);
    inset.SetHorSize(0.25);
    FitLine(series);
    series.SetRegressionType(TRegressionType::SampledCurve);
    m_graph.PrepareForDrawing();
    series.SetAutoZero(true); // the extents wait to be worked out, the curve does not
    m_session.Start();
    const std::function<void()> changes[] = {
        [&] {
            series.SetSourceRows({99, 7});
        },
        [&] { series.SetThinned(!series.IsThinned()); },
        [&] { series.SetTextWishes(CommaWishes()); },
        [&] { series.SetUseXAxisSeries(!series.UseXAxisSeries()); },
        [&] { axis.SetMax(200), axis.SetMin(100); },
        [&] { axis.SetMin(-200), axis.SetMax(-100); },
        [&] { m_graph.Appearance()->SetGraphTitle("T"), m_graph.Appearance()->SetDataDirectory("/data"); },
        [&] { m_graph.ClearChildGraphs(); },
    };
    const auto place = [&] {
        return std::pair(m_graph.ChildGraphs().empty() ? QRect() : m_graph.ChildGraphs()[0]->geometry(),
                         m_graph.Appearance()->DataDirectory());
    };
    for (const auto& change : changes) {
        SCOPED_TRACE(&change - changes);
        const TGraphState before = ContentOf(m_graph);
        const auto placeBefore = place();
        ASSERT_TRUE(m_session.Change("one", change));
        const TGraphState after = ContentOf(m_graph);
        m_session.Undo();
        EXPECT_EQ(TGraphState::Difference(ContentOf(m_graph), before), "");
        EXPECT_EQ(place(), placeBefore);
        m_session.Redo();
        EXPECT_EQ(TGraphState::Difference(ContentOf(m_graph), after), "");
    }
}

TEST_F(TSessionTest, AChangeInsideAChangeBelongsToItAndAnExceptionPutsAllBack) {
    int putBack = 0;
    QObject::connect(&m_session, &TGraphSession::PutBack, [&] { ++putBack; });
    EXPECT_TRUE(m_session.Change("outer", [&] {
        EXPECT_FALSE(Rename("inner"));
        EXPECT_FALSE(m_session.CanUndo());
        m_session.NameStep("named by the action");
    }));
    EXPECT_EQ(m_session.UndoName(), "named by the action");
    const auto failing = [&] {
        m_graph.DeleteSeries(1);
        Rename("half");
        throw std::runtime_error("no");
    };
    EXPECT_THROW(m_session.Change("fails", [&] { m_session.Change("inside", failing); }), std::runtime_error);
    EXPECT_EQ(putBack, 1);
    EXPECT_EQ(m_graph.SeriesCount(), 3);
    EXPECT_EQ(Name(), "inner");
    EXPECT_EQ(UndoAll(), 1);
    {
        TOpenStep cancelled(m_session, "drag");
        m_graph.FirstSeries()->SetSeriesName("dragged");
    }
    EXPECT_EQ(Name(), "DataSet 1");
}

TEST_F(TSessionTest, WhatFollowsFromAStepIsNoStepAndCostsNoRedo) {
    Rename("Run 1");
    m_session.Undo();
    m_session.FollowUp(
        [&] { EXPECT_FALSE(m_session.Change("fill", [&] { m_graph.FirstSeries()->SetLineWidth(7); })); });
    m_graph.XAxis()->SetMax(30);
    m_session.Redo();
    EXPECT_EQ(Name(), "Run 1");
    EXPECT_NE(m_graph.XAxis()->Max(), 30);
    m_session.Undo();
    EXPECT_EQ(m_graph.XAxis()->Max(), 30);
    EXPECT_EQ(m_graph.FirstSeries()->LineWidth(), 7);
}

TEST_F(TSessionTest, AFitThatWasTakenBackIsNotPendingAndOneThatIsDoneAgainIsUpToDate) {
    TSeries& series = *m_graph.FirstSeries();
    for (int i = 0; i < 9; ++i) series.AddPoint(i, i * 3);
    const auto result = [&] { return series.CurveFit().Result(); };
    m_session.Change("width", [&] { series.SetLineWidth(9); });
    m_session.Change("fit", [&] { FitLine(series); });
    const auto fitted = result();
    ASSERT_TRUE(fitted);
    m_session.Undo();
    m_graph.PrepareForDrawing();
    EXPECT_FALSE(result() || series.CurveFit().IsPending());
    m_session.Redo();
    m_graph.PrepareForDrawing();
    EXPECT_EQ(result(), fitted);
    m_session.Undo();
    m_session.Undo();
    m_graph.PrepareForDrawing();
    EXPECT_FALSE(result());
    m_session.Redo();
    m_session.Redo();
    EXPECT_EQ(result(), fitted);
    EXPECT_FALSE(series.CurveFit().IsStale());
}

/// What has been found by now is the same in every state, and belongs to what it was found for.
TEST_F(TSessionTest, AFitThatAStepLeftAloneRunsOnce) {
    TSeries& series = *m_graph.FirstSeries();
    for (int i = 0; i < 9; ++i) series.AddPoint(i, i * 3);
    TCurFit& fit = series.CurveFit();
    AddVaried(fit, {"A", "B"});
    fit.SetExpression("A*x+B");
    fit.SetStatus(TFitStatus::FinalResult);
    m_session.Start();
    Rename("one");
    m_session.Change("add data set", [&] { m_graph.AddSeries(); });
    Rename("three");
    m_session.Undo();
    m_graph.PrepareForDrawing();
    const TFitResult* found = fit.Result();
    ASSERT_TRUE(found && fit.Parameter(1)->Value() == 3);
    const auto look = [&] {
        m_graph.PrepareForDrawing();
        EXPECT_EQ(fit.Result(), found);
        EXPECT_FALSE(fit.IsStale());
        EXPECT_EQ(fit.Parameter(1)->Value(), 3);
    };
    for (int i = 0; i < 2; ++i, look()) m_session.Undo();
    for (int i = 0; i < 3; ++i, look()) m_session.Redo();
    while (m_session.CanUndo()) m_session.Undo();
    look();
    m_session.Change("point", [&] { series.SetPointY(1, 90); });
    EXPECT_TRUE(fit.IsPending());
    Rename("four");
    m_session.Undo();
    EXPECT_TRUE(fit.IsPending()) << "nobody has looked";
}

/// Taken back to a formula that it was not found for.
TEST_F(TSessionTest, AFitThatIsTakenBackIsNotShownAsOfOtherSettings) {
    TSeries& series = *m_graph.FirstSeries();
    for (int i = 0; i < 9; ++i) series.AddPoint(i, i * 3);
    TCurFit& fit = series.CurveFit();
    FitLine(series);
    const TFitResult* line = fit.Result();
    m_session.Start();
    m_session.Change("formula", [&] { fit.SetExpression("A*x*x+B"); });
    m_session.Change("fit", [&] { m_graph.PrepareForDrawing(); });
    ASSERT_NE(fit.Result(), line);
    m_session.Undo();
    m_graph.PrepareForDrawing();
    EXPECT_EQ(fit.Result(), line);
    EXPECT_TRUE(fit.IsStale());
    TxyGraph loaded;
    LoadBytes(loaded, FileOf(m_graph));
    loaded.PrepareForDrawing();
    EXPECT_TRUE(loaded.FirstSeries()->CurveFit().IsStale()) << "a file holds it as it is";
    m_session.Undo();
    m_graph.PrepareForDrawing();
    EXPECT_EQ(fit.Result(), line);
    EXPECT_FALSE(fit.IsStale());
}

TEST_F(TSessionTest, ItIsCleanWhereItWasSaved) {
    EXPECT_TRUE(m_session.IsClean());
    Rename("A", {this});
    EXPECT_FALSE(m_session.IsClean());
    m_session.MarkClean();
    Rename("B", {this});
    EXPECT_FALSE(m_session.IsClean());
    m_session.Undo();
    EXPECT_TRUE(m_session.IsClean());
    m_session.Undo();
    EXPECT_FALSE(m_session.IsClean());
    Rename("C"); // the saved state can not be reached any more
    EXPECT_FALSE(m_session.IsClean());
    m_session.Stop();
    m_session.MarkClean();
    Rename("D");
    EXPECT_FALSE(m_session.IsClean());
}

TEST_F(TSessionTest, TheDataSetThatAStepWasMadeOnIsCurrentAgain) {
    TAppearance& appearance = *m_graph.Appearance();
    for (const int number : {2, 3}) {
        appearance.SetCurrSerIndex(number);
        m_session.Change("width", [&] { m_graph.FindSeries(number)->SetLineWidth(9); });
    }
    appearance.SetCurrSerIndex(1);
    for (const int number : {3, 2}) {
        m_session.Undo();
        EXPECT_EQ(appearance.CurrSerIndex(), number);
    }
    for (const int number : {2, 3}) {
        m_session.Redo();
        EXPECT_EQ(appearance.CurrSerIndex(), number);
    }
}

TEST_F(TSessionTest, WhatTheUserChangesOnTheGraphIsAStepAndADragIsOne) {
    TAxis& axis = *m_graph.XAxis();
    const auto widenTo = [&](double max, std::uint64_t gesture) {
        m_graph.ChangeByUser({"change of view", gesture}, [&] { axis.SetMax(max); });
    };
    const double before = axis.Max();
    for (const double max : {20, 30}) widenTo(max, 1);
    widenTo(40, 2);
    for (const double max : {50, 60}) widenTo(max, 0);
    for (const double max : {50.0, 40.0, 30.0, before}) {
        EXPECT_EQ(m_session.UndoName(), "change of view");
        m_session.Undo();
        EXPECT_EQ(axis.Max(), max);
    }
    EXPECT_FALSE(m_session.CanUndo());
}

TEST_F(TSessionTest, AViewThatIsUndoneIsNotGoneBackTo) {
    for (const double x : {0, 10}) m_graph.FirstSeries()->AddPoint(x, x);
    TGraphZoom& zoom = m_graph.Mouse().Zoom();
    const TAxis& axis = *m_graph.XAxis();
    std::vector<double> ends;
    for (int i = 0; i < 2; ++i) {
        m_graph.grab();
        ends.push_back(axis.Max());
        zoom.Magnify(*m_graph.Mouse().Map(), QPointF(100, 100), 2);
        zoom.EndGesture();
    }
    m_session.Undo();
    EXPECT_EQ(axis.Max(), ends[1]);
    zoom.GoBack();
    EXPECT_EQ(axis.Max(), ends[0]);
    m_session.Undo();
    EXPECT_EQ(axis.Max(), ends[1]);
    EXPECT_TRUE(zoom.CanGoBack());
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
        history.Note("change");
    }
    EXPECT_EQ(history.StepCount(), 60);
    for (int i = 0; i < 60; ++i) {
        for (int id = 1; id <= 100000; id += 200) series.SetPointY(id, i + 0.5);
        history.Note("change");
        EXPECT_LE(history.MemoryUsed(), kLimit);
    }
    EXPECT_TRUE(history.CanUndo());
    EXPECT_LT(history.StepCount(), 60);
    history.Undo();
    EXPECT_EQ(series.GetPoint(1)->Y, 58.5);
    for (int i = 100000; i < 300000; ++i) series.AddPoint(i, i);
    history.Note("change"); // too large to be kept even once
    EXPECT_FALSE(history.CanUndo() || history.CanRedo());
    EXPECT_EQ(history.MemoryUsed(), 0u);
}

} // namespace
} // namespace lumoplot
