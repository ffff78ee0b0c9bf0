#include "graph/plotted/paired_points.h"

#include "graph/model/appearance.h"
#include "graph/model/graph.h"

namespace lumoplot {

const TSeries* XSeriesOf(const TSeries& series) {
    if (!series.UseXAxisSeries()) return nullptr;
    return series.Graph().FindSeries(series.Graph().Appearance()->XAxisSerIndex());
}

bool IsDrawn(const TSeries& series) {
    return series.Active() && series.Count() > 0 && XSeriesOf(series) != &series;
}

TDrawnPoints::TDrawnPoints(const TSeries& series)
    : m_series(series), m_xSeries(XSeriesOf(series)), m_reader(series.Points()),
      m_xReader(m_xSeries ? m_xSeries->Points() : series.Points()) {
}

std::span<const double> TDrawnPoints::Corrected(const TSeries& series, const TPointSpans& points,
                                                TBuffer& buffer) {
    const double zero = series.ZeroValue();
    const double slope = series.BaseLineSlope();
    if (zero == 0 && slope == 0) return points.Y;
    for (std::size_t i = 0; i < points.Y.size(); ++i) buffer[i] = points.Y[i] - zero - slope * points.X[i];
    return {buffer.data(), points.Y.size()};
}

bool TDrawnPoints::NextRun() {
    std::size_t count = std::min(kLength, m_reader.Ready());
    if (m_xSeries) count = std::min(count, m_xReader.Ready());
    if (count == 0) return false;
    const TPointSpans own = m_reader.Take(count);
    m_run = {own.Ids, own.X, Corrected(m_series, own, m_y), own.YErrors};
    if (m_xSeries) m_run.X = Corrected(*m_xSeries, m_xReader.Take(count), m_x);
    return true;
}

} // namespace lumoplot
