// Where a fit starts from, and ends that are none.
#include "common/special_values.h"
#include "common/thrown_text.h"
#include "fit/run/fit_model.h"
#include "support/number_text.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>

namespace lumoplot {
namespace {

struct TFarStart {
    const char* equation;
    std::initializer_list<TStart> starts;
    std::vector<double> expected;
};

// Only what the model is not linear in needs a start, and a point whose derivative has only a limit (the
// first of each, at x = 0) does not stop a fit.
TEST(CurveFitter, LinearParametersNeedNoStart) {
    const TFarStart cases[] = {
        {"a*exp(-b*x)+c", {{"a", 1e9}, {"b", 0.1}, {"c", -1e7}}, {3, 0.5, -2}},
        {"a*x/(k+x)", {{"a", 1}, {"k", 1}}, {300, 0.05}},
        {"a*exp(-((x/t)^b))", {{"a", 1}, {"t", 50}, {"b", 1}}, {3, 2, 0.6}},
        {"a*x^n+c", {{"a", 0}, {"n", 1.5}, {"c", 0}}, {2, 0.5, 1}},
        {"a+b*x+c*x^2", {{"a", 0}, {"b", 0}, {"c", 0}}, {5e5, -1e3, 0.5}},
    };
    for (const TFitProcedure procType : kEveryProcedure) {
        for (const TFarStart& c : cases) {
            TModel model(c.equation, c.starts, procType);
            model.SetPointsOfModel(40, c.expected);
            EXPECT_EQ(model.Run().End, TFitEnd::Converged)
                << c.equation << " by " << static_cast<int>(procType);
            int number = 0;
            for (const double value : c.expected)
                EXPECT_NEAR(model.Value(++number), value, 1e-6 * std::abs(value)) << c.equation;
        }
    }
}

TEST(CurveFitter, ScatteredStartsFindWhatTheGivenOneMisses) {
    const TFarStart cases[] = {
        {"a*sin(2*pi*x/t+p)+c", {{"a", 1}, {"t", 3}, {"p", 0}, {"c", 0}}, {0.8, 0.7, 0.5, 2}},
        {"h/(1+sqr((x-m)/w))+b", {{"h", 1}, {"m", 500}, {"w", 1}, {"b", 0}}, {70, 6, 0.2, 5}},
        {"k/(1+exp(-r*(x-c)))", {{"k", 1}, {"r", 0.01}, {"c", 1950}}, {50, 2, 4}},
        {"a*(c-x)^b", {{"a", 1}, {"c", 4}, {"b", 1}}, {4, 10, 0.4}}, // at the start points have no value
    };
    for (const TFarStart& c : cases) {
        TModel model(c.equation, c.starts);
        model.SetPointsOfModel(39, c.expected, 0.01);
        const TFitResult result = model.RunFromManyStarts();
        EXPECT_EQ(result.End, TFitEnd::Converged) << c.equation;
        EXPECT_EQ(result.PointsLeftOut, 0u) << c.equation;
        EXPECT_GT(result.RSquared, 0.99) << c.equation;
        // The user may take what is offered, or not.
        int number = 0;
        for (const TStart& start : c.starts) model.fit.Parameter(++number)->SetValue(start.value);
        const TFitResult offer = model.Run({nullptr, {}, TFitStarts::Offered});
        if (!offer.BetterValues.empty()) {
            EXPECT_NEAR(offer.BetterRss / result.Rss, 1, 1e-6) << c.equation;
        }
        TakeBetterMinimum(model.fit);
        EXPECT_NEAR(model.Run().Rss / result.Rss, 1, 1e-6) << c.equation;
    }
}

// Places that no point tells apart: the signs of the start hold, and no wiggles between the points.
TEST(CurveFitter, OfEqualMinimaTheNaturalOneIsTaken) {
    TModel binding("a*((c+x+k)-sqrt(sqr(c+x+k)-4*c*x))/(2*c)+b", {{"a", 1}, {"c", 1}, {"k", 1}, {"b", 0}});
    binding.SetPointsOfModel(30, {340, 0.5, 0.08, 15}, 2);
    binding.RunFromManyStarts();
    EXPECT_NEAR(binding.Value(2), 0.5, 0.1);
    EXPECT_NEAR(binding.Value(3), 0.08, 0.04);
    TModel resonance("b+h/(1+sqr((x-m)/w))", {{"b", 1}, {"h", 1}, {"m", 3}, {"w", 5}});
    resonance.SetPointsOfModel(60, {2, 7, 9, -0.8}, 0.01);
    resonance.RunFromManyStarts();
    EXPECT_NEAR(resonance.Value(4), 0.8, 0.02);
    TModel wave("a*sin(2*pi*x/t+p)+c", {{"a", 1}, {"t", 0.25}, {"p", 0}, {"c", 0}});
    wave.SetPointsOfModel(100, {3, 7.1, 1, 5}, 0.1);
    wave.RunFromManyStarts();
    EXPECT_NEAR(wave.Value(2), 7.1, 0.01);
}

struct TNonsense {
    const char* equation;
    std::initializer_list<TStart> starts;
    double (*points)(double);
    TFitEnd end;
    const char* remark; ///< a part of one
};

TEST(CurveFitter, NonsenseIsToldInItsOwnWords) {
    const TNonsense cases[] = {
        {"a*x", {{"a", 1}}, [](double x) { return 9 - 0.1 * x; }, TFitEnd::WorseThanLine, ""},
        {"b+a*c*x",
         {{"a", 1}, {"b", 0}, {"c", 1}},
         [](double x) { return 2 * x + std::cos(9 * x); },
         TFitEnd::NotDetermined,
         "do not determine a and c"},
        {"a*exp(-k*x)+c",
         {{"a", 1}, {"k", 1}, {"c", 1}},
         [](double) { return 7.25; },
         TFitEnd::NotDetermined,
         "determine"},
        {"k/(1+exp(-r*(x-c)))",
         {{"k", 10}, {"r", 1}, {"c", 5}},
         [](double x) { return std::exp(0.3 * x + 0.02 * x * x); },
         TFitEnd::RunsAway,
         "has no best value"},
        {"a/(x-c)", {{"a", 1}, {"c", 3.1}}, [](double x) { return 2 / (x - 3.12); }, TFitEnd::Pole, ""},
        {"a*ln(x-2)+b",
         {{"a", 1}, {"b", 1}},
         [](double x) { return x + std::cos(9 * x); },
         TFitEnd::Converged,
         "no value at 9 of 39 points, the first at 0;"},
    };
    for (const TNonsense& c : cases) {
        TModel model(c.equation, c.starts);
        model.SetPoints(39, 0.25, c.points);
        const TFitResult result = model.RunFromManyStarts();
        EXPECT_EQ(TextOf(result.End), TextOf(c.end)) << c.equation;
        std::string remarks;
        for (const std::string& remark : result.Remarks) remarks += remark;
        EXPECT_NE(remarks.find(c.remark), std::string::npos) << c.equation << ": " << remarks;
    }
}

// Every width below the distance of two points fits to the last digit.
TEST(CurveFitter, AnExactStepHasNoWidth) {
    for (const double place : {3.1, 4.4, 9.4}) {
        TModel step("a+b/(1+exp(-(x-m)/s))", {{"a", 0}, {"b", 1}, {"m", 5}, {"s", 1}});
        step.SetPoints(39, 0.25, [&](double x) { return x < place ? 2.0 : 7.0; });
        EXPECT_NE(step.RunFromManyStarts().End, TFitEnd::Converged);
    }
}

} // namespace
} // namespace lumoplot
