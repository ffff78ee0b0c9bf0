// The method of conjugate gradients, in the form of Polak and Ribière, with exact gradients. It restarts from
// the steepest descent when the directions have lost their conjugacy.
//
// E. Polak, G. Ribière, Revue française d'informatique et de recherche opérationnelle 3 (1969) 35-43;
// M. J. D. Powell, Mathematical Programming 12 (1977) 241-254, for the restarts; J. Nocedal, S. J. Wright,
// Numerical Optimization (2006), section 5.2, for the safeguards.
#pragma once

#include "fit/procedures/minimiser.h"

namespace lumoplot {

class TConjugateGradient final : public TMinimiser {
public:
    TStop Minimise(TFitProblem& problem, const TVector& start, double tolerance) override;
};

} // namespace lumoplot
