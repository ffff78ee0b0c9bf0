#include "fit/definition/dense.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace lumoplot {

double Dot(std::span<const double> a, std::span<const double> b) {
    constexpr std::size_t kLanes = 8;
    std::array<double, kLanes> sums = {};
    std::size_t i = 0;
    for (; i + kLanes <= a.size(); i += kLanes)
        for (std::size_t k = 0; k < kLanes; ++k) sums[k] += a[i + k] * b[i + k];
    double rest = 0;
    for (; i < a.size(); ++i) rest += a[i] * b[i];
    return ((sums[0] + sums[4]) + (sums[1] + sums[5])) + ((sums[2] + sums[6]) + (sums[3] + sums[7])) + rest;
}

double Norm(std::span<const double> a) {
    return std::sqrt(Dot(a, a));
}

void AddTimes(std::span<double> y, double factor, std::span<const double> x) {
    for (std::size_t i = 0; i < y.size(); ++i) y[i] += factor * x[i];
}

// In units of the largest one: squares may be too small or too large for a number.
double CombinedError(const TMatrix& correlations, std::span<const double> errors) {
    double unit = 0;
    for (const double error : errors) unit = std::isnan(error) ? error : std::max(unit, std::abs(error));
    if (!(unit > 0)) return unit;
    double variance = 0;
    for (std::size_t i = 0; i < errors.size(); ++i)
        for (std::size_t j = 0; j < errors.size(); ++j)
            if (errors[i] != 0 && errors[j] != 0)
                variance += (errors[i] / unit) * (errors[j] / unit) *
                            correlations(static_cast<int>(i), static_cast<int>(j));
    return unit * std::sqrt(std::max(variance, 0.0));
}

TVector Times(const TMatrix& matrix, std::span<const double> x) {
    TVector product(x.size());
    for (int j = 0; j < matrix.Size(); ++j)
        AddTimes(product, x[static_cast<std::size_t>(j)], matrix.Column(j));
    return product;
}

TVector TransposedTimes(const TMatrix& matrix, std::span<const double> x) {
    TVector product(x.size());
    for (int j = 0; j < matrix.Size(); ++j) product[static_cast<std::size_t>(j)] = Dot(matrix.Column(j), x);
    return product;
}

} // namespace lumoplot
