#include "fit/procedures/small_solve.h"

#include "fit/procedures/jacobi.h"
#include "fit/procedures/row_qr.h"

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

/// Holds those that want to leave their bounds there, and solves for the others.
class TBoundedSolver {
public:
    TBoundedSolver(const TMatrix& r, const TVector& b, const TVector& low, const TVector& high)
        : m_r(r), m_b(b), m_low(low), m_high(high), m_isHeld(b.size(), false) {}

    TSmallSolution Run(TVector x) {
        m_x = std::move(x);
        HoldThoseBeyond();
        for (std::size_t i = 0; i < kMostRounds * m_x.size(); ++i) {
            SolveOthers();
            if (!HoldThoseBeyond() && !ReleaseWorst()) break;
        }
        const TVector left = Left();
        return {std::move(m_x), Dot(left, left)};
    }

private:
    static constexpr std::size_t kMostRounds = 4;

    bool HoldThoseBeyond() {
        bool isAny = false;
        for (std::size_t j = 0; j < m_x.size(); ++j) {
            const double inside = std::clamp(m_x[j], m_low[j], m_high[j]);
            if (m_isHeld[j] || inside == m_x[j]) continue;
            m_x[j] = inside;
            m_isHeld[j] = isAny = true;
        }
        return isAny;
    }

    TVector Left() const {
        TVector left = m_b;
        AddTimes(left, -1, Times(m_r, m_x));
        return left;
    }

    void SolveOthers() {
        std::vector<std::size_t> free;
        for (std::size_t j = 0; j < m_x.size(); ++j)
            if (!m_isHeld[j]) free.push_back(j);
        if (free.empty()) return;
        TVector columns;
        for (const std::size_t j : free) {
            const auto column = m_r.Column(static_cast<int>(j));
            columns.insert(columns.end(), column.begin(), column.end());
            m_x[j] = 0;
        }
        TVector right = Left();
        TRowQr qr(static_cast<int>(free.size()));
        qr.AddRows(columns, right);
        const TVector solved = SolveTriangle(qr.Triangle(), qr.Projected()).X;
        for (std::size_t k = 0; k < free.size(); ++k) m_x[free[k]] = solved[k];
    }

    // The one that would lower the sum of squares most by going inwards.
    bool ReleaseWorst() {
        const TVector slope = TransposedTimes(m_r, Left());
        std::size_t worst = m_x.size();
        double most = 0;
        for (std::size_t j = 0; j < m_x.size(); ++j) {
            const double inwards = m_x[j] == m_low[j] ? slope[j] : -slope[j];
            const double length = Norm(m_r.Column(static_cast<int>(j))) * Norm(m_b);
            if (!m_isHeld[j] || !(inwards > kDependent * length) || !(inwards > most)) continue;
            most = inwards;
            worst = j;
        }
        if (worst < m_x.size()) m_isHeld[worst] = false;
        return worst < m_x.size();
    }

    const TMatrix& m_r;
    const TVector& m_b;
    const TVector& m_low;
    const TVector& m_high;
    std::vector<bool> m_isHeld;
    TVector m_x;
};

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

TSmallSolution SolveTriangleWithin(const TMatrix& r, const TVector& b, const TVector& low,
                                   const TVector& high) {
    TSmallSolution solution = SolveTriangle(r, b);
    for (std::size_t j = 0; j < b.size(); ++j)
        if (solution.X[j] < low[j] || solution.X[j] > high[j])
            return TBoundedSolver(r, b, low, high).Run(std::move(solution.X));
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
