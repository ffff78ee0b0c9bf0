// Keeps the axes of a graph in step with its data: collects what the drawn data sets cover, scales the axes,
// and tells the graph's listeners what came of it. Belongs to its graph.
#pragma once

#include "graph/model/axis.h"
#include "graph/model/axis_scale.h"
#include "graph/plotted/drawn_extent.h"

#include <array>

namespace lumoplot {

class TxyGraph;

class TGraphScaling {
public:
    explicit TGraphScaling(TxyGraph& graph);

    /// The axes must be scaled anew before the next drawing.
    void SetStale() { m_isStale = true; }
    bool IsStale() const { return m_isStale; }
    /// The last Rescale found no range for an axis.
    bool HasFailed() const { return m_hasFailed; }
    /// Emits the graph's OnLogError, OnTooManyPoints, OnScaleError and OnRescale where there is cause.
    void Rescale();
    void SetPlottedPointLimit(int value) { m_plottedPointLimit = value; }

private:
    std::array<TAxis*, 3> Axes() const;
    void CollectExtents();
    void TellAboutSeries();

    TxyGraph& m_graph;
    TDrawnExtents m_extents;
    std::array<TAxisRange, 3> m_toldRanges; ///< of the last OnRescale
    int m_plottedPointLimit;
    bool m_isStale = false;
    bool m_hasFailed = false;
};

} // namespace lumoplot
