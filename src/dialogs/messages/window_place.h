// Where windows belong, and how large they may be.
#pragma once

#include "controls/widgets_export.h"

#include <QSize>

class QWidget;

namespace lumoplot {

/// The application's main window: the active window, else the first one that is visible; null without any.
QWidget* MainWindow();
/// What a window may take of the screen that it is on: all but a window manager's frame.
XYWIDGETS_EXPORT QSize RoomOnScreen(const QWidget& window);
/// Moves a window to the middle of its owner's screen.
void CentreOnScreen(QWidget& window);

} // namespace lumoplot
