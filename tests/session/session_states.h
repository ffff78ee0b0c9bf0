// What states of a session are compared by, and steps that tests of it make.
#pragma once

#include "common/fit_parameters.h"
#include "common/graph_state.h"
#include "fit/definition/cur_fit.h"
#include "graph/model/graph.h"

#include <vector>

namespace lumoplot {

inline TTextWishes CommaWishes() {
    TTextWishes wishes;
    wishes.decimalSign = ',';
    return wishes;
}

inline void FitLine(TSeries& series) {
    TCurFit& fit = series.CurveFit();
    fit.ClearParameters();
    AddVaried(fit, {"A", "B"});
    fit.SetExpression("A*x+B");
    fit.SetStatus(TFitStatus::FinalResult);
    series.Graph().PrepareForDrawing();
}

/// Fits that are pending, or wait no more.
inline void SetStale(TxyGraph& graph, const std::vector<bool>& stale) {
    for (std::size_t i = 0; i < stale.size(); ++i) {
        TFitRunState run = graph.Series()[i]->CurveFit().RunState();
        run.Stale = stale[i];
        run.Held = false;
        graph.Series()[i]->CurveFit().RestoreRunState(run);
    }
}

// Which data set is current is no content, nor is a fit that waits to be run; other tests look at that.
inline TGraphState ContentOf(TxyGraph& graph) {
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

} // namespace lumoplot
