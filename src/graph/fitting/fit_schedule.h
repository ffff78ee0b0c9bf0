// When a graph runs the curve fits and the long regressions of its data sets. Belongs to its graph.
#pragma once

namespace lumoplot {

class TSeries;
class TxyGraph;

/// The regression of the data set has to be worked out anew and takes longer than a frame may: a picture
/// shows the data set without it, and it follows with the pending fits.
bool HasLongRegression(const TSeries& series);

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
