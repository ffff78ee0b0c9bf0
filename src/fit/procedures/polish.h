// The last digits of a fit. Near a minimum the sum of squares is flat and says nothing any more; the
// projected residuals Qᵀr, which vanish at the minimum, still do.
#pragma once

#include "fit/procedures/fit_problem.h"

namespace lumoplot {

/// What is known of a place after polishing it.
struct TPolished {
    TLinearModel Model;
    /// ‖Qᵀr‖ / ‖r‖: 0 at a stationary place (Bates and Watts, Technometrics 23, 1981).
    double Offset = 1;
    /// The columns of the Jacobian are independent: the data determine all parameters.
    bool IsDetermined = false;
    /// No direction is known in which the sum of squares falls.
    bool IsMinimum = true;
};

/// Improves the problem's best place by Newton steps in the basis of R, with the curvature of the model from
/// differences of its exact derivatives, until the steps are rounding. A place that is no stationary one is
/// left, and no step leaves the bounds.
TPolished Polish(TFitProblem& problem);

} // namespace lumoplot
