#include "data/analysis/least_squares.h"
#include "data/analysis/statistics.h"
#include "data/series/data_series.h"

#include "common/special_values.h"
#include "data/analysis/regression.h"
#include "fit/definition/cur_fit.h"

#include <QTemporaryDir>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

namespace lumoplot {
namespace {

constexpr int kSeveralBlocks = 3 * static_cast<int>(TPointBlock::kCapacity);

void Fill(TDataSeries& series, const std::vector<double>& x, const std::vector<double>& y) {
    for (std::size_t i = 0; i < x.size(); ++i) series.AddPoint(x[i], y[i]);
}

std::vector<double> DerivedOf(const TDataSeries& series) {
    std::vector<double> derived;
    for (TPointCursor point = series.First(); point; point = point.Next()) derived.push_back(point.Derived());
    return derived;
}

void ExpectSame(const TStatistics& statistics, const TStatistics& expected) {
    EXPECT_EQ(statistics.Message, expected.Message);
    EXPECT_EQ(statistics.Count, expected.Count);
    EXPECT_EQ(statistics.Sum, expected.Sum);
    EXPECT_EQ(statistics.Median, expected.Median);
    EXPECT_EQ(statistics.Mode, expected.Mode);
    EXPECT_EQ(statistics.Variance, expected.Variance);
}

std::string ErrorOf(TDataSeries& series) {
    try {
        series.CalcRegression();
    } catch (const ERegressionError& error) {
        return error.what();
    }
    return "";
}

TEST(SeriesStatistics, AreOfAllPointsAndOfTheRawY) {
    TDataSeries series;
    series.SetZeroValue(100);
    series.SetBaseLineSlope(7);
    for (int i = 1; i <= kSeveralBlocks; ++i) series.AddPoint(i, kSeveralBlocks - i); // Y descends
    const double n = kSeveralBlocks;
    EXPECT_EQ(series.XStatistics().Mean, (n + 1) / 2);
    EXPECT_EQ(series.YStatistics().Mean, (n - 1) / 2);
    EXPECT_EQ(series.XStatistics().Median, n / 2);
    EXPECT_EQ(series.YStatistics().Median, n / 2 - 1);
    EXPECT_DOUBLE_EQ(series.YStatistics().Variance, n * (n + 1) / 12); // of n whole numbers in a row
}

// Whatever is cached must not outlive the points that it came from.
TEST(SeriesStatistics, AfterEachChangeAreThoseOfANewSeries) {
    std::mt19937_64 random(7);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    TDataSeries series;
    series.SetDuplicatesAllowed(true);
    for (int step = 0; step < 600; ++step) {
        switch (below(step > 20 ? 9 : 4)) {
        case 4: series.DeletePoint(1 + below(series.LastId() + 1)); break;
        case 5: series.SetPointY(1 + below(series.LastId() + 1), below(50)); break;
        case 6: series.SetNumericalTolerance(below(3)); break;
        case 7: series.SwapPoints({}); break;
        case 8:
            step % 5 == 0 ? series.Clear() : series.SetDuplicatesAllowed(!series.DuplicatesAllowed());
            break;
        default: series.AddPoint(below(40), below(50));
        }
        TDataSeries fresh;
        fresh.SetDuplicatesAllowed(true);
        fresh.SetNumericalTolerance(series.NumericalTolerance());
        TPointChain points = series.Points();
        fresh.SwapPoints(points);
        SCOPED_TRACE(step);
        ExpectSame(series.XStatistics(), fresh.XStatistics());
        ExpectSame(series.YStatistics(), fresh.YStatistics());
        const TSpread noSpread;
        ASSERT_EQ(series.CorrectedSpread().has_value(), series.Count() > 1);
        EXPECT_EQ(series.CorrectedSpread().value_or(noSpread).Mean,
                  fresh.CorrectedSpread().value_or(noSpread).Mean);
        if (HasFailure()) return;
    }
}

TEST(SeriesStatistics, SpreadFollowsTheBaseline) {
    TDataSeries series;
    EXPECT_FALSE(series.CorrectedSpread());
    Fill(series, {0, 1, 2, 3}, {1, 3, 8, kNaN});
    EXPECT_EQ(series.CorrectedSpread()->Mean, 4);
    EXPECT_DOUBLE_EQ(series.CorrectedSpread()->Deviation, std::sqrt(13.0)); // (9 + 1 + 16) / 2
    series.SetZeroValue(1);
    EXPECT_EQ(series.CorrectedSpread()->Mean, 3);
    series.SetBaseLineSlope(2); // 0, 0, 3 remain
    EXPECT_EQ(series.CorrectedSpread()->Mean, 1);
    EXPECT_DOUBLE_EQ(series.CorrectedSpread()->Deviation, std::sqrt(3.0));
    series.SetPointY(3, 5);
    EXPECT_EQ(series.CorrectedSpread()->Mean, 0);
    EXPECT_EQ(series.CorrectedSpread()->Deviation, 0);
}

// A parabola over points in several blocks that were added in no order.
TEST(SeriesRegression, DerivedValuesLieOnTheirPoints) {
    TDataSeries series;
    for (int i = 0; i < kSeveralBlocks; ++i) {
        const double x = i * 701 % kSeveralBlocks; // each once: 701 is a prime
        series.AddPoint(x, 3 * x * x - 2 * x + 5);
    }
    series.SetBaseLineSlope(0.25); // the regression is of the raw Y
    series.SetRegressionType(TRegressionType::Quadratic);
    series.CalcRegression();
    EXPECT_FALSE(series.RegressionStale());
    for (TPointCursor point = series.First(); point; point = point.Next())
        ASSERT_NEAR(point.Derived(), point.Y(), 1e-12 * (1 + point.Y()));
}

TEST(SeriesRegression, SmoothingTakesThePointsInOrderOfX) {
    TDataSeries series;
    Fill(series, {3, 1, 2, 4}, {0, 8, 4, 2});
    series.SetRegressionControlValue2(0.5);
    series.SetRegressionType(TRegressionType::ExponentialSmoothing);
    series.CalcRegression();
    EXPECT_EQ(DerivedOf(series), (std::vector<double>{8, 6, 3, 2.5}));
    series.SetRegressionType(TRegressionType::RunningAverage);
    series.CalcRegression();
    EXPECT_EQ(DerivedOf(series), (std::vector<double>{8, 6, 2, 1}));
}

TEST(SeriesRegression, SplineIsACurveOfItsOwn) {
    TDataSeries series;
    Fill(series, {0, 1, 2}, {0, 1, 0});
    series.SetRegressionControlValue1(4);
    series.SetRegressionControlValue2(1e30); // ends without curvature
    series.SetRegressionType(TRegressionType::Spline);
    series.CalcRegression();
    EXPECT_EQ(DerivedOf(series), (std::vector<double>{0, -3, 0})) << "the second derivatives";
    ASSERT_EQ(series.RegressionCurve().size(), 5U);
    EXPECT_EQ(series.RegressionCurve()[1].X, 0.5);
    EXPECT_DOUBLE_EQ(series.RegressionCurve()[1].Derived, 0.6875);

    series.SetDuplicatesAllowed(true);
    series.CalcRegression();
    EXPECT_TRUE(series.RegressionCurve().empty());
    series.SetDuplicatesAllowed(false);
    series.CalcRegression();
    EXPECT_EQ(series.RegressionCurve().size(), 5U);
    series.Clear();
    EXPECT_TRUE(series.RegressionCurve().empty());
}

TEST(SeriesRegression, AnotherTypeLeavesNothingOfTheLastOne) {
    TDataSeries series;
    Fill(series, {0, 1, 2}, {0, 1, 0});
    for (const int next : {0, 5, 6}) {
        for (const int before : {1, 4}) {
            series.SetRegressionType(TRegressionType{before});
            series.UpdateRegression();
            EXPECT_EQ(series.RegressionLine() != nullptr, before == 1);
            EXPECT_EQ(series.RegressionCurve().empty(), before == 1);
            series.SetRegressionType(TRegressionType{next});
            series.UpdateRegression();
            EXPECT_FALSE(series.RegressionLine());
            EXPECT_TRUE(series.RegressionCurve().empty());
            EXPECT_EQ(DerivedOf(series)[1], next == 6 ? 0.05 : 0);
        }
    }
}

TEST(SeriesRegression, TheCurveOfAFitIsSampledOverTheExtentOfNow) {
    TDataSeries series;
    Fill(series, {0, 1, 2, 8}, {0, 1, 0, 1});
    series.CurveFit().SetExpression("x*x");
    series.SetRegressionType(TRegressionType::SampledCurve);
    series.SetRegressionControlValue1(2);
    series.DeletePoint(series.LastId());
    ASSERT_TRUE(series.ExtentsStale());
    series.CalcRegression();
    ASSERT_EQ(series.RegressionCurve().size(), 3u);
    EXPECT_EQ(series.RegressionCurve()[1].X, 1);
    EXPECT_EQ(series.RegressionCurve()[2].Derived, 4);
}

TEST(SeriesRegression, ErrorsAreThrownOnceAndKept) {
    struct TCase {
        int type;
        double control;
        const char* text;
    };
    const TCase cases[] = {
        {0, 0.05, "internal error: regression"},
        {8, 0.05, "Unknown regression type"},
        {-1, 0.05, "Unknown regression type"},
        {7, 0.6, "Invalid Running Average limit"},
    };
    for (const TCase& c : cases) {
        TDataSeries series;
        Fill(series, {0, 1, 2}, {0, 1, 5});
        series.SetRegressionType(TRegressionType::Linear);
        series.CalcRegression();
        series.SetRegressionControlValue2(c.control);
        series.SetRegressionType(TRegressionType{c.type});
        EXPECT_EQ(ErrorOf(series), c.text);
        EXPECT_EQ(series.RegressionError(), c.text);
        EXPECT_EQ(DerivedOf(series), (std::vector<double>{0, 0, 0}));
        EXPECT_EQ(ErrorOf(series), "") << "it is not stale any more";
        EXPECT_EQ(series.RegressionError(), c.text);
        series.SetRegressionType(TRegressionType::RobustLine);
        series.CalcRegression();
        EXPECT_EQ(series.RegressionError(), "");
        series.SetRegressionType(TRegressionType{c.type});
        EXPECT_NO_THROW(series.UpdateRegression());
        EXPECT_EQ(series.RegressionError(), c.type == 0 ? "" : c.text);
    }
}

// A drawing that brings a regression up to date must not ask for the next drawing.
TEST(SeriesRegression, NobodyIsNotified) {
    TDataSeries series;
    Fill(series, {0, 1, 2}, {0, 1, 5});
    series.SetRegressionType(TRegressionType::RobustLine);
    int calls = 0;
    series.AddChangeHandler(1, [&](TDataSeries&, TChangeReasons) { ++calls; });
    series.CalcRegression();
    series.YStatistics();
    series.CorrectedSpread();
    EXPECT_EQ(calls, 0);
    series.SetPointY(1, 4);
    EXPECT_TRUE(series.RegressionStale());
    EXPECT_FALSE(series.RegressionLine()) << "the line of the points before";
}

TEST(SeriesRegression, IsStaleWhenTheFitThatItSamplesHasBeenLoaded) {
    QTemporaryDir folder;
    const std::string name = folder.filePath("line.lfn").toStdString();
    TCurFit line;
    line.SetExpression("3*x");
    line.SaveToFile(name);
    TDataSeries series;
    for (int i = 0; i < 5; ++i) series.AddPoint(i, i);
    series.SetRegressionType(TRegressionType::SampledCurve);
    series.CurveFit().SetExpression("2*x");
    series.UpdateRegression();
    EXPECT_FALSE(series.RegressionStale());
    series.CurveFit().LoadFromFile(name, true);
    EXPECT_TRUE(series.RegressionStale());
}

TEST(SeriesStatistics, OrderValuesWithoutAPositionKeepWhatTheyWere) {
    TDataSeries series;
    for (int i = 1; i <= 10; ++i) series.AddPoint(i, 10 * i);
    EXPECT_EQ(series.XStatistics().Quantile20, 2);
    EXPECT_EQ(series.XStatistics().Quantile25, 2);
    for (int id = 10; id > 3; --id) series.DeletePoint(id);
    const TStatistics statistics = series.XStatistics();
    EXPECT_EQ(statistics.Count, 3U);
    EXPECT_EQ(statistics.Median, 1);
    EXPECT_EQ(statistics.Quantile20, 2);
    EXPECT_EQ(statistics.Quantile25, 2);
    EXPECT_EQ(statistics.Quantile80, 3);
    series.Clear();
    for (int i = 1; i <= 4; ++i) series.AddPoint(100 * i, 0);
    EXPECT_EQ(series.XStatistics().Quantile20, 2);
    EXPECT_EQ(series.XStatistics().Quantile25, 100);
}

} // namespace
} // namespace lumoplot
