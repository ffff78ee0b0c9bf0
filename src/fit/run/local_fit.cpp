#include "fit/run/local_fit.h"

#include "fit/procedures/minimiser.h"
#include "fit/procedures/variable_metric.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace lumoplot {
namespace {

constexpr double kLargestOffset = 1e-6;
constexpr double kRoundingFactor = 1000;
constexpr double kFewRoundings = 10;
constexpr double kFarFromRounding = 1e5;

class TLocalRun {
public:
    TLocalRun(const TFitTask& task, const TFitPoints& points) : m_task(task), m_points(points) {
        for (const TDBLParameter* parameter : task.Varied) m_start.push_back(parameter->Value());
        Set(TLinearPart::Project);
    }

    TLocalFit Run(TFitProcedure procedure) {
        try {
            Begin();
            Minimise(*MakeMinimiser(procedure));
            // Where a procedure lost its way, least squares may find one from the start.
            if (IsLost() && procedure != TFitProcedure::Newton) {
                TVariableMetric fromStart;
                Minimise(fromStart);
            }
        } catch (const TFitCancelled&) {
            m_problem->StoreBest();
            m_result.End = TFitEnd::Cancelled;
            Take(*m_problem, m_problem->BestValue());
        }
        m_result.Iterations = m_problem->Iterations();
        m_result.Evaluations += m_problem->Evaluations();
        return std::move(m_result);
    }

private:
    void Set(TLinearPart linearPart) {
        m_problem = std::make_unique<TFitProblem>(m_task.Fit, m_task.Varied, m_points, linearPart,
                                                  m_task.Progress, m_task.OnIteration);
    }

    // Where the best linear parameters have no values, all begin where they are.
    void Begin() {
        if (std::isfinite(m_problem->Value(m_problem->Start()))) return;
        for (std::size_t i = 0; i < m_start.size(); ++i) *m_task.Varied[i]->ValueRef() = m_start[i];
        Set(TLinearPart::Keep);
        if (!std::isfinite(m_problem->Value(m_problem->Start())))
            throw EFitError("The values of the equation are too large to be fitted");
    }

    bool IsLost() const {
        return m_result.End == TFitEnd::NoProgress || m_result.End == TFitEnd::NotDetermined;
    }

    void Minimise(TMinimiser& procedure) {
        const bool allAreLinear = m_problem->Size() == 0;
        const TStop stop = allAreLinear
                               ? TStop::Tolerance
                               : procedure.Minimise(*m_problem, m_problem->Start(), m_task.Fit.Tolerance());
        Finish(stop);
        if (stop != TStop::Tolerance || m_result.End != TFitEnd::NoProgress || allAreLinear) return;
        // A long flat valley: changes below the tolerance add up. Go on until they are rounding.
        const TVector place = m_problem->Best();
        Finish(TVariableMetric().Minimise(*m_problem, place, 0));
    }

    // Polishes the best place with all parameters.
    void Finish(TStop stop) {
        m_problem->StoreBest();
        m_result.Free = FreeParameters();
        if (m_result.Free.empty()) return FinishOnBounds();
        TFitProblem whole(m_task.Fit, m_result.Free, m_points, TLinearPart::Keep, m_task.Progress, {});
        const TPolished polished = Polish(whole);
        m_result.Evaluations += whole.Evaluations();
        if (!std::isfinite(polished.Model.Value)) {
            m_problem->StoreBest();
            m_result.End = TFitEnd::NoProgress;
            return Take(*m_problem, m_problem->BestValue());
        }
        whole.Store(polished.Model.At);
        m_result.Triangle = polished.Model.Triangle;
        for (int j = 0; j < whole.Size(); ++j)
            for (double& element : m_result.Triangle.Column(j))
                element /= whole.ScaleOf(j) * whole.ResidualScale();
        Take(whole, polished.Model.Value);
        m_result.IsDetermined =
            polished.IsDetermined && AllHaveInfluence(whole, polished.Model.Triangle, polished.Model.Value);
        m_result.End = EndOf(whole, stop, polished);
        if (!m_result.IsDetermined) m_result.End = TFitEnd::NotDetermined;
    }

    // Those that are not on a bound, and those that would leave it inwards.
    std::vector<TDBLParameter*> FreeParameters() {
        if (std::ranges::none_of(m_task.Varied, &TDBLParameter::IsOnBound)) return m_task.Varied;
        TFitProblem whole(m_task.Fit, m_task.Varied, m_points, TLinearPart::Keep, m_task.Progress, {});
        TLinearModel model;
        if (!whole.Linearise(whole.Start(), model)) return m_task.Varied;
        ++m_result.Evaluations;
        std::vector<TDBLParameter*> free;
        for (int j = 0; j < whole.Size(); ++j)
            if (!whole.IsHeld(model.At, model.Gradient, j))
                free.push_back(m_task.Varied[static_cast<std::size_t>(j)]);
        return free;
    }

    void FinishOnBounds() {
        m_result.Triangle = TMatrix();
        m_result.IsDetermined = true;
        m_result.End = TFitEnd::Converged;
        Take(*m_problem, m_problem->BestValue());
    }

    // A parameter of which the whole value changes the curve by no more than rounding is not determined.
    // Those that the model is linear in may be 0 at their best.
    bool AllHaveInfluence(const TFitProblem& whole, const TMatrix& triangle, double value) const {
        // Residuals that are rounding themselves tell nothing of what is near it.
        const bool isExact = value <= kRoundingFactor * kRoundingFactor * whole.RoundingLevel();
        const double rounding =
            (isExact ? kFarFromRounding : 1) * kFewRoundings * std::sqrt(2 * whole.RoundingLevel());
        for (const TDBLParameter* parameter : m_problem->Free()) {
            const auto free = std::ranges::find(m_result.Free, parameter);
            if (free == m_result.Free.end()) continue;
            const auto column = static_cast<int>(free - m_result.Free.begin());
            const auto i =
                static_cast<std::size_t>(std::ranges::find(m_task.Varied, parameter) - m_task.Varied.begin());
            const double start = m_start[i] != 0 ? std::abs(m_start[i]) : 1;
            const double size = std::max(std::abs(m_result.Values[i]), start) / whole.ScaleOf(column);
            if (Norm(triangle.Column(column)) * size <= rounding) return false;
        }
        return true;
    }

    static TFitEnd EndOf(const TFitProblem& problem, TStop stop, const TPolished& polished) {
        const bool isRounding = polished.Offset * polished.Offset * polished.Model.Value <=
                                kRoundingFactor * kRoundingFactor * problem.RoundingLevel();
        const bool isStationary = polished.Offset <= kLargestOffset || isRounding;
        if (isStationary && polished.IsMinimum && stop != TStop::IterationLimit) return TFitEnd::Converged;
        return stop == TStop::IterationLimit ? TFitEnd::IterationLimit : TFitEnd::NoProgress;
    }

    void Take(const TFitProblem& problem, double value) {
        m_result.ResidualScale = problem.ResidualScale();
        m_result.ScaledRss = 2 * value;
        m_result.Rss = 2 * value / problem.ResidualScale() / problem.ResidualScale();
        m_result.Values.clear();
        for (const TDBLParameter* parameter : m_task.Varied) m_result.Values.push_back(parameter->Value());
    }

    const TFitTask& m_task;
    const TFitPoints& m_points;
    TVector m_start;
    std::unique_ptr<TFitProblem> m_problem;
    TLocalFit m_result;
};

} // namespace

TLocalFit FitLocally(const TFitTask& task, const TFitPoints& points, TFitProcedure procedure) {
    return TLocalRun(task, points).Run(procedure);
}

} // namespace lumoplot
