#include "graph/model/settings.h"

#include "graph/model/child_graph.h"
#include "graph/model/setting_rows.h"

namespace lumoplot {

void TDimensions::StorePlace(double& field, double value) {
    if (!Store(field, value)) return;
    if (auto* child = qobject_cast<TxyChildGr*>(&Graph())) child->FollowParent();
}

void TDimensions::ResetToDefaults() {
    ResetSettings(DimensionsRows(), *this);
    Redraw();
}

} // namespace lumoplot
