// The downhill simplex: a figure of one corner more than there are parameters crawls downhill. It needs no
// derivatives and no smooth model. Where it has collapsed a new one is set up around the best corner, until
// that finds nothing better.
//
// J. A. Nelder, R. Mead, A simplex method for function minimization, Computer Journal 7 (1965) 308-313;
// F. Gao, L. Han, Computational Optimization and Applications 51 (2012) 259-277, for factors that suit the
// number of parameters.
#pragma once

#include "fit/procedures/minimiser.h"

namespace lumoplot {

/// An iteration is as many moves as there are parameters.
class TSimplex final : public TMinimiser {
public:
    TStop Minimise(TFitProblem& problem, const TVector& start, double tolerance) override;
};

} // namespace lumoplot
