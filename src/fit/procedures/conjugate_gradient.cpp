#include "fit/procedures/conjugate_gradient.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kLostConjugacy = 0.2;
constexpr double kSufficientFall = 1e-4;
constexpr double kLongestStep = 2; // of the distance from 0, in scaled parameters
constexpr int kMostBacktracks = 40;
constexpr int kMostVertexSteps = 8;

class TGradientRun {
public:
    TGradientRun(TFitProblem& problem, double tolerance) : m_problem(problem), m_tolerance(tolerance) {}

    TStop Run(const TVector& start) {
        if (!m_problem.Linearise(start, m_model)) return TStop::NoProgress;
        Restart();
        while (m_problem.NextIteration()) {
            if (m_model.Value <= m_problem.RoundingLevel()) return TStop::ExactFit;
            const TLinearModel before = m_model;
            const double step = Search();
            if (step == 0) {
                if (m_isSteepest) return TStop::NoProgress;
                Restart();
                continue;
            }
            TVector place = before.At;
            AddTimes(place, step, m_direction);
            m_problem.Clamp(place);
            if (!m_problem.Linearise(place, m_model)) return TStop::NoProgress;
            if (HasConverged(before)) return TStop::Tolerance;
            Turn(before);
        }
        return TStop::IterationLimit;
    }

private:
    bool HasConverged(const TLinearModel& before) const {
        if (before.Value - m_model.Value > m_tolerance * m_model.Value) return false;
        for (std::size_t j = 0; j < m_model.At.size(); ++j)
            if (std::abs(m_model.At[j] - before.At[j]) > m_tolerance * std::abs(m_model.At[j])) return false;
        return true;
    }

    // The gradient in parameters of equal weight: the columns of the Jacobian have unit length there.
    TVector Preconditioned(const TVector& gradient) const {
        TVector scaled = gradient;
        for (std::size_t j = 0; j < scaled.size(); ++j) scaled[j] /= m_weights[j];
        for (int j = 0; j < m_problem.Size(); ++j)
            if (m_problem.IsHeld(m_model.At, m_model.Gradient, j)) scaled[static_cast<std::size_t>(j)] = 0;
        return scaled;
    }

    void Restart() {
        m_weights.assign(m_model.At.size(), 1);
        for (std::size_t j = 0; j < m_weights.size(); ++j) {
            const auto column = m_model.Triangle.Column(static_cast<int>(j));
            if (const double square = Dot(column, column); square > 0) m_weights[j] = square;
        }
        m_direction.assign(m_weights.size(), 0);
        AddTimes(m_direction, -1, Preconditioned(m_model.Gradient));
        m_isSteepest = true;
        m_sinceRestart = 0;
    }

    void Turn(const TLinearModel& before) {
        const TVector scaled = Preconditioned(m_model.Gradient);
        const double square = Dot(m_model.Gradient, scaled);
        const double common = Dot(before.Gradient, scaled);
        const double old = Dot(before.Gradient, Preconditioned(before.Gradient));
        const double beta = (square - common) / old;
        const bool isLost = std::abs(common) >= kLostConjugacy * square;
        ++m_sinceRestart;
        if (!(beta > 0) || (isLost && m_sinceRestart >= m_problem.Size())) return Restart();
        for (std::size_t j = 0; j < m_direction.size(); ++j)
            m_direction[j] = beta * m_direction[j] - scaled[j];
        m_isSteepest = false;
        if (!(Dot(m_model.Gradient, m_direction) < 0)) Restart();
    }

    double ValueAt(double step) {
        TVector place = m_model.At;
        AddTimes(place, step, m_direction);
        return m_problem.Value(place);
    }

    // A step that makes the value sufficiently smaller; 0 when there is none. It starts with the minimum of
    // the linear model along the direction and stays within reach of the parameters.
    double Search() {
        const double slope = Dot(m_model.Gradient, m_direction);
        const TVector linear = Times(m_model.Triangle, m_direction);
        double step = std::min(-slope / Dot(linear, linear), LongestStep());
        double value = ValueAt(step);
        for (int i = 0; i < kMostBacktracks; ++i) {
            if (value <= m_model.Value + kSufficientFall * step * slope) return Refined(step, value, slope);
            const double vertex = Vertex(step, value, slope);
            step = std::isfinite(value) ? std::clamp(vertex, 0.1 * step, 0.5 * step) : 0.1 * step;
            value = ValueAt(step);
        }
        return 0;
    }

    double LongestStep() const {
        double longest = 0;
        for (std::size_t j = 0; j < m_direction.size(); ++j) {
            const double reach = kLongestStep * std::max(std::abs(m_model.At[j]), m_problem.FirstSteps()[j]);
            if (m_direction[j] != 0) longest = std::max(longest, reach / std::abs(m_direction[j]));
        }
        return longest;
    }

    // Of the parabola with the value and the slope at the start and a value behind.
    double Vertex(double step, double value, double slope) const {
        return -0.5 * slope * step * step / (value - m_model.Value - slope * step);
    }

    // Goes to the vertex of the parabola while that is clearly elsewhere and lower.
    double Refined(double step, double value, double slope) {
        for (int i = 0; i < kMostVertexSteps; ++i) {
            double vertex = Vertex(step, value, slope);
            if (!(vertex > 0) || vertex > 4 * step) vertex = 4 * step;
            if (std::abs(vertex - step) <= 0.1 * step) return step;
            const double next = ValueAt(vertex);
            if (!(next < value)) return step;
            step = vertex;
            value = next;
        }
        return step;
    }

    TFitProblem& m_problem;
    double m_tolerance;
    TLinearModel m_model;
    TVector m_weights;
    TVector m_direction;
    bool m_isSteepest = true;
    int m_sinceRestart = 0;
};

} // namespace

TStop TConjugateGradient::Minimise(TFitProblem& problem, const TVector& start, double tolerance) {
    return TGradientRun(problem, tolerance).Run(start);
}

} // namespace lumoplot
