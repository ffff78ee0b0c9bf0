// Powell's method of conjugate directions: the value is minimised along each direction of a set, which learns
// from the way it went. It needs no derivatives.
//
// M. J. D. Powell, An efficient method for finding the minimum of a function of several variables without
// calculating derivatives, Computer Journal 7 (1964) 155-162.
#pragma once

#include "fit/procedures/minimiser.h"

namespace lumoplot {

class TPowell final : public TMinimiser {
public:
    TStop Minimise(TFitProblem& problem, const TVector& start, double tolerance) override;
};

} // namespace lumoplot
