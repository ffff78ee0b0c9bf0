#include "fit/procedures/variable_metric.h"

#include "fit/procedures/jacobi.h"
#include "fit/procedures/trust_region.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace lumoplot {
namespace {

constexpr double kAcceptedRatio = 1e-4;
constexpr double kSoundRatio = 0.1;
constexpr double kPoorRatio = 0.25;
constexpr double kGoodRatio = 0.75;
constexpr double kMildShrinking = 0.5;
constexpr double kModelMargin = 1.5;      // by which the other model must be nearer
constexpr double kRounding = 1e-13;       // of the value
constexpr double kSmallestRadius = 1e-15; // in units of the scaled parameters
constexpr double kFirstStepFactor = 100;

enum class TModelKind { GaussNewton, Augmented };

struct TStep {
    TVector Change;
    double Predicted; ///< how much the model says that the value falls
    bool IsNewton;
};

class TMetricRun {
public:
    TMetricRun(TFitProblem& problem, double tolerance)
        : m_problem(problem), m_tolerance(tolerance), m_size(problem.Size()), m_secant(m_size) {}

    TStop Run(const TVector& start) {
        if (!m_problem.Linearise(start, m_model)) return TStop::NoProgress;
        UpdateScales();
        FindHeld();
        TVector first(m_problem.FirstSteps());
        for (std::size_t j = 0; j < first.size(); ++j) first[j] *= m_scales[j];
        m_radius = kFirstStepFactor * Norm(first);
        for (;;) {
            if (m_model.Value <= m_problem.RoundingLevel()) return TStop::ExactFit;
            if (!m_problem.NextIteration()) return TStop::IterationLimit;
            if (const auto stop = TakeStep()) return *stop;
        }
    }

private:
    using TMaybeStop = std::optional<TStop>;

    // Tries steps until one makes the value smaller.
    TMaybeStop TakeStep() {
        m_decomposed = false;
        bool mayChangeModel = true;
        for (;;) {
            const TStep step = StepOf(m_kind);
            TVector place = m_model.At;
            AddTimes(place, 1, step.Change);
            m_problem.Clamp(place);
            if (place == m_model.At) return IsAnyHeld() ? TStop::Tolerance : TStop::NoProgress;
            const double value = m_problem.Value(place);
            const double actual = m_model.Value - value;
            const double ratio = step.Predicted > 0 ? actual / step.Predicted : -1;
            if (ratio >= kAcceptedRatio && actual > 0) {
                if (Accept(step, place, actual, ratio)) return StopAfter(step, actual, ratio);
            } else if (IsAtRounding(step, actual)) {
                return TStop::Tolerance;
            } else if (mayChangeModel && OtherPredicts(step, actual)) {
                mayChangeModel = false;
                m_kind = Other(m_kind);
                continue;
            }
            mayChangeModel = false;
            Shrink(step, actual);
            if (m_radius <= kSmallestRadius * ScaledNorm(m_model.At)) return TStop::NoProgress;
        }
    }

    // The step changes nothing that can be seen, and the model promises nothing more.
    bool IsAtRounding(const TStep& step, double actual) const {
        return step.IsNewton && std::abs(actual) <= kRounding * m_model.Value &&
               step.Predicted <= kRounding * m_model.Value;
    }

    TMaybeStop StopAfter(const TStep& step, double actual, double ratio) const {
        if (!step.IsNewton || ratio < kSoundRatio) return std::nullopt;
        const double value = m_model.Value + actual;
        const bool valueStays = actual <= m_tolerance * value && step.Predicted <= m_tolerance * value;
        return valueStays && RelativeChange(step) <= m_tolerance ? TMaybeStop(TStop::Tolerance)
                                                                 : std::nullopt;
    }

    double RelativeChange(const TStep& step) const {
        double change = 0;
        double size = 0;
        for (std::size_t j = 0; j < m_scales.size(); ++j) {
            change = std::max(change, m_scales[j] * std::abs(step.Change[j]));
            size = std::max(size, m_scales[j] * std::abs(m_model.At[j]));
        }
        return change / size;
    }

    // Parameters that would leave their bounds go there, and the others take the best step with that.
    TStep StepOf(TModelKind kind) {
        if (m_problem.IsBounded()) {
            m_fixed = m_held;
            m_moved.assign(m_fixed.size(), 0);
            m_decomposed = false;
        }
        for (;;) {
            TStep step = StepOfOthers(kind);
            if (FixThoseBeyond(step.Change)) continue;
            step.Predicted = Prediction(kind, step.Change);
            return step;
        }
    }

    TStep StepOfOthers(TModelKind kind) {
        const TTrustedStep trusted =
            MinimiseWithin(kind == TModelKind::GaussNewton ? GaussNewton() : Augmented(), m_radius);
        const TMatrix& basis = kind == TModelKind::GaussNewton ? m_singular.Right : m_augmented.Vectors;
        TStep step{Times(basis, trusted.Z), 0, trusted.IsInside};
        for (std::size_t j = 0; j < m_scales.size(); ++j)
            step.Change[j] = IsFixed(j) ? m_moved[j] : step.Change[j] / m_scales[j];
        return step;
    }

    bool FixThoseBeyond(const TVector& change) {
        if (!m_problem.IsBounded()) return false;
        TVector place = m_model.At;
        AddTimes(place, 1, change);
        const TVector wanted = place;
        m_problem.Clamp(place);
        bool isAny = false;
        for (std::size_t j = 0; j < place.size(); ++j) {
            if (m_fixed[j] || place[j] == wanted[j]) continue;
            m_moved[j] = place[j] - m_model.At[j];
            m_fixed[j] = isAny = true;
        }
        if (isAny) m_decomposed = false;
        return isAny;
    }

    bool IsFixed(std::size_t parameter) const { return m_problem.IsBounded() && m_fixed[parameter]; }
    bool IsAnyHeld() const { return std::ranges::count(m_held, true) > 0; }

    void FindHeld() {
        m_held.assign(static_cast<std::size_t>(m_size), false);
        for (int j = 0; j < m_size; ++j)
            m_held[static_cast<std::size_t>(j)] = m_problem.IsHeld(m_model.At, m_model.Gradient, j);
    }

    // The singular values of R in scaled parameters, once for each place and what is fixed there.
    TQuadraticModel GaussNewton() {
        if (!m_decomposed) {
            TMatrix scaled = m_model.Triangle;
            for (int j = 0; j < m_size; ++j) {
                const auto place = static_cast<std::size_t>(j);
                for (double& element : scaled.Column(j))
                    element = IsFixed(place) ? 0 : element / m_scales[place];
            }
            m_singular = DecomposeSingular(scaled);
            m_decomposed = true;
        }
        TVector projected = m_model.Projected;
        if (m_problem.IsBounded()) AddTimes(projected, 1, Times(m_model.Triangle, m_moved));
        TQuadraticModel model;
        for (int j = 0; j < m_size; ++j) {
            const double value = m_singular.Values[static_cast<std::size_t>(j)];
            model.Curvatures.push_back(value * value);
            model.Slopes.push_back(value * Dot(m_singular.Left.Column(j), projected));
        }
        return model;
    }

    double Curvature(int i, int j) const {
        return Dot(m_model.Triangle.Column(i), m_model.Triangle.Column(j)) + m_secant(i, j);
    }

    TQuadraticModel Augmented() {
        TMatrix curvature(m_size);
        TVector slope = m_model.Gradient;
        for (int i = 0; i < m_size; ++i) {
            const auto row = static_cast<std::size_t>(i);
            for (int j = 0; j < m_size; ++j) {
                const auto column = static_cast<std::size_t>(j);
                if (IsFixed(column)) slope[row] += Curvature(i, j) * m_moved[column];
                if (!IsFixed(row) && !IsFixed(column))
                    curvature(i, j) = Curvature(i, j) / m_scales[row] / m_scales[column];
            }
            slope[row] = IsFixed(row) ? 0 : slope[row] / m_scales[row];
        }
        m_augmented = DecomposeSymmetric(curvature);
        return {m_augmented.Values, TransposedTimes(m_augmented.Vectors, slope)};
    }

    double Prediction(TModelKind kind, const TVector& change) const {
        const TVector linear = Times(m_model.Triangle, change);
        double fall = -Dot(m_model.Gradient, change) - 0.5 * Dot(linear, linear);
        if (kind == TModelKind::Augmented) fall -= 0.5 * Dot(change, Times(m_secant, change));
        return fall;
    }

    static TModelKind Other(TModelKind kind) {
        return kind == TModelKind::GaussNewton ? TModelKind::Augmented : TModelKind::GaussNewton;
    }

    // The other model was clearly nearer to what happened, where anything is known.
    bool OtherPredicts(const TStep& step, double actual) const {
        if (!std::isfinite(actual) || !m_hasSecant) return false;
        const double other = Prediction(Other(m_kind), step.Change);
        return kModelMargin * std::abs(other - actual) < std::abs(step.Predicted - actual);
    }

    double ScaledNorm(const TVector& vector) const {
        double sum = 0;
        for (std::size_t j = 0; j < m_scales.size(); ++j)
            sum += m_scales[j] * vector[j] * m_scales[j] * vector[j];
        return std::sqrt(sum);
    }

    // The minimum of the parabola through what is known along the step, but neither too near nor too far.
    void Shrink(const TStep& step, double actual) {
        const double slope = Dot(m_model.Gradient, step.Change);
        const double factor =
            std::isfinite(actual) ? std::clamp(0.5 * slope / (slope + actual), 0.1, 0.5) : 0.1;
        m_radius = factor * std::min(m_radius, ScaledNorm(step.Change));
    }

    // Moves to the place and learns from the way there; false when the derivatives are not finite there.
    bool Accept(const TStep& step, const TVector& place, double actual, double ratio) {
        const bool changesModel = OtherPredicts(step, actual);
        const TLinearModel before = m_model;
        if (!m_problem.Linearise(place, m_model)) {
            m_model = before;
            return false;
        }
        if (changesModel) m_kind = Other(m_kind);
        UpdateSecant(before, step.Change);
        const double length = ScaledNorm(step.Change);
        if (ratio < kPoorRatio)
            m_radius = kMildShrinking * std::min(m_radius, length);
        else if (ratio >= kGoodRatio)
            m_radius = std::max(m_radius, 2 * length);
        UpdateScales();
        FindHeld();
        return true;
    }

    // The sized symmetric rank-two update of Dennis, Gay and Welsch.
    void UpdateSecant(const TLinearModel& before, const TVector& change) {
        TVector wanted = m_model.Gradient;
        AddTimes(wanted, -1, m_model.OldJacobianTimesResiduals);
        TVector y = m_model.Gradient;
        AddTimes(y, -1, before.Gradient);
        const double along = Dot(y, change);
        if (!(along > 0) || !std::isfinite(Norm(wanted))) return;
        const TVector product = Times(m_secant, change);
        const double old = Dot(change, product);
        const double sizing = old != 0 ? std::min(1.0, std::abs(Dot(change, wanted) / old)) : 1;
        TVector rest = wanted;
        AddTimes(rest, -sizing, product);
        const double twice = Dot(change, rest) / along;
        for (int i = 0; i < m_size; ++i) {
            for (int j = 0; j < m_size; ++j) {
                const auto a = static_cast<std::size_t>(i);
                const auto b = static_cast<std::size_t>(j);
                m_secant(i, j) =
                    sizing * m_secant(i, j) + (rest[a] * y[b] + y[a] * rest[b] - twice * y[a] * y[b]) / along;
            }
        }
        m_hasSecant = true;
    }

    // The longest that each column has been (Moré).
    void UpdateScales() {
        m_scales.resize(static_cast<std::size_t>(m_size), 0);
        for (int j = 0; j < m_size; ++j) {
            double& scale = m_scales[static_cast<std::size_t>(j)];
            scale = std::max(scale, Norm(m_model.Triangle.Column(j)));
            if (scale == 0) scale = 1;
        }
    }

    TFitProblem& m_problem;
    double m_tolerance;
    int m_size;
    TLinearModel m_model;
    TVector m_scales;
    double m_radius = 0;
    TModelKind m_kind = TModelKind::GaussNewton;
    TMatrix m_secant;
    bool m_hasSecant = false;
    bool m_decomposed = false;
    std::vector<bool> m_held;  ///< on a bound that only higher values are inside of
    std::vector<bool> m_fixed; ///< these, and those that the step takes to a bound
    TVector m_moved;           ///< how far it takes them
    TSingularValues m_singular;
    TEigenvalues m_augmented;
};

} // namespace

TStop TVariableMetric::Minimise(TFitProblem& problem, const TVector& start, double tolerance) {
    return TMetricRun(problem, tolerance).Run(start);
}

} // namespace lumoplot
