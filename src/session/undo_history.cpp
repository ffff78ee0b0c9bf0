#include "session/undo_history.h"

#include <utility>

namespace lumoplot {

void TUndoHistory::Start() {
    Stop();
    m_states.push_back({TGraphSnapshot(m_graph, nullptr, m_meter), ++m_lastId});
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
    TGraphSnapshot now(m_graph, &present.Graph, m_meter);
    if (now == present.Graph) {
        present.Graph = std::move(now);
        return false;
    }
    DropRedo();
    if (m_isOpen && CanUndo() && key && present.Key == key) {
        Join(std::move(now), naming);
    } else {
        const int currSerIndex = now.CurrSerIndex();
        std::string name = naming(present.Graph, now);
        m_states.push_back({std::move(now), ++m_lastId, currSerIndex, std::move(name), key});
        ++m_present;
    }
    m_isOpen = true;
    KeepWithinLimit();
    return true;
}

void TUndoHistory::Join(TGraphSnapshot now, const TNaming& naming) {
    if (now == m_states[m_present - 1].Graph) {
        m_states.pop_back();
        --m_present;
        return;
    }
    TState& present = m_states[m_present];
    present.StepName = naming(m_states[m_present - 1].Graph, now);
    present.Id = ++m_lastId;
    present.Graph = std::move(now);
}

void TUndoHistory::Absorb() {
    if (m_states.empty()) return;
    TGraphSnapshot& present = m_states[m_present].Graph;
    present = TGraphSnapshot(m_graph, &present, m_meter);
}

void TUndoHistory::PutBack() {
    if (m_states.empty()) return;
    const TGraphSnapshot& state = m_states[m_present].Graph;
    state.Restore(m_graph, state.CurrSerIndex());
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
    --m_present;
    m_isOpen = false;
    const TGraphSnapshot& state = m_states[m_present].Graph;
    state.Restore(m_graph, state.CurrSerIndex());
}

void TUndoHistory::Redo() {
    if (!CanRedo()) return;
    Absorb();
    ++m_present;
    m_isOpen = false;
    m_states[m_present].Graph.Restore(m_graph, m_states[m_present].CurrSerIndex);
}

} // namespace lumoplot
