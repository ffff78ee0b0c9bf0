#include "session/graph_session.h"

#include "common/recording_sink.h"
#include "data/series/ds_info.h"
#include "fit/definition/cur_fit.h"
#include "graph/model/child_graph.h"
#include "graph/mouse/graph_mouse.h"
#include "session/session_states.h"
#include "session/undo_history.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace lumoplot {
namespace {

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
