// Starting values for parameters of which only the formula and the range of x are known.
#pragma once

#include "fit/procedures/fit_rows.h"

#include <optional>
#include <random>

namespace lumoplot {

/// Where points stand out narrowly.
struct TNarrowRange {
    double Middle = 0;
    double Width = 0; ///< above 0
};

/// An endless sequence of places, the same in every run. How a parameter scales with x says where to look:
/// places and widths among the points, rates as their inverse, phases and exponents near 1; some draws are
/// the start value times a power of ten.
class TScatteredStarts {
public:
    /// The fit is compiled; `parameters` have their start values. Narrow peaks of the points are looked at
    /// more often than chance would.
    TScatteredStarts(TCurFit& fit, const std::vector<TDBLParameter*>& parameters, const TFitPoints& points,
                     std::vector<TNarrowRange> narrow = {});

    /// The values of the next place.
    TVector Next();
    /// A place that shares some of its values with another.
    TVector NextLike(const TVector& values);

private:
    double Uniform(double low, double high);
    double LogUniform(double low, double high);
    double Signed(double value, double negativeShare);
    double DrawWithin(std::size_t parameter);
    double Draw(std::size_t parameter);
    double Length();
    double Place();
    double Shape();

    std::mt19937_64 m_random{1};
    std::vector<TNarrowRange> m_narrow;
    TVector m_starts;
    TVector m_min;
    TVector m_max;
    std::vector<std::optional<double>> m_powers;
    double m_left = 0;
    double m_right = 0;
    double m_shortest = 0; ///< of the distances and x that are not 0
    double m_longest = 0;
};

} // namespace lumoplot
