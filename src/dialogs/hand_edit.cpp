#include "dialogs/hand_edit.h"

#include "data/series/ds_info.h"
#include "dialogs/messages/progress_window.h"
#include "graph/loading/source_loading.h"
#include "graph/model/graph.h"
#include "support/message_sink.h"
#include "support/message_text.h"

namespace lumoplot {
namespace {

constexpr std::size_t kLongestShownName = 60;

} // namespace

bool ReadEveryRow(TSeries& series, QWidget*) {
    if (!series.HoldsSomeRows()) return true;
    TProgressWindow progress;
    return LoadEveryRow(series, progress);
}

bool MakeManual(TSeries& series, QWidget* window) {
    TDSInfo& source = series.DataSourceInfo();
    if (source.Kind() == TSourceKind::Manual) return true;
    const std::string question = "DataSet \"" + ShownLine(series.SeriesName(), kLongestShownName) +
                                 "\" is loaded from " +
                                 (source.SourceName().empty() ? "a source" : ShownLine(source.SourceName())) +
                                 ". When you change its points here it keeps them, and is not read from "
                                 "there again. Change them?";
    if (!AskYesNo(question)) return false;
    if (!ReadEveryRow(series, window)) return false;
    source.SetKind(TSourceKind::Manual);
    source.SetNeedsReload(false);
    series.SetThinned(false);
    return true;
}

} // namespace lumoplot
