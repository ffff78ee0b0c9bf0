#include "dialogs/hand_edit.h"

#include "data/series/ds_info.h"
#include "dialogs/progress_window.h"
#include "graph/loading/source_loading.h"
#include "graph/model/graph.h"
#include "support/message_sink.h"

#include <limits>

namespace lumoplot {
namespace {

/// Lets a graph read every row for a while.
class TWholeBudget {
public:
    explicit TWholeBudget(TxyGraph& graph)
        : m_graph(graph), m_inEditor(graph.EditorMode()),
          m_budget((graph.SetEditorMode(false), graph.PointBudget())) {
        graph.SetPointBudget(std::numeric_limits<int>::max());
    }
    ~TWholeBudget() {
        m_graph.SetPointBudget(m_budget);
        m_graph.SetEditorMode(m_inEditor);
    }
    TWholeBudget(const TWholeBudget&) = delete;
    TWholeBudget& operator=(const TWholeBudget&) = delete;

private:
    TxyGraph& m_graph;
    bool m_inEditor;
    int m_budget;
};

bool HoldsSomeRows(const TSeries& series) {
    const TDSInfo& source = series.DataSourceInfo();
    return series.IsThinned() || (source.AutoRowHitFreq() && source.RowSamplingFrequency() > 1);
}

} // namespace

bool ReadEveryRow(TSeries& series, QWidget*) {
    if (!HoldsSomeRows(series)) return true;
    const TWholeBudget budget(series.Graph());
    const std::string name = series.SeriesName();
    TProgressWindow progress;
    const bool isLoaded = LoadFromSource(series, progress);
    series.SetSeriesName(name);
    return isLoaded;
}

bool MakeManual(TSeries& series, QWidget* window) {
    TDSInfo& source = series.DataSourceInfo();
    if (source.Kind() == TSourceKind::Manual) return true;
    const std::string question = "DataSet \"" + series.SeriesName() + "\" is loaded from " +
                                 (source.SourceName().empty() ? "a source" : source.SourceName()) +
                                 ". Edited by hand, it is not loaded from there any more. Edit it?";
    if (!AskYesNo(question)) return false;
    if (!ReadEveryRow(series, window)) return false;
    source.SetKind(TSourceKind::Manual);
    source.SetNeedsReload(false);
    series.SetThinned(false);
    return true;
}

} // namespace lumoplot
