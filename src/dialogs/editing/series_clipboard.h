// Data sets on their way between programs: as text with tabs for editors, as an HTML table for spreadsheets,
// and whole, as a data-set file holds them, for programs of this system.
#pragma once

#include "controls/widgets_export.h"
#include "graph/model/series.h"

class QMimeData;

namespace lumoplot {

/// The data set in each of the forms; the caller owns what is returned. Text and table are made when they are
/// asked for, of the points as they are now.
XYWIDGETS_EXPORT QMimeData* SeriesToMime(const TSeries& series);

XYWIDGETS_EXPORT bool MimeHoldsSeries(const QMimeData& data);

/// Adds a data set of the first form that is there: the whole one, the first table, the text, which is
/// divided as it is found. Returns its number. Throws what reading them throws; the graph is then as it was.
XYWIDGETS_EXPORT int AddSeriesFromMime(TxyGraph& graph, const QMimeData& data);

} // namespace lumoplot
