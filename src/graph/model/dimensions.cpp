#include "graph/model/dimensions.h"

#include "graph/model/setting_rows.h"

namespace lumoplot {

void TDimensions::ResetToDefaults() {
    ResetSettings(DimensionsRows(), *this);
    Redraw();
}

} // namespace lumoplot
