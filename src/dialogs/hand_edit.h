// Before the points of a data set that comes from a source are edited by hand.
#pragma once

#include "controls/widgets_export.h"
#include "graph/model/series.h"

class QWidget;

namespace lumoplot {

/// True when the points may be edited: at once for manual data; else the user is asked, and on Yes every row
/// of the source is read (a preview holds only some of them) and the data set is manual from then on. False
/// when the user does not want that or cancels the reading; then nothing has changed. Throws what the source
/// throws.
XYWIDGETS_EXPORT bool MakeManual(TSeries& series, QWidget* window);

/// Reads every row of the data set's source when the data set holds only some of them, as a preview does; its
/// name stays. False when the user cancelled the reading; the data set keeps its points then, as it does on
/// an error. Throws what the source throws.
XYWIDGETS_EXPORT bool ReadEveryRow(TSeries& series, QWidget* window);

} // namespace lumoplot
