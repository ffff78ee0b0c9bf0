// What the fitting procedures minimise: half the sum of squared residuals of a model over its points, as a
// function of the varied parameters in units of their starting values. Parameters that the model is linear in
// may be projected out: then it is a function of the others alone, and each place has the best values of
// the linear ones. Parameters stay between their bounds. It counts evaluations and iterations, remembers the
// best place, and stops a cancelled run.
//
// G. H. Golub, V. Pereyra, SIAM J. Numer. Anal. 10 (1973) 413-432; L. Kaufman, BIT 15 (1975) 49-57, for the
// Jacobian without the derivatives of the projection.
#pragma once

#include "fit/definition/cur_fit.h"
#include "fit/procedures/fit_passes.h"
#include "fit/procedures/row_qr.h"
#include "fit/procedures/small_solve.h"
#include "support/progress.h"

#include <functional>

namespace lumoplot {

/// Thrown through a procedure when the user has cancelled.
class TFitCancelled {};

/// The residuals f(x) − y at one place and how they change with the parameters: [J | r] = Q * [R | Q^T r].
/// With parameters projected out J is what remains of the columns of the others.
struct TLinearModel {
    TVector At;
    double Value = 0; ///< half the sum of squares
    TMatrix Triangle;
    TVector Projected; ///< Q^T r
    TVector Gradient;
    /// The new residuals times the Jacobian of the place before, as the secant method wants them; empty at
    /// first.
    TVector OldJacobianTimesResiduals;
};

/// What happens to the parameters that the model is linear in.
enum class TLinearPart { Keep, Project };

class TFitProblem {
public:
    /// After each iteration, with the best parameters in the fit.
    using TIterationHandler = std::function<void()>;

    /// The fit is compiled and its varied parameters (at least one) have their starting values. All borrowed.
    TFitProblem(TCurFit& fit, std::vector<TDBLParameter*> varied, const TFitPoints& points,
                TLinearPart linearPart, TProgress& progress, TIterationHandler onIteration);

    /// How many parameters a place has; with all projected out, none.
    int Size() const { return static_cast<int>(m_rows.ParameterCount() - m_linearCount); }
    /// The parameters of a place.
    std::vector<TDBLParameter*> Free() const { return m_rows.ParametersFrom(m_linearCount); }
    std::size_t PointCount() const { return m_rows.Points().X.size(); }
    const TFitPoints& Points() const { return m_rows.Points(); }
    const TVector& Start() const { return m_start; }
    /// The size of the first step for each parameter, from its StartDeviation.
    const TVector& FirstSteps() const { return m_firstSteps; }
    /// Half the sum of squares below which residuals are only rounding.
    double RoundingLevel() const { return m_rows.RoundingLevel(); }

    bool IsBounded() const { return m_isBounded; }
    /// Moves a place between the bounds of its parameters; what is off a bound by rounding only goes there.
    void Clamp(TVector& place) const;
    bool IsInside(std::span<const double> place) const;
    /// The parameter is on a bound, and the value would fall only beyond it.
    bool IsHeld(std::span<const double> place, std::span<const double> gradient, int index) const;

    /// Half the sum of squares at a place, or at that between the bounds; infinity where the model is not
    /// finite at every point.
    double Value(std::span<const double> at);
    /// Moves the linear model to a place; false, with the model useless, where it is not finite.
    bool Linearise(std::span<const double> at, TLinearModel& model);

    /// The residuals at a place, and J(at)^T times given residuals, one for each point; nothing projected.
    std::vector<double> ResidualsAt(std::span<const double> at);
    TVector JacobianTimes(std::span<const double> at, std::span<const double> residuals);

    /// For work that shares the processor's cores itself; before anything else.
    void UseOneThread() { m_passes.UseOneThread(); }

    /// Starts an iteration; false when the limit is reached.
    bool NextIteration();
    /// A limit for what follows, counted from the iterations so far.
    void SetIterationLimit(int limit) { m_iterationLimit = limit; }
    int IterationLimit() const { return m_iterationLimit; }
    int Iterations() const { return m_iterations; }
    int Evaluations() const { return m_evaluations; }

    const TVector& Best() const { return m_best; }
    double BestValue() const { return m_bestValue; }
    /// Puts the values of a place into the parameters of the fit; those projected out are left.
    void Store(std::span<const double> at);
    /// Puts the best values of all varied parameters into the fit.
    void StoreBest();
    /// The scale of a parameter: value = scale * place.
    double ScaleOf(int index) const {
        return m_rows.ScaleOf(m_linearCount + static_cast<std::size_t>(index));
    }
    /// Residuals are multiplied by this power of two.
    double ResidualScale() const { return m_rows.ResidualScale(); }

private:
    void CheckCancelled();
    void Note(std::span<const double> at, double value);
    void ForEachChunk(std::size_t columns, const std::function<void(TFitChunk&)>& work);
    double SumOfSquares();
    double SolveLinear(std::span<const double> at);
    void StoreLinear(std::span<const double> linear);
    void FindBounds(const std::vector<TDBLParameter*>& varied);
    TSmallSolution SolvedWithin(const TRowQr& qr) const;
    void Reduce(const TRowQr& qr, TLinearModel& model);
    void LearnOld(const TMatrix& old, TLinearModel& model);

    TProgress& m_progress;
    TIterationHandler m_onIteration;
    std::size_t m_linearCount;
    TFitRows m_rows; ///< the parameters that are projected out come first
    TFitPasses m_passes;
    TVector m_start;
    TVector m_firstSteps;
    TVector m_min; ///< bounds, of the linear parameters first
    TVector m_max;
    bool m_isBounded = false;
    TVector m_best;
    TVector m_bestLinear;
    double m_bestValue;
    TVector m_linearAt; ///< where the linear parameters were solved last, and their values
    TVector m_linear;
    std::vector<bool> m_isLinearHeld; ///< on a bound, so that it does not change with the others
    TVector m_clamped;
    int m_iterations = 0;
    int m_iterationLimit;
    int m_evaluations = 0;
    std::unique_ptr<double[]> m_jacobian; ///< a chunk of points behind the other, its columns one by one
    TMatrix m_triangle;                   ///< of that Jacobian
};

} // namespace lumoplot
