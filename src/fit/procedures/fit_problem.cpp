#include "fit/procedures/fit_problem.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

constexpr std::size_t kChunk = 1024;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kDefaultDeviation = 0.01;

// A power of two, so that scaling rounds nothing.
double PowerOfTwoBelow(double value) {
    return value != 0 && std::isfinite(value) ? std::exp2(std::ilogb(value)) : 1;
}

double LargestOf(std::span<const double> values) {
    double largest = 0;
    for (const double value : values) largest = std::max(largest, std::abs(value));
    return largest;
}

std::vector<double*> ValuesOf(const std::vector<TDBLParameter*>& parameters) {
    std::vector<double*> values;
    for (TDBLParameter* parameter : parameters) values.push_back(parameter->ValueRef());
    return values;
}

} // namespace

TFitProblem::TFitProblem(TCurFit& fit, std::vector<TDBLParameter*> varied, TFitPoints points,
                         TProgress& progress, TIterationHandler onIteration)
    : m_fit(fit), m_varied(std::move(varied)), m_points(std::move(points)), m_progress(progress),
      m_onIteration(std::move(onIteration)), m_evaluator(fit, fit.XRef(), ValuesOf(m_varied)),
      m_bestValue(kInfinity), m_iterationLimit(fit.IterMax()),
      m_residuals(std::min(kChunk, m_points.X.size())) {
    for (const TDBLParameter* parameter : m_varied) {
        const double deviation = parameter->StartDeviation;
        const double scale = PowerOfTwoBelow(parameter->Value());
        m_scales.push_back(scale);
        m_start.push_back(parameter->Value() / scale);
        m_firstSteps.push_back(deviation > 0 && std::isfinite(deviation) ? deviation : kDefaultDeviation);
        if (m_start.back() != 0) m_firstSteps.back() *= std::abs(m_start.back());
    }
    m_best = m_start;
    m_residualScale = 1 / PowerOfTwoBelow(LargestOf(m_points.Y));
    for (const double y : m_points.Y) m_roundingLevel += (y * m_residualScale) * (y * m_residualScale);
    const double epsilon = std::numeric_limits<double>::epsilon();
    m_roundingLevel *= 0.5 * epsilon * epsilon;
}

void TFitProblem::CheckCancelled() {
    if (!m_progress.StepTo(m_iterations)) throw TFitCancelled();
}

void TFitProblem::Store(std::span<const double> at) {
    for (std::size_t i = 0; i < m_varied.size(); ++i) *m_varied[i]->ValueRef() = at[i] * m_scales[i];
}

void TFitProblem::Note(std::span<const double> at, double value) {
    if (!(value < m_bestValue)) return;
    m_bestValue = value;
    m_best.assign(at.begin(), at.end());
}

bool TFitProblem::NextIteration() {
    if (m_iterations >= m_iterationLimit) return false;
    if (m_iterations > 0 && m_onIteration) {
        Store(m_best);
        m_onIteration();
    }
    ++m_iterations;
    CheckCancelled();
    return true;
}

std::size_t TFitProblem::ChunkAt(std::size_t start) const {
    return std::min(kChunk, m_points.X.size() - start);
}

// Turns values of the model into scaled residuals and returns their sum of squares.
double TFitProblem::Residuals(std::size_t start, std::span<double> values) const {
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = (values[i] - m_points.Y[start + i]) * m_residualScale;
    return Dot(values, values);
}

double TFitProblem::Value(std::span<const double> at) {
    Store(at);
    ++m_evaluations;
    double sum = 0;
    for (std::size_t start = 0, count; start < PointCount(); start += count) {
        CheckCancelled();
        count = ChunkAt(start);
        const std::span residuals = std::span(m_residuals).first(count);
        m_evaluator.Evaluate(std::span(m_points.X).subspan(start, count), residuals);
        sum += Residuals(start, residuals);
        if (!std::isfinite(sum)) return kInfinity;
    }
    Note(at, 0.5 * sum);
    return 0.5 * sum;
}

bool TFitProblem::Linearise(std::span<const double> at, TLinearModel& model) {
    Store(at);
    ++m_evaluations;
    const bool isFirst = m_jacobian.empty();
    if (isFirst) m_jacobian.resize(m_varied.size() * PointCount());
    m_work.resize(m_varied.size() * m_residuals.size());
    model.At.assign(at.begin(), at.end());
    model.OldJacobianTimesResiduals.assign(isFirst ? 0 : m_varied.size(), 0);
    model.Value = 0;
    TRowQr qr(Size());
    for (std::size_t start = 0, count; start < PointCount(); start += count) {
        CheckCancelled();
        count = ChunkAt(start);
        AddRows(start, count, qr, model);
    }
    model.Triangle = qr.Triangle();
    model.Projected = qr.Projected();
    model.Gradient = TransposedTimes(model.Triangle, model.Projected);
    const bool isFinite = std::isfinite(model.Value) && std::isfinite(Norm(model.Gradient)) &&
                          std::ranges::all_of(m_varied, [&, j = 0](auto) mutable {
                              return std::isfinite(Norm(model.Triangle.Column(j++)));
                          });
    if (isFinite) Note(at, model.Value);
    return isFinite;
}

// A chunk of scaled residuals and the columns of the Jacobian.
void TFitProblem::EvaluateRows(std::size_t start, std::span<double> residuals, std::span<double> rows) {
    const std::size_t count = residuals.size();
    m_evaluator.EvaluateWithDerivatives(std::span(m_points.X).subspan(start, count), residuals, rows);
    for (std::size_t j = 0; j < m_varied.size(); ++j) {
        const double scale = m_scales[j] * m_residualScale;
        for (double& slope : rows.subspan(j * count, count)) slope *= scale;
    }
}

void TFitProblem::AddRows(std::size_t start, std::size_t count, TRowQr& qr, TLinearModel& model) {
    const std::span residuals = std::span(m_residuals).first(count);
    const std::span fresh = std::span(m_work).first(m_varied.size() * count);
    const std::span old = std::span(m_jacobian).subspan(m_varied.size() * start, fresh.size());
    EvaluateRows(start, residuals, fresh);
    model.Value += 0.5 * Residuals(start, residuals);
    for (std::size_t j = 0; j < model.OldJacobianTimesResiduals.size(); ++j)
        model.OldJacobianTimesResiduals[j] += Dot(old.subspan(j * count, count), residuals);
    std::ranges::copy(fresh, old.begin());
    qr.AddRows(fresh, residuals);
}

std::vector<double> TFitProblem::ResidualsAt(std::span<const double> at) {
    Store(at);
    ++m_evaluations;
    std::vector<double> residuals(PointCount());
    for (std::size_t start = 0, count; start < PointCount(); start += count) {
        CheckCancelled();
        count = ChunkAt(start);
        const std::span part = std::span(residuals).subspan(start, count);
        m_evaluator.Evaluate(std::span(m_points.X).subspan(start, count), part);
        Residuals(start, part);
    }
    return residuals;
}

TVector TFitProblem::JacobianTimes(std::span<const double> at, std::span<const double> residuals) {
    Store(at);
    ++m_evaluations;
    TVector product(m_varied.size());
    m_work.resize(m_varied.size() * m_residuals.size());
    for (std::size_t start = 0, count; start < PointCount(); start += count) {
        CheckCancelled();
        count = ChunkAt(start);
        const std::span rows = std::span(m_work).first(m_varied.size() * count);
        EvaluateRows(start, std::span(m_residuals).first(count), rows);
        for (std::size_t j = 0; j < product.size(); ++j)
            product[j] += Dot(rows.subspan(j * count, count), residuals.subspan(start, count));
    }
    return product;
}

} // namespace lumoplot
