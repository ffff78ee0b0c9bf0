// When a graph runs the curve fits of its data sets. Belongs to its graph.
#pragma once

namespace lumoplot {

class TxyGraph;

class TFitSchedule {
public:
    explicit TFitSchedule(TxyGraph& graph) : m_graph(graph) {}

    /// Runs each pending fit once, on every row of its source; one that is pending again afterwards, because
    /// of a handler of its changes, waits for the next call. True when any ran and the graph is still there.
    /// Does nothing inside itself.
    bool RunPending();
    /// Runs pending fits when the events that wait have been handled: never inside a paint event, as a fit
    /// may take long and show its progress.
    void RunPendingSoon();

private:
    TxyGraph& m_graph;
    bool m_isRunning = false;
    bool m_isScheduled = false;
};

} // namespace lumoplot
