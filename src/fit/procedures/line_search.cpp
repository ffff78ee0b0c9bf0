#include "fit/procedures/line_search.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kGolden = 0.3819660112501051; // the smaller part of a golden section
constexpr double kGrowth = 2.618033988749895;
constexpr int kMostGrowths = 4; // a first step of a hundredth then reaches half of the parameter
constexpr int kMostShrinks = 12;
constexpr int kMostNarrowings = 12;

struct TTrial {
    double step;
    double value;
};

class TLineSearch {
public:
    TLineSearch(TFitProblem& problem, const TVector& from, double value, const TVector& direction)
        : m_problem(problem), m_from(from), m_direction(direction), m_best{0, value} {}

    TLineMinimum Run(double firstStep, double tolerance) {
        if (FindLower(firstStep)) {
            Grow();
            Narrow(tolerance);
        }
        return {m_best.step, m_best.value};
    }

private:
    TTrial At(double step) {
        TVector place = m_from;
        AddTimes(place, step, m_direction);
        return {step, m_problem.Value(place)};
    }

    // A lower value on one of the sides, at smaller and smaller distances. Leaves the start behind the best.
    bool FindLower(double step) {
        for (int i = 0; i < kMostShrinks; ++i, step *= 0.25) {
            for (const double side : {step, -step}) {
                const TTrial trial = At(side);
                if (trial.value < m_best.value) {
                    m_behind = m_best;
                    m_best = trial;
                    return true;
                }
            }
        }
        return false;
    }

    // Steps on until the values rise again.
    void Grow() {
        for (int i = 0; i < kMostGrowths; ++i) {
            m_ahead = At(m_best.step + kGrowth * (m_best.step - m_behind.step));
            if (!(m_ahead.value < m_best.value)) return;
            m_behind = m_best;
            m_best = m_ahead;
        }
    }

    // Keeps the best between two places that are higher.
    void Narrow(double tolerance) {
        for (int i = 0; i < kMostNarrowings; ++i) {
            const double length = std::abs(m_ahead.step - m_behind.step);
            if (length <= tolerance * std::abs(m_best.step)) return;
            const TTrial trial = At(NextStep());
            if (trial.step == m_best.step) return;
            const bool isAhead = (trial.step > m_best.step) == (m_ahead.step > m_best.step);
            if (trial.value < m_best.value) {
                const double fall = m_best.value - trial.value;
                (isAhead ? m_behind : m_ahead) = m_best;
                m_best = trial;
                if (fall <= tolerance * tolerance * m_best.value) return;
            } else {
                (isAhead ? m_ahead : m_behind) = trial;
            }
        }
    }

    // The vertex of the parabola through the three places, or a golden section of the longer side.
    double NextStep() const {
        const double p = m_behind.step - m_best.step;
        const double q = m_ahead.step - m_best.step;
        const double riseP = (m_behind.value - m_best.value) / p;
        const double riseQ = (m_ahead.value - m_best.value) / q;
        const double curvature = (riseQ - riseP) / (q - p);
        const double vertex = -(riseP - curvature * p) / (2 * curvature);
        const double nearest = 0.02 * std::min(std::abs(p), std::abs(q));
        if (std::isfinite(vertex) && curvature > 0 && std::abs(vertex) >= nearest &&
            vertex > std::min(p, q) && vertex < std::max(p, q))
            return m_best.step + vertex;
        return m_best.step + kGolden * (std::abs(p) > std::abs(q) ? p : q);
    }

    TFitProblem& m_problem;
    const TVector& m_from;
    const TVector& m_direction;
    TTrial m_best;
    TTrial m_behind = {};
    TTrial m_ahead = {};
};

} // namespace

TLineMinimum MinimiseAlong(TFitProblem& problem, const TVector& from, double value, const TVector& direction,
                           double firstStep, double tolerance) {
    return TLineSearch(problem, from, value, direction).Run(firstStep, tolerance);
}

} // namespace lumoplot
