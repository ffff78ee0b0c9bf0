#include "session/undo_history.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace lumoplot {

namespace {

/// The data sets whose pending fits have run in between, by their numbers.
std::vector<int> FitsRunBetween(const TGraphSnapshot& before, const TGraphSnapshot& after) {
    std::vector<int> numbers;
    for (const TSeriesState& series : before.Series()) {
        const auto later = std::ranges::find(after.Series(), series.Number, &TSeriesState::Number);
        const bool hasRun = later != after.Series().end() && series.FitRun.Stale && !later->FitRun.Stale;
        if (hasRun) numbers.push_back(series.Number);
    }
    return numbers;
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
        std::vector<int> fits = FitsRunBetween(present.Whole.Graph, now.Graph);
        std::vector<TFedAtStep> fed = now.Graph.FedSince(present.Whole.Graph);
        m_states.push_back({std::move(now), ++m_lastId, currSerIndex, std::move(name), key, std::move(fits),
                            std::move(fed)});
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
    present.FitsRun = FitsRunBetween(before.Graph, now.Graph);
    JoinFed(present.Fed, now.Graph.FedSince(present.Whole.Graph));
    present.Id = ++m_lastId;
    present.Whole = std::move(now);
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
    const std::vector<int> fitsRun = m_states[m_present].FitsRun;
    const TState& undone = m_states[m_present--];
    m_isOpen = false;
    TWhole& state = m_states[m_present].Whole;
    state.Graph.TakeFed(undone.Whole.Graph, undone.Fed);
    Restore(state, state.Graph.CurrSerIndex());
    KeepFitsFromRunning(fitsRun);
}

/// Of the state that has just been put back.
void TUndoHistory::KeepFitsFromRunning(const std::vector<int>& numbers) {
    const auto& states = m_states[m_present].Whole.Graph.Series();
    for (std::size_t i = 0; i < states.size(); ++i) {
        if (std::ranges::find(numbers, states[i].Number) == numbers.end()) continue;
        TCurFit& fit = m_graph.Series()[i]->CurveFit();
        TFitRunState run = fit.RunState();
        run.Stale = false;
        fit.RestoreRunState(run);
    }
}

void TUndoHistory::Redo() {
    if (!CanRedo()) return;
    Absorb();
    const TGraphSnapshot& before = m_states[m_present++].Whole.Graph;
    m_isOpen = false;
    m_states[m_present].Whole.Graph.TakeFed(before, m_states[m_present].Fed);
    Restore(m_states[m_present].Whole, m_states[m_present].CurrSerIndex);
}

int TUndoHistory::StepsFrom(std::uint64_t id) const {
    const auto from = std::ranges::find(m_states, id, &TState::Id);
    if (from == m_states.end()) return static_cast<int>(m_present);
    return std::abs(static_cast<int>(from - m_states.begin()) - static_cast<int>(m_present));
}

} // namespace lumoplot
