// Decompositions of small matrices by plane rotations. They are slower than others for large matrices, but
// their small singular values are accurate, which decides about badly conditioned fits.
#pragma once

#include "fit/definition/dense.h"

namespace lumoplot {

/// matrix = Left * diag(Values) * Right^T; the values are not sorted, none is negative. A column of Left is 0
/// where its value is.
struct TSingularValues {
    TVector Values;
    TMatrix Left;
    TMatrix Right;
};

/// One-sided Jacobi rotations (Hestenes 1958; Demmel and Veselić 1992). The elements are finite.
TSingularValues DecomposeSingular(const TMatrix& matrix);

/// matrix = Vectors * diag(Values) * Vectors^T, not sorted.
struct TEigenvalues {
    TVector Values;
    TMatrix Vectors;
};

/// Jacobi's method for a symmetric matrix with finite elements (Golub and Van Loan, Matrix Computations,
/// section 8.5).
TEigenvalues DecomposeSymmetric(const TMatrix& matrix);

} // namespace lumoplot
