#include "fit/procedures/minimiser.h"

#include "fit/procedures/conjugate_gradient.h"
#include "fit/procedures/powell.h"
#include "fit/procedures/simplex.h"
#include "fit/procedures/variable_metric.h"

#include <cmath>

namespace lumoplot {
namespace {

/// Lets a procedure of another kind find the place and the variable metric finish the work there.
class TFinished final : public TMinimiser {
public:
    explicit TFinished(std::unique_ptr<TMinimiser> first) : m_first(std::move(first)) {}

    // The first gets three quarters of the iterations and needs to come only half as many digits near.
    TStop Minimise(TFitProblem& problem, const TVector& start, double tolerance) override {
        const int limit = problem.IterationLimit();
        problem.SetIterationLimit(limit - limit / 4);
        m_first->Minimise(problem, start, std::sqrt(tolerance));
        problem.SetIterationLimit(limit);
        const TVector place = problem.Best();
        return TVariableMetric().Minimise(problem, place, tolerance);
    }

private:
    std::unique_ptr<TMinimiser> m_first;
};

} // namespace

std::unique_ptr<TMinimiser> MakeMinimiser(TFitProcedure procedure) {
    switch (procedure) {
    case TFitProcedure::Powell: return std::make_unique<TFinished>(std::make_unique<TPowell>());
    case TFitProcedure::Simplex: return std::make_unique<TFinished>(std::make_unique<TSimplex>());
    case TFitProcedure::ConjugateGradient:
        return std::make_unique<TFinished>(std::make_unique<TConjugateGradient>());
    case TFitProcedure::Newton: break;
    }
    return std::make_unique<TVariableMetric>();
}

} // namespace lumoplot
