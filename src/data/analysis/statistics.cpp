#include "data/analysis/statistics.h"

#include "data/analysis/centring.h"

#include <algorithm>
#include <vector>

namespace lumoplot {
namespace {

constexpr const char* kTooFewText = "No Statistics are available unless more than one point exists";
constexpr const char* kNoDevianceText =
    "No skew/kurtosis are available because there is no deviance in the data";

std::vector<double> FiniteValues(std::span<const double> values) {
    std::vector<double> finite;
    finite.reserve(values.size());
    std::copy_if(values.begin(), values.end(), std::back_inserter(finite),
                 [](double value) { return std::isfinite(value); });
    return finite;
}

std::vector<double> Ascending(std::span<const double> values, TValueOrder order) {
    std::vector<double> finite = FiniteValues(values);
    // Stable, so that zeros of both signs keep their order.
    if (order == TValueOrder::Any && !std::is_sorted(finite.begin(), finite.end()))
        std::stable_sort(finite.begin(), finite.end());
    return finite;
}

// The value at a position counted from 1, or 0 for position 0.
double ValueAt(std::span<const double> ascending, std::size_t position) {
    return position == 0 ? 0.0 : ascending[position - 1];
}

void SetOrderValues(TStatistics& statistics, std::span<const double> ascending) {
    const std::size_t count = ascending.size();
    statistics.Median = ValueAt(ascending, count / 2);
    statistics.Quantile20 = ValueAt(ascending, count / 5);
    statistics.Quantile80 = ValueAt(ascending, count - count / 5);
    statistics.Quantile25 = ValueAt(ascending, count / 4);
    statistics.Quantile75 = ValueAt(ascending, count - count / 4);
}

double ModeOf(std::span<const double> ascending, double tolerance) {
    double mode = 0;
    double start = ascending.front();
    std::size_t length = 0;
    std::size_t longest = 0;
    for (const double value : ascending) {
        if (std::abs(value - start) <= tolerance) {
            if (++length > longest) {
                longest = length;
                mode = value;
            }
        } else {
            start = value;
            length = 0;
        }
    }
    return mode;
}

void SetMoments(TStatistics& statistics, std::span<const double> values) {
    const TCentring deviation(values);
    statistics.Mean = deviation.Mean();
    if (deviation.AllEqual()) {
        statistics.Message = kNoDevianceText;
        return;
    }
    TSum squares;
    TSum cubes;
    TSum fourths;
    for (const double value : values) {
        const double d = deviation(value);
        const double square = d * d;
        squares.Add(square);
        cubes.Add(square * d);
        fourths.Add(square * square);
    }
    const double count = static_cast<double>(values.size());
    const double s2 = squares.Value();
    const double variance = s2 / (count - 1);
    const double skew = cubes.Value() / (count * variance * variance * variance);
    statistics.Variance = std::ldexp(variance, 2 * deviation.Exponent());
    statistics.Skew = std::ldexp(skew, -3 * deviation.Exponent());
    statistics.Kurtosis = fourths.Value() / (s2 * s2 * count) - 3;
}

double SumOf(std::span<const double> values) {
    TSum sum;
    for (const double value : values) sum.Add(value);
    if (std::isfinite(sum.Value())) return sum.Value();
    // Large values of both signs may cancel once there is room for what they reach on the way.
    constexpr int kRoom = 70;
    TSum shrunk;
    for (const double value : values) shrunk.Add(std::ldexp(value, -kRoom));
    return std::ldexp(shrunk.Value(), kRoom);
}

} // namespace

TStatistics ComputeStatistics(std::span<const double> values, double tolerance, TValueOrder order) {
    const std::vector<double> ascending = Ascending(values, order);
    TStatistics statistics;
    statistics.Count = ascending.size();
    if (ascending.size() < 2) {
        statistics.Message = kTooFewText;
        statistics.Failed = true;
        return statistics;
    }
    statistics.Sum = SumOf(ascending);
    SetOrderValues(statistics, ascending);
    statistics.Mode = ModeOf(ascending, tolerance);
    SetMoments(statistics, ascending);
    return statistics;
}

std::optional<TSpread> ComputeSpread(std::span<const double> values) {
    const std::vector<double> finite = FiniteValues(values);
    if (finite.size() < 2) return std::nullopt;
    const TCentring deviation(finite);
    TSum squares;
    for (const double value : finite) {
        const double d = deviation(value);
        squares.Add(d * d);
    }
    const double variance = squares.Value() / static_cast<double>(finite.size() - 1);
    return TSpread{deviation.Mean(), std::ldexp(std::sqrt(variance), deviation.Exponent())};
}

} // namespace lumoplot
