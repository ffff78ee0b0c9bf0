#include "fit/procedures/fit_problem.h"

#include "expr/blocks/formula_structure.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kDefaultDeviation = 0.01;
constexpr double kOffByRounding = 1e-15; // relative

// Moves the parameters that the model is linear in to the front; returns their number.
std::size_t LinearFirst(TCurFit& fit, std::vector<TDBLParameter*>& varied, TLinearPart linearPart) {
    if (linearPart == TLinearPart::Keep) return 0;
    std::vector<double*> values;
    for (TDBLParameter* parameter : varied) values.push_back(parameter->ValueRef());
    const std::vector<bool> isLinear = LinearVariables(fit, fit.XRef(), values);
    std::vector<TDBLParameter*> ordered;
    for (const bool wanted : {true, false})
        for (std::size_t i = 0; i < varied.size(); ++i)
            if (isLinear[i] == wanted) ordered.push_back(varied[i]);
    varied = std::move(ordered);
    return static_cast<std::size_t>(std::ranges::count(isLinear, true));
}

TMatrix Leading(const TMatrix& matrix, int size) {
    TMatrix part(size);
    for (int j = 0; j < size; ++j)
        for (int i = 0; i < size; ++i) part(i, j) = matrix(i, j);
    return part;
}

TMatrix Trailing(const TMatrix& matrix, int size) {
    const int first = matrix.Size() - size;
    TMatrix part(size);
    for (int j = 0; j < size; ++j)
        for (int i = 0; i < size; ++i) part(i, j) = matrix(first + i, first + j);
    return part;
}

double SumOf(const TVector& parts) {
    double sum = 0;
    for (const double part : parts) sum += part;
    return sum;
}

TVector SumOf(const std::vector<TVector>& parts) {
    TVector sum = parts.front();
    for (std::size_t i = 1; i < parts.size(); ++i) AddTimes(sum, 1, parts[i]);
    return sum;
}

/// Adds what no values of the parameters can fit, beyond that of each part alone, to `rest`.
TRowQr Joined(const std::vector<TRowQr>& parts, double& rest) {
    TRowQr qr = parts.front();
    for (std::size_t i = 1; i < parts.size(); ++i) rest += qr.Add(parts[i]);
    return qr;
}

} // namespace

TFitProblem::TFitProblem(TCurFit& fit, std::vector<TDBLParameter*> varied, const TFitPoints& points,
                         TLinearPart linearPart, TProgress& progress, TIterationHandler onIteration)
    : m_progress(progress), m_onIteration(std::move(onIteration)),
      m_linearCount(LinearFirst(fit, varied, linearPart)), m_rows(fit, varied, m_linearCount, points),
      m_passes(fit, m_rows), m_bestValue(kInfinity), m_linear(m_linearCount),
      m_iterationLimit(fit.IterMax()) {
    for (std::size_t i = 0; i < varied.size(); ++i) {
        const double value = varied[i]->Value() / m_rows.ScaleOf(i);
        if (i < m_linearCount) {
            m_bestLinear.push_back(value);
            continue;
        }
        const double deviation = varied[i]->StartDeviation;
        m_start.push_back(value);
        m_firstSteps.push_back(deviation > 0 && std::isfinite(deviation) ? deviation : kDefaultDeviation);
        if (m_start.back() != 0) m_firstSteps.back() *= std::abs(m_start.back());
    }
    FindBounds(varied);
    Clamp(m_start);
    m_best = m_start;
}

void TFitProblem::FindBounds(const std::vector<TDBLParameter*>& varied) {
    for (std::size_t i = 0; i < varied.size(); ++i) {
        m_min.push_back(varied[i]->Min() / m_rows.ScaleOf(i));
        m_max.push_back(varied[i]->Max() / m_rows.ScaleOf(i));
        m_isBounded = m_isBounded || varied[i]->IsBounded();
    }
    for (std::size_t i = 0; i < m_linearCount; ++i)
        m_bestLinear[i] = std::clamp(m_bestLinear[i], m_min[i], m_max[i]);
    m_isLinearHeld.assign(m_linearCount, false);
}

void TFitProblem::Clamp(TVector& place) const {
    if (!m_isBounded) return;
    for (std::size_t j = 0; j < place.size(); ++j) {
        for (const double bound : {m_min[m_linearCount + j], m_max[m_linearCount + j]})
            if (std::isfinite(bound) && std::abs(place[j] - bound) <= kOffByRounding * std::abs(bound))
                place[j] = bound;
        place[j] = std::clamp(place[j], m_min[m_linearCount + j], m_max[m_linearCount + j]);
    }
}

bool TFitProblem::IsInside(std::span<const double> place) const {
    for (std::size_t j = 0; j < place.size(); ++j)
        if (place[j] < m_min[m_linearCount + j] || place[j] > m_max[m_linearCount + j]) return false;
    return true;
}

bool TFitProblem::IsHeld(std::span<const double> place, std::span<const double> gradient, int index) const {
    const auto j = static_cast<std::size_t>(index);
    return (place[j] == m_min[m_linearCount + j] && gradient[j] >= 0) ||
           (place[j] == m_max[m_linearCount + j] && gradient[j] <= 0);
}

void TFitProblem::CheckCancelled() {
    if (!m_progress.StepTo(m_iterations)) throw TFitCancelled();
}

void TFitProblem::Store(std::span<const double> at) {
    for (std::size_t i = 0; i < at.size(); ++i) m_rows.Store(m_linearCount + i, at[i]);
}

void TFitProblem::StoreLinear(std::span<const double> linear) {
    for (std::size_t i = 0; i < linear.size(); ++i) m_rows.Store(i, linear[i]);
}

void TFitProblem::StoreBest() {
    Store(m_best);
    StoreLinear(m_bestLinear);
}

void TFitProblem::Note(std::span<const double> at, double value) {
    if (!(value < m_bestValue)) return;
    m_bestValue = value;
    m_best.assign(at.begin(), at.end());
    m_bestLinear = m_linear;
}

bool TFitProblem::NextIteration() {
    if (m_iterations >= m_iterationLimit) return false;
    if (m_iterations > 0 && m_onIteration) {
        StoreBest();
        m_onIteration();
    }
    ++m_iterations;
    CheckCancelled();
    return true;
}

void TFitProblem::ForEachChunk(std::size_t columns, const std::function<void(TFitChunk&)>& work) {
    m_passes.ForEachChunk(
        columns, [this] { CheckCancelled(); }, work);
}

double TFitProblem::Value(std::span<const double> at) {
    if (m_isBounded) {
        m_clamped.assign(at.begin(), at.end());
        Clamp(m_clamped);
        at = m_clamped;
    }
    Store(at);
    ++m_evaluations;
    const double sum = m_linearCount > 0 ? SolveLinear(at) : SumOfSquares();
    if (!std::isfinite(sum)) return kInfinity;
    Note(at, 0.5 * sum);
    return 0.5 * sum;
}

double TFitProblem::SumOfSquares() {
    TVector sums(m_passes.PartCount());
    ForEachChunk(
        0, [&](TFitChunk& chunk) { sums[chunk.Part] += chunk.Rows.Residuals(chunk.Start, chunk.Residuals); });
    return SumOf(sums);
}

// The best values of the linear parameters where the others are stored. They start from 0, so that what they
// were before leaves no trace. What the reflections leave of the residuals is what no value can fit.
double TFitProblem::SolveLinear(std::span<const double> at) {
    m_linearAt.clear();
    StoreLinear(TVector(m_linearCount));
    TVector rests(m_passes.PartCount());
    std::vector<TRowQr> parts(rests.size(), TRowQr(static_cast<int>(m_linearCount)));
    ForEachChunk(m_linearCount, [&](TFitChunk& chunk) {
        if (!std::isfinite(rests[chunk.Part])) return;
        const double sum = chunk.Rows.LinearRows(chunk.Start, chunk.Residuals, chunk.Columns);
        parts[chunk.Part].AddRows(chunk.Columns, chunk.Residuals);
        rests[chunk.Part] += std::isfinite(sum) ? Dot(chunk.Residuals, chunk.Residuals) : kInfinity;
    });
    double rest = SumOf(rests);
    if (!std::isfinite(rest)) return kInfinity;
    const TRowQr qr = Joined(parts, rest);
    const TSmallSolution solution = SolvedWithin(qr);
    m_linear = solution.X;
    for (std::size_t j = 0; j < m_linear.size(); ++j) {
        m_linear[j] = -m_linear[j];
        m_isLinearHeld[j] = m_linear[j] == m_min[j] || m_linear[j] == m_max[j];
    }
    StoreLinear(m_linear);
    m_linearAt.assign(at.begin(), at.end());
    return rest + solution.Rest;
}

TSmallSolution TFitProblem::SolvedWithin(const TRowQr& qr) const {
    if (!m_isBounded) return SolveTriangle(qr.Triangle(), qr.Projected());
    TVector low;
    TVector high;
    for (std::size_t j = 0; j < m_linearCount; ++j) {
        low.push_back(-m_max[j]);
        high.push_back(-m_min[j]);
    }
    return SolveTriangleWithin(qr.Triangle(), qr.Projected(), low, high);
}

bool TFitProblem::Linearise(std::span<const double> at, TLinearModel& model) {
    Store(at);
    ++m_evaluations;
    if (m_linearCount > 0) {
        if (!std::ranges::equal(at, m_linearAt) && !std::isfinite(SolveLinear(at))) return false;
        StoreLinear(m_linear);
    }
    const std::size_t width = m_rows.ParameterCount();
    const bool isFirst = !m_jacobian;
    if (isFirst) m_jacobian = std::make_unique_for_overwrite<double[]>(width * PointCount());
    TVector sums(m_passes.PartCount());
    std::vector<TVector> products(sums.size(), TVector(isFirst ? 0 : width));
    std::vector<TRowQr> parts(sums.size(), TRowQr(static_cast<int>(width)));
    ForEachChunk(width, [&](TFitChunk& chunk) {
        const std::size_t count = chunk.Residuals.size();
        const std::span old(m_jacobian.get() + width * chunk.Start, width * count);
        sums[chunk.Part] += 0.5 * chunk.Rows.AllRows(chunk.Start, chunk.Residuals, chunk.Columns);
        for (std::size_t j = 0; j < m_linearCount; ++j)
            if (m_isLinearHeld[j]) std::ranges::fill(chunk.Columns.subspan(j * count, count), 0.0);
        TVector& product = products[chunk.Part];
        for (std::size_t j = 0; j < product.size(); ++j)
            product[j] += Dot(old.subspan(j * count, count), chunk.Residuals);
        std::ranges::copy(chunk.Columns, old.begin());
        parts[chunk.Part].AddRows(chunk.Columns, chunk.Residuals);
    });
    model.At.assign(at.begin(), at.end());
    model.Value = SumOf(sums);
    model.OldJacobianTimesResiduals = SumOf(products);
    double rest = 0; // the residuals themselves say it here
    const TRowQr qr = Joined(parts, rest);
    if (!isFirst) LearnOld(m_triangle, model);
    Reduce(qr, model);
    bool isFinite = std::isfinite(model.Value) && std::isfinite(Norm(model.Gradient));
    for (int j = 0; j < Size(); ++j) isFinite = isFinite && std::isfinite(Norm(model.Triangle.Column(j)));
    if (isFinite) Note(at, model.Value);
    return isFinite;
}

// Takes what belongs to the linear parameters out of the old Jacobian times the new residuals.
void TFitProblem::LearnOld(const TMatrix& old, TLinearModel& model) {
    if (m_linearCount == 0) return;
    const TVector& products = model.OldJacobianTimesResiduals;
    const int linear = static_cast<int>(m_linearCount);
    TMatrix leading = Leading(old, linear);
    for (int j = 0; j < linear; ++j)
        if (leading(j, j) == 0) leading(j, j) = 1; // held, without a slope
    const TVector along = ForwardSolved(leading, TVector(products.begin(), products.begin() + linear));
    TVector reduced(products.begin() + linear, products.end());
    for (int j = 0; j < Size(); ++j)
        reduced[static_cast<std::size_t>(j)] -= Dot(old.Column(linear + j).first(m_linearCount), along);
    model.OldJacobianTimesResiduals = std::move(reduced);
}

void TFitProblem::Reduce(const TRowQr& qr, TLinearModel& model) {
    m_triangle = qr.Triangle();
    model.Triangle = m_linearCount > 0 ? Trailing(m_triangle, Size()) : m_triangle;
    model.Projected.assign(qr.Projected().begin() + static_cast<std::ptrdiff_t>(m_linearCount),
                           qr.Projected().end());
    model.Gradient = TransposedTimes(model.Triangle, model.Projected);
}

std::vector<double> TFitProblem::ResidualsAt(std::span<const double> at) {
    Store(at);
    ++m_evaluations;
    std::vector<double> residuals(PointCount());
    ForEachChunk(0, [&](TFitChunk& chunk) {
        chunk.Rows.Residuals(chunk.Start, std::span(residuals).subspan(chunk.Start, chunk.Residuals.size()));
    });
    return residuals;
}

TVector TFitProblem::JacobianTimes(std::span<const double> at, std::span<const double> residuals) {
    Store(at);
    ++m_evaluations;
    const std::size_t width = m_rows.ParameterCount();
    std::vector<TVector> products(m_passes.PartCount(), TVector(width));
    ForEachChunk(width, [&](TFitChunk& chunk) {
        const std::size_t count = chunk.Residuals.size();
        chunk.Rows.AllRows(chunk.Start, chunk.Residuals, chunk.Columns);
        for (std::size_t j = 0; j < width; ++j)
            products[chunk.Part][j] +=
                Dot(chunk.Columns.subspan(j * count, count), residuals.subspan(chunk.Start, count));
    });
    return SumOf(products);
}

} // namespace lumoplot
