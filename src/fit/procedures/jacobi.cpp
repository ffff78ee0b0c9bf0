#include "fit/procedures/jacobi.h"

#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

constexpr int kMostSweeps = 30;
constexpr double kEpsilon = std::numeric_limits<double>::epsilon();

struct TRotation {
    double cosine;
    double sine;
};

// The rotation that makes the off-diagonal element b of the symmetric (a b; b c) vanish, by the smaller
// angle.
TRotation Diagonalising(double a, double b, double c) {
    const double zeta = (c - a) / (2 * b);
    const double tangent = std::copysign(1.0, zeta) / (std::abs(zeta) + std::hypot(1.0, zeta));
    const double cosine = 1 / std::hypot(1.0, tangent);
    return {cosine, cosine * tangent};
}

void Rotate(std::span<double> x, std::span<double> y, const TRotation& rotation) {
    for (std::size_t i = 0; i < x.size(); ++i) {
        const double old = x[i];
        x[i] = rotation.cosine * old - rotation.sine * y[i];
        y[i] = rotation.sine * old + rotation.cosine * y[i];
    }
}

void RotateRows(TMatrix& matrix, int p, int q, const TRotation& rotation) {
    for (int j = 0; j < matrix.Size(); ++j) {
        const double old = matrix(p, j);
        matrix(p, j) = rotation.cosine * old - rotation.sine * matrix(q, j);
        matrix(q, j) = rotation.sine * old + rotation.cosine * matrix(q, j);
    }
}

TMatrix Unit(int size) {
    TMatrix unit(size);
    for (int i = 0; i < size; ++i) unit(i, i) = 1;
    return unit;
}

/// Makes two columns orthogonal; false when they are.
bool Orthogonalise(TMatrix& columns, TMatrix& right, int p, int q) {
    const double a = Dot(columns.Column(p), columns.Column(p));
    const double b = Dot(columns.Column(p), columns.Column(q));
    const double c = Dot(columns.Column(q), columns.Column(q));
    if (std::abs(b) <= kEpsilon * std::sqrt(a) * std::sqrt(c)) return false;
    const TRotation rotation = Diagonalising(a, b, c);
    Rotate(columns.Column(p), columns.Column(q), rotation);
    Rotate(right.Column(p), right.Column(q), rotation);
    return true;
}

bool IsNegligible(const TMatrix& matrix, int p, int q) {
    return std::abs(matrix(p, q)) <=
           kEpsilon * std::sqrt(std::abs(matrix(p, p))) * std::sqrt(std::abs(matrix(q, q)));
}

} // namespace

TSingularValues DecomposeSingular(const TMatrix& matrix) {
    const int size = matrix.Size();
    TSingularValues result{TVector(static_cast<std::size_t>(size)), matrix, Unit(size)};
    bool rotated = true;
    for (int sweep = 0; rotated && sweep < kMostSweeps; ++sweep) {
        rotated = false;
        for (int p = 0; p + 1 < size; ++p)
            for (int q = p + 1; q < size; ++q) rotated |= Orthogonalise(result.Left, result.Right, p, q);
    }
    for (int j = 0; j < size; ++j) {
        const double value = Norm(result.Left.Column(j));
        result.Values[static_cast<std::size_t>(j)] = value;
        if (value > 0)
            for (double& element : result.Left.Column(j)) element /= value;
    }
    return result;
}

TEigenvalues DecomposeSymmetric(const TMatrix& matrix) {
    const int size = matrix.Size();
    TMatrix work = matrix;
    TEigenvalues result{TVector(static_cast<std::size_t>(size)), Unit(size)};
    bool rotated = true;
    for (int sweep = 0; rotated && sweep < kMostSweeps; ++sweep) {
        rotated = false;
        for (int p = 0; p + 1 < size; ++p) {
            for (int q = p + 1; q < size; ++q) {
                if (IsNegligible(work, p, q)) continue;
                rotated = true;
                const TRotation rotation = Diagonalising(work(p, p), work(p, q), work(q, q));
                Rotate(work.Column(p), work.Column(q), rotation);
                RotateRows(work, p, q, rotation);
                Rotate(result.Vectors.Column(p), result.Vectors.Column(q), rotation);
            }
        }
    }
    for (int j = 0; j < size; ++j) result.Values[static_cast<std::size_t>(j)] = work(j, j);
    return result;
}

} // namespace lumoplot
