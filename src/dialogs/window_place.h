// Where the small windows of this layer belong.
#pragma once

class QWidget;

namespace lumoplot {

/// The application's main window: the active window, else the first one that is visible; null without any.
QWidget* MainWindow();
/// Moves a window to the middle of its owner's screen.
void CentreOnScreen(QWidget& window);

} // namespace lumoplot
