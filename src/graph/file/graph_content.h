// Everything that makes up a graph, read from one graph and put into another one of the same process:
// settings, data sets with their points as they stand, what is known of their sources, fits and regressions,
// marks and child graphs. It is complete before a target is touched.
#pragma once

#include "data/series/series_data.h"
#include "fit/definition/cur_fit.h"
#include "graph/model/graph.h"

#include <string>
#include <vector>

namespace lumoplot {

/// One data set. Its settings travel as the record that files hold, its data as they are in memory.
class TSeriesContent {
public:
    explicit TSeriesContent(const TSeries& series);
    int Number() const { return m_number; }
    bool UsesXAxisSeries() const { return m_usesXAxisSeries; }
    /// Gives the content to a data set, whose number stays.
    void MoveInto(TSeries& series) &&;

private:
    int m_number;
    bool m_usesXAxisSeries;
    TBytes m_record;
    TSeriesData m_data;
    TSeriesSource m_source;
    TFitRunState m_fitRun;
};

class TGraphContent {
public:
    explicit TGraphContent(const TxyGraph& graph);
    /// Replaces the content of a graph. What is the graph's own (its listeners, its size, its holder) stays.
    void MoveInto(TxyGraph& graph) &&;

private:
    void MoveSettingsInto(TxyGraph& graph) const;
    void MovePartsInto(TxyGraph& graph);

    TBytes m_settings; ///< the sections of all settings, each with its end
    std::string m_errorCaption;
    std::vector<TSeriesContent> m_series;
    TMarkChain m_marks;
    std::vector<TGraphContent> m_children;
    int m_xAxisSerIndex;
    int m_currSerIndex;
};

/// Replaces the content of a graph. Where that ends half-way, for want of memory, the graph is put back to
/// what it was, and the exception goes on.
void ReplaceContent(TxyGraph& graph, TGraphContent content);

} // namespace lumoplot
