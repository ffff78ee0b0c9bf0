#include "session/undo_history.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace lumoplot {

namespace {

/// Of the data set whose values are X of that one; 0 for none.
std::uint64_t XStamp(const TGraphSnapshot& graph, const TSeriesState& series) {
    if (!series.UsesXAxisSeries || graph.XAxisSerIndex() == series.Number) return 0;
    const auto x = std::ranges::find(graph.Series(), graph.XAxisSerIndex(), &TSeriesState::Number);
    return x == graph.Series().end() ? 0 : x->DataStamp;
}

/// The same pending fit of the same values.
bool SamePendingFit(const TGraphSnapshot& a, const TSeriesState& ofA, const TGraphSnapshot& b,
                    const TSeriesState& ofB) {
    return ofA.PendingFit && ofB.PendingFit && ofA.PendingFit->Bytes() == ofB.PendingFit->Bytes() &&
           ofA.DataStamp == ofB.DataStamp && XStamp(a, ofA) == XStamp(b, ofB);
}

// A step that has been added to.
void JoinFed(std::vector<TFedAtStep>& fed, const std::vector<TFedAtStep>& added) {
    for (const TFedAtStep& more : added) {
        const auto known = std::ranges::find(fed, more.FeedId, &TFedAtStep::FeedId);
        if (known == fed.end())
            fed.push_back(more);
        else
            *known = {more.FeedId, more.LastId, known->IsEdited || more.IsEdited};
    }
}

} // namespace

TUndoHistory::TWhole TUndoHistory::Take(const TWhole* earlier) const {
    return {TGraphSnapshot(m_graph, earlier ? &earlier->Graph : nullptr, m_meter), TakeSide(earlier)};
}

std::shared_ptr<const TUndoHistory::TCountedSide> TUndoHistory::TakeSide(const TWhole* earlier) const {
    TSideStatePtr side = m_side.Take ? m_side.Take() : nullptr;
    if (!side) return nullptr;
    const TSideState* before = earlier && earlier->Side ? earlier->Side->State.get() : nullptr;
    if (side.get() == before) return earlier->Side;
    const std::size_t bytes = side->BytesBeside(before);
    return std::make_shared<const TCountedSide>(std::move(side), TMeteredBytes(m_meter, bytes));
}

void TUndoHistory::Restore(const TWhole& whole, int currSerIndex) {
    whole.Graph.Restore(m_graph, currSerIndex);
    if (m_side.PutBack) m_side.PutBack(whole.Side ? whole.Side->State : nullptr);
}

void TUndoHistory::Start() {
    Stop();
    m_states.push_back({Take(nullptr), ++m_lastId});
    KeepWithinLimit();
}

void TUndoHistory::Stop() {
    m_states.clear();
    m_present = 0;
    m_isOpen = false;
}

bool TUndoHistory::Note(const TNaming& naming, TMergeKey key) {
    if (m_states.empty()) return false;
    TState& present = m_states[m_present];
    TWhole now = Take(&present.Whole);
    if (now == present.Whole) {
        present.Whole = std::move(now);
        return false;
    }
    DropRedo();
    if (m_isOpen && CanUndo() && key && present.Key == key) {
        Join(std::move(now), naming);
    } else {
        const int currSerIndex = now.Graph.CurrSerIndex();
        std::string name = naming(present.Whole.Graph, now.Graph);
        std::vector<TFedAtStep> fed = now.Graph.FedSince(present.Whole.Graph);
        TState next = {std::move(now), ++m_lastId, currSerIndex, std::move(name), key};
        next.Fed = std::move(fed);
        NoteFits(present.Whole.Graph, next);
        m_states.push_back(std::move(next));
        ++m_present;
    }
    m_isOpen = true;
    KeepWithinLimit();
    return true;
}

void TUndoHistory::Join(TWhole now, const TNaming& naming) {
    const TWhole& before = m_states[m_present - 1].Whole;
    if (now == before) {
        m_states.pop_back();
        --m_present;
        return;
    }
    TState& present = m_states[m_present];
    present.StepName = naming(before.Graph, now.Graph);
    JoinFed(present.Fed, now.Graph.FedSince(present.Whole.Graph));
    present.Id = ++m_lastId;
    present.Whole = std::move(now);
    NoteFits(before.Graph, present);
}

/// What the step between them did to the fits.
void TUndoHistory::NoteFits(const TGraphSnapshot& before, TState& state) {
    state.FitsRun.clear();
    state.FitsLeftAlone.clear();
    const TGraphSnapshot& behind = state.Whole.Graph;
    for (const TSeriesState& series : before.Series()) {
        const auto later = std::ranges::find(behind.Series(), series.Number, &TSeriesState::Number);
        if (later == behind.Series().end()) continue;
        const TPlaces places = {static_cast<std::size_t>(&series - before.Series().data()),
                                static_cast<std::size_t>(later - behind.Series().begin())};
        if (series.FitRun.Stale && !later->FitRun.Stale) state.FitsRun.push_back(places);
        if (SamePendingFit(before, series, behind, *later)) state.FitsLeftAlone.push_back(places);
    }
}

void TUndoHistory::Absorb() {
    if (m_states.empty()) return;
    TWhole& present = m_states[m_present].Whole;
    present = Take(&present);
}

void TUndoHistory::PutBack() {
    if (m_states.empty()) return;
    const TWhole& state = m_states[m_present].Whole;
    Restore(state, state.Graph.CurrSerIndex());
}

void TUndoHistory::DropRedo() {
    m_states.erase(m_states.begin() + static_cast<std::ptrdiff_t>(m_present) + 1, m_states.end());
}

void TUndoHistory::KeepWithinLimit() {
    while (m_meter->Bytes > m_memoryLimit && m_present > 0) {
        m_states.pop_front();
        --m_present;
    }
    if (m_meter->Bytes > m_memoryLimit) Stop();
}

void TUndoHistory::Undo() {
    if (!CanUndo()) return;
    Absorb();
    const TState& step = m_states[m_present];
    const TKeptFits fits = FitsOf(step.FitsLeftAlone, &TPlaces::Behind, &TPlaces::Before);
    --m_present;
    m_isOpen = false;
    TWhole& state = m_states[m_present].Whole;
    state.Graph.TakeFed(step.Whole.Graph, step.Fed);
    Restore(state, state.Graph.CurrSerIndex());
    PutFits(fits);
    HoldFits(step.FitsRun);
}

/// Of the graph as it is, those that have run.
TUndoHistory::TKeptFits TUndoHistory::FitsOf(const std::vector<TPlaces>& places, std::size_t TPlaces::*here,
                                             std::size_t TPlaces::*there) const {
    TKeptFits fits;
    for (const TPlaces& place : places) {
        const TCurFit& fit = m_graph.Series()[place.*here]->CurveFit();
        if (fit.IsStale()) continue;
        fits.emplace_back(place.*there, std::make_unique<TCurFit>());
        fits.back().second->Assign(&fit);
        fits.back().second->RestoreRunState(fit.RunState());
    }
    return fits;
}

/// Into the state that has just been put back, where they are pending still.
void TUndoHistory::PutFits(const TKeptFits& fits) {
    for (const auto& [place, kept] : fits) {
        TCurFit& fit = m_graph.Series()[place]->CurveFit();
        if (fit.IsPending()) fit.TakeAllOf(*kept);
    }
    if (!fits.empty()) Absorb();
}

/// Of the state that has just been put back.
void TUndoHistory::HoldFits(const std::vector<TPlaces>& places) {
    for (const TPlaces& place : places) {
        TCurFit& fit = m_graph.Series()[place.Before]->CurveFit();
        TFitRunState run = fit.RunState();
        run.Held = run.Stale;
        fit.RestoreRunState(run);
    }
    if (!places.empty()) Absorb();
}

void TUndoHistory::Redo() {
    if (!CanRedo()) return;
    Absorb();
    const TGraphSnapshot& before = m_states[m_present++].Whole.Graph;
    m_isOpen = false;
    TState& step = m_states[m_present];
    const TKeptFits fits = FitsOf(step.FitsLeftAlone, &TPlaces::Before, &TPlaces::Behind);
    step.Whole.Graph.TakeFed(before, step.Fed);
    Restore(step.Whole, step.CurrSerIndex);
    PutFits(fits);
}

int TUndoHistory::StepsFrom(std::uint64_t id) const {
    const auto from = std::ranges::find(m_states, id, &TState::Id);
    if (from == m_states.end()) return static_cast<int>(m_present);
    return std::abs(static_cast<int>(from - m_states.begin()) - static_cast<int>(m_present));
}

} // namespace lumoplot
