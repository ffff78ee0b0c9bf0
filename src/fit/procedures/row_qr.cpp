#include "fit/procedures/row_qr.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kSmallestSquare = 1e-280;
constexpr int kLargestExponent = 1000;

/// The reflection that maps a column (head on top of tail) onto its head.
struct TReflection {
    double head; ///< first element of its vector; the tail is the column's own
    double scale;
    std::span<const double> tail;

    void Apply(double& otherHead, std::span<double> otherTail) const {
        const double factor = (head * otherHead + Dot(tail, otherTail)) * scale;
        otherHead -= factor * head;
        AddTimes(otherTail, -factor, tail);
    }
};

/// Far down the flank of a peak there are numbers whose squares vanish: the tail is then multiplied by a
/// power of two, which changes no reflection. Returns it.
double UnitFor(double head, std::span<double> tail) {
    const double square = head * head + Dot(tail, tail);
    if (square > kSmallestSquare && std::isfinite(square)) return 1;
    double largest = std::abs(head);
    for (const double element : tail) largest = std::max(largest, std::abs(element));
    if (!(largest > 0) || !std::isfinite(largest)) return 1;
    const double unit = std::ldexp(1.0, std::min(-std::ilogb(largest), kLargestExponent));
    for (double& element : tail) element *= unit;
    return unit;
}

} // namespace

double TRowQr::Add(const TRowQr& other) {
    std::vector<double> columns;
    for (int j = 0; j < m_triangle.Size(); ++j) {
        const auto column = other.m_triangle.Column(j);
        columns.insert(columns.end(), column.begin(), column.end());
    }
    TVector right = other.m_projected;
    AddRows(columns, right);
    return Dot(right, right);
}

void TRowQr::AddRows(std::span<double> columns, std::span<double> right) {
    const std::size_t rows = right.size();
    const auto columnOf = [&](int j) { return columns.subspan(static_cast<std::size_t>(j) * rows, rows); };
    for (int j = 0; j < m_triangle.Size(); ++j) {
        const std::span<double> tail = columnOf(j);
        double& diagonal = m_triangle(j, j);
        const double unit = UnitFor(diagonal, tail);
        const double top = diagonal * unit;
        const double tailSquare = Dot(tail, tail);
        if (tailSquare == 0) continue;
        const double norm = -std::copysign(std::sqrt(top * top + tailSquare), top);
        const double head = top - norm;
        const TReflection reflection{head, 2 / (head * head + tailSquare), tail};
        diagonal = norm / unit;
        for (int k = j + 1; k < m_triangle.Size(); ++k) reflection.Apply(m_triangle(j, k), columnOf(k));
        reflection.Apply(m_projected[static_cast<std::size_t>(j)], right);
    }
}

} // namespace lumoplot
