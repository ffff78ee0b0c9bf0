// The points of a data set as places on a device: X (or the Y of the data set that serves as X) and corrected
// Y, mapped by the axes.
#pragma once

#include "graph/drawing/lines/polylines.h"
#include "graph/drawing/lines/series_summary.h"
#include "graph/plotted/paired_points.h"
#include "graph/plotted/scale_map.h"

#include <functional>
#include <span>

namespace lumoplot {

class TSeriesPositions {
public:
    using TTakeRun = std::function<void(std::span<const double> x, std::span<const double> y)>;

    /// The maps lead from values to device pixels.
    TSeriesPositions(const TSeries& series, const TScaleMap& xMap, const TScaleMap& yMap)
        : m_series(series), m_xMap(xMap), m_yMap(yMap) {}

    const TScaleMap& XMap() const { return m_xMap; }
    const TScaleMap& YMap() const { return m_yMap; }
    /// Hands over all points in their order, in runs of contiguous values. A place that does not exist (an
    /// infinite value, one that is not above 0 on a logarithmic axis) is not-a-number; no place is further
    /// away than FarthestPlace. With an X data set, points beyond its count are left out.
    void ForEachRun(const TTakeRun& take) const;
    /// As ForEachRun for those who leave out what lies beyond the plot: places that do not exist may be
    /// infinite, too, and others lie as far away as they do.
    void ForEachPlainRun(const TTakeRun& take) const;
    /// The line through all places. Large data sets are read through their summary.
    /// Points left of `firstX` count as one pixel column, as do those right of `lastX`.
    TPolylines Reduced(double firstX, double lastX) const;

private:
    void MapOneRun(std::span<const double> x, std::span<const double> y, const TTakeRun& take) const;

    const TSeries& m_series;
    const TScaleMap& m_xMap;
    const TScaleMap& m_yMap;
};

} // namespace lumoplot
