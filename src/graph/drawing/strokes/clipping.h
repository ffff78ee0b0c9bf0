// What of a straight line lies in a rectangle.
#pragma once

#include <QPointF>
#include <QRectF>
#include <optional>
#include <utility>

namespace lumoplot {

/// The ends of the part inside the rectangle; nothing when the line does not meet it.
std::optional<std::pair<QPointF, QPointF>> ClippedSegment(QPointF a, QPointF b, const QRectF& rectangle);

} // namespace lumoplot
