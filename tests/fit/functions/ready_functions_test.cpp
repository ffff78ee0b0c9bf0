#include "fit/functions/ready_functions.h"

#include "common/cancelling_progress.h"
#include "expr/formula_hints.h"
#include "fit/functions/start_values.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <set>

namespace lumoplot {
namespace {

constexpr int kMadePoints = 80;
constexpr double kMadeNoise = 0.01;      // of the range of Y
constexpr double kStandardErrors = 6;    // that a value may be off
constexpr double kAsGoodAsTrue = 1.0001; // sum of squares

struct TMadeData {
    std::vector<double> X;
    std::vector<double> Y;
    double Rss = 0; ///< of the true curve
};

TMadeData MadeBy(const TReadyFunction& function, TCurFit& truth, std::uint32_t seed) {
    UseReadyFunction(function, truth);
    truth.Compile();
    TMadeData data;
    const bool isLogarithmic = function.From > 0 && function.To / function.From > 500;
    for (int i = 0; i < kMadePoints; ++i) {
        const double part = i / (kMadePoints - 1.0);
        data.X.push_back(isLogarithmic ? function.From * std::pow(function.To / function.From, part)
                                       : std::lerp(function.From, function.To, part));
        data.Y.push_back(truth.EvaluateAt(data.X.back()));
    }
    const auto [low, high] = std::ranges::minmax(data.Y);
    std::mt19937 random(seed);
    for (double& y : data.Y) {
        // The sum of twelve even numbers is nearly normal, and the same on every machine.
        double sum = -6;
        for (int i = 0; i < 12; ++i) sum += static_cast<double>(random()) / 4294967296.0;
        const double noise = kMadeNoise * (high - low) * sum;
        y += noise;
        data.Rss += noise * noise;
    }
    return data;
}

class EachReadyFunction : public testing::TestWithParam<std::size_t> {
protected:
    const TReadyFunction& Function() const { return ReadyFunctions()[GetParam()]; }
    // Two equal parts may come in any order, and a phase may be half a turn further.
    bool HasOneForm() const {
        const std::string name = Function().Name;
        return !name.starts_with("two_") && !name.starts_with("double_") && name != "consecutive_reactions" &&
               std::ranges::none_of(Function().Parameters,
                                    [](const TReadyParameter& p) { return p.Role == TParameterRole::Phase; });
    }
};

// From nothing but the data: the run looks nowhere else.
TEST_P(EachReadyFunction, RecoversItsParametersFromItsOwnEstimate) {
    for (const std::uint32_t seed : {1u, 2u, 3u}) {
        SCOPED_TRACE(seed);
        TCurFit truth;
        const TMadeData data = MadeBy(Function(), truth, seed);
        TCurFit fit;
        UseReadyFunction(Function(), fit);
        fit.SetProcType(TFitProcedure::Newton);
        for (int i = 1; i <= fit.NParams(); ++i) fit.Parameter(i)->SetValue(1.7);
        const TStartValues start = FindStartValues(fit, data.X, data.Y);
        EXPECT_GE(start.Rss, 0);
        TFitRun run;
        run.Starts = TFitStarts::Given;
        const TFitResult result = RunFit(fit, data.X, data.Y, run);
        EXPECT_EQ(result.End, TFitEnd::Converged) << TextOf(result.End);
        EXPECT_LE(result.Rss, data.Rss * kAsGoodAsTrue);
        for (int i = 1; i <= fit.NParams() && HasOneForm(); ++i)
            EXPECT_LE(std::abs(fit.Parameter(i)->Value() - truth.Parameter(i)->Value()),
                      kStandardErrors * fit.Parameter(i)->FinalDeviation)
                << fit.Parameter(i)->Name() << " = " << fit.Parameter(i)->Value();
    }
}

INSTANTIATE_TEST_SUITE_P(ReadyFunctions, EachReadyFunction,
                         testing::Range(std::size_t{0}, ReadyFunctions().size()),
                         [](const auto& each) { return std::string(ReadyFunctions()[each.param].Name); });

TEST(ReadyFunctions, AreDescribedAndTellEachOtherApart) {
    std::set<std::string> names;
    std::set<std::string> groups;
    for (const TReadyFunction& function : ReadyFunctions()) {
        SCOPED_TRACE(function.Name);
        EXPECT_TRUE(names.insert(function.Name).second);
        groups.insert(function.Group);
        EXPECT_FALSE(FindSignHint(function.Equation)) << "a sign binds tighter than a power";
        EXPECT_TRUE(std::string(function.Sentence).ends_with('.'));
        TCurFit fit;
        UseReadyFunction(function, fit, "s", "V");
        EXPECT_EQ(ReadyFunctionOf(fit), &function);
        for (int i = 1; i <= fit.NParams(); ++i) EXPECT_TRUE(fit.Parameter(i)->Vary());
    }
    EXPECT_GE(names.size(), 40u);
    EXPECT_EQ(groups.size(), 8u);
}

TEST(ReadyFunctions, UnitsComeFromTheAxes) {
    TCurFit fit;
    const TReadyFunction& wave = *FindReadyFunction("sine_on_line");
    UseReadyFunction(wave, fit, "s", "V");
    std::vector<std::string> units;
    for (int i = 1; i <= fit.NParams(); ++i) units.push_back(fit.Parameter(i)->Units);
    EXPECT_EQ(units, (std::vector<std::string>{"V", "1/s", "rad", "V", "V/s"}));
    UseReadyFunction(wave, fit, "", "V");
    EXPECT_EQ(fit.Parameter(2)->Units, "");
}

// What takes time by the square of the number of points would not come to an end here.
TEST(StartValues, AreFoundInVeryManyPoints) {
    std::vector<double> x;
    std::vector<double> y;
    for (int i = 0; i < 400000; ++i) {
        x.push_back(i / 4000.0);
        y.push_back(2 + 5 * std::exp(-std::pow((x.back() - 63) / 1.5, 2) / 2) +
                    ((i % 1000 * 7919) % 13 - 6) * 0.05);
    }
    TCurFit fit;
    UseReadyFunction(*FindReadyFunction("gaussian_peak"), fit);
    EXPECT_EQ(FindStartValues(fit, x, y).Source, TStartSource::Shape);
    EXPECT_NEAR(fit.Parameter(2)->Value(), 63, 1);
    EXPECT_NEAR(fit.Parameter(1)->Value(), 5, 1);
}

// Narrower than what an even choice of points shows.
TEST(StartValues, SeeNarrowPeaksInManyPoints) {
    constexpr int kPoints = 250000;
    constexpr double kPlace = 0.73204;
    for (const double width : {3e-5, 2e-4, 3e-3}) {
        SCOPED_TRACE(width);
        std::vector<double> x;
        std::vector<double> y;
        for (int i = 0; i < kPoints; ++i) {
            x.push_back(i / (kPoints - 1.0));
            y.push_back(2 + x.back() + 5 * std::exp(-std::pow((x.back() - kPlace) / width, 2) / 2) +
                        (i * 7919LL % 13 - 6) * 0.05);
        }
        for (const char* equation :
             {"h*exp(-sqr((x - m)/s)/2) + b0 + b1*x", "p + q*x + u*exp(-sqr((x - v)/w))"}) {
            SCOPED_TRACE(equation);
            TCurFit fit;
            UseReadyFunction(*FindReadyFunction("gaussian_on_line"), fit);
            int number = 0;
            if (*equation == 'p')
                for (const char* name : {"u", "v", "w", "p", "q"}) fit.Parameter(++number)->SetName(name);
            fit.SetExpression(equation);
            for (int i = 1; i <= fit.NParams(); ++i) fit.Parameter(i)->SetValue(1);
            FindStartValues(fit, x, y);
            EXPECT_NEAR(fit.Parameter(2)->Value(), kPlace, 2 * width);
            EXPECT_NEAR(fit.Parameter(1)->Value(), 5, 2.5);
            fit.SetProcType(TFitProcedure::Newton);
            TFitRun run;
            run.Starts = TFitStarts::Given;
            EXPECT_EQ(RunFit(fit, x, y, run).End, TFitEnd::Converged);
            EXPECT_NEAR(fit.Parameter(2)->Value(), kPlace, width / 10);
        }
    }
}

// An equation of which nothing but the formula is known, far from its start.
TEST(StartValues, AreSearchedForOtherEquations) {
    TCurFit fit;
    fit.SetExpression("u*exp(-sqr((x - v)/w)) + z*x");
    for (const char* name : {"u", "v", "w", "z"}) {
        auto parameter = std::make_unique<TDBLParameter>();
        parameter->SetName(name);
        parameter->SetValue(1);
        parameter->SetVary(true);
        fit.AddParameter(std::move(parameter));
    }
    std::vector<double> x;
    std::vector<double> y;
    for (int i = 0; i < 60; ++i) {
        x.push_back(i);
        y.push_back(5 * std::exp(-std::pow((i - 41) / 3.0, 2)) + 0.1 * i);
    }
    EXPECT_EQ(FindStartValues(fit, x, y).Source, TStartSource::Search);
    EXPECT_NEAR(fit.Parameter(2)->Value(), 41, 0.5);
    EXPECT_NEAR(std::abs(fit.Parameter(3)->Value()), 3, 0.5);
    fit.SetExpression("u*ln(-x*x) + v*w*z");
    EXPECT_THROW(FindStartValues(fit, x, y), EFitError);
    EXPECT_NEAR(fit.Parameter(2)->Value(), 41, 0.5) << "values stay where none was found";
    fit.SetExpression("u*exp(-sqr((x-v)/w)) + z*x");
    fit.Parameter(2)->SetValue(7);
    TCancellingProgress cancelled(0);
    TFitRun run;
    run.Progress = &cancelled;
    FindStartValues(fit, x, y, run);
    EXPECT_EQ(fit.Parameter(2)->Value(), 7) << "no error, and nothing changed";
}

} // namespace
} // namespace lumoplot
