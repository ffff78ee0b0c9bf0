// The QR factors of a tall matrix that arrives in blocks of rows. Only the small triangle is kept, so a fit
// of millions of points needs no more memory for it than one of ten.
#pragma once

#include "fit/definition/dense.h"

namespace lumoplot {

/// Householder reflections of the triangle on top of each new block (Golub and Van Loan, Matrix Computations,
/// section 6.5). Factors [J | r] into Q * [R | Q^T r].
class TRowQr {
public:
    explicit TRowQr(int columns) : m_triangle(columns), m_projected(static_cast<std::size_t>(columns)) {}

    /// Adds rows. `columns` holds each column's rows one behind the other; both are overwritten.
    void AddRows(std::span<double> columns, std::span<double> right);

    /// Adds the rows of another, by their triangle. Returns the square of what then is left of its right
    /// side, as AddRows leaves it there.
    double Add(const TRowQr& other);

    const TMatrix& Triangle() const { return m_triangle; }
    const TVector& Projected() const { return m_projected; }

private:
    TMatrix m_triangle;
    TVector m_projected;
};

} // namespace lumoplot
