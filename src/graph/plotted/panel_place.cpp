#include "graph/plotted/panel_place.h"

#include "graph/model/settings.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace lumoplot {
namespace {

constexpr double kNear = 2e-3; // of the parent's size; a panel that was dragged lies on whole pixels

bool IsNear(double a, double b) {
    return std::abs(a - b) <= kNear;
}

} // namespace

bool IsStacked(const TxyChildGr& child) {
    const TDimensions& place = *child.Dimensions();
    return IsNear(place.HorPosition(), 0) && IsNear(place.HorSize(), 1) && place.VerSize() > kNear;
}

QRectF BesidePanels(const TxyGraph& graph, const QRectF& rectangle) {
    std::vector<const TDimensions*> places;
    for (const TxyChildGr* child : graph.ChildGraphs())
        if (IsStacked(*child)) places.push_back(child->Dimensions());
    double top = 0;
    double bottom = 1;
    std::ranges::sort(places, {}, &TDimensions::VerPosition);
    for (const TDimensions* place : places)
        if (IsNear(place->VerPosition(), top)) top = place->VerPosition() + place->VerSize();
    for (auto place = places.rbegin(); place != places.rend(); ++place)
        if (IsNear((*place)->VerPosition() + (*place)->VerSize(), bottom)) bottom = (*place)->VerPosition();
    if (!(bottom - top > kNear)) return rectangle;
    return {rectangle.left(), rectangle.top() + top * rectangle.height(), rectangle.width(),
            (bottom - top) * rectangle.height()};
}

} // namespace lumoplot
