#include "graph/model/settings.h"

#include "graph/model/setting_rows.h"

namespace lumoplot {

void TLegend::ResetToDefaults() {
    ResetSettings(LegendRows(), *this);
    Redraw();
}

} // namespace lumoplot
