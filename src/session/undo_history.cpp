#include "session/undo_history.h"

#include <utility>

namespace lumoplot {

void TUndoHistory::Start() {
    Stop();
    m_states.push_back({TGraphSnapshot(m_graph, nullptr, m_meter), 0, {}, 0});
    KeepWithinLimit();
}

void TUndoHistory::Stop() {
    m_states.clear();
    m_present = 0;
    m_isOpen = false;
}

bool TUndoHistory::Note(const TNaming& naming, TMergeKey mergeKey) {
    if (m_states.empty()) return false;
    TState& present = m_states[m_present];
    TGraphSnapshot now(m_graph, &present.Graph, m_meter);
    if (now == present.Graph) {
        present.Graph = std::move(now);
        return false;
    }
    DropRedo();
    const bool joins = m_isOpen && CanUndo() && mergeKey != 0 && present.MergeKey == mergeKey;
    if (!joins) {
        const std::string name = naming(present.Graph, now);
        const int currSerIndex = now.CurrSerIndex();
        m_states.push_back({std::move(now), currSerIndex, name, mergeKey});
        ++m_present;
    } else if (now == m_states[m_present - 1].Graph) {
        m_states.pop_back();
        --m_present;
    } else {
        present.StepName = naming(m_states[m_present - 1].Graph, now);
        present.Graph = std::move(now);
    }
    m_isOpen = true;
    KeepWithinLimit();
    return true;
}

void TUndoHistory::Absorb() {
    if (m_states.empty()) return;
    TGraphSnapshot& present = m_states[m_present].Graph;
    present = TGraphSnapshot(m_graph, &present, m_meter);
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
    --m_present;
    m_isOpen = false;
    const TGraphSnapshot& state = m_states[m_present].Graph;
    state.Restore(m_graph, state.CurrSerIndex());
}

void TUndoHistory::Redo() {
    if (!CanRedo()) return;
    ++m_present;
    m_isOpen = false;
    m_states[m_present].Graph.Restore(m_graph, m_states[m_present].CurrSerIndex);
}

} // namespace lumoplot
