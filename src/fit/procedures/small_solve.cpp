#include "fit/procedures/small_solve.h"

#include "fit/procedures/jacobi.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kDependent = 1e-14; // singular values of unit columns
constexpr double kClearlyRegular = 1e-6;

// The columns of unit length; one that is 0 stays.
TMatrix UnitColumns(TMatrix r, TVector& lengths) {
    for (int j = 0; j < r.Size(); ++j) {
        lengths.push_back(Norm(r.Column(j)));
        if (lengths.back() > 0)
            for (double& element : r.Column(j)) element /= lengths.back();
    }
    return r;
}

bool IsClearlyRegular(const TMatrix& r) {
    for (int j = 0; j < r.Size(); ++j)
        if (!(std::abs(r(j, j)) > kClearlyRegular * Norm(r.Column(j)))) return false;
    return true;
}

} // namespace

TVector BackSolved(const TMatrix& r, TVector b) {
    for (int j = r.Size() - 1; j >= 0; --j) {
        double& x = b[static_cast<std::size_t>(j)];
        x /= r(j, j);
        AddTimes(std::span(b).first(static_cast<std::size_t>(j)), -x, r.Column(j));
    }
    return b;
}

TVector ForwardSolved(const TMatrix& r, TVector b) {
    for (int j = 0; j < r.Size(); ++j) {
        const auto before = static_cast<std::size_t>(j);
        b[before] = (b[before] - Dot(r.Column(j).first(before), std::span(b).first(before))) / r(j, j);
    }
    return b;
}

TSmallSolution SolveTriangle(const TMatrix& r, const TVector& b) {
    if (IsClearlyRegular(r)) return {BackSolved(r, b), 0};
    TVector lengths;
    const TSingularValues parts = DecomposeSingular(UnitColumns(r, lengths));
    const double smallest = kDependent * *std::ranges::max_element(parts.Values);
    TSmallSolution solution{TVector(b.size()), 0};
    TVector left = b;
    for (int j = 0; j < r.Size(); ++j) {
        const double value = parts.Values[static_cast<std::size_t>(j)];
        if (!(value > smallest)) continue;
        const double along = Dot(parts.Left.Column(j), b);
        AddTimes(solution.X, along / value, parts.Right.Column(j));
        AddTimes(left, -along, parts.Left.Column(j));
    }
    for (std::size_t j = 0; j < lengths.size(); ++j)
        if (lengths[j] > 0) solution.X[j] /= lengths[j];
    solution.Rest = Dot(left, left);
    return solution;
}

bool HasIndependentColumns(TMatrix r) {
    TVector lengths;
    const TMatrix unit = UnitColumns(std::move(r), lengths);
    for (int j = 0; j < unit.Size(); ++j)
        if (!(lengths[static_cast<std::size_t>(j)] > 0) || unit(j, j) == 0) return false;
    const TVector values = DecomposeSingular(unit).Values;
    return *std::ranges::min_element(values) > kDependent * *std::ranges::max_element(values);
}

} // namespace lumoplot
