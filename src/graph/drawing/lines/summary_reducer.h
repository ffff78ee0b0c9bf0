// Reduces the line of a large data set to pixel columns with the help of its summary: whole groups of points
// are compared as values, and only the few that remain of a column are turned into places. The result is that
// of TColumnReducer over all points.
#pragma once

#include "graph/drawing/lines/polylines.h"
#include "graph/drawing/lines/series_summary.h"
#include "graph/plotted/scale_map.h"

namespace lumoplot {

class TSummaryReducer {
public:
    /// The maps lead to device pixels. Points left of `firstX` count as one column, as do those right of
    /// `lastX`.
    TSummaryReducer(const TSeries& series, const TScaleMap& xMap, const TScaleMap& yMap, double firstX,
                    double lastX);

    /// The line through all points of the data set, which has that summary.
    TPolylines Reduced(const TSeriesSummary& summary);

private:
    struct TValuePoint {
        double X;
        double Y; ///< corrected
    };
    struct TExtreme {
        const double* X; ///< in the chain; most are never read, being far away in memory
        double Y;
        std::size_t Order;
    };
    using TValues = std::span<const double>;

    double PlaceOfX(double x) const;
    bool IsInColumn(double x) const;
    void StartColumn(TValuePoint point, const double& x);
    void FlushColumn();
    void AddCorner(double x, double y);
    bool IsPlain(const TPointGroup& group) const;
    void TakeGroup(const TPointGroup& group, TValues x, TValues y);
    bool TakeWholeGroup(const TPointGroup& group, TValues x);
    void TakeAscending(TValues x, TValues y);
    void TakeEach(TValues x, TValues y);
    void Compare(const double& x, double y, std::size_t order);

    const TSeries& m_series;
    const TScaleMap& m_xMap;
    const TScaleMap& m_yMap;
    double m_firstX;
    double m_lastX;
    TPolylines m_lines;
    bool m_isOpen = false;
    double m_columnStart = 0; ///< places of the column are at least this
    double m_columnEnd = 0;   ///< and below this
    std::size_t m_count = 0;
    TValuePoint m_first{};
    TValuePoint m_last{};
    TExtreme m_low{};
    TExtreme m_high{};
};

} // namespace lumoplot
