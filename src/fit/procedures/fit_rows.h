// The residuals of a model and its derivatives, chunk by chunk over the points of a fit, in scaled parameters
// and with the points' weights.
#pragma once

#include "expr/blocks/block_evaluator.h"
#include "fit/definition/cur_fit.h"
#include "fit/definition/dense.h"

namespace lumoplot {

/// The points of a fit, Y corrected; X and Y have the same length and are finite.
struct TFitPoints {
    std::vector<double> X;
    std::vector<double> Y;
    /// What residuals are multiplied by, 1/σ; empty where all count the same.
    std::vector<double> Weights;
};

/// The power of two that residuals are multiplied by: the largest weighted Y becomes 1 to 2.
double ResidualScaleOf(const TFitPoints& points);

class TFitRows {
public:
    /// The fit is compiled and the varied parameters have their starting values. The first `linearCount` of
    /// them are those that the model is linear in. All borrowed.
    TFitRows(TCurFit& fit, std::vector<TDBLParameter*> varied, std::size_t linearCount,
             const TFitPoints& points);

    /// The same rows by a copy of the fit, for another thread.
    TFitRows(const TFitRows& original, TCurFit& copy, std::vector<TDBLParameter*> varied);

    const TFitPoints& Points() const { return m_points; }
    std::size_t ParameterCount() const { return m_varied.size(); }
    std::vector<TDBLParameter*> ParametersFrom(std::size_t first) const {
        return {m_varied.begin() + static_cast<std::ptrdiff_t>(first), m_varied.end()};
    }
    /// value = scale * place, a power of two.
    double ScaleOf(std::size_t index) const { return m_scales[index]; }
    void Store(std::size_t index, double place) { *m_varied[index]->ValueRef() = place * m_scales[index]; }
    /// Residuals are multiplied by this power of two.
    double ResidualScale() const { return m_residualScale; }
    /// Half the sum of squares below which residuals are only rounding.
    double RoundingLevel() const { return m_roundingLevel; }

    /// The residuals from the point `start` on, as many as there is room for; returns their sum of squares.
    double Residuals(std::size_t start, std::span<double> residuals);
    /// Also the columns of the Jacobian, one behind the other: by all parameters, or by the linear ones.
    /// Where a derivative is not finite though the model is, a difference quotient serves.
    double AllRows(std::size_t start, std::span<double> residuals, std::span<double> columns);
    double LinearRows(std::size_t start, std::span<double> residuals, std::span<double> columns);

private:
    double Rows(TBlockEvaluator& evaluator, std::size_t start, std::span<double> residuals,
                std::span<double> columns);
    void MendColumn(std::size_t parameter, std::size_t start, std::span<const double> values,
                    std::span<double> column);
    double Finish(std::size_t start, std::span<double> values) const;

    std::vector<TDBLParameter*> m_varied;
    const TFitPoints& m_points;
    TVector m_scales;
    std::size_t m_linearCount;
    TBlockEvaluator m_all;
    TBlockEvaluator m_linear;
    double m_residualScale = 1;
    double m_roundingLevel = 0;
};

} // namespace lumoplot
