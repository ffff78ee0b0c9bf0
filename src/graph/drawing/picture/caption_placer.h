// Finds places for the captions of marks: off each other, off labels and the legend, and off lines and data
// as far as there is room. A caption that stands away from its mark has a leader; leaders keep off captions
// and off each other.
#pragma once

#include "graph/drawing/picture/crowd.h"

#include <QLineF>
#include <functional>
#include <optional>
#include <span>

namespace lumoplot {

/// A place that a caption could take, in order of preference.
struct TCaptionPlace {
    QPointF Corner; ///< top left
    /// Not beside what the caption names: a line leads there.
    bool IsAway = false;
};

struct TCaption {
    QSizeF Size;
    std::vector<TCaptionPlace> Places;                 ///< at least one
    std::function<QPointF(const QRectF&)> LeaderStart; ///< on the mark, for a caption in that box
};

struct TPlacedCaption {
    QRectF Box;
    std::optional<QLineF> Leader; ///< from the mark to the nearest place of the box
};

class TCaptionPlacer {
public:
    /// What is taken from the start: the legend, labels.
    TCaptionPlacer(const TCrowd& crowd, const QRectF& plot, std::vector<QRectF> taken)
        : m_crowd(crowd), m_plot(plot), m_taken(std::move(taken)) {}

    /// Captions keep off the line; those of the mark that it belongs to stand beside it.
    void AddLine(const QLineF& line) { m_lines.push_back(line); }
    /// The best place of each caption, moved into the plot where it is large enough.
    std::vector<TPlacedCaption> Place(std::span<const TCaption> captions);

private:
    TPlacedCaption BestOf(const TCaption& caption) const;
    TPlacedCaption At(const TCaptionPlace& place, const TCaption& caption) const;
    double CostOf(const TPlacedCaption& caption) const;
    QPointF Inside(QPointF corner, QSizeF size) const;

    const TCrowd& m_crowd;
    QRectF m_plot;
    std::vector<QRectF> m_taken;
    std::vector<QLineF> m_lines;
    std::vector<TPlacedCaption> m_others; ///< while a caption looks for its place
};

} // namespace lumoplot
