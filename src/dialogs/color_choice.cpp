#include "dialogs/color_choice.h"

#include "graph/drawing/lines/canvas.h"
#include "graph/model/series_palette.h"

#include <QColorDialog>

namespace lumoplot {
namespace {

/// Once, so that what the user keeps there herself stays.
void OfferPalette() {
    static bool isOffered = false;
    if (std::exchange(isOffered, true)) return;
    int place = 0;
    for (const TColor color : kSeriesColors)
        if (place < QColorDialog::customCount()) QColorDialog::setCustomColor(place++, ToQColor(color));
}

} // namespace

QColor ChooseColor(const QColor& current, QWidget* parent, const QString& title) {
    OfferPalette();
    return QColorDialog::getColor(current, parent, title);
}

} // namespace lumoplot
