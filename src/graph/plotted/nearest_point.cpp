#include "graph/plotted/nearest_point.h"

#include "graph/model/graph.h"
#include "graph/plotted/paired_points.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kRounding = 1e-3; // units by which mapping to values and back may err
constexpr double kEdge = 1;        // units that a point may lie outside the plot

struct TInterval {
    double Low;
    double High;

    bool Has(double value) const { return value >= Low && value <= High; }
};

TInterval ValuesAround(const TScaleMap& map, double place, double reach) {
    reach += kRounding;
    const auto [low, high] = std::minmax({map.Value(place - reach), map.Value(place + reach)});
    return {low, high};
}

class TSearch {
public:
    TSearch(const TSeries& series, const TPlotMap& map, QPointF place, double reach)
        : m_series(series), m_map(map), m_yMap(map.YOf(series)), m_place(place), m_best(reach * reach),
          m_x(ValuesAround(map.X, place.x(), reach)), m_y(ValuesAround(m_yMap, place.y(), reach)) {
        m_drawsOffPlot = series.Graph().Appearance()->PlotOffGraph();
    }

    std::optional<TPointHit> Run() {
        if (XSeriesOf(m_series))
            TDrawnPoints(m_series).ForEachRun(
                [this](const TDrawnRun& run) { Take(run.Ids, run.X, run.Y, Baseline::Done); });
        else
            SearchByX();
        return m_hit;
    }

private:
    enum class Baseline { Done, Open };

    // Overwrites may leave points out of order, by no more than the tolerance.
    void SearchByX() {
        const TPointChain& points = m_series.Points();
        const double slack = std::max(0.0, m_series.NumericalTolerance());
        std::size_t block = 0;
        for (std::size_t count = points.BlockCount(); count > 0;) {
            const std::size_t half = count / 2;
            const bool isBefore = points.Block(block + half).X.back() < m_x.Low - slack;
            if (isBefore) block += half + 1;
            count = isBefore ? count - half - 1 : half;
        }
        for (; block < points.BlockCount(); ++block) {
            const TPointSpans spans = points.Block(block);
            if (spans.X.front() > m_x.High + slack) return;
            Take(spans.Ids, spans.X, spans.Y, Baseline::Open);
        }
    }

    void Take(std::span<const std::int32_t> ids, std::span<const double> x, std::span<const double> y,
              Baseline baseline) {
        for (std::size_t i = 0; i < x.size(); ++i) {
            if (!m_x.Has(x[i])) continue;
            const double value = baseline == Baseline::Open ? m_series.CorrectedY(x[i], y[i]) : y[i];
            if (m_y.Has(value)) Judge(ids[i], x[i], value);
        }
    }

    void Judge(std::int32_t id, double x, double y) {
        const QPointF place(m_map.X.Position(x), m_yMap.Position(y));
        const QPointF way = place - m_place;
        const double square = QPointF::dotProduct(way, way);
        if (!(square <= m_best)) return;
        if (!m_drawsOffPlot && !m_map.Plot.adjusted(-kEdge, -kEdge, kEdge, kEdge).contains(place)) return;
        m_best = square;
        m_hit = TPointHit{&m_series, id, x, y, place, std::sqrt(square)};
    }

    const TSeries& m_series;
    const TPlotMap& m_map;
    const TScaleMap& m_yMap;
    QPointF m_place;
    double m_best; ///< square of the distance
    TInterval m_x;
    TInterval m_y;
    bool m_drawsOffPlot;
    std::optional<TPointHit> m_hit;
};

} // namespace

std::optional<TPointHit> NearestPointOf(const TSeries& series, const TPlotMap& map, QPointF place,
                                        double reach) {
    if (!IsDrawn(series) || !(reach >= 0)) return std::nullopt;
    return TSearch(series, map, place, reach).Run();
}

std::optional<TPointHit> NearestPoint(const TxyGraph& graph, const TPlotMap& map, QPointF place,
                                      double reach) {
    std::optional<TPointHit> best;
    for (const auto& series : graph.Series()) {
        if (!series->LinesShown() && !series->PointsShown()) continue;
        const auto hit = NearestPointOf(*series, map, place, best ? best->Distance : reach);
        if (hit) best = hit;
    }
    return best;
}

} // namespace lumoplot
