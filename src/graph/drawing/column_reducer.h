// Reduces a long line to what a device can show: of neighbouring points in one pixel column only the first,
// the lowest, the highest and the last remain, in their order. A thin line through them covers the pixels of
// the line through all points.
#pragma once

#include "graph/drawing/polylines.h"

#include <span>

namespace lumoplot {

/// Neighbouring points between a first and a last one, with the extremes of their Y, all in device pixels.
struct TColumnPart {
    QPointF First;
    QPointF Last;
    QPointF Extremes[2];          ///< the lowest and the highest, in either order; X only where IsExtreme(Y)
    std::size_t ExtremePlaces[2]; ///< counted from the first point
    std::size_t Count;
};

class XYGRAPH_EXPORT TColumnReducer {
public:
    /// Points left of `firstX` count as one column, as do those right of `lastX` (device pixels).
    TColumnReducer(double firstX, double lastX);

    /// Takes the next points, in device pixels. Where X or Y is not-a-number the line has a gap.
    void Add(std::span<const double> x, std::span<const double> y);
    /// True when points from one X to the other, ascending or descending between them, lie in one column.
    bool IsOneColumn(double firstX, double lastX) const;
    /// True for the X of a point that belongs to the column of the point before it.
    bool IsInColumn(double x) const { return m_isOpen && x >= m_columnStart && x < m_columnEnd; }
    /// False when a point of the open column with that Y would change nothing but its last point.
    bool IsExtreme(double y) const { return y < m_low.Y || y > m_high.Y; }
    /// Takes the next points in one step. All of them are places and lie in one column.
    void AddPart(const TColumnPart& part);
    /// All lines so far; the reducer is empty again.
    TPolylines Finish();

private:
    struct TExtreme {
        double X;
        double Y;
        std::size_t Order; ///< counts the points of the column
    };

    double ColumnStart(double x) const;
    double ColumnEnd(double x) const;
    void StartColumn(double x, double y);
    void TakeExtreme(QPointF point, std::size_t order);
    std::size_t TakeColumn(std::span<const double> x, std::span<const double> y, std::size_t place);
    void FlushColumn();

    double m_firstX;
    double m_lastX;
    TPolylines m_lines;
    bool m_isOpen = false;
    double m_columnStart = 0; ///< X of the column's points is at least this
    double m_columnEnd = 0;   ///< and below this
    std::size_t m_count = 0;
    QPointF m_first;
    QPointF m_last;
    TExtreme m_low{};
    TExtreme m_high{};
};

} // namespace lumoplot
