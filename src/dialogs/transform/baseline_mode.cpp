#include "dialogs/transform/baseline_mode.h"

#include <algorithm>
#include <utility>

namespace lumoplot {
namespace {

double XAt(const TPlotMap& map, QPointF place) {
    return map.X.Value(std::clamp(place.x(), map.Plot.left(), map.Plot.right()));
}

double YAt(const TPlotMap& map, QPointF place) {
    return map.Y.Value(std::clamp(place.y(), map.Plot.top(), map.Plot.bottom()));
}

} // namespace

QCursor TBaselineMode::CursorAt(const TPlotMap& map, QPointF place, bool isDragging) const {
    if (isDragging) return Qt::ClosedHandCursor;
    if (!map.Plot.contains(place)) return Qt::ArrowCursor;
    return m_keeper.PlaceAt(map, place) ? Qt::OpenHandCursor : Qt::CrossCursor;
}

bool TBaselineMode::Press(const TPlotMap& map, const TMouseMoment& moment) {
    if (!map.Plot.contains(moment.Place)) return false;
    const auto place = m_keeper.PlaceAt(map, moment.Place);
    if (moment.Button == Qt::RightButton && place) m_keeper.RemovePlace(*place);
    if (moment.Button != Qt::LeftButton) return false;
    const int number = place ? *place : m_keeper.AddPlace(XAt(map, moment.Place), YAt(map, moment.Place));
    m_drag = TDragState{map, number, !place, moment.Place};
    return true;
}

void TBaselineMode::Drag(const TMouseMoment& moment) {
    if (m_drag && moment.Place != m_drag->Start)
        m_keeper.MovePlace(m_drag->Place, XAt(m_drag->Map, moment.Place), YAt(m_drag->Map, moment.Place));
}

void TBaselineMode::Release(const TMouseMoment& moment) {
    Drag(moment);
    m_drag.reset();
}

void TBaselineMode::Cancel() {
    const auto drag = std::exchange(m_drag, std::nullopt);
    if (!drag) return;
    if (drag->IsNew) return m_keeper.RemovePlace(drag->Place);
    m_keeper.MovePlace(drag->Place, XAt(drag->Map, drag->Start), YAt(drag->Map, drag->Start));
}

} // namespace lumoplot
