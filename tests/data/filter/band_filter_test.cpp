#include "data/filter/band_filter.h"

#include "common/cancelling_progress.h"
#include "common/special_values.h"
#include "common/values_of.h"
#include "data/filter/band_filter_kernel.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <random>

namespace lumoplot {
namespace {

/// The filter written down literally, with all coefficients and every sum as it stands in the formulas.
TPairs FilterLiterally(const TPairs& points, double zero, double slope, const TBandFilterSettings& f) {
    using std::numbers::pi;
    const int N = f.CountEvery;
    const int M = f.ResponseWidth;
    std::vector<double> in;
    double sumIn = 0;
    double end = 0;
    for (std::size_t i = 0; i + static_cast<std::size_t>(N) <= points.size();
         i += static_cast<std::size_t>(N)) {
        double sum = 0;
        for (int k = 0; k < N; ++k) {
            const auto& [x, y] = points[i + static_cast<std::size_t>(k)];
            sum += y - (zero + slope * x);
            end = x;
        }
        in.push_back(sum / N);
        sumIn += in.back() - f.NormZero;
    }
    const int n = static_cast<int>(in.size());
    const double x0 = points.front().first;
    const double dt = (end - x0) / (n - 1);
    const double B = (f.HighFreq - f.LowFreq) * 0.5;
    const double F = (f.HighFreq + f.LowFreq) * 0.5;
    std::vector<double> h;
    for (int k = 0; k <= 2 * M; ++k) {
        const double t = (k - M) * dt;
        const double pass =
            k == M ? 4 * B : 2 * std::sin(2 * pi * B * t) * std::cos(2 * pi * F * t) / (pi * t);
        const double stop = k == M ? 1 / dt - 4 * B : -pass;
        h.push_back(f.FilterType == TFilterType::BandPass ? pass : stop);
    }
    std::vector<double> out(in.size(), 0.0);
    double sumOut = 0;
    const auto at = [](int i) { return static_cast<std::size_t>(i); };
    for (int i = 2 * M; i <= n - 1; ++i) {
        double sum = 0;
        for (int k = 0; k <= 2 * M; ++k) sum += h[at(k)] * in[at(i - k)];
        out[at(i)] = dt * sum;
        sumOut += out[at(i)] - f.NormZero;
    }
    const double scale = f.Normalize ? sumIn / sumOut : 1;
    TPairs result;
    for (int i = 2 * M; i <= n - 2; ++i)
        for (int s = 1; s <= N; ++s) {
            const double d = out[at(i + 1)] - out[at(i)];
            result.push_back(
                {i * dt + x0 + (s - 1) * dt / N - M * dt, (out[at(i)] + (s - 1) * d / N) * scale});
        }
    return result;
}

/// Two sines, a level and noise, 0.01 apart from 3 on.
TPairs MakeSignal(int count) {
    std::mt19937 random(5);
    TPairs points;
    for (int i = 0; i < count; ++i) {
        const double x = 3 + 0.01 * i;
        const double noise = static_cast<double>(random()) / 4294967296.0 - 0.5;
        points.push_back({x, 7 + 2 * std::sin(2 * x) + std::cos(40 * x) + 0.3 * noise});
    }
    return points;
}

void Fill(TDataSeries& series, const TPairs& points) {
    for (const auto& [x, y] : points) series.AddPoint(x, y);
}

TFilteredPoints Filtered(const TDataSeries& series, const TBandFilterSettings& settings) {
    TSilentProgress progress;
    return FilterBand(series, settings, progress);
}

/// The sums are formed in another order than the literal ones, of some hundred terms of size 10.
constexpr double kRounding = 1e-11;

void ExpectEqualPoints(const TPairs& actual, const TPairs& expected, const std::string& what) {
    ASSERT_EQ(actual.size(), expected.size()) << what;
    for (std::size_t i = 0; i < actual.size(); ++i) {
        ASSERT_DOUBLE_EQ(actual[i].first, expected[i].first) << what << " point " << i;
        ASSERT_NEAR(actual[i].second, expected[i].second, kRounding * (1 + std::abs(expected[i].second)))
            << what << " point " << i;
    }
}

TEST(BandFilter, AgreesWithTheLiteralFormulas) {
    const TPairs points = MakeSignal(2003);
    TDataSeries series;
    Fill(series, points);
    series.SetZeroValue(1.5);
    series.SetBaseLineSlope(-0.25);
    for (const int every : {1, 2, 5, 20})
        for (const int width : {1, 4, 7, 33, 100})
            for (const auto type : {TFilterType::BandStop, TFilterType::BandPass})
                for (const bool normalize : {false, true})
                    for (const auto& [low, high] :
                         {std::pair{2.0, 10.0}, {0.0, 1.0}, {-3.0, 0.1}, {9.0, 4.0}}) {
                        if (2003 / every < 2 * width + 2) continue;
                        const TBandFilterSettings settings{low, high, type, normalize, 0.5, every, width};
                        const TFilteredPoints result = Filtered(series, settings);
                        ASSERT_EQ(result.Outcome, TFilterOutcome::Filtered);
                        ExpectEqualPoints(PairsOf(result.Points),
                                          FilterLiterally(points, 1.5, -0.25, settings),
                                          "N " + std::to_string(every) + " M " + std::to_string(width));
                    }
}

TEST(BandFilter, TheScaleIsKnownWithoutARun) {
    TDataSeries series;
    Fill(series, MakeSignal(700));
    TSilentProgress progress;
    for (const int width : {1, 6, 60})
        for (const double zero : {0.0, 6.0}) {
            TBandFilterSettings settings{1, 4, TFilterType::BandStop, true, zero, 3, width};
            const double scale = NormalizingScale(*SampleBlocks(series, 3, progress), settings);
            const double normalized = Filtered(series, settings).Points.First().Y();
            settings.Normalize = false;
            EXPECT_NEAR(scale, normalized / Filtered(series, settings).Points.First().Y(), 1e-9) << width;
        }
}

TEST(BandFilter, AnEmptyBandStopsNothingAndPassesNothing) {
    const TPairs points = MakeSignal(60);
    TDataSeries series;
    Fill(series, points);
    series.SetZeroValue(2);
    TBandFilterSettings settings{4, 4, TFilterType::BandStop, false, 0, 1, 6};
    const TPairs kept = PairsOf(Filtered(series, settings).Points);
    ASSERT_EQ(kept.size(), 60u - 13);
    for (std::size_t i = 0; i < kept.size(); ++i)
        EXPECT_NEAR(kept[i].second, points[i + 6].second - 2, 1e-13) << i;
    settings.FilterType = TFilterType::BandPass;
    for (const double y : YsOf(Filtered(series, settings).Points)) EXPECT_EQ(y, 0);
    settings.Normalize = true;
    EXPECT_EQ(Filtered(series, settings).Outcome, TFilterOutcome::Refused) << "the output's sum is 0";
    settings.NormZero = 1;
    EXPECT_EQ(Filtered(series, settings).Outcome, TFilterOutcome::Filtered) << "about 1 it is not";
}

TEST(BandFilter, WhatTheResponseDoesNotFitIntoLeavesNoPoints) {
    for (const auto& [count, expected] : {std::pair{1, 0}, {2, 0}, {8, 0}, {9, 0}, {10, 1}, {11, 2}}) {
        TDataSeries series;
        Fill(series, MakeSignal(count));
        const TFilteredPoints result = Filtered(series, {.CountEvery = 1, .ResponseWidth = 4});
        EXPECT_EQ(result.Outcome, TFilterOutcome::Filtered) << count;
        EXPECT_EQ(result.Points.Count(), expected) << count;
    }
}

TEST(BandFilter, RefusesWhatWouldWriteNoNumbers) {
    struct TCase {
        const char* what;
        TPairs points;
        TBandFilterSettings settings;
    };
    TPairs waves;
    for (int i = 0; i < 64; ++i) waves.push_back({i * 0.125, i % 2 == 0 ? 1.0 : -1.0});
    const TCase cases[] = {
        {"no points", {}, {}},
        {"no complete block", MakeSignal(4), {}},
        {"no spread in X", TPairs(50, {3, 1}), {.CountEvery = 1}},
        {"nothing but points that are not finite", TPairs(50, {3, kNaN}), {.CountEvery = 1}},
        {"an output whose sum is only rounding", waves, {1, 3, TFilterType::BandStop, true, 0, 1, 16}},
        {"a band without end", MakeSignal(50), {2, kInfinity, TFilterType::BandStop, true, 0, 1, 4}},
        {"sums beyond the doubles",
         TPairs{{1, 1e308}, {2, 1e308}, {3, 1e308}, {4, 1e308}},
         {0, 1, TFilterType::BandStop, true, 0, 1, 1}},
    };
    for (const TCase& c : cases) {
        TDataSeries series;
        series.SetDuplicatesAllowed(true);
        Fill(series, c.points);
        const TFilteredPoints result = Filtered(series, c.settings);
        EXPECT_EQ(result.Outcome, TFilterOutcome::Refused) << c.what;
        EXPECT_TRUE(result.Points.IsEmpty()) << c.what;
    }
}

TEST(BandFilter, LeavesOutPointsThatAreNotFinite) {
    TPairs points = MakeSignal(300);
    TDataSeries clean;
    Fill(clean, points);
    TDataSeries spoilt;
    Fill(spoilt, points);
    spoilt.AddPoint(3.0051, kNaN);
    spoilt.AddPoint(1, kInfinity);
    ExpectEqualPoints(PairsOf(Filtered(spoilt, {}).Points), PairsOf(Filtered(clean, {}).Points), "spoilt");
}

TEST(BandFilter, MergesTheResultByTheRuleOfTheDataSet) {
    TDataSeries series;
    Fill(series, MakeSignal(300));
    const TBandFilterSettings settings{.CountEvery = 5, .ResponseWidth = 4};
    const int separate = Filtered(series, settings).Points.Count();
    series.SetNumericalTolerance(0.011);
    EXPECT_LT(Filtered(series, settings).Points.Count(), separate);
    series.SetDuplicatesAllowed(true);
    EXPECT_EQ(Filtered(series, settings).Points.Count(), separate);
}

TEST(BandFilter, CanBeCancelledInEveryStage) {
    TDataSeries series;
    Fill(series, MakeSignal(100'000));
    const TBandFilterSettings settings{.CountEvery = 1, .ResponseWidth = 100};
    TCancellingProgress patient(1 << 30);
    EXPECT_EQ(FilterBand(series, settings, patient).Outcome, TFilterOutcome::Filtered);
    EXPECT_EQ(patient.Stages.front(), "Filling Filter Vector...");
    EXPECT_EQ(patient.Stages.back(), "Filtering...");
    for (int steps = 0; steps < patient.Steps; ++steps) {
        TCancellingProgress progress(steps);
        const TFilteredPoints result = FilterBand(series, settings, progress);
        EXPECT_EQ(result.Outcome, TFilterOutcome::Cancelled) << steps;
        EXPECT_TRUE(result.Points.IsEmpty()) << steps;
    }
}

TEST(BandFilterKernel, EveryLengthGivesTheSumInTheStatedOrder) {
    std::mt19937 random(1);
    std::vector<double> in(400);
    for (double& value : in) value = static_cast<double>(random()) / 4294967296.0 - 0.5;
    for (const std::size_t reach : {0, 1, 5, 40})
        for (const std::size_t count : {0, 1, 15, 16, 31, 64, 65, 200}) {
            const std::span<const double> half = std::span(in).subspan(7, reach + 1);
            std::vector<double> out(count);
            ConvolveSymmetric(half, std::span(in).first(count + 2 * reach), out);
            for (std::size_t i = 0; i < count; ++i) {
                double sum = half[0] * in[i + reach];
                for (std::size_t m = 1; m <= reach; ++m)
                    sum += half[m] * (in[i + reach - m] + in[i + reach + m]);
                ASSERT_EQ(out[i], sum) << reach << ' ' << count << ' ' << i;
            }
        }
}

} // namespace
} // namespace lumoplot
