// Names of steps, as they stand behind "Undo" and "Redo" in a tooltip: what has changed, in the words of the
// control that the user has changed it with.
#pragma once

#include "session/graph_snapshot.h"

#include <QString>

class QWidget;

namespace lumoplot {

/// What a control is called on the screen: the caption of a button, or the label beside it without its colon.
/// Empty for one without.
QString CaptionOf(const QWidget& control);

/// "delete data set Run 1", "edit points of Run 1", "change Zero Value of Run 1". `caption` may be empty.
std::string NameOfChange(const TGraphSnapshot& before, const TGraphSnapshot& after, const QString& caption);

} // namespace lumoplot
