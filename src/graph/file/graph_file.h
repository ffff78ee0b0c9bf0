// One data set as files hold it (also the content of a
// data-set file). docs/graph-file.md describes the layout.
#pragma once

#include "graph/model/graph.h"
#include "graph/model/setting_rows.h"
#include "support/replace_file.h"

namespace lumoplot {

/// What TxyGraph::SaveToStream writes.
void WriteGraph(TBytes& bytes, const TxyGraph& graph, TPoints points);
/// A data set's Series section, its record and its point block.
void WriteSeries(TxyWriter& writer, const TSeries& series, TPoints points);
/// Reads what WriteSeries wrote; the points are added to those that the data set has.
void ReadSeries(TxyReader& reader, TSeries& series);

/// The content of a data-set file.
XYGRAPH_EXPORT TBytes SeriesBytes(const TSeries& series);
/// Replaces the points and settings of the data set by what SeriesBytes gave. Throws EStreamError "NAME is
/// not a data-set file"; the data set is then unchanged.
XYGRAPH_EXPORT void LoadSeriesFromBytes(TSeries& series, const TBytes& bytes, const std::string& name);

/// A data-set file (.lds): exactly what WriteSeries writes, with points. The file is replaced whole.
inline void SaveSeriesToFile(const TSeries& series, const std::string& name) {
    ReplaceFile(name, SeriesBytes(series));
}
/// Replaces the points and settings of the data set by the file's. Throws EFileError, or EStreamError
/// "NAME is not a data-set file. ADVICE"; the data set is then unchanged.
XYGRAPH_EXPORT void LoadSeriesFromFile(TSeries& series, const std::string& name);

} // namespace lumoplot
