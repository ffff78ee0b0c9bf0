#include "data/series/series_data.h"

#include "common/fit_parameters.h"
#include "common/special_values.h"
#include "common/values_of.h"
#include "data/series/ds_info.h"
#include "fit/definition/cur_fit.h"
#include "support/update_hold.h"

#include <cfloat>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace lumoplot {
namespace {

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
        {"type", [](TDataSeries& s) { s.SetRegressionType(TRegressionType::Linear); }, 4, false, true, false},
        {"control 1", [](TDataSeries& s) { s.SetRegressionControlValue1(5); }, 4, false, true, false},
        {"control 2", [](TDataSeries& s) { s.SetRegressionControlValue2(1); }, 4, false, true, false},
        {"fit", [](TDataSeries& s) { s.CurveFit().SetStatus(TFitStatus::Function); }, 5, false, false, false},
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
    TDataSeries tiny;
    tiny.AddPoint(0, -1);
    tiny.AddPoint(1, 1e-60);
    EXPECT_GT(tiny.PositiveMinY(), 0) << "nor 0";
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
    EXPECT_EQ(XsOf(series), (std::vector<double>{4, 5, 6}));
    EXPECT_EQ(series.GetPoint(3)->X, 5);
    EXPECT_TRUE(series.MinX() == 4 && series.MaxX() == 6 && series.ZeroValue() == 8 && series.MaxY() == 4);
    series.AddChangeHandler(1, {});

    TDataSeries copy;
    copy.SetData(series.Data());
    series.Clear();
    EXPECT_EQ(XsOf(copy), (std::vector<double>{4, 5, 6}));
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
             s.SetRegressionType(TRegressionType::Linear);
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
    const auto addShown = [&](const char* name, double value, const char* units) {
        TDBLParameter& parameter = AddParameter(series.CurveFit(), name, value);
        parameter.Units = units;
        parameter.ShowInLegend = true;
    };
    AddParameter(series.CurveFit(), "B", 1);
    EXPECT_EQ(series.LegendText(), "Run 1");
    addShown("k", 0.123456, "1/s");
    EXPECT_EQ(series.LegendText(), "Run 1 (k=0.1235 1/s)");
    addShown("N", 6.02214e23, "");
    addShown("h", -6.62607e-34, "Js");
    EXPECT_EQ(series.LegendText(), "Run 1 (k=0.1235 1/s; N=6.022E0023 ; h=-6.626E-0034 Js)");
}

// A file would bring it back as 0, and the graph differ from itself.
TEST(DataSeriesBaseline, IsNeverNegativeZero) {
    TDataSeries series;
    series.SetAutoZero(true);
    series.AddPoint(1, -0.0);
    EXPECT_FALSE(std::signbit(series.ZeroValue()));
    series.SetAutoZero(false);
    series.SetBaseline(-5, 1);
    series.SetBaseline(-0.0, -0.0);
    EXPECT_FALSE(std::signbit(series.ZeroValue()));
    EXPECT_FALSE(std::signbit(series.BaseLineSlope()));
}

} // namespace
} // namespace lumoplot
