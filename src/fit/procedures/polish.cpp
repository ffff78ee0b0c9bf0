#include "fit/procedures/polish.h"

#include "fit/procedures/jacobi.h"
#include "fit/procedures/small_solve.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace lumoplot {
namespace {

constexpr double kDifference = 1e-6; // relative, for slopes that are exact
constexpr double kFastEnough = 0.01; // of the projected residuals left after a step
constexpr double kStillImproves = 0.5;
constexpr double kMayGrow = 1e-9; // of the sum of squares, by rounding
constexpr double kRoundingOfSums = 1e-15;
constexpr int kMostSteps = 12;

/// The neglected curvature Σ r ∇²r in the basis of R: I + C is the Hessian there.
class TCurvature {
public:
    TCurvature(TFitProblem& problem, const TLinearModel& model) {
        const TMatrix& r = model.Triangle;
        const TMatrix second = SecondOrder(problem, model.At);
        TMatrix half(r.Size());
        for (int j = 0; j < r.Size(); ++j) {
            const TVector column = ForwardSolved(r, {second.Column(j).begin(), second.Column(j).end()});
            std::ranges::copy(column, half.Column(j).begin());
        }
        TMatrix hessian(r.Size());
        for (int i = 0; i < r.Size(); ++i) {
            TVector row(static_cast<std::size_t>(r.Size()));
            for (int j = 0; j < r.Size(); ++j) row[static_cast<std::size_t>(j)] = half(i, j);
            std::ranges::copy(ForwardSolved(r, row), hessian.Column(i).begin());
            hessian(i, i) += 1;
        }
        m_eigen = DecomposeSymmetric(hessian);
    }

    bool IsPositive() const { return *std::ranges::min_element(m_eigen.Values) > 0; }

    TVector Solved(const TVector& right) const {
        TVector along = TransposedTimes(m_eigen.Vectors, right);
        for (std::size_t j = 0; j < along.size(); ++j) along[j] /= m_eigen.Values[j];
        return Times(m_eigen.Vectors, along);
    }

private:
    static TMatrix SecondOrder(TFitProblem& problem, const TVector& at) {
        const std::vector<double> residuals = problem.ResidualsAt(at);
        const TVector here = problem.JacobianTimes(at, residuals);
        TMatrix differences(problem.Size());
        for (int j = 0; j < problem.Size(); ++j) {
            const auto place = static_cast<std::size_t>(j);
            TVector beside = at;
            beside[place] += kDifference * (at[place] != 0 ? at[place] : problem.FirstSteps()[place]);
            TVector slope = problem.JacobianTimes(beside, residuals);
            AddTimes(slope, -1, here);
            for (double& element : slope) element /= beside[place] - at[place];
            std::ranges::copy(slope, differences.Column(j).begin());
        }
        TMatrix symmetric(problem.Size());
        for (int i = 0; i < problem.Size(); ++i)
            for (int j = 0; j < problem.Size(); ++j)
                symmetric(i, j) = 0.5 * (differences(i, j) + differences(j, i));
        return symmetric;
    }

    TEigenvalues m_eigen;
};

class TPolisher {
public:
    explicit TPolisher(TFitProblem& problem) : m_problem(problem) {}

    TPolished Run() {
        if (!m_problem.Linearise(m_problem.Best(), m_result.Model)) return m_result;
        m_result.IsDetermined = HasIndependentColumns(m_result.Model.Triangle);
        if (m_result.IsDetermined)
            for (int i = 0; i < kMostSteps && TakeStep(); ++i) {
            }
        m_result.Offset = Norm(m_result.Model.Projected) / std::sqrt(2 * m_result.Model.Value);
        if (!(m_result.Model.Value > 0)) m_result.Offset = 0;
        return m_result;
    }

private:
    // False when there is nothing left to gain.
    bool TakeStep() {
        const TLinearModel& here = m_result.Model;
        TVector z = m_curvature ? m_curvature->Solved(here.Projected) : here.Projected;
        TVector place = here.At;
        AddTimes(place, -1, BackSolved(here.Triangle, std::move(z)));
        if (place == here.At || !m_problem.IsInside(place)) return false;
        TLinearModel next;
        const bool isFinite = m_problem.Linearise(place, next);
        const double left = isFinite ? Norm(next.Projected) / Norm(here.Projected) : 1;
        if (isFinite && left < 1 && next.Value <= here.Value * (1 + kMayGrow)) {
            m_result.Model = std::move(next);
            if (IsRounding()) return false;
            if (left < kFastEnough) return true;
            if (m_curvature) return left < kStillImproves;
        } else if (m_curvature) {
            return false;
        }
        return FindCurvature();
    }

    // Sums over the points are not known any better.
    bool IsRounding() const {
        const auto count = static_cast<double>(m_problem.PointCount());
        const double size = std::sqrt(2 * m_result.Model.Value);
        return Norm(m_result.Model.Projected) <= kRoundingOfSums * std::sqrt(count) * size;
    }

    bool FindCurvature() {
        m_curvature.emplace(m_problem, m_result.Model);
        m_result.IsMinimum = m_curvature->IsPositive();
        return m_result.IsMinimum;
    }

    TFitProblem& m_problem;
    TPolished m_result;
    std::optional<TCurvature> m_curvature;
};

} // namespace

TPolished Polish(TFitProblem& problem) {
    return TPolisher(problem).Run();
}

} // namespace lumoplot
