// The window for all settings of a graph, with a picture that follows each change. It works on a copy; OK
// makes what was changed one step.
#pragma once

#include "controls/widgets_export.h"
#include "graph/model/graph.h"

#include <QString>

namespace lumoplot {

/// Shows the settings of a graph; double-clicked titles, axes and legends open on their page. True when the
/// user has changed something, which is then one step of the graph's session. "Save as Style" begins in
/// `styleFolder`.
XYWIDGETS_EXPORT bool EditGraphSettings(QWidget* owner, TxyGraph& graph, const QString& styleFolder = {});

} // namespace lumoplot
