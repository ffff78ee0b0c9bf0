// Pictures of the program without a person at it: the plot, the window and the data editor.
#pragma once

#include <QStringList>

namespace lumoplot {

class TMainWindow;

/// Saves the pictures into the folder, which is made when it is missing, and returns their paths. The editor
/// is opened on the graph, pictured page by page and cancelled. Throws EFileError for a file that can not be
/// written.
QStringList SaveScreenShots(TMainWindow& window, const QString& folder);

} // namespace lumoplot
