// What the fitting procedures minimise: half the sum of squared residuals of a model over its points, as a
// function of the varied parameters in units of their starting values. It counts evaluations and iterations,
// remembers the best place, and stops a cancelled run.
#pragma once

#include "expr/blocks/block_evaluator.h"
#include "fit/definition/cur_fit.h"
#include "fit/procedures/row_qr.h"
#include "support/progress.h"

#include <functional>

namespace lumoplot {

/// Thrown through a procedure when the user has cancelled.
class TFitCancelled {};

/// The points of a fit, Y corrected; X and Y have the same length and are finite.
struct TFitPoints {
    std::vector<double> X;
    std::vector<double> Y;
};

/// The residuals f(x) − y at one place and how they change with the parameters: [J | r] = Q * [R | Q^T r].
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

class TFitProblem {
public:
    /// After each iteration, with the best parameters in the fit.
    using TIterationHandler = std::function<void()>;

    /// The fit is compiled and its varied parameters (at least one) have their starting values. All borrowed.
    TFitProblem(TCurFit& fit, std::vector<TDBLParameter*> varied, TFitPoints points, TProgress& progress,
                TIterationHandler onIteration);

    int Size() const { return static_cast<int>(m_varied.size()); }
    std::size_t PointCount() const { return m_points.X.size(); }
    const TFitPoints& Points() const { return m_points; }
    const TVector& Start() const { return m_start; }
    /// The size of the first step for each parameter, from its StartDeviation.
    const TVector& FirstSteps() const { return m_firstSteps; }
    /// Half the sum of squares below which residuals are only rounding.
    double RoundingLevel() const { return m_roundingLevel; }

    /// Half the sum of squares at a place; infinity where the model is not finite at every point.
    double Value(std::span<const double> at);
    /// Moves the linear model to a place; false, with the model useless, where it is not finite.
    bool Linearise(std::span<const double> at, TLinearModel& model);

    /// The residuals at a place, and J(at)^T times given residuals, one for each point.
    std::vector<double> ResidualsAt(std::span<const double> at);
    TVector JacobianTimes(std::span<const double> at, std::span<const double> residuals);

    /// Starts an iteration; false when the limit is reached.
    bool NextIteration();
    /// A limit for what follows, counted from the iterations so far.
    void SetIterationLimit(int limit) { m_iterationLimit = limit; }
    int IterationLimit() const { return m_iterationLimit; }
    int Iterations() const { return m_iterations; }
    int Evaluations() const { return m_evaluations; }

    const TVector& Best() const { return m_best; }
    double BestValue() const { return m_bestValue; }
    /// Puts the values of a place into the parameters of the fit.
    void Store(std::span<const double> at);
    /// The scale of a parameter: value = scale * place.
    double ScaleOf(int index) const { return m_scales[static_cast<std::size_t>(index)]; }
    /// Residuals are multiplied by this power of two.
    double ResidualScale() const { return m_residualScale; }

private:
    void CheckCancelled();
    void Note(std::span<const double> at, double value);
    std::size_t ChunkAt(std::size_t start) const;
    double Residuals(std::size_t start, std::span<double> values) const;
    void EvaluateRows(std::size_t start, std::span<double> residuals, std::span<double> rows);
    void AddRows(std::size_t start, std::size_t count, TRowQr& qr, TLinearModel& model);

    TCurFit& m_fit;
    std::vector<TDBLParameter*> m_varied;
    TFitPoints m_points;
    TProgress& m_progress;
    TIterationHandler m_onIteration;
    TBlockEvaluator m_evaluator;
    TVector m_scales;
    TVector m_start;
    TVector m_firstSteps;
    double m_residualScale = 1;
    double m_roundingLevel = 0;
    TVector m_best;
    double m_bestValue;
    int m_iterations = 0;
    int m_iterationLimit;
    int m_evaluations = 0;
    std::vector<double> m_jacobian; ///< a chunk of points behind the other, its columns one by one
    std::vector<double> m_work;
    std::vector<double> m_residuals;
};

} // namespace lumoplot
