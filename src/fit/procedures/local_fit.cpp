#include "fit/procedures/local_fit.h"

#include "fit/procedures/minimiser.h"
#include "fit/procedures/variable_metric.h"

#include <cmath>
#include <memory>

namespace lumoplot {
namespace {

constexpr double kLargestOffset = 1e-6;
constexpr double kRoundingFactor = 1000;

class TLocalRun {
public:
    TLocalRun(const TFitTask& task, const TFitPoints& points) : m_task(task), m_points(points) {
        TVector start;
        for (const TDBLParameter* parameter : task.Varied) start.push_back(parameter->Value());
        Set(TLinearPart::Project);
        if (std::isfinite(m_problem->Value(m_problem->Start()))) return;
        for (std::size_t i = 0; i < start.size(); ++i) *task.Varied[i]->ValueRef() = start[i];
        Set(TLinearPart::Keep);
        if (!std::isfinite(m_problem->Value(m_problem->Start())))
            throw EFitError("The values of the equation are too large to be fitted");
    }

    TLocalFit Run(int procType) {
        try {
            Minimise(*MakeMinimiser(procType));
            // Where a procedure lost its way, least squares may find one from the start.
            if (IsLost() && procType != TCurFit::kNewton) {
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
        TFitProblem whole(m_task.Fit, m_task.Varied, m_points, TLinearPart::Keep, m_task.Progress, {});
        const TPolished polished = Polish(whole);
        m_result.Evaluations += whole.Evaluations();
        if (!std::isfinite(polished.Model.Value)) {
            m_problem->StoreBest();
            m_result.End = TFitEnd::NoProgress;
            return Take(*m_problem, m_problem->BestValue());
        }
        whole.Store(polished.Model.At);
        m_result.End = EndOf(whole, stop, polished);
        m_result.IsDetermined = polished.IsDetermined;
        m_result.Triangle = polished.Model.Triangle;
        for (int j = 0; j < whole.Size(); ++j)
            for (double& element : m_result.Triangle.Column(j))
                element /= whole.ScaleOf(j) * whole.ResidualScale();
        Take(whole, polished.Model.Value);
    }

    static TFitEnd EndOf(const TFitProblem& problem, TStop stop, const TPolished& polished) {
        if (!polished.IsDetermined) return TFitEnd::NotDetermined;
        const bool isRounding = polished.Offset * polished.Offset * polished.Model.Value <=
                                kRoundingFactor * kRoundingFactor * problem.RoundingLevel();
        const bool isStationary = polished.Offset <= kLargestOffset || isRounding;
        if (isStationary && polished.IsMinimum && stop != TStop::IterationLimit) return TFitEnd::Converged;
        return stop == TStop::IterationLimit ? TFitEnd::IterationLimit : TFitEnd::NoProgress;
    }

    void Take(const TFitProblem& problem, double value) {
        m_result.Rss = 2 * value / problem.ResidualScale() / problem.ResidualScale();
        m_result.Values.clear();
        for (const TDBLParameter* parameter : m_task.Varied) m_result.Values.push_back(parameter->Value());
    }

    const TFitTask& m_task;
    const TFitPoints& m_points;
    std::unique_ptr<TFitProblem> m_problem;
    TLocalFit m_result;
};

} // namespace

TLocalFit FitLocally(const TFitTask& task, const TFitPoints& points, int procType) {
    return TLocalRun(task, points).Run(procType);
}

} // namespace lumoplot
