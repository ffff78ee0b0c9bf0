// The step that a quadratic model takes within a region where it is trusted.
#pragma once

#include "fit/definition/dense.h"

namespace lumoplot {

/// A quadratic model in the basis of its curvatures: slopes·z + ½ Σ curvature z².
struct TQuadraticModel {
    TVector Curvatures;
    TVector Slopes;
};

struct TTrustedStep {
    TVector Z;
    /// The model's own minimum lies inside: the step is that of Newton.
    bool IsInside = false;
};

/// Minimises the model over ‖z‖ ≤ radius, to a tenth of the radius, by Newton's method on the secular
/// equation (Moré and Sorensen, SIAM J. Sci. Stat. Comput. 4, 1983; Hebden 1973), negative curvatures
/// included. Directions without slope and curvature are left alone.
TTrustedStep MinimiseWithin(const TQuadraticModel& model, double radius);

} // namespace lumoplot
