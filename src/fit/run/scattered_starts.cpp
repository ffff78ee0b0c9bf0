#include "fit/run/scattered_starts.h"

#include "expr/blocks/formula_structure.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace lumoplot {
namespace {

constexpr double kFromStart = 0.2;   // share of the draws that keep to the start value
constexpr double kNewShare = 0.4;    // of the values, in places like others
constexpr double kNarrowShare = 0.2; // of places and lengths, where there are narrow peaks
constexpr double kFinest = 0.2;      // of the width of one
constexpr double kReach = 10;        // of lengths, beyond those of the points

} // namespace

TScatteredStarts::TScatteredStarts(TCurFit& fit, const std::vector<TDBLParameter*>& parameters,
                                   const TFitPoints& points, std::vector<TNarrowRange> narrow)
    : m_narrow(std::move(narrow)) {
    std::vector<double*> values;
    for (TDBLParameter* parameter : parameters) {
        m_starts.push_back(parameter->Value());
        m_min.push_back(parameter->Min());
        m_max.push_back(parameter->Max());
        values.push_back(parameter->ValueRef());
    }
    m_powers = PowersOfX(fit, fit.XRef(), values);
    const auto [left, right] = std::ranges::minmax(points.X);
    m_left = left;
    m_right = right;
    const double range = right > left ? right - left : std::max(std::abs(left), 1.0);
    m_longest = std::max(range, 0.0);
    m_shortest = range / static_cast<double>(points.X.size());
    for (const double x : points.X) {
        if (x == 0) continue;
        // Only x of one sign have a size of their own; about 0 the distances say all.
        if (left >= 0 || right <= 0) m_shortest = std::min(m_shortest, std::abs(x));
        if (left >= 0 || right <= 0) m_longest = std::max(m_longest, std::abs(x));
    }
}

double TScatteredStarts::Uniform(double low, double high) {
    return low + (high - low) * (static_cast<double>(m_random() >> 11) * 0x1p-53);
}

double TScatteredStarts::LogUniform(double low, double high) {
    return std::exp(Uniform(std::log(low), std::log(high)));
}

double TScatteredStarts::Signed(double value, double negativeShare) {
    return Uniform(0, 1) < negativeShare ? -value : value;
}

TVector TScatteredStarts::Next() {
    TVector place;
    for (std::size_t i = 0; i < m_starts.size(); ++i) place.push_back(DrawWithin(i));
    return place;
}

TVector TScatteredStarts::NextLike(const TVector& values) {
    TVector place = values;
    const auto certain = static_cast<std::size_t>(m_random() % place.size()); // one at least is new
    for (std::size_t i = 0; i < place.size(); ++i)
        if (i == certain || Uniform(0, 1) < kNewShare) place[i] = DrawWithin(i);
    return place;
}

double TScatteredStarts::Length() {
    if (!m_narrow.empty() && Uniform(0, 1) < kNarrowShare)
        return LogUniform(kFinest, 1) * m_narrow[m_random() % m_narrow.size()].Width;
    return LogUniform(m_shortest, kReach * m_longest);
}

// Mostly among the points, sometimes to their left or right.
double TScatteredStarts::Place() {
    if (!m_narrow.empty() && Uniform(0, 1) < kNarrowShare)
        return m_narrow[m_random() % m_narrow.size()].Middle;
    const double range = m_right - m_left;
    return Uniform(0, 1) < 0.85 ? Uniform(m_left, m_right) : Uniform(m_left - range, m_right + range);
}

double TScatteredStarts::Shape() {
    return Uniform(0, 1) < 0.6 ? Signed(LogUniform(0.1, 10), 0.3)
                               : Uniform(-std::numbers::pi, std::numbers::pi);
}

// What lies beyond a bound is mirrored there, or drawn evenly between two.
double TScatteredStarts::DrawWithin(std::size_t parameter) {
    const double value = Draw(parameter);
    const double min = m_min[parameter];
    const double max = m_max[parameter];
    if (value >= min && value <= max) return value;
    if (std::isfinite(min) && std::isfinite(max)) return Uniform(min, max);
    return value < min ? 2 * min - value : 2 * max - value;
}

double TScatteredStarts::Draw(std::size_t parameter) {
    const double start = m_starts[parameter];
    if (start != 0 && Uniform(0, 1) < kFromStart) return start * std::pow(10, Uniform(-1, 1));
    double power = m_powers[parameter].value_or(2);
    if (!m_powers[parameter]) power = std::round(Uniform(-1.5, 1.5));
    if (power == 0) return Shape();
    if (power == 1 && Uniform(0, 1) < 0.5) return Place();
    return Signed(std::pow(Length(), power), start < 0 ? 0.75 : 0.25);
}

} // namespace lumoplot
