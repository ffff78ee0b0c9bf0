// Lists of data sets: a picture of how each is drawn, and a way to find one by typing a part of its name.
#pragma once

#include "controls/widgets_export.h"

#include <QIcon>

class QComboBox;

namespace lumoplot {

class TSeries;

/// Its line and a point in their colours; nothing for what is not shown.
XYWIDGETS_EXPORT QIcon SeriesIcon(const TSeries& series);

/// From now on a click on the box, Space, F4 and Alt+Down open its entries with an edit above them: what is
/// typed there leaves the entries that contain it. Choosing one is told as by the box itself.
XYWIDGETS_EXPORT void OfferFilter(QComboBox& box);

} // namespace lumoplot
