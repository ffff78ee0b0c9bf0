#include "graph/drawing/picture/crowd.h"

#include "graph/drawing/lines/polylines.h"
#include "graph/model/graph.h"
#include "graph/plotted/paired_points.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kCellSide = 6;            // units
constexpr std::int64_t kMostPlaces = 1500; // of a data set

} // namespace

TCrowd::TCrowd(const TxyGraph& graph, const TGraphLayout& layout)
    : m_plot(layout.Plot()), m_columns(static_cast<int>(m_plot.width() / kCellSide) + 1),
      m_rows(static_cast<int>(m_plot.height() / kCellSide) + 1),
      m_cells(static_cast<std::size_t>(m_columns) * static_cast<std::size_t>(m_rows)) {
    for (const auto& series : graph.Series())
        if (IsDrawn(*series)) TakeSeries(*series, layout);
}

void TCrowd::TakeSeries(const TSeries& series, const TGraphLayout& layout) {
    const TScaleMap& xMap = layout.Axes().X.Map();
    const TScaleMap& yMap = layout.Axes().YOf(series.IsOnSecondY()).Map();
    const std::int64_t stride = std::max<std::int64_t>(1, series.Count() / kMostPlaces);
    std::int64_t next = 0;
    bool isOpen = false;
    QPointF before;
    TDrawnPoints(series).ForEachRun([&](const TDrawnRun& run) {
        const auto count = static_cast<std::int64_t>(run.X.size());
        for (; next < count; next += stride) {
            const auto i = static_cast<std::size_t>(next);
            const QPointF place(FarthestPlace(xMap.Position(run.X[i])),
                                FarthestPlace(yMap.Position(run.Y[i])));
            const bool isSomewhere = std::isfinite(place.x()) && std::isfinite(place.y());
            if (isSomewhere) {
                TakePlace(place, static_cast<double>(stride));
                if (isOpen && series.LinesShown()) TakeLine(before, place);
            }
            isOpen = isSomewhere;
            before = place;
        }
        next -= count;
    });
}

void TCrowd::TakeLine(QPointF from, QPointF to) {
    TPolylines line;
    line.Add(from);
    line.Add(to);
    line.End();
    const TPolylines visible = Clipped(std::move(line), m_plot);
    if (visible.Count() == 0) return;
    const QPointF start = visible.Line(0).front();
    const QPointF along = visible.Line(0).back() - start;
    const int steps = static_cast<int>(std::max(std::abs(along.x()), std::abs(along.y())) / kCellSide);
    for (int i = 1; i <= steps; ++i) TakePlace(start + along * (i / (steps + 1.0)), 1);
}

void TCrowd::TakePlace(QPointF place, double weight) {
    if (!m_plot.contains(place)) return;
    const auto column = static_cast<std::size_t>((place.x() - m_plot.left()) / kCellSide);
    const auto row = static_cast<std::size_t>((place.y() - m_plot.top()) / kCellSide);
    m_cells[row * static_cast<std::size_t>(m_columns) + column] += weight;
}

double TCrowd::In(const QRectF& rectangle) const {
    const auto cell = [](double distance, int count) {
        return static_cast<int>(std::clamp(std::floor(distance / kCellSide), 0.0, count - 1.0));
    };
    const QRectF part = rectangle & m_plot;
    if (part.isEmpty()) return 0;
    const int firstColumn = cell(part.left() - m_plot.left(), m_columns);
    const int lastColumn = cell(part.right() - m_plot.left(), m_columns);
    const int lastRow = cell(part.bottom() - m_plot.top(), m_rows);
    double sum = 0;
    for (int row = cell(part.top() - m_plot.top(), m_rows); row <= lastRow; ++row)
        for (int column = firstColumn; column <= lastColumn; ++column)
            sum += m_cells[static_cast<std::size_t>(row * m_columns + column)];
    return sum;
}

} // namespace lumoplot
