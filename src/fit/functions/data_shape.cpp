#include "fit/functions/data_shape.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <numeric>

namespace lumoplot {
namespace {

constexpr std::size_t kSmoothingParts = 25; // of the points
constexpr int kMostPeaks = 4;
constexpr int kEvenPlaces = 7;
constexpr int kMostFrequencies = 3;
constexpr int kFrequencySteps = 6; // for each that the range tells apart
constexpr int kMostSearched = 2000;
constexpr std::size_t kMostLookedAt = 2000;
constexpr std::size_t kMostNarrowWidths = 2;
constexpr double kWidthInPeak = 0.35; // the standard deviation, in what stands out of a Gaussian peak

struct TCourse {
    std::vector<double> X;
    std::vector<double> Y;
};

// Of very many points the means of neighbours: what follows takes time by the square of their number.
TCourse CourseOf(const TFitPoints& ordered) {
    TFitPoints few = Condensed(ordered, {}, kMostLookedAt, TNeighbours::Mean);
    return {std::move(few.X), std::move(few.Y)};
}

// What is narrower than the smoothed course can show.
void AddNarrowPeaks(const TFitPoints& ordered, const std::vector<TNarrowPeak>& peaks, TDataShape& shape) {
    for (const TNarrowPeak& peak : peaks) {
        shape.Places.push_back(ordered.X[peak.Center]);
        const std::size_t first = peak.Center - std::min(peak.Center, (peak.Count + 1) / 2);
        const std::size_t last = std::min(peak.Center + (peak.Count + 1) / 2, ordered.X.size() - 1);
        if (shape.Widths.size() < kMostNarrowWidths)
            shape.Widths.push_back(kWidthInPeak * (ordered.X[last] - ordered.X[first]));
    }
}

// The mean of a few neighbours.
TCourse Smoothed(const TCourse& course) {
    const std::size_t half = course.Y.size() / kSmoothingParts / 2;
    TCourse smooth = course;
    for (std::size_t i = 0; i < course.Y.size(); ++i) {
        const std::size_t reach = std::min({half, i, course.Y.size() - 1 - i});
        const auto first = course.Y.begin() + static_cast<std::ptrdiff_t>(i - reach);
        smooth.Y[i] = std::accumulate(first, first + static_cast<std::ptrdiff_t>(2 * reach + 1), 0.0) /
                      static_cast<double>(2 * reach + 1);
    }
    return smooth;
}

// Local extremes, those that stand out most first. `side` is 1 for peaks, -1 for valleys.
std::vector<std::size_t> Extremes(const std::vector<double>& y, double side) {
    std::vector<std::pair<double, std::size_t>> found;
    for (std::size_t i = 0; i < y.size(); ++i) {
        double left = side * y[i];
        double right = side * y[i];
        for (std::size_t k = i; k-- > 0 && side * y[k] <= side * y[i];) left = std::min(left, side * y[k]);
        for (std::size_t k = i + 1; k < y.size() && side * y[k] <= side * y[i]; ++k)
            right = std::min(right, side * y[k]);
        const double rise = side * y[i] - std::max(left, right);
        if (rise > 0) found.emplace_back(-rise, i);
    }
    std::ranges::sort(found);
    std::vector<std::size_t> places;
    for (const auto& [rise, place] : found) places.push_back(place);
    if (places.size() > kMostPeaks) places.resize(kMostPeaks);
    return places;
}

// Half of the width at half of the height above the lower of both ends.
double HalfWidth(const TCourse& course, std::size_t peak, double side) {
    const auto& y = course.Y;
    const double foot = side * (side > 0 ? std::ranges::min(y) : std::ranges::max(y));
    const double level = (side * y[peak] + foot) / 2;
    std::size_t left = peak;
    std::size_t right = peak;
    while (left > 0 && side * y[left] > level) --left;
    while (right + 1 < y.size() && side * y[right] > level) ++right;
    return (course.X[right] - course.X[left]) / 2;
}

// Where the course is halfway between its extremes, and where it is steepest.
void AddSteepPlaces(const TCourse& course, std::vector<double>& places) {
    const auto [low, high] = std::ranges::minmax(course.Y);
    const double middle = (low + high) / 2;
    double steepest = 0;
    double at = course.X.front();
    const std::size_t step = course.Y.size() / kSmoothingParts + 1;
    for (std::size_t i = 0; i + step < course.Y.size(); ++i) {
        if ((course.Y[i] < middle) != (course.Y[i + 1] < middle) && places.size() < 3 * kMostPeaks)
            places.push_back((course.X[i] + course.X[i + 1]) / 2);
        const double slope =
            std::abs((course.Y[i + step] - course.Y[i]) / (course.X[i + step] - course.X[i]));
        if (!(slope > steepest) || std::isinf(slope)) continue;
        steepest = slope;
        at = (course.X[i + step] + course.X[i]) / 2;
    }
    places.push_back(at);
}

// What remains of the course when its straight line is taken off.
std::vector<double> WithoutLine(const TCourse& course) {
    const auto count = static_cast<double>(course.X.size());
    const double x = std::accumulate(course.X.begin(), course.X.end(), 0.0) / count;
    const double y = std::accumulate(course.Y.begin(), course.Y.end(), 0.0) / count;
    double xx = 0;
    double xy = 0;
    for (std::size_t i = 0; i < course.X.size(); ++i) {
        xx += (course.X[i] - x) * (course.X[i] - x);
        xy += (course.X[i] - x) * (course.Y[i] - y);
    }
    const double slope = xx > 0 ? xy / xx : 0;
    std::vector<double> rest;
    for (std::size_t i = 0; i < course.X.size(); ++i)
        rest.push_back(course.Y[i] - y - slope * (course.X[i] - x));
    return rest;
}

// The highest maxima of the periodogram.
std::vector<double> StrongestFrequencies(const TCourse& course) {
    const double span = course.X.back() - course.X.front();
    if (!(span > 0) || course.X.size() < 4) return {};
    const std::vector<double> rest = WithoutLine(course);
    const int steps = kFrequencySteps * std::min(static_cast<int>(course.X.size() / 2), kMostSearched / 2);
    // Each frequency turns the points a little further.
    std::vector<std::complex<double>> step;
    for (const double x : course.X)
        step.push_back(
            std::polar(1.0, 2 * std::numbers::pi * (x - course.X.front()) / (kFrequencySteps * span)));
    std::vector<std::complex<double>> turned(step.size(), 1.0);
    std::vector<double> power;
    for (int i = 1; i <= steps; ++i) {
        std::complex<double> sum = 0;
        for (std::size_t k = 0; k < rest.size(); ++k) {
            turned[k] *= step[k];
            sum += rest[k] * turned[k];
        }
        power.push_back(std::norm(sum));
    }
    std::vector<std::pair<double, double>> maxima;
    for (std::size_t i = 0; i < power.size(); ++i) {
        const double before = i > 0 ? power[i - 1] : 0;
        const double after = i + 1 < power.size() ? power[i + 1] : 0;
        if (power[i] > before && power[i] >= after)
            maxima.emplace_back(-power[i], static_cast<double>(i + 1) / (kFrequencySteps * span));
    }
    std::ranges::sort(maxima);
    std::vector<double> frequencies;
    for (const auto& [strength, frequency] : maxima)
        if (frequencies.size() < kMostFrequencies) frequencies.push_back(frequency);
    return frequencies;
}

} // namespace

TDataShape ShapeOf(const TFitPoints& ordered, const std::vector<TNarrowPeak>& peaks) {
    const TCourse course = CourseOf(ordered);
    const TCourse smooth = Smoothed(course);
    TDataShape shape;
    shape.Left = ordered.X.front();
    shape.Right = ordered.X.back();
    const auto positive = std::ranges::upper_bound(ordered.X, 0.0);
    if (positive != ordered.X.end()) shape.SmallestPositive = *positive;
    AddNarrowPeaks(ordered, peaks, shape);
    for (const double side : {1.0, -1.0}) {
        const std::vector<std::size_t> extremes = Extremes(smooth.Y, side);
        for (const std::size_t place : extremes) shape.Places.push_back(course.X[place]);
        if (!extremes.empty()) shape.Widths.push_back(HalfWidth(smooth, extremes.front(), side));
    }
    AddSteepPlaces(smooth, shape.Places);
    for (int i = 0; i < kEvenPlaces; ++i)
        shape.Places.push_back(shape.Left + shape.Span() * (i + 0.5) / kEvenPlaces);
    for (const double part : {0.02, 0.06, 0.15, 0.4}) shape.Widths.push_back(part * shape.Span());
    std::erase_if(shape.Widths, [](double width) { return !(width > 0); });
    shape.Frequencies = StrongestFrequencies(course);
    return shape;
}

} // namespace lumoplot
