// The three uncertainties, against closed formulas and against each other.
#include "fit/many/uncertainty.h"

#include "common/fit_parameters.h"
#include "fit/run/fit_statistics.h"

#include <cmath>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

// Scatter without a random number generator: multiples of the golden section, evenly spread.
double Scatter(int i) {
    const double place = 0.618033988749895 * (i + 1);
    return place - std::floor(place) - 0.5;
}

struct TFitted {
    TCurFit fit;
    std::vector<double> x;
    std::vector<double> y;
    TFitRun run;

    TFitted(const char* equation, std::initializer_list<std::pair<const char*, double>> starts) {
        fit.SetExpression(equation);
        fit.SetProcType(TFitProcedure::Newton);
        for (const auto& [name, value] : starts) AddParameter(fit, name, value).SetVary(true);
    }

    template <class TFunction>
    void Run(int count, double step, TFunction&& function) {
        for (int i = 0; i < count; ++i) {
            x.push_back(step * i);
            y.push_back(function(x.back()) + 0.2 * Scatter(i));
        }
        ASSERT_EQ(RunFit(fit, x, y, run).End, TFitEnd::Converged);
    }

    TFittedData Data() const { return {fit, x, y, run}; }
};

TEST(Uncertainty, AgreesForALinearModel) {
    TFitted line("a+b*x", {{"a", 1}, {"b", 1}});
    line.Run(40, 0.1, [](double x) { return 1 + 2 * x; });
    const std::vector<TInterval> asymptotic = AsymptoticIntervals(line.fit, 0.95);
    TBootstrapOptions options;
    options.Resamples = 4000;
    const TBootstrap bootstrap = BootstrapOf(line.Data(), options);
    options.Resampling = TResampling::Points;
    const TBootstrap points = BootstrapOf(line.Data(), options);
    EXPECT_EQ(bootstrap.Values[0].size(), 4000u);
    for (std::size_t i = 0; i < 2; ++i) {
        const double error = line.fit.Result()->StandardError(i);
        const TProfile profile = ProfileOf(line.Data(), static_cast<int>(i) + 1);
        EXPECT_NEAR(profile.Interval.Low, asymptotic[i].Low, 1e-5 * error);
        EXPECT_NEAR(profile.Interval.High, asymptotic[i].High, 1e-5 * error);
        for (const TProfilePoint& point : profile.Points)
            EXPECT_NEAR(point.Deviation,
                        (point.Value - line.fit.Parameter(static_cast<int>(i) + 1)->Value()) / error, 1e-6);
        EXPECT_NEAR(bootstrap.StandardErrors[i] / error, 1, 0.05);
        EXPECT_NEAR(points.StandardErrors[i] / error, 1, 0.2);
        EXPECT_NEAR((bootstrap.Intervals[i].High - bootstrap.Intervals[i].Low) / (2 * 2.024 * error), 1,
                    0.05);
    }
}

// With one parameter the profile is the sum of squares itself: the test looks for its ends alone.
TEST(Uncertainty, AProfileEndsWhereTheSumOfSquaresHasRisen) {
    TFitted decay("exp(-k*x)", {{"k", 1}});
    decay.Run(12, 0.5, [](double x) { return std::exp(-0.7 * x); });
    const auto rss = [&](double k) {
        double sum = 0;
        for (std::size_t i = 0; i < decay.x.size(); ++i)
            sum += std::pow(decay.y[i] - std::exp(-k * decay.x[i]), 2);
        return sum;
    };
    const double t = 2.200985160; // Student, 11 degrees of freedom
    const double risen = decay.fit.Result()->Rss * (1 + t * t / 11);
    const auto end = [&](double inside, double outside) {
        for (int i = 0; i < 60; ++i) {
            const double middle = 0.5 * (inside + outside);
            (rss(middle) < risen ? inside : outside) = middle;
        }
        return inside;
    };
    const double best = decay.fit.Parameter(1)->Value();
    const TProfile profile = ProfileOf(decay.Data(), 1);
    EXPECT_NEAR(profile.Interval.Low, end(best, 0), 1e-6);
    EXPECT_NEAR(profile.Interval.High, end(best, 3), 1e-6);
    EXPECT_GT(profile.Interval.High - best, best - profile.Interval.Low); // it is not symmetric
}

TEST(Uncertainty, AProfileStopsAtABoundAndAnOpenSideIsInfinite) {
    TFitted decay("a*exp(-k*x)", {{"a", 1}, {"k", 1}});
    decay.fit.Parameter(2)->SetBounds(0, 1.45);
    decay.Run(8, 0.5, [](double x) { return std::exp(-1.4 * x); });
    EXPECT_EQ(ProfileOf(decay.Data(), 2).Interval.High, 1.45);
    // Only the first point tells a fall from a fast one.
    TFitted fast("c+a*exp(-k*x)", {{"a", 1}, {"k", 3}, {"c", 0}});
    fast.Run(20, 1, [](double x) { return x == 0 ? 2.0 : 1 + std::exp(-2 * x); });
    EXPECT_EQ(ProfileOf(fast.Data(), 2).Interval.High, INFINITY);
}

TEST(Uncertainty, TheSameSeedGivesTheSameResamples) {
    TFitted decay("a*exp(-k*x)", {{"a", 1}, {"k", 1}});
    decay.Run(20, 0.2, [](double x) { return 2 * std::exp(-x); });
    TBootstrapOptions options;
    options.Resamples = 50;
    const TBootstrap first = BootstrapOf(decay.Data(), options);
    EXPECT_EQ(first.Values, BootstrapOf(decay.Data(), options).Values);
    options.Seed = 2;
    EXPECT_NE(first.Values, BootstrapOf(decay.Data(), options).Values);
}

class TCancelledAt final : public TProgress {
public:
    explicit TCancelledAt(int position) : m_position(position) {}
    void Begin(const std::string&, std::int64_t, std::int64_t) override {}
    [[nodiscard]] bool StepTo(std::int64_t position) override { return position < m_position; }

private:
    int m_position;
};

TEST(Uncertainty, ACancelledBootstrapHasWhatThereWas) {
    TFitted decay("a*exp(-k*x)", {{"a", 1}, {"k", 1}});
    decay.Run(20, 0.2, [](double x) { return 2 * std::exp(-x); });
    TCancelledAt progress(30);
    decay.run.Progress = &progress;
    TBootstrapOptions options;
    options.Resamples = 100000;
    const TBootstrap bootstrap = BootstrapOf(decay.Data(), options);
    EXPECT_TRUE(bootstrap.WasCancelled);
    EXPECT_GE(bootstrap.Values[0].size(), 29u);
    EXPECT_LT(bootstrap.Values[0].size(), 1000u);
    TCancelledAt atOnce(0);
    decay.run.Progress = &atOnce;
    EXPECT_TRUE(ProfileOf(decay.Data(), 1).WasCancelled);
}

// The bands of a straight line: s t √(1/n + (x − mean)²/Sxx), and with 1 more under the root.
TEST(Uncertainty, BandsOfALineHaveTheirClosedForm) {
    TFitted line("a+b*x", {{"a", 1}, {"b", 1}});
    line.Run(11, 1, [](double x) { return 1 + 2 * x; });
    const double x[] = {-3, 5, 12};
    const TBands bands = BandsOf(line.fit, x, 0.95);
    const double t = 2.262157163; // 9 degrees of freedom
    EXPECT_NEAR(StudentQuantile(0.95, 9), t, 1e-8);
    for (std::size_t i = 0; i < 3; ++i) {
        const double variance = 1 / 11.0 + (x[i] - 5) * (x[i] - 5) / 110;
        const double s = line.fit.Result()->ResidualSD;
        EXPECT_NEAR(bands.Confidence[i], t * s * std::sqrt(variance), 1e-9);
        EXPECT_NEAR(bands.Prediction[i], t * s * std::sqrt(1 + variance), 1e-9);
    }
}

} // namespace
} // namespace lumoplot
