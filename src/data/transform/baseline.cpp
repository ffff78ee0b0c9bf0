#include "data/transform/baseline.h"

#include "data/transform/smoothing_window.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace lumoplot {
namespace {

constexpr int kHighestDegree = 9;

TCurveValues SortedPlaces(const TCurveValues& places) {
    if (places.X.size() < 2) throw ETransformError("A baseline needs two points or more");
    std::vector<std::size_t> order(places.X.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::sort(order, {}, [&](std::size_t i) { return places.X[i]; });
    TCurveValues sorted;
    for (const std::size_t i : order) {
        if (!std::isfinite(places.X[i]) || !std::isfinite(places.Y[i]))
            throw ETransformError("The points of a baseline must be finite");
        if (!sorted.X.empty() && places.X[i] == sorted.X.back())
            throw ETransformError("Two points of the baseline have the same X");
        sorted.X.push_back(places.X[i]);
        sorted.Y.push_back(places.Y[i]);
    }
    return sorted;
}

/// The number of the place to the right of the stretch that holds x; the stretches at the ends go on.
std::size_t RightOf(const TCurveValues& places, double x) {
    const auto right = std::ranges::lower_bound(places.X, x) - places.X.begin();
    return std::clamp<std::size_t>(static_cast<std::size_t>(right), 1, places.X.size() - 1);
}

double LineThrough(const TCurveValues& places, double x) {
    const std::size_t right = RightOf(places, x);
    const double part = (x - places.X[right - 1]) / (places.X[right] - places.X[right - 1]);
    return std::lerp(places.Y[right - 1], places.Y[right], part);
}

/// The second derivatives of the natural cubic spline at its places (tridiagonal system, Thomas).
std::vector<double> SplineBends(const TCurveValues& places) {
    const std::size_t count = places.X.size();
    std::vector<double> bends(count, 0);
    std::vector<double> upper(count, 0);
    for (std::size_t i = 1; i + 1 < count; ++i) {
        const double left = places.X[i] - places.X[i - 1];
        const double right = places.X[i + 1] - places.X[i];
        const double pivot = 2 * (left + right) - left * upper[i - 1];
        const double turn = (places.Y[i + 1] - places.Y[i]) / right - (places.Y[i] - places.Y[i - 1]) / left;
        upper[i] = right / pivot;
        bends[i] = (6 * turn - left * bends[i - 1]) / pivot;
    }
    for (std::size_t i = count - 1; i-- > 1;) bends[i] -= upper[i] * bends[i + 1];
    return bends;
}

class TNaturalSpline {
public:
    explicit TNaturalSpline(const TCurveValues& places) : m_places(places), m_bends(SplineBends(places)) {}

    double operator()(double x) const {
        if (x < m_places.X.front()) return At(0) + SlopeAtEnd(1, 0) * (x - m_places.X.front());
        const std::size_t last = m_places.X.size() - 1;
        if (x > m_places.X.back()) return At(last) + SlopeAtEnd(last, last) * (x - m_places.X.back());
        const std::size_t right = RightOf(m_places, x);
        const double length = m_places.X[right] - m_places.X[right - 1];
        const double b = (x - m_places.X[right - 1]) / length;
        const double a = 1 - b;
        return a * At(right - 1) + b * At(right) +
               ((a * a * a - a) * m_bends[right - 1] + (b * b * b - b) * m_bends[right]) * length * length /
                   6;
    }

private:
    double At(std::size_t place) const { return m_places.Y[place]; }
    /// At an end the spline has no bend of its own, only that of the place beside it.
    double SlopeAtEnd(std::size_t right, std::size_t end) const {
        const double length = m_places.X[right] - m_places.X[right - 1];
        const double line = (At(right) - At(right - 1)) / length;
        return end == 0 ? line - length * m_bends[right] / 6 : line + length * m_bends[right - 1] / 6;
    }

    const TCurveValues& m_places;
    std::vector<double> m_bends;
};

} // namespace

std::vector<double> BaselineAt(const TBaselineWish& wish, std::span<const double> x) {
    const TCurveValues places = SortedPlaces(wish.Places);
    const int degree =
        std::clamp(wish.Degree, 0, std::min(kHighestDegree, static_cast<int>(places.X.size()) - 1));
    const TNaturalSpline spline(places);
    std::vector<double> heights;
    heights.reserve(x.size());
    for (const double at : x) {
        switch (wish.Shape) {
        case TBaselineShape::Lines: heights.push_back(LineThrough(places, at)); break;
        case TBaselineShape::Polynomial: heights.push_back(LocalFit(places.X, places.Y, at, degree)); break;
        case TBaselineShape::Spline: heights.push_back(spline(at)); break;
        }
        if (!std::isfinite(heights.back()) && std::isfinite(at))
            throw ETransformError("The baseline leaves the range of numbers");
    }
    return heights;
}

} // namespace lumoplot
