#include "fit/procedures/powell.h"

#include "fit/procedures/line_search.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kLineTolerance = 0.01;

/// A direction, and how far the search along it went last.
struct TDirection {
    TVector Vector;
    double LastStep = 1;
};

class TPowellRun {
public:
    TPowellRun(TFitProblem& problem, const TVector& start)
        : m_problem(problem), m_place(start), m_value(problem.Value(start)) {
        ResetDirections();
    }

    TStop Run(double tolerance) {
        for (bool isFresh = true; m_problem.NextIteration();) {
            if (m_value <= m_problem.RoundingLevel()) return TStop::ExactFit;
            const double before = m_value;
            const TVector from = m_place;
            Sweep();
            const bool hasStopped =
                before - m_value <= tolerance * before && RelativeChange(from) <= tolerance;
            if (hasStopped && isFresh) return TStop::Tolerance;
            // A set that has become dependent finds nothing: the axes have the last word.
            if (hasStopped) ResetDirections();
            isFresh = hasStopped;
        }
        return TStop::IterationLimit;
    }

private:
    void ResetDirections() {
        m_directions.assign(m_place.size(), {TVector(m_place.size())});
        for (std::size_t j = 0; j < m_place.size(); ++j)
            m_directions[j].Vector[j] = m_problem.FirstSteps()[j];
    }

    double RelativeChange(const TVector& from) const {
        double change = 0;
        for (std::size_t j = 0; j < from.size(); ++j)
            if (const double size = std::max(std::abs(from[j]), std::abs(m_place[j])); size > 0)
                change = std::max(change, std::abs(m_place[j] - from[j]) / size);
        return change;
    }

    // Each direction once; the one with the largest fall may give way to the way of the whole sweep.
    void Sweep() {
        const TVector from = m_place;
        const double before = m_value;
        std::size_t largest = 0;
        double largestFall = 0;
        for (std::size_t j = 0; j < m_directions.size(); ++j) {
            const double value = m_value;
            SearchAlong(m_directions[j]);
            if (value - m_value <= largestFall) continue;
            largestFall = value - m_value;
            largest = j;
        }
        TDirection way{m_place};
        AddTimes(way.Vector, -1, from);
        if (largestFall > 0 && IsWorthKeeping(way, before, largestFall)) {
            SearchAlong(way);
            m_directions[largest] = m_directions.back();
            m_directions.back() = std::move(way);
        }
    }

    // Powell's test: the way goes on falling, and the set stays independent.
    bool IsWorthKeeping(const TDirection& way, double before, double largestFall) {
        TVector beyond = m_place;
        AddTimes(beyond, 1, way.Vector);
        const double extrapolated = m_problem.Value(beyond);
        if (!(extrapolated < before)) return false;
        const double bend = 2 * (before - 2 * m_value + extrapolated);
        const double fall = before - m_value - largestFall;
        const double left = before - extrapolated;
        return bend * fall * fall < largestFall * left * left;
    }

    void SearchAlong(TDirection& direction) {
        const TLineMinimum found =
            MinimiseAlong(m_problem, m_place, m_value, direction.Vector, direction.LastStep, kLineTolerance);
        if (found.Step == 0) return;
        AddTimes(m_place, found.Step, direction.Vector);
        m_problem.Clamp(m_place);
        m_value = found.Value;
        direction.LastStep = found.Step;
    }

    TFitProblem& m_problem;
    TVector m_place;
    double m_value;
    std::vector<TDirection> m_directions;
};

} // namespace

TStop TPowell::Minimise(TFitProblem& problem, const TVector& start, double tolerance) {
    return TPowellRun(problem, start).Run(tolerance);
}

} // namespace lumoplot
