#include "fit/procedures/fit_rows.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

constexpr double kLargestScale = 0x1p1000;
constexpr double kFarScales = 0x1p400; // their squares are numbers still
constexpr double kMendingStep = 6e-6;  // the third root of the rounding, best for symmetric differences

// A power of two, so that scaling rounds nothing.
double PowerOfTwoBelow(double value) {
    return value != 0 && std::isfinite(value) ? std::exp2(std::ilogb(value)) : 1;
}

std::vector<double*> ValuesOf(std::span<TDBLParameter* const> parameters) {
    std::vector<double*> values;
    for (TDBLParameter* parameter : parameters) values.push_back(parameter->ValueRef());
    return values;
}

double WeightedY(const TFitPoints& points, std::size_t i) {
    return points.Weights.empty() ? points.Y[i] : points.Y[i] * points.Weights[i];
}

/// The slope between values beside a place, or on one side of it where the other has none.
double DifferenceQuotient(double below, double here, double above, double step) {
    if (std::isfinite(below) && std::isfinite(above)) return (above - below) / (2 * step);
    return std::isfinite(above) ? (above - here) / step : (here - below) / step;
}

} // namespace

double ResidualScaleOf(const TFitPoints& points) {
    double largest = 0;
    for (std::size_t i = 0; i < points.Y.size(); ++i)
        largest = std::max(largest, std::abs(WeightedY(points, i)));
    return std::min(1 / PowerOfTwoBelow(largest), kLargestScale);
}

TFitRows::TFitRows(TCurFit& fit, std::vector<TDBLParameter*> varied, std::size_t linearCount,
                   const TFitPoints& points)
    : m_varied(std::move(varied)), m_points(points), m_linearCount(linearCount),
      m_all(fit, fit.XRef(), ValuesOf(m_varied)),
      m_linear(fit, fit.XRef(), ValuesOf(std::span(m_varied).first(linearCount))) {
    for (const TDBLParameter* parameter : m_varied) m_scales.push_back(PowerOfTwoBelow(parameter->Value()));
    m_residualScale = ResidualScaleOf(m_points);
    // What is linear may start anywhere; its columns must have squares all the same.
    for (double& scale : std::span(m_scales).first(m_linearCount))
        if (!(scale * m_residualScale < kFarScales) || !(scale * m_residualScale > 1 / kFarScales))
            scale = 1 / m_residualScale;
    for (std::size_t i = 0; i < m_points.Y.size(); ++i) {
        const double y = WeightedY(m_points, i) * m_residualScale;
        m_roundingLevel += y * y;
    }
    const double epsilon = std::numeric_limits<double>::epsilon();
    m_roundingLevel *= 0.5 * epsilon * epsilon;
}

TFitRows::TFitRows(const TFitRows& original, TCurFit& copy, std::vector<TDBLParameter*> varied)
    : m_varied(std::move(varied)), m_points(original.m_points), m_scales(original.m_scales),
      m_linearCount(original.m_linearCount), m_all(copy, copy.XRef(), ValuesOf(m_varied)),
      m_linear(copy, copy.XRef(), ValuesOf(std::span(m_varied).first(m_linearCount))),
      m_residualScale(original.m_residualScale), m_roundingLevel(original.m_roundingLevel) {
}

// Turns values of the model into scaled residuals and returns their sum of squares.
double TFitRows::Finish(std::size_t start, std::span<double> values) const {
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = (values[i] - m_points.Y[start + i]) * m_residualScale;
    if (!m_points.Weights.empty())
        for (std::size_t i = 0; i < values.size(); ++i) values[i] *= m_points.Weights[start + i];
    return Dot(values, values);
}

double TFitRows::Residuals(std::size_t start, std::span<double> residuals) {
    m_all.Evaluate(std::span(m_points.X).subspan(start, residuals.size()), residuals);
    return Finish(start, residuals);
}

double TFitRows::AllRows(std::size_t start, std::span<double> residuals, std::span<double> columns) {
    return Rows(m_all, start, residuals, columns);
}

double TFitRows::LinearRows(std::size_t start, std::span<double> residuals, std::span<double> columns) {
    return Rows(m_linear, start, residuals, columns);
}

double TFitRows::Rows(TBlockEvaluator& evaluator, std::size_t start, std::span<double> residuals,
                      std::span<double> columns) {
    const std::size_t count = residuals.size();
    evaluator.EvaluateWithDerivatives(std::span(m_points.X).subspan(start, count), residuals, columns);
    for (std::size_t j = 0; j * count < columns.size(); ++j) {
        const auto column = columns.subspan(j * count, count);
        if (!std::isfinite(Dot(column, column))) MendColumn(j, start, residuals, column);
        const double scale = m_scales[j] * m_residualScale;
        for (double& slope : column) slope *= scale;
        if (!m_points.Weights.empty())
            for (std::size_t i = 0; i < count; ++i) column[i] *= m_points.Weights[start + i];
    }
    return Finish(start, residuals);
}

// The limit of a derivative where its formula has none: 0·0^(b-1), 1/sqrt(0).
void TFitRows::MendColumn(std::size_t parameter, std::size_t start, std::span<const double> values,
                          std::span<double> column) {
    std::vector<std::size_t> broken;
    std::vector<double> x;
    for (std::size_t i = 0; i < column.size(); ++i) {
        if (std::isfinite(column[i]) || !std::isfinite(values[i])) continue;
        broken.push_back(i);
        x.push_back(m_points.X[start + i]);
    }
    double& value = *m_varied[parameter]->ValueRef();
    const double here = value;
    const double step = kMendingStep * (here != 0 ? std::abs(here) : 1);
    std::vector<double> above(x.size());
    std::vector<double> below(x.size());
    value = here + step;
    m_all.Evaluate(x, above);
    value = here - step;
    m_all.Evaluate(x, below);
    value = here;
    for (std::size_t k = 0; k < broken.size(); ++k)
        column[broken[k]] = DifferenceQuotient(below[k], values[broken[k]], above[k], step);
}

} // namespace lumoplot
