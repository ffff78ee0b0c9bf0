#include "graph/source_loading.h"

#include "data/ds_info.h"
#include "graph/graph_file.h"
#include "support/errors.h"
#include "support/message_sink.h"

#include <QDir>
#include <QFileInfo>

namespace lumoplot {
namespace {

// A data-set file brings its own settings; what says where the points come from stays.
bool LoadDataFile(TSeries& series) {
    const TDSInfo source = series.DataSourceInfo();
    LoadSeriesFromFile(series, SourceFileOf(series));
    series.DataSourceInfo() = source;
    series.DataSourceInfo().SetNeedsReload(false);
    return true;
}

} // namespace

std::string SourceFileOf(const TSeries& series) {
    const QString name = QString::fromStdString(series.DataSourceInfo().SourceName());
    const QString directory = QString::fromStdString(series.Graph().Appearance()->DataDirectory());
    if (name.isEmpty() || directory.isEmpty() || QFileInfo(name).isAbsolute() || QFileInfo::exists(name))
        return name.toStdString();
    return QDir(directory).filePath(name).toStdString();
}

bool LoadFromSource(TSeries& series, TProgress& progress) {
    switch (series.DataSourceInfo().Kind()) {
    case TSourceKind::DataFile: return LoadDataFile(series);
    case TSourceKind::Manual:
    default: static_cast<void>(progress); return true;
    }
}

void LoadThinnedAgain(TxyGraph& graph, const TxyGraph& edited) {
    const std::size_t count = std::min(graph.Series().size(), edited.Series().size());
    for (std::size_t i = 0; i < count; ++i) {
        if (!edited.Series()[i]->IsThinned()) continue;
        TSilentProgress progress;
        try {
            LoadFromSource(*graph.Series()[i], progress);
        } catch (const ELumoError& error) {
            ShowMessage(error.what(), TMessageKind::Error);
        }
    }
}

} // namespace lumoplot
