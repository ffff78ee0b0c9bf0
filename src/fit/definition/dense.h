// Small dense matrices and vectors of the fitting procedures. A few dozen rows and columns; the long columns
// of data never become such a matrix.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace lumoplot {

using TVector = std::vector<double>;

/// A square matrix, stored by columns, 0 everywhere at first.
class TMatrix {
public:
    explicit TMatrix(int size = 0)
        : m_size(size), m_values(static_cast<std::size_t>(size) * static_cast<std::size_t>(size)) {}

    int Size() const { return m_size; }
    double& operator()(int row, int column) { return m_values[Place(row, column)]; }
    double operator()(int row, int column) const { return m_values[Place(row, column)]; }
    std::span<double> Column(int column) { return std::span(m_values).subspan(Place(0, column), Rows()); }
    std::span<const double> Column(int column) const {
        return std::span(m_values).subspan(Place(0, column), Rows());
    }

private:
    std::size_t Rows() const { return static_cast<std::size_t>(m_size); }
    std::size_t Place(int row, int column) const {
        return static_cast<std::size_t>(column) * Rows() + static_cast<std::size_t>(row);
    }

    int m_size;
    std::vector<double> m_values;
};

/// Sums of products in several partial sums, which is faster than one and rounds less. `a` and `b` have the
/// same length.
double Dot(std::span<const double> a, std::span<const double> b);
double Norm(std::span<const double> a);
/// y += factor * x.
void AddTimes(std::span<double> y, double factor, std::span<const double> x);

/// The error of a sum of estimates with these correlations, from the error that each brings in (with its
/// sign). An estimate that brings in none may have correlations that are not known.
double CombinedError(const TMatrix& correlations, std::span<const double> errors);

/// matrix * x, and the transposed matrix * x.
TVector Times(const TMatrix& matrix, std::span<const double> x);
TVector TransposedTimes(const TMatrix& matrix, std::span<const double> x);

} // namespace lumoplot
