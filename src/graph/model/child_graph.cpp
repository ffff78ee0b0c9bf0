#include "graph/model/child_graph.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

// A file may carry any fraction; a widget's bounds may not.
int Pixels(int extent, double fraction) {
    const double pixels = extent * fraction;
    return std::isfinite(pixels) ? static_cast<int>(std::lround(std::clamp(pixels, -32000.0, 32000.0))) : 0;
}

} // namespace

TxyChildGr::TxyChildGr(QWidget* parent) : TxyGraph(parent) {
}

QRect TxyChildGr::PlaceIn(const QSize& parentSize) const {
    const TDimensions& place = *Dimensions();
    return {Pixels(parentSize.width(), place.HorPosition()), Pixels(parentSize.height(), place.VerPosition()),
            std::max(0, Pixels(parentSize.width(), place.HorSize())),
            std::max(0, Pixels(parentSize.height(), place.VerSize()))};
}

void TxyChildGr::FollowParent() {
    if (m_parentGraph && !m_isTakingFractions) setGeometry(PlaceIn(m_parentGraph->size()));
}

void TxyChildGr::TakeFractionsFromBounds() {
    if (!m_parentGraph || m_parentGraph->width() <= 0 || m_parentGraph->height() <= 0) return;
    const double parentWidth = m_parentGraph->width();
    const double parentHeight = m_parentGraph->height();
    m_isTakingFractions = true;
    Dimensions()->SetHorPosition(x() / parentWidth);
    Dimensions()->SetVerPosition(y() / parentHeight);
    Dimensions()->SetHorSize(width() / parentWidth);
    Dimensions()->SetVerSize(height() / parentHeight);
    m_isTakingFractions = false;
}

} // namespace lumoplot
