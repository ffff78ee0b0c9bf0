// The states that a graph went through, each a snapshot that shares with its neighbours what did not change,
// and the names of the steps between them. It is told when to look at the graph; TGraphSession tells it.
#pragma once

#include "session/graph_snapshot.h"
#include "session/merge_key.h"
#include "session/side_state.h"

#include <deque>
#include <functional>
#include <utility>

namespace lumoplot {

class TUndoHistory {
public:
    static constexpr std::size_t kMemoryLimit = std::size_t{256} << 20;

    explicit TUndoHistory(TxyGraph& graph, std::size_t memoryLimit = kMemoryLimit)
        : m_graph(graph), m_memoryLimit(memoryLimit) {}

    /// What is kept beside the graph; set while nothing is recorded.
    void SetSide(TSideAccess side) { m_side = std::move(side); }

    /// The name of a step by what it changed.
    using TNaming = std::function<std::string(const TGraphSnapshot& before, const TGraphSnapshot& after)>;

    /// Forgets all steps and starts with the graph as it is.
    void Start();
    /// Forgets everything; nothing is recorded until Start.
    void Stop();
    bool IsRecording() const { return !m_states.empty(); }

    /// Makes what has changed since the last look a step, behind which nothing can be redone; true when
    /// something has. A step with the key of the one before it joins that, and removes it when it takes it
    /// back to where it began. The oldest steps are dropped while the states take more memory than the limit;
    /// a graph that is larger than that alone ends the recording.
    bool Note(const TNaming& naming, TMergeKey key = {});
    bool Note(const std::string& name, TMergeKey key = {}) {
        return Note([&name](const TGraphSnapshot&, const TGraphSnapshot&) { return name; }, key);
    }
    /// Takes what has changed since the last look into the present state: it belongs to no step of its own.
    void Absorb();
    /// Links have fed points. AbsorbFed takes these, and what else has changed, into the present state.
    void NoteFed() { m_isFed = true; }
    void AbsorbFed() {
        if (std::exchange(m_isFed, false)) Absorb();
    }
    /// Puts back what the graph was at the last look.
    void PutBack();
    /// The next step joins none.
    void EndMerging() { m_isOpen = false; }

    bool CanUndo() const { return m_present > 0; }
    bool CanRedo() const { return m_present + 1 < m_states.size(); }
    /// The name of the step that Undo takes back, or Redo does again; empty when there is none.
    std::string UndoName() const { return CanUndo() ? m_states[m_present].StepName : std::string(); }
    std::string RedoName() const { return CanRedo() ? m_states[m_present + 1].StepName : std::string(); }
    /// Puts the state before the last step back, with the data set current that the step was made on. What
    /// has changed since the last look goes with the step that it followed. A fit that the step has run is
    /// held afterwards: it would run again where it was taken back. One that was pending before the step and
    /// behind it, and has run since, keeps what it found when the step left alone what it depends on.
    void Undo();
    /// Does the step again that was undone last. Fits are kept likewise.
    void Redo();

    /// A number of the present state that no other state has or had; 0 while nothing is recorded.
    std::uint64_t PresentId() const { return m_states.empty() ? 0 : m_states[m_present].Id; }
    int StepCount() const { return m_states.empty() ? 0 : static_cast<int>(m_states.size()) - 1; }
    /// How often Undo can be called.
    int StepsBack() const { return static_cast<int>(m_present); }
    /// The present state, as it was at the last look; null while nothing is recorded.
    const TGraphSnapshot* Present() const {
        return m_states.empty() ? nullptr : &m_states[m_present].Whole.Graph;
    }
    /// What belongs to it beside the graph.
    TSideStatePtr PresentSide() const {
        return m_states.empty() || !m_states[m_present].Whole.Side ? nullptr
                                                                   : m_states[m_present].Whole.Side->State;
    }
    bool IsTyping() const { return m_side.IsTyping && m_side.IsTyping(); }
    /// With what is being typed; only while it is.
    TSideStatePtr TypedSide() const { return m_side.TakeTyped(); }
    /// The number of steps between the present state and the one with that number, in either direction; when
    /// that is gone, all steps that can be undone.
    int StepsFrom(std::uint64_t id) const;
    std::size_t MemoryUsed() const { return m_meter->Bytes; }

private:
    struct TCountedSide {
        TSideStatePtr State;
        TMeteredBytes Cost;
    };
    /// All that a step may change.
    struct TWhole {
        TGraphSnapshot Graph;
        std::shared_ptr<const TCountedSide> Side;

        bool operator==(const TWhole& other) const { return Graph == other.Graph && Side == other.Side; }
    };
    /// A data set by its places before a step and behind it.
    struct TPlaces {
        std::size_t Before;
        std::size_t Behind;
    };
    struct TState {
        TWhole Whole;
        std::uint64_t Id;
        int CurrSerIndex = 0;      ///< right behind the step; the snapshot has that before the next one
        std::string StepName = {}; ///< of the step that led here
        TMergeKey Key = {};
        std::vector<TPlaces> FitsRun = {};       ///< by that step
        std::vector<TPlaces> FitsLeftAlone = {}; ///< pending before and behind that step, and the same
        std::vector<TFedAtStep> Fed = {};        ///< behind that step
    };
    /// Copies of fits that are to go on in another state, by the places of their data sets there.
    using TKeptFits = std::vector<std::pair<std::size_t, std::unique_ptr<TCurFit>>>;

    TWhole Take(const TWhole* earlier) const;
    std::shared_ptr<const TCountedSide> TakeSide(const TWhole* earlier) const;
    void Restore(const TWhole& whole, int currSerIndex);
    void DropRedo();
    void KeepWithinLimit();
    void Join(TWhole now, const TNaming& naming);
    static void NoteFits(const TGraphSnapshot& before, TState& state);
    TKeptFits FitsOf(const std::vector<TPlaces>& places, std::size_t TPlaces::*here,
                     std::size_t TPlaces::*there) const;
    void PutFits(const TKeptFits& fits);
    void HoldFits(const std::vector<TPlaces>& places);

    TxyGraph& m_graph;
    TSideAccess m_side;
    std::size_t m_memoryLimit;
    std::shared_ptr<TMemoryMeter> m_meter = std::make_shared<TMemoryMeter>();
    std::deque<TState> m_states; ///< from the oldest on; empty while nothing is recorded
    std::size_t m_present = 0;
    std::uint64_t m_lastId = 0;
    bool m_isFed = false;  ///< since the last look
    bool m_isOpen = false; ///< the last thing that happened was a step, which the next may join
};

} // namespace lumoplot
