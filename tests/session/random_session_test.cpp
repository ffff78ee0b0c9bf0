// Random steps, taken back and done again.
#include "common/random_graph.h"
#include "common/recording_sink.h"
#include "common/seeds.h"
#include "common/special_values.h"
#include "data/series/ds_info.h"
#include "session/graph_session.h"
#include "session/session_states.h"

#include <gtest/gtest.h>

namespace lumoplot {
namespace {

int Int(TRandom& random, int low, int high) {
    return std::uniform_int_distribution(low, high)(random);
}

double Number(TRandom& random) {
    return std::uniform_real_distribution(-100.0, 100.0)(random);
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

} // namespace
} // namespace lumoplot
