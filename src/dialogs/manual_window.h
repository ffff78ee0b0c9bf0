// The manual, built into the program: a window with its pages, and the key that opens the right one.
#pragma once

#include "controls/widgets_export.h"

#include <functional>

class QString;
class QWidget;

namespace lumoplot {

/// Shows a page ("general.md", "start.md" for the first one) in the manual's window beside `parent`, which
/// may be a modal dialog. An unknown page shows the first one.
XYWIDGETS_EXPORT void ShowManual(const QString& page, QWidget* parent);

/// From now on F1 in the window shows the page that `page` names then.
XYWIDGETS_EXPORT void OfferManual(QWidget& window, std::function<QString()> page);

} // namespace lumoplot
