#include "data/series/series_data.h"

#include "common/special_values.h"
#include "data/points/walked_chain.h"
#include "data/series/ds_info.h"
#include "fit/definition/cur_fit.h"
#include "support/update_hold.h"

#include <cfloat>
#include <gtest/gtest.h>
#include <limits>
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

std::vector<double> AllX(const TDataSeries& series) {
    std::vector<double> all;
    for (TPointCursor p = series.First(); p; p = p.Next()) all.push_back(p.X());
    return all;
}

struct TMergeCase {
    const char* name;
    TMergeRule rule;
    std::vector<double> added;
    std::vector<double> chain;
};

TEST(DataSeries, MergesAndPlacesPoints) {
    const TMergeCase cases[] = {
        {"near the point before", {0.001, false}, {1, 2, 3, 2.0001}, {1, 2.0001, 3}},
        {"near the point behind", {0.001, false}, {1, 2, 3, 1.9999}, {1, 1.9999, 3}},
        {"kept in front of the near point", {0.001, true}, {1, 2, 3, 2.0001}, {1, 2.0001, 2, 3}},
        {"equal without a tolerance", {0, false}, {1, 2, 1, 2}, {1, 2}},
        {"equal ones in front of each other, the last one behind", {0, true}, {1, 2, 1, 2}, {1, 1, 2, 2}},
        {"the last point follows", {0.5, false}, {1, 1.4, 1.8, 2.2}, {2.2}},
        {"an overwrite passes its neighbour", {0.6, false}, {1, 1.7, 3, 2.3, 1.25, 1.5}, {1.5, 2.3, 3}},
    };
    for (const TMergeCase& c : cases) {
        TDataSeries series;
        series.SetNumericalTolerance(c.rule.Tolerance);
        series.SetDuplicatesAllowed(c.rule.DuplicatesAllowed);
        for (const double x : c.added) series.AddPoint(x, 0);
        EXPECT_EQ(AllX(series), c.chain) << c.name;
    }
}

TEST(DataSeries, SwitchingDuplicatesOffComparesWithThePointThatStays) {
    TDataSeries series;
    series.SetDuplicatesAllowed(true);
    for (const double x : {1.0, 1.0, 1.5, 1.7}) series.AddPoint(x, x);
    series.SetNumericalTolerance(0.6);
    series.SetDuplicatesAllowed(false);
    EXPECT_EQ(AllX(series), (std::vector<double>{1, 1.7}));
    EXPECT_FALSE(series.RemoveDuplicates());
}

TEST(DataSeries, AYThatIsNoNumberCountsForNothing) {
    for (const double bad : {kNaN, kInfinity, -kInfinity}) {
        TDataSeries series;
        series.SetAutoZero(true);
        EXPECT_EQ(series.AddPoint(1, bad), 1);
        EXPECT_EQ(series.ZeroValue(), 0);
        EXPECT_TRUE(series.MinY() == 0 && series.MaxY() == 0 && series.MaxX() == 1);
        series.AddPoint(2, 7);
        EXPECT_EQ(series.ZeroValue(), 7) << "the first Y that counts";
        series.AddPoint(3, bad);
        series.AddPoint(4, 9);
        series.SetPointY(2, bad);
        series.RecalcExtents();
        EXPECT_EQ(series.ZeroValue(), 9);
        EXPECT_TRUE(series.MinY() == 0 && series.MaxY() == 0 && series.MaxX() == 4);
        EXPECT_EQ(series.Count(), 4);

        TDataSeries plain;
        plain.AddPoint(1, bad);
        plain.AddPoint(2, 5);
        plain.AddPoint(3, bad);
        EXPECT_TRUE(plain.MinY() == 5 && plain.MaxY() == 5) << "0 is no Y of this series";
        EXPECT_EQ(plain.PositiveMinY(), 5);
        plain.DeletePoint(2);
        plain.RecalcExtents();
        EXPECT_TRUE(plain.MinY() == 0 && plain.MaxY() == 0);
        plain.AddPoint(2, 6);
        EXPECT_TRUE(plain.MinY() == 6 && plain.MaxY() == 6);
        EXPECT_EQ(plain.AddPoint(bad, 1), 3);
    }
}

TEST(DataSeries, SettersRefuseABaselineThatIsNoNumber) {
    int calls = 0;
    TDataSeries series;
    series.AddChangeHandler(1, [&](TDataSeries&, TChangeReasons) { ++calls; });
    for (const double bad : {kNaN, kInfinity}) {
        series.SetZeroValue(bad);
        series.SetBaseLineSlope(bad);
    }
    series.SetRegressionControlValue2(kNaN);
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(series.ZeroValue() == 0 && series.BaseLineSlope() == 0);
}

TEST(DataSeries, EachSetterMarksWhatItsValueChanges) {
    struct TSetterCase {
        const char* name;
        void (*set)(TDataSeries&);
        int reason;
        bool extents, regression, fit;
    };
    const TSetterCase cases[] = {
        {"zero", [](TDataSeries& s) { s.SetZeroValue(2); }, 2, true, false, true},
        {"slope", [](TDataSeries& s) { s.SetBaseLineSlope(2); }, 2, true, false, true},
        {"auto zero", [](TDataSeries& s) { s.SetAutoZero(true); }, 2, true, false, false},
        {"type", [](TDataSeries& s) { s.SetRegressionType(1); }, 4, false, true, true},
        {"control 1", [](TDataSeries& s) { s.SetRegressionControlValue1(5); }, 4, false, true, true},
        {"control 2", [](TDataSeries& s) { s.SetRegressionControlValue2(1); }, 4, false, true, true},
        {"fit", [](TDataSeries& s) { s.CurveFit().SetStatus(TCurFit::kFunction); }, 5, false, false, false},
        {"point", [](TDataSeries& s) { s.Count() == 0 ? s.AddPoint(1, 1) : 0; }, 7, false, true, true},
        {"clear", [](TDataSeries& s) { s.ExtentsStale() ? void() : s.Clear(); }, 1, true, true, true},
    };
    for (const TSetterCase& c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<TChangeReasons> told;
        TDataSeries series;
        series.AddChangeHandler(1, [&](TDataSeries&, TChangeReasons reasons) { told.push_back(reasons); });
        c.set(series);
        c.set(series); // an equal value is no change
        EXPECT_EQ(told, std::vector<TChangeReasons>{c.reason});
        EXPECT_EQ(series.ExtentsStale(), c.extents);
        EXPECT_EQ(series.RegressionStale(), c.regression);
        EXPECT_EQ(series.CurveFit().IsStale(), c.fit);
    }
}

TEST(DataSeries, PositiveMinimumIsTheLargestPositiveValueInSinglePrecision) {
    TDataSeries series;
    EXPECT_EQ(series.PositiveMinX(), 0);
    series.AddPoint(-3, -1);
    EXPECT_EQ(series.PositiveMinX(), -3);
    series.AddPoint(0.1, 4);
    series.AddPoint(0.7, 2);
    EXPECT_EQ(series.PositiveMinX(), static_cast<double>(0.7f));
    EXPECT_EQ(series.PositiveMinY(), 4);
    series.SetZeroValue(5);
    series.RecalcExtents();
    EXPECT_EQ(series.PositiveMinY(), -6);

    TDataSeries positive;
    positive.AddPoint(0.1, 1e-60);
    positive.AddPoint(5, 1);
    EXPECT_EQ(positive.PositiveMinX(), 0.1);
    EXPECT_EQ(positive.PositiveMinY(), 1e-60);
    positive.AddPoint(-1, 1e300);
    positive.AddPoint(6, -1);
    EXPECT_EQ(positive.PositiveMinY(), FLT_MAX) << "never infinite";
}

TEST(DataSeries, ClearStartsOver) {
    TDataSeries series;
    for (int i = 0; i < 1000; ++i) series.AddPoint(i, i);
    series.Clear();
    EXPECT_TRUE(series.ExtentsStale());
    EXPECT_TRUE(series.Count() == 0 && series.MaxX() == 0 && series.MaxY() == 0 && !series.First());
    EXPECT_FALSE(series.GetPoint(1));
    series.AddPoint(-5, 2);
    EXPECT_FALSE(series.ExtentsStale());
    EXPECT_EQ(series.GetPoint(1)->X, -5);
}

TEST(DataSeries, PointsBuiltBesideItTakeTheirPlace) {
    TDataSeries series;
    series.SetAutoZero(true);
    for (int i = 0; i < 10; ++i) series.AddPoint(i, i);
    std::vector<TChangeReasons> told;
    series.AddChangeHandler(1, [&](TDataSeries& s, TChangeReasons reasons) {
        told.push_back(reasons);
        EXPECT_TRUE(s.Count() == 3 && !s.ExtentsStale() && s.ZeroValue() == 8 && s.MaxY() == 4);
    });
    TPointChain built;
    for (const double x : {4.0, 6.0, 5.0}) built.Add(x, 2 * x, series.MergeRule());
    const TPointChain old = series.SwapPoints(std::move(built));
    EXPECT_EQ(old.Count(), 10);
    EXPECT_EQ(told, std::vector{TChangeReasons(TDataSeries::kPointChanged) | TDataSeries::kBaselineChanged});
    EXPECT_EQ(AllX(series), (std::vector<double>{4, 5, 6}));
    EXPECT_EQ(series.GetPoint(3)->X, 5);
    EXPECT_TRUE(series.MinX() == 4 && series.MaxX() == 6 && series.ZeroValue() == 8 && series.MaxY() == 4);
    series.AddChangeHandler(1, {});

    TDataSeries copy;
    copy.SetData(series.Data());
    series.Clear();
    EXPECT_EQ(AllX(copy), (std::vector<double>{4, 5, 6}));
    EXPECT_EQ(copy.LastId(), 3);
}

TEST(DataSeries, HandlersAreCalledInTheirOrderAndReplacedByKey) {
    std::string calls;
    const auto noting = [&](char letter) {
        return [&calls, letter](TDataSeries&, TChangeReasons) { calls += letter; };
    };
    {
        TDataSeries series;
        series.AddChangeHandler(7, noting('a'));
        series.AddChangeHandler(3, noting('b'));
        series.AddChangeHandler(5, noting('c'));
        series.AddChangeHandler(7, noting('A'));
        series.AddChangeHandler(3, {});
        series.AddPoint(1, 1);
        EXPECT_EQ(calls, "Ac");
        calls.clear();
    }
    EXPECT_EQ(calls, "Ac") << "and once more when the series goes";
}

/// What a handler sees when it is told of a change.
struct TToldState {
    TChangeReasons Reasons;
    int Count;
    double ZeroValue, Slope;
    bool operator==(const TToldState&) const = default;
};

std::vector<TToldState> ToldOf(TDataSeries& series, const std::function<void()>& change) {
    std::vector<TToldState> told;
    series.AddChangeHandler(1, [&](TDataSeries& s, TChangeReasons reasons) {
        told.push_back({reasons, s.Count(), s.ZeroValue(), s.BaseLineSlope()});
    });
    change();
    series.AddChangeHandler(1, {});
    return told;
}

TEST(DataSeries, AHandlerIsToldOnceOfAllThatHappenedWhenItStands) {
    const TChangeReasons baseline = TDataSeries::kBaselineChanged;
    struct TCase {
        const char* name;
        void (*change)(TDataSeries&);
        TToldState told;
    };
    const TCase cases[] = {
        {"a lower point",
         [](TDataSeries& s) { s.AddPoint(3, -1); },
         {baseline | TDataSeries::kPointAdded, 3, -1, 0}},
        {"a lowered point",
         [](TDataSeries& s) { s.SetPointY(1, -2); },
         {baseline | TDataSeries::kPointChanged, 2, -2, 0}},
        {"auto zero", [](TDataSeries& s) { s.ApplyAutoZero(); }, {baseline, 2, 1, 0}},
        {"extents", [](TDataSeries& s) { s.RecalcExtents(); }, {baseline, 2, 1, 0}},
        {"baseline", [](TDataSeries& s) { s.SetBaseline(7, 8); }, {baseline, 2, 7, 8}},
        {"holds in each other",
         [](TDataSeries& s) {
             const TUpdateHold outer(s);
             s.SetBaseLineSlope(4);
             {
                 const TUpdateHold inner(s);
                 s.DeletePoint(1);
             }
             s.SetRegressionType(1);
         },
         {baseline | TDataSeries::kPointChanged | TDataSeries::kRegressionChanged, 1, 5, 4}},
    };
    for (const TCase& c : cases) {
        SCOPED_TRACE(c.name);
        TDataSeries series;
        series.AddPoint(1, 1);
        series.AddPoint(2, 2);
        series.SetBaseline(5, 3);
        series.SetAutoZero(true);
        EXPECT_EQ(ToldOf(series, [&] { c.change(series); }), std::vector{c.told});
    }
}

TEST(DataSeries, HandlersMayChangeTheSeriesAndTheHandlers) {
    std::vector<TChangeReasons> seen;
    {
        TDataSeries series;
        std::string text = "a text that a handler holds and that is long enough to be allocated";
        series.AddChangeHandler(1, [&, text](TDataSeries& s, TChangeReasons) {
            s.AddChangeHandler(1, {}); // removes the one that runs
            s.AddChangeHandler(2, [&](TDataSeries& t, TChangeReasons reasons) {
                seen.push_back(reasons);
                if (reasons.Has(TDataSeries::kDestroyed)) {
                    t.AddChangeHandler(2, [](TDataSeries&, TChangeReasons late) {
                        EXPECT_FALSE(late.Has(TDataSeries::kDestroyed));
                    });
                    t.SetZeroValue(t.ZeroValue() + 1);
                    EXPECT_EQ(t.LegendText(), "UnNamed Series");
                } else if (t.ExtentsStale()) {
                    t.RecalcExtents();
                } else if (reasons.Has(TDataSeries::kPointAdded)) {
                    t.Clear();
                }
            });
            EXPECT_EQ(text.size(), 67u);
        });
        series.SetAutoZero(true);
        EXPECT_EQ(series.AddPoint(1, 5), 0);
        EXPECT_EQ(series.AddPoint(2, 5), 0);
    }
    EXPECT_TRUE(seen.back().Has(TDataSeries::kDestroyed));
}

TEST(DataSeries, LegendNamesTheShownParameters) {
    TDataSeries series;
    series.SetSeriesName("Run 1");
    const auto addParameter = [&](const char* name, double value, const char* units, bool shown) {
        auto parameter = std::make_unique<TDBLParameter>();
        parameter->SetName(name);
        parameter->SetValue(value);
        parameter->Units = units;
        parameter->ShowInLegend = shown;
        series.CurveFit().AddParameter(std::move(parameter));
    };
    addParameter("B", 1, "", false);
    EXPECT_EQ(series.LegendText(), "Run 1");
    addParameter("k", 0.123456, "1/s", true);
    EXPECT_EQ(series.LegendText(), "Run 1 (k=0.1235 1/s)");
    addParameter("A", -3, "V", true);
    EXPECT_EQ(series.LegendText(), "Run 1 (k=0.1235 1/s; A=-3 V)");
    addParameter("N", 6.02214e23, "", true);
    addParameter("h", -6.62607e-34, "Js", true);
    EXPECT_EQ(series.LegendText(), "Run 1 (k=0.1235 1/s; A=-3 V; N=6.022E0023 ; h=-6.626E-0034 Js)");
}

} // namespace
} // namespace lumoplot
