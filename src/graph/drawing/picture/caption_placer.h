// Finds places for the captions of marks: off each other, off labels and the legend, and off lines and data
// as far as there is room.
#pragma once

#include "graph/drawing/picture/crowd.h"

#include <QLineF>
#include <span>

namespace lumoplot {

/// A place that a caption could take, in order of preference.
struct TCaptionPlace {
    QPointF Corner; ///< top left
    /// Not beside what the caption names: a line leads there.
    bool IsAway = false;
};

class TCaptionPlacer {
public:
    /// What is taken from the start: the legend, labels.
    TCaptionPlacer(const TCrowd& crowd, const QRectF& plot, std::vector<QRectF> taken)
        : m_crowd(crowd), m_plot(plot), m_taken(std::move(taken)) {}

    /// Captions keep off the line; those of the mark that it belongs to stand beside it.
    void AddLine(const QLineF& line) { m_lines.push_back(line); }
    /// The best of the places, moved into the plot where it is large enough; it is taken then.
    TCaptionPlace Take(std::span<const TCaptionPlace> places, QSizeF size);

private:
    double CostOf(const QRectF& box) const;
    QPointF Inside(QPointF corner, QSizeF size) const;

    const TCrowd& m_crowd;
    QRectF m_plot;
    std::vector<QRectF> m_taken;
    std::vector<QLineF> m_lines;
};

} // namespace lumoplot
