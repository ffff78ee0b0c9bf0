// The variable metric method for least squares. Each step minimises a quadratic model of the sum of squares
// in a region where it is trusted. There are two models: that of Gauss and Newton, JᵀJ, and the augmented
// one, JᵀJ + S, whose S is a secant approximation of the curvature that the first neglects. Each step uses
// the one that predicted better; a problem with small residuals is solved as fast as by the first, one with
// large residuals as fast as by the second.
//
// J. E. Dennis, D. M. Gay, R. E. Welsch, An adaptive nonlinear least-squares algorithm, ACM Trans. Math.
// Software 7 (1981) 348-368. J. J. Moré, The Levenberg-Marquardt algorithm: implementation and theory, in:
// Numerical Analysis, Lecture Notes in Mathematics 630 (1978) 105-116, for the scaling of the region.
#pragma once

#include "fit/procedures/minimiser.h"

namespace lumoplot {

class TVariableMetric final : public TMinimiser {
public:
    TStop Minimise(TFitProblem& problem, const TVector& start, double tolerance) override;
};

} // namespace lumoplot
