#include "fit/procedures/simplex.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kFirstEdge = 10; // first steps
constexpr double kNextEdge = 0.5; // of the edges before, at each restart
constexpr int kMostRestarts = 20;

struct TCorner {
    TVector Place;
    double Value;
};

class TSimplexRun {
public:
    TSimplexRun(TFitProblem& problem, const TVector& start)
        : m_problem(problem), m_size(start.size()), m_expansion(1 + 2 / Dimensions()),
          m_contraction(0.75 - 0.5 / Dimensions()), m_shrinking(1 - 1 / Dimensions()) {
        m_corners.push_back({start, problem.Value(start)});
    }

    TStop Run(double tolerance) {
        double edge = kFirstEdge;
        for (int restart = 0; restart <= kMostRestarts; ++restart, edge *= kNextEdge) {
            const double before = Best().Value;
            SetUpAround(Best(), restart % 2 == 0 ? edge : -edge);
            if (!Crawl(tolerance)) return TStop::IterationLimit;
            if (Best().Value <= m_problem.RoundingLevel()) return TStop::ExactFit;
            if (restart > 0 && before - Best().Value <= tolerance * before) return TStop::Tolerance;
        }
        return TStop::NoProgress;
    }

private:
    double Dimensions() const { return std::max(2.0, static_cast<double>(m_size)); }
    const TCorner& Best() const { return m_corners.front(); }
    TCorner& Worst() { return m_corners.back(); }

    void SetUpAround(TCorner best, double edge) {
        m_corners.assign(1, best);
        for (std::size_t j = 0; j < m_size; ++j) {
            TVector place = best.Place;
            place[j] += edge * m_problem.FirstSteps()[j];
            m_corners.push_back(CornerAt(std::move(place)));
        }
        Sort();
    }

    TCorner CornerAt(TVector place) {
        m_problem.Clamp(place);
        const double value = m_problem.Value(place);
        return {std::move(place), value};
    }

    void Sort() { std::ranges::stable_sort(m_corners, {}, &TCorner::Value); }

    // Moves until the figure has collapsed; false at the limit.
    bool Crawl(double tolerance) {
        while (!HasCollapsed(tolerance)) {
            if (!m_problem.NextIteration()) return false;
            for (std::size_t i = 0; i < m_size; ++i) Move();
        }
        return true;
    }

    bool HasCollapsed(double tolerance) {
        if (!(Worst().Value - Best().Value <= tolerance * Best().Value)) return false;
        for (const TCorner& corner : m_corners)
            for (std::size_t j = 0; j < m_size; ++j)
                if (std::abs(corner.Place[j] - Best().Place[j]) > tolerance * std::abs(Best().Place[j]))
                    return false;
        return true;
    }

    // The place on the line from the worst corner through the centre of the others; 1 mirrors the corner.
    TCorner Through(const TVector& centre, double distance) {
        TVector place = centre;
        for (std::size_t j = 0; j < m_size; ++j) place[j] += distance * (centre[j] - Worst().Place[j]);
        return CornerAt(std::move(place));
    }

    TVector CentreOfOthers() const {
        TVector centre(m_size);
        for (std::size_t i = 0; i < m_size; ++i)
            AddTimes(centre, 1 / static_cast<double>(m_size), m_corners[i].Place);
        return centre;
    }

    void Move() {
        const TVector centre = CentreOfOthers();
        TCorner mirrored = Through(centre, 1);
        if (mirrored.Value < Best().Value) {
            TCorner expanded = Through(centre, m_expansion);
            return ReplaceWorst(expanded.Value < mirrored.Value ? std::move(expanded) : std::move(mirrored));
        }
        if (mirrored.Value < m_corners[m_size - 1].Value) return ReplaceWorst(std::move(mirrored));
        const bool isBetter = mirrored.Value < Worst().Value;
        TCorner contracted = Through(centre, isBetter ? m_contraction : -m_contraction);
        if (contracted.Value < std::min(mirrored.Value, Worst().Value))
            return ReplaceWorst(std::move(contracted));
        Shrink();
    }

    void ReplaceWorst(TCorner corner) {
        Worst() = std::move(corner);
        Sort();
    }

    void Shrink() {
        for (std::size_t i = 1; i <= m_size; ++i) {
            TVector place = Best().Place;
            for (std::size_t j = 0; j < m_size; ++j)
                place[j] += m_shrinking * (m_corners[i].Place[j] - place[j]);
            m_corners[i] = CornerAt(std::move(place));
        }
        Sort();
    }

    TFitProblem& m_problem;
    std::size_t m_size;
    double m_expansion;
    double m_contraction;
    double m_shrinking;
    std::vector<TCorner> m_corners;
};

} // namespace

TStop TSimplex::Minimise(TFitProblem& problem, const TVector& start, double tolerance) {
    return TSimplexRun(problem, start).Run(tolerance);
}

} // namespace lumoplot
