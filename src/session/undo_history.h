// The steps that can be undone and redone on a graph: the states that it went through, each a snapshot that
// shares with its neighbours what did not change. It is told when to look at the graph; what it finds changed
// then becomes a step, whoever has changed it.
#pragma once

#include "session/graph_snapshot.h"

#include <deque>
#include <functional>

namespace lumoplot {

class TUndoHistory {
public:
    static constexpr std::size_t kMemoryLimit = std::size_t{256} << 20;

    explicit TUndoHistory(TxyGraph& graph, std::size_t memoryLimit = kMemoryLimit)
        : m_graph(graph), m_memoryLimit(memoryLimit) {}

    /// The name of a step by what it changed.
    using TNaming = std::function<std::string(const TGraphSnapshot& before, const TGraphSnapshot& after)>;
    /// Steps with the same key that follow each other are one; 0 is never the same.
    using TMergeKey = std::uint64_t;

    /// Forgets all steps and starts with the graph as it is.
    XYGRAPH_EXPORT void Start();
    /// Forgets everything; nothing is recorded until Start.
    XYGRAPH_EXPORT void Stop();
    /// Makes what has changed since the last look a step, behind which nothing can be redone; true when
    /// something has. A step that takes the one before it back to where that began removes it. The oldest
    /// steps are dropped while the states take more memory than the limit; a graph that is larger than that
    /// alone ends the recording.
    XYGRAPH_EXPORT bool Note(const TNaming& naming, TMergeKey mergeKey = 0);
    /// Takes what has changed since the last look into the present state: it belongs to no step.
    XYGRAPH_EXPORT void Absorb();

    bool CanUndo() const { return m_present > 0; }
    bool CanRedo() const { return m_present + 1 < m_states.size(); }
    /// The name of the step that Undo takes back, or Redo does again; empty when there is none.
    std::string UndoName() const { return CanUndo() ? m_states[m_present].StepName : std::string(); }
    std::string RedoName() const { return CanRedo() ? m_states[m_present + 1].StepName : std::string(); }
    /// Puts the state before the last step back, with the data set current that the step was made on. What
    /// has changed since the last look is lost: call Note before.
    XYGRAPH_EXPORT void Undo();
    /// Does the step again that was undone last.
    XYGRAPH_EXPORT void Redo();

    int StepCount() const { return m_states.empty() ? 0 : static_cast<int>(m_states.size()) - 1; }
    std::size_t MemoryUsed() const { return m_meter->Bytes; }

private:
    struct TState {
        TGraphSnapshot Graph;
        int CurrSerIndex;     ///< right behind the step; the snapshot has that before the next one
        std::string StepName; ///< of the step that led here
        TMergeKey MergeKey;
    };

    void DropRedo() {
        m_states.erase(m_states.begin() + static_cast<std::ptrdiff_t>(m_present) + 1, m_states.end());
    }
    void KeepWithinLimit();

    TxyGraph& m_graph;
    std::size_t m_memoryLimit;
    std::shared_ptr<TMemoryMeter> m_meter = std::make_shared<TMemoryMeter>();
    std::deque<TState> m_states; ///< from the oldest on; empty while nothing is recorded
    std::size_t m_present = 0;
    bool m_isOpen = false; ///< the last thing that happened was a step, which the next may join
};

} // namespace lumoplot
