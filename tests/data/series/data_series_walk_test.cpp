// The data series against its rules on a list that is walked.
#include "data/points/walked_chain.h"
#include "data/series/series_data.h"

#include <gtest/gtest.h>
#include <random>

namespace lumoplot {
namespace {

/// The series' rules on a list that is walked, for finite numbers.
class TWalkedSeries {
public:
    TWalkedChain Chain;
    TMergeRule Rule;
    double MinX = 0, MaxX = 0, MinY = 0, MaxY = 0, Zero = 0, Slope = 0;
    bool Stale = false, AutoZero = false;
    TChangeReasons Reasons; ///< of the last change

    void SetBaseline(double zero, double slope) {
        if (zero == Zero && slope == Slope) return;
        Zero = zero;
        Slope = slope;
        Stale = true;
        Reasons |= TDataSeries::kBaselineChanged;
    }

    void AddPoint(double x, double y) {
        Chain.Add(x, y, Rule);
        if (Chain.Points.size() == 1) {
            if (AutoZero) Zero = y, Slope = 0;
            MinX = MaxX = x;
            MinY = MaxY = Corrected(x, y);
            Stale = false;
        } else if (!Lower(y) && !Stale) {
            WidenY(Corrected(x, y));
            MinX = std::min(MinX, x);
            MaxX = std::max(MaxX, x);
        }
        Reasons |= TDataSeries::kPointAdded;
    }

    void SetPointY(std::int32_t id, double y) {
        TSeriesPoint none;
        TSeriesPoint* point = Chain.Find(id);
        if (point)
            point->Y = y;
        else
            point = &none;
        if (!Lower(point->Y) && !Stale) WidenY(Corrected(point->X, point->Y));
        Reasons |= TDataSeries::kPointChanged;
    }

    void DeletePoint(std::int32_t id) {
        const TSeriesPoint* found = Chain.Find(id);
        if (!found) return;
        const TSeriesPoint point = *found;
        Chain.Erase(id);
        if (point.X == MinX || point.X == MaxX || point.Y == MinY || point.Y == MaxY) Stale = true;
        if (AutoZero && point.Y <= Zero) Stale = true;
        Reasons |= TDataSeries::kPointChanged;
    }

    void RemoveDuplicates() {
        if (Chain.EraseNeighbours(Rule.Tolerance) == 0) return;
        Stale = true;
        Reasons |= TDataSeries::kPointChanged;
    }

    void Clear() {
        Chain = {};
        MinX = MaxX = MinY = MaxY = 0;
        Stale = true;
        Reasons |= TDataSeries::kPointChanged;
    }

    void RecalcExtents() {
        if (Chain.Points.empty()) return;
        if (AutoZero) {
            double lowest = Chain.Points.front().Y;
            for (const TSeriesPoint& point : Chain.Points) lowest = std::min(lowest, point.Y);
            SetBaseline(lowest, 0);
        }
        const TSeriesPoint& first = Chain.Points.front();
        MinX = MaxX = first.X;
        MinY = MaxY = Corrected(first.X, first.Y);
        for (const TSeriesPoint& point : Chain.Points) {
            MinX = std::min(MinX, point.X);
            MaxX = std::max(MaxX, point.X);
            WidenY(Corrected(point.X, point.Y));
        }
        Stale = false;
    }

private:
    double Corrected(double x, double y) const { return y - Zero - Slope * x; }
    void WidenY(double corrected) {
        MinY = std::min(MinY, corrected);
        MaxY = std::max(MaxY, corrected);
    }
    bool Lower(double y) {
        if (!AutoZero || y >= Zero) return false;
        SetBaseline(y, 0);
        Stale = true;
        return true;
    }
};

class TSeriesComparison {
public:
    explicit TSeriesComparison(unsigned seed) : m_random(seed) {
        m_series.AddChangeHandler(
            1, [this](TDataSeries&, TChangeReasons reasons) { m_told.push_back(reasons); });
        m_walked.Rule.Tolerance = Pick({0, 0, 0.5, 3});
        m_series.SetNumericalTolerance(m_walked.Rule.Tolerance);
    }

    void Run(int steps) {
        for (int step = 0; step < steps && !testing::Test::HasFailure(); ++step) {
            SCOPED_TRACE(step);
            TakeStep();
            Compare();
        }
    }

private:
    int Any(int count) { return std::uniform_int_distribution<>(0, count - 1)(m_random); }
    double Pick(std::initializer_list<double> values) {
        return values.begin()[Any(static_cast<int>(values.size()))];
    }
    /// Quarters, so that equal values and exact distances are frequent.
    double AnyNumber() { return (Any(400) - 200) / 4.0; }
    std::int32_t AnyId() { return Any(m_walked.Chain.LastId + 3); }

    void TakeStep() {
        const double x = AnyNumber();
        const double y = AnyNumber();
        const std::int32_t id = AnyId();
        switch (Any(30)) {
        case 0: m_series.SetAutoZero(!m_walked.AutoZero), FlipAutoZero(); return;
        case 1: m_series.SetZeroValue(y), m_walked.SetBaseline(y, m_walked.Slope); return;
        case 2: m_series.SetBaseLineSlope(y), m_walked.SetBaseline(m_walked.Zero, y); return;
        case 3: SetDuplicatesAllowed(Any(2) == 0); return;
        case 4: m_series.RemoveDuplicates(), m_walked.RemoveDuplicates(); return;
        case 5:
            if (Any(9) == 0) m_series.Clear(), m_walked.Clear();
            return;
        case 6: m_series.RecalcExtents(), m_walked.RecalcExtents(); return;
        case 7:
        case 8:
        case 9: m_series.SetPointY(id, y), m_walked.SetPointY(id, y); return;
        case 10:
        case 11:
        case 12:
        case 13: m_series.DeletePoint(id), m_walked.DeletePoint(id); return;
        default: m_series.AddPoint(x, y), m_walked.AddPoint(x, y); return;
        }
    }

    void FlipAutoZero() {
        m_walked.AutoZero = !m_walked.AutoZero;
        m_walked.Stale = true;
        m_walked.Reasons |= TDataSeries::kBaselineChanged;
    }

    void SetDuplicatesAllowed(bool value) {
        m_series.SetDuplicatesAllowed(value);
        if (value == m_walked.Rule.DuplicatesAllowed) return;
        m_walked.Rule.DuplicatesAllowed = value;
        if (!value) m_walked.RemoveDuplicates();
    }

    void Compare() {
        EXPECT_EQ(m_series.Count(), static_cast<int>(m_walked.Chain.Points.size()));
        EXPECT_EQ(m_series.MinX(), m_walked.MinX);
        EXPECT_EQ(m_series.MaxX(), m_walked.MaxX);
        EXPECT_EQ(m_series.MinY(), m_walked.MinY);
        EXPECT_EQ(m_series.MaxY(), m_walked.MaxY);
        EXPECT_EQ(m_series.ExtentsStale(), m_walked.Stale);
        EXPECT_EQ(m_series.ZeroValue(), m_walked.Zero);
        EXPECT_EQ(m_series.BaseLineSlope(), m_walked.Slope);
        const bool changed = !m_walked.Reasons.IsEmpty();
        EXPECT_EQ(std::exchange(m_told, {}), std::vector<TChangeReasons>(changed, m_walked.Reasons));
        m_walked.Reasons = {};
        TPointCursor cursor = m_series.First();
        for (const TSeriesPoint& point : m_walked.Chain.Points) {
            EXPECT_TRUE(cursor && cursor.Id() == point.Id && cursor.X() == point.X && cursor.Y() == point.Y);
            cursor = cursor.Next();
        }
    }

    std::mt19937 m_random;
    std::vector<TChangeReasons> m_told;
    TDataSeries m_series;
    TWalkedSeries m_walked;
};

TEST(DataSeries, AgreesWithItsRulesOnAWalkedList) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        TSeriesComparison(seed).Run(300);
    }
}

} // namespace
} // namespace lumoplot
