// The pictures behind graphs, loaded once and kept. A file that is missing or no picture is reported once,
// never while something is painted, and drawn without.
#pragma once

#include <QImage>
#include <string>

namespace lumoplot {

/// The picture in the file of that name (any format that the toolkit reads), or a null image for none. A file
/// that has changed is read again.
QImage BackgroundPicture(const std::string& fileName);

/// Tells through the message sink which files could not be read since the last time: "Can not read picture
/// NAME". Runs by itself from the event loop; code that draws without one calls it.
void ReportBrokenPictures();

} // namespace lumoplot
