// The points of a data set or of a chain as plain values, in their order.
#pragma once

#include <utility>
#include <vector>

namespace lumoplot {

using TPairs = std::vector<std::pair<double, double>>;

template <class TPoints>
TPairs PairsOf(const TPoints& points) {
    TPairs pairs;
    for (auto point = points.First(); point; point = point.Next()) pairs.emplace_back(point.X(), point.Y());
    return pairs;
}

template <class TPoints>
std::vector<double> XsOf(const TPoints& points) {
    std::vector<double> values;
    for (const auto& [x, y] : PairsOf(points)) values.push_back(x);
    return values;
}

template <class TPoints>
std::vector<double> YsOf(const TPoints& points) {
    std::vector<double> values;
    for (const auto& [x, y] : PairsOf(points)) values.push_back(y);
    return values;
}

} // namespace lumoplot
