// The platform's colour dialog, with the colours that data sets get among those it offers.
#pragma once

#include "controls/widgets_export.h"

#include <QColor>

class QString;
class QWidget;

namespace lumoplot {

/// The colour that the user chose; invalid when she cancelled.
XYWIDGETS_EXPORT QColor ChooseColor(const QColor& current, QWidget* parent, const QString& title);

} // namespace lumoplot
