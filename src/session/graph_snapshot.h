// The state of a graph at one moment, kept in memory so that it can be put back exactly: settings, data sets
// with their points and what is known of their sources and fits, marks, child graphs, and the views that the
// user can go back to. Snapshots taken one after the other share what has not changed between them. None
// changes any more, so that any thread reads it.
#pragma once

#include "data/points/point_snapshot.h"
#include "fit/definition/cur_fit.h"
#include "graph/model/graph.h"
#include "graph/mouse/graph_zoom.h"
#include "stream/items.h"

#include <memory>
#include <string>
#include <vector>

namespace lumoplot {

/// Bytes that several snapshots share and that count into a meter.
class TSharedBytes {
public:
    TSharedBytes(TBytes bytes, std::shared_ptr<TMemoryMeter> meter)
        : m_bytes(std::move(bytes)), m_cost(std::move(meter), sizeof(*this) + m_bytes.capacity()) {}

    const TBytes& Bytes() const { return m_bytes; }

private:
    TBytes m_bytes;
    TMeteredBytes m_cost;
};

/// One data set of a graph.
struct TSeriesState {
    int Number = 0; ///< SeriesIndex; Restore numbers anew
    std::string Name;
    std::shared_ptr<const TSharedBytes> Record; ///< all that a file holds of the data set but its points
    std::shared_ptr<const TPointSnapshot> Points;
    TSeriesExtents Extents;
    TSourceRows SourceRows;
    TTextWishes TextWishes;
    TFitRunState FitRun;
    /// The definition of a fit that the graph is to run; null where none is pending.
    std::shared_ptr<const TSharedBytes> PendingFit;
    bool IsThinned = false;
    bool NeedsReload = false;
    bool RegressionStale = false;
    bool UsesXAxisSeries = false;
    bool IsSamplingChosen = false;
    std::uint64_t FeedId = 0;    ///< of the link that feeds the data set
    std::uint64_t DataStamp = 0; ///< of the data set when the state was taken

    /// What a file holds is the same.
    bool SameContent(const TSeriesState& other) const;
    /// The same for a user: what only waits to be worked out anew is not looked at.
    bool operator==(const TSeriesState& other) const;
};

/// A data set that a link feeds, right behind a step.
struct TFedAtStep {
    std::uint64_t FeedId = 0;
    std::int32_t LastId = 0; ///< of its points
    bool IsEdited = false;   ///< the step has changed its points
};

class TGraphSnapshot {
public:
    /// Of the graph as it is. What is as in `earlier` (may be null) is shared with it.
    TGraphSnapshot(const TxyGraph& graph, const TGraphSnapshot* earlier, std::shared_ptr<TMemoryMeter> meter);

    /// Gives the graph this state. Data sets that have it already are not touched; the data sets are 1, 2,
    /// 3, … afterwards, and the current one is `currSerIndex`.
    void Restore(TxyGraph& graph, int currSerIndex) const;

    /// The data sets that links feed, after the step that led from `before` to this state.
    std::vector<TFedAtStep> FedSince(const TGraphSnapshot& before) const;
    /// Takes over what links have fed since that step and `present` has, but no other points.
    void TakeFed(const TGraphSnapshot& present, const std::vector<TFedAtStep>& step);

    /// All data sets, in order.
    const std::vector<TSeriesState>& Series() const { return m_series; }
    const std::map<int, TGraphMark>& Marks() const { return m_marks.Marks(); }
    int CurrentMark() const { return m_marks.CurrentID(); }
    /// Appearance, dimensions, the three axes and the legend, each as the entries of its section, without the
    /// data sets that are current and X.
    const std::vector<std::shared_ptr<const TSharedBytes>>& Settings() const { return m_settings; }
    const std::string& DataDirectory() const { return m_dataDirectory; }
    int XAxisSerIndex() const { return m_xAxisSerIndex; }
    const std::vector<TGraphSnapshot>& Children() const { return m_children; }
    /// CurrSerIndex when it was taken.
    int CurrSerIndex() const { return m_currSerIndex; }
    /// The same but for the current data set, the current mark and the views to go back to.
    bool operator==(const TGraphSnapshot& other) const;

private:
    bool SameSettings(const TGraphSnapshot& other) const;
    void RestoreSettings(TxyGraph& graph) const;
    void RestoreSeries(TxyGraph& graph) const;
    void RestoreChildren(TxyGraph& graph) const;

    std::vector<std::shared_ptr<const TSharedBytes>> m_settings; ///< in the order of the file's sections
    std::string m_dataDirectory;
    int m_xAxisSerIndex;
    int m_currSerIndex;
    std::vector<TSeriesState> m_series;
    TMarkChain m_marks;
    std::vector<TGraphView> m_views; ///< that the user can go back to
    std::vector<TGraphSnapshot> m_children;
    std::shared_ptr<TMemoryMeter> m_meter;
    TMeteredBytes m_cost; ///< of what is not shared
};

} // namespace lumoplot
