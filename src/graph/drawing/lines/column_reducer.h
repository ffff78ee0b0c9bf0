// Reduces a long line to what a device can show: of neighbouring points in one pixel column only the first,
// the lowest, the highest and the last remain, in their order. A thin line through them covers the pixels of
// the line through all points.
#pragma once

#include "graph/drawing/lines/polylines.h"

#include <span>

namespace lumoplot {

class TColumnReducer {
public:
    /// Points left of `firstX` count as one column, as do those right of `lastX` (device pixels).
    TColumnReducer(double firstX, double lastX);

    /// Takes the next points, in device pixels. Where X or Y is not-a-number the line has a gap.
    void Add(std::span<const double> x, std::span<const double> y);
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
