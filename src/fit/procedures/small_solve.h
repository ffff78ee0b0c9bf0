// Equations with small upper triangles, also with those that have no inverse.
#pragma once

#include "fit/definition/dense.h"

namespace lumoplot {

/// x of R x = b, and x of Rᵀ x = b, for an upper triangle without zeros on its diagonal.
TVector BackSolved(const TMatrix& r, TVector b);
TVector ForwardSolved(const TMatrix& r, TVector b);

struct TSmallSolution {
    TVector X;
    double Rest = 0; ///< the square of what is left of b
};

/// x of R x = b; where columns depend on each other the shortest x in columns of equal length that leaves
/// the least.
TSmallSolution SolveTriangle(const TMatrix& r, const TVector& b);

/// The same with every x between its bounds (C. L. Lawson, R. J. Hanson, Solving Least Squares Problems,
/// 1974, chapter 23). Those that end on one are exactly there.
TSmallSolution SolveTriangleWithin(const TMatrix& r, const TVector& b, const TVector& low,
                                   const TVector& high);

/// Whether no column of unit length is a combination of the others.
bool HasIndependentColumns(TMatrix r);

} // namespace lumoplot
