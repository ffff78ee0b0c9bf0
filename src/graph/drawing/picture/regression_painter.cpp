#include "graph/drawing/picture/regression_painter.h"

#include "data/analysis/least_squares.h"
#include "data/analysis/regression.h"
#include "graph/drawing/lines/column_reducer.h"
#include "graph/drawing/lines/line_painter.h"
#include "graph/drawing/lines/series_pen.h"
#include "graph/drawing/lines/series_positions.h"
#include "graph/fitting/fit_schedule.h"
#include "graph/model/graph.h"
#include "graph/plotted/drawn_extent.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

constexpr double kBoundsWidth = 1;
constexpr double kCurveStep = 2; // device pixels between the places of a parabola or a line on a log axis

/// A line through values of the axes, reduced to what the device shows of it.
class TValueLine {
public:
    TValueLine(const TScaleMap& xMap, const TScaleMap& yMap, const QRectF& reach)
        : m_xMap(xMap), m_yMap(yMap), m_reducer(reach.left(), reach.right()) {}

    void Add(double x, double y) {
        m_x[m_count] = x;
        m_y[m_count] = y;
        if (++m_count == kRun) Flush();
    }
    TPolylines Finish() {
        Flush();
        return m_reducer.Finish();
    }

private:
    static constexpr std::size_t kRun = 512;
    using TRun = std::array<double, kRun>;

    // In place; not-a-number where there is no place.
    void Map(const TScaleMap& map, TRun& values) const {
        TRun places;
        map.MapAll(std::span(values).first(m_count), std::span(places).first(m_count));
        for (std::size_t i = 0; i < m_count; ++i) {
            const double place = FarthestPlace(places[i]);
            values[i] = std::isfinite(values[i]) ? place : std::numeric_limits<double>::quiet_NaN();
        }
    }
    void Flush() {
        Map(m_xMap, m_x);
        Map(m_yMap, m_y);
        m_reducer.Add(std::span(m_x).first(m_count), std::span(m_y).first(m_count));
        m_count = 0;
    }

    const TScaleMap& m_xMap;
    const TScaleMap& m_yMap;
    TColumnReducer m_reducer;
    TRun m_x;
    TRun m_y;
    std::size_t m_count = 0;
};

/// The regression of a data set on its way to the device.
class TRegressionLine {
public:
    TRegressionLine(const TSeries& series, const TScaleMap& xMap, const TScaleMap& yMap, const QRectF& reach)
        : m_series(series), m_xSeries(XSeriesOf(series)), m_xMap(xMap), m_yMap(yMap), m_reach(reach),
          m_line(xMap, yMap, reach) {}

    TPolylines Polylines() {
        if (const TFittedCurve* curve = m_series.RegressionLine())
            AddFitted(*curve);
        else if (IsOnGrid())
            for (const TCurveSample& sample : m_series.RegressionCurve()) AddPlace(sample.X, sample.Derived);
        else if (!IsOnGrid() && m_series.RegressionError().empty())
            AddDerived();
        return m_line.Finish();
    }

private:
    bool IsOnGrid() const {
        return m_series.RegressionType() == TRegressionType::Spline ||
               m_series.RegressionType() == TRegressionType::SampledCurve;
    }
    // The fitted curve, and what is worked out over an X data set, stands for corrected Y; everything else
    // for raw Y.
    void AddPlace(double x, double derived) {
        const bool isCorrected = m_xSeries || m_series.RegressionType() == TRegressionType::SampledCurve;
        m_line.Add(x, isCorrected ? derived : m_series.CorrectedY(x, derived));
    }

    // Two places suffice for a straight line on linear axes.
    void AddFitted(const TFittedCurve& curve) {
        const TRange range = PlottedXRange(m_series);
        const double first = m_xMap.IsLog() ? std::max(range.Min, m_xMap.Min()) : range.Min;
        const double last = range.Max;
        if (!(first < last)) return;
        const double from = std::clamp(m_xMap.Position(first), m_reach.left(), m_reach.right());
        const double to = std::clamp(m_xMap.Position(last), m_reach.left(), m_reach.right());
        const bool isStraight = curve.Coefficients().C2 == 0 && !m_xMap.IsLog() && !m_yMap.IsLog();
        const int steps = isStraight ? 1 : static_cast<int>(std::abs(to - from) / kCurveStep) + 1;
        for (int i = 0; i <= steps; ++i) {
            const double x = m_xMap.Value(from + (to - from) * i / steps);
            AddPlace(x, curve(x));
        }
    }

    void AddDerived() {
        const TPointChain& points = m_series.Points();
        TPointCursor xPoint = m_xSeries ? m_xSeries->First() : TPointCursor();
        for (std::size_t block = 0; block < points.BlockCount(); ++block) {
            const TPointSpans run = points.Block(block);
            for (std::size_t i = 0; i < run.X.size(); ++i) {
                if (m_xSeries && !xPoint) return;
                const double x = m_xSeries ? m_xSeries->CorrectedY(xPoint.X(), xPoint.Y()) : run.X[i];
                const double derived = run.Derived.empty() ? 0 : run.Derived[i];
                m_line.Add(x, m_xSeries ? derived : m_series.CorrectedY(run.X[i], derived));
                if (m_xSeries) xPoint = xPoint.Next();
            }
        }
    }

    const TSeries& m_series;
    const TSeries* m_xSeries;
    const TScaleMap& m_xMap;
    const TScaleMap& m_yMap;
    QRectF m_reach;
    TValueLine m_line;
};

} // namespace

void DrawRegression(const TCanvas& canvas, const TSeries& series, const TGraphLayout& layout,
                    const QRectF& visible) {
    if (!IsDrawn(series) || series.RegressionType() == TRegressionType::None) return;
    if (HasLongRegression(series)) return; // that of points that are no more
    const QPen pen = SeriesPen(canvas, series, series.RegressionColor(), series.RegressionLineStyle(),
                               series.RegressionLineWidth());
    const QRectF reach = ReachOfPen(canvas, pen, visible);
    const QRectF plot = canvas.ToDevice(layout.Plot());
    const TScaleMap xMap = MapOf(*series.Graph().XAxis(), plot);
    const TScaleMap yMap = MapOf(*series.YAxisOfSeries(), plot);
    canvas.Painter().save();
    canvas.Painter().setClipRect(visible, Qt::IntersectClip);
    DrawPolylines(canvas, Clipped(TRegressionLine(series, xMap, yMap, reach).Polylines(), reach), pen);
    canvas.Painter().restore();
}

void DrawBounds(const TCanvas& canvas, const TSeries& series, const TGraphLayout& layout) {
    if (!IsDrawn(series) || series.BoundsType() == TBoundsType::None) return;
    const QPen pen = SeriesPen(canvas, series, series.BoundsColor(), series.BoundsLineStyle(), kBoundsWidth);
    const TScaleMap& yMap = layout.Axes().YOf(series.IsOnSecondY()).Map();
    const QRectF& plot = layout.Plot();
    for (const double level : series.BoundLevels()) {
        const double y = yMap.Position(level);
        if (yMap.Shows(level)) canvas.DrawStraight({plot.left(), y}, {plot.right(), y}, pen);
    }
}

} // namespace lumoplot
