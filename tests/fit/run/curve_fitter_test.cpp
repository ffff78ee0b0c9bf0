#include "fit/run/curve_fitter.h"

#include "common/cancelling_progress.h"
#include "common/special_values.h"
#include "common/thrown_text.h"
#include "expr/parser_exception.h"
#include "fit/many/uncertainty.h"
#include "fit/run/fit_model.h"
#include "fit/run/fit_statistics.h"
#include "support/number_text.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace lumoplot {
namespace {

double Decay(double x) {
    return 3 * std::exp(-0.5 * x) + 0.02 * std::sin(40 * x);
}

// Slope and intercept with their errors, by the closed formulas.
TEST(CurveFitter, AStraightLineHasItsTextbookErrors) {
    for (const TFitProcedure procType : kEveryProcedure) {
        TModel line("a+b*t", {{"a", 1}, {"b", 1}}, procType);
        line.fit.SetXVarName("t");
        line.x = {1, 2, 3, 4};
        line.y = {6, 5, 7, 10};
        const TFitResult result = line.Run();
        EXPECT_EQ(result.End, TFitEnd::Converged) << static_cast<int>(procType);
        EXPECT_NEAR(line.Value(1), 3.5, 1e-12) << static_cast<int>(procType);
        EXPECT_NEAR(line.Value(2), 1.4, 1e-12) << static_cast<int>(procType);
        EXPECT_NEAR(result.Rss, 4.2, 1e-12);
        EXPECT_NEAR(result.RSquared, 0.7, 1e-12);
        EXPECT_NEAR(result.ResidualSD, std::sqrt(2.1), 1e-12);
        EXPECT_NEAR(result.StandardError(0), std::sqrt(2.1 * 1.5), 1e-12);
        EXPECT_NEAR(result.StandardError(1), std::sqrt(2.1 / 5), 1e-12);
        EXPECT_NEAR(result.Covariance(0, 1), -2.1 * 0.5, 1e-12);
        EXPECT_NEAR(line.fit.Parameter(2)->FinalDeviation, std::sqrt(2.1 / 5), 1e-12);
        EXPECT_TRUE(line.fit.Modified());
        EXPECT_FALSE(line.fit.IsStale());
        ASSERT_TRUE(line.fit.Result());
        EXPECT_EQ(line.fit.Result()->PointsUsed, 4u);
    }
}

TEST(CurveFitter, SizeOfTheNumbersDoesNotMatter) {
    TModel usual("a*exp(-x/t)+c", {{"a", 1}, {"t", 1}, {"c", 0}});
    usual.SetPoints(50, 0.2, Decay);
    const TFitResult wanted = usual.Run();
    const TFitRun plain;
    const TProfile wantedProfile = ProfileOf({usual.fit, usual.x, usual.y, plain}, 2);
    for (const double height : {1e-300, 1e-200, 1e-12, 1.0, 1e30, 1e200, 1e300}) {
        for (const double width : {1e-299, 1e-20, 1.0, 1e50}) {
            if (height / width > 1e300 || height / width < 1e-300) continue; // slopes are no numbers
            for (const double start : {1.0, height}) {
                SCOPED_TRACE(FormatShortest(height) + ' ' + FormatShortest(width) + ' ' +
                             FormatShortest(start));
                TModel decay("a*exp(-x/t)+c", {{"a", start}, {"t", width}, {"c", 0}});
                decay.SetPoints(50, 0.2, [&](double x) { return height * Decay(x); });
                for (double& x : decay.x) x *= width;
                const TFitResult result = decay.Run();
                EXPECT_EQ(result.End, TFitEnd::Converged);
                EXPECT_NEAR(result.RSquared, wanted.RSquared, 1e-12);
                EXPECT_NEAR(result.ResidualSD / height, wanted.ResidualSD, 1e-9);
                EXPECT_NEAR(result.Quality.DurbinWatson, wanted.Quality.DurbinWatson, 1e-6);
                const double sizes[] = {height, width, height};
                for (int i = 0; i < 3; ++i) {
                    EXPECT_NEAR(decay.Value(i + 1) / sizes[i], usual.Value(i + 1), 1e-8);
                    const auto place = static_cast<std::size_t>(i);
                    EXPECT_NEAR(result.Errors[place] / sizes[i] / wanted.Errors[place], 1, 1e-6);
                    EXPECT_NEAR(result.Correlations(0, i), wanted.Correlations(0, i), 1e-6);
                }
                const TProfile profile = ProfileOf({decay.fit, decay.x, decay.y, plain}, 2);
                EXPECT_NEAR(profile.Interval.High / width, wantedProfile.Interval.High, 1e-5);
                const TBands bands = BandsOf(decay.fit, std::span(decay.x).first(1), 0.95);
                EXPECT_NEAR(bands.Confidence[0] / height,
                            BandsOf(usual.fit, std::span(usual.x).first(1), 0.95).Confidence[0], 1e-8);
            }
        }
    }
}

// More points than one thread takes at a time: the closed formulas for weighted points about 0.
TEST(CurveFitter, ManyPointsHaveTheErrorsOfFew) {
    // Linear in b or not, and with a step that has to go from point to point.
    for (const char* equation : {"a+b*x", "a+power(b,1)*x", "a+b*(c:=x)"}) {
        TModel line(equation, {{"a", 1}, {"b", 0.5}});
        std::vector<double> errors;
        double xx = 0;
        double xy = 0;
        for (int i = -30000; i <= 30000; ++i) {
            const double x = i / 30000.0;
            line.x.push_back(x);
            line.y.push_back(3 + 2 * x + (i % 2 == 0 ? 0.1 : -0.1));
            errors.push_back(0.5);
            xx += x * x;
            xy += x * line.y.back();
        }
        TFitRun run;
        run.Errors = errors;
        run.ErrorSource = TErrorSource::Points;
        const TFitResult result = line.Run(run);
        EXPECT_EQ(result.End, TFitEnd::Converged) << equation;
        EXPECT_NEAR(line.Value(2), xy / xx, 1e-12) << equation;
        EXPECT_NEAR(result.StandardError(1) / (0.5 / std::sqrt(xx)), 1, 1e-9) << equation;
    }
}

TEST(CurveFitter, PointsWithoutAnErrorToWeighByAreCountedAndSaid) {
    TModel line("a+b*x", {{"a", 1}, {"b", 1}});
    line.SetPoints(6, 1, [](double x) { return x == 2 ? 1e9 : 3 + 2 * x; });
    const std::vector<double> errors = {1, 1, 0, 1, 1, 1};
    TFitRun run;
    run.Errors = errors;
    const TFitResult result = line.Run(run);
    EXPECT_EQ(result.PointsUsed, 5u);
    EXPECT_EQ(result.PointsLeftOut, 1u);
    ASSERT_FALSE(result.Remarks.empty());
    EXPECT_EQ(result.Remarks.front(),
              "1 of 6 points has no standard error above 0, the first at 2; it was left out.");
    EXPECT_NEAR(line.Value(2), 2, 1e-9);
}

// For two parameters F is the square of Student's t of the slope.
TEST(CurveFitter, ACurveThatChanceWouldDoAsWellIsToldAsSuch) {
    TModel line("a+b*x", {{"a", 1}, {"b", 1}});
    line.x = {1, 2, 3, 4, 5, 6};
    line.y = {1, -1, 1.2, -1, 1.1, -0.8};
    const TFitResult result = line.Run();
    const double probability = StudentProbability(line.Value(2) / result.Errors[1], result.Quality.Freedom);
    ASSERT_EQ(result.Remarks.size(), 1u);
    EXPECT_NE(result.Remarks[0].find("with a probability of " + FormatGeneral(probability, 2)),
              std::string::npos)
        << result.Remarks[0];
    line.y = {1, 2.1, 2.9, 4, 5.1, 6};
    EXPECT_TRUE(line.Run().Remarks.empty());
    std::ranges::fill(line.y, 7);
    ASSERT_EQ(line.Run().Remarks.size(), 1u);
    EXPECT_EQ(line.Run().Remarks[0], "All values of Y are equal: a horizontal line is as good.");
}

TEST(CurveFitter, OnlyPointsBetweenTheMarginsInUseCount) {
    TModel line("a*x", {{"a", 1}});
    line.x = {-9, 1, 2, 3, 9};
    line.y = {5, 2, 4, 6, 5};
    line.fit.SetLeftMargin(1);
    line.fit.SetRightMargin(3);
    EXPECT_EQ(line.Run().PointsUsed, 5u);
    line.fit.SetUseLeftMargin(true);
    line.fit.SetUseRightMargin(true);
    EXPECT_EQ(line.Run().PointsUsed, 3u);
    EXPECT_NEAR(line.Value(1), 2, 1e-14);
}

TEST(CurveFitter, PointsWithoutAValueAreCounted) {
    TModel root("a*sqrt(x-1)", {{"a", 1}});
    root.x = {0, 1, 2, 5, 10, kNaN, 17};
    root.y = {9, 0, 3, 6, 9, 1, 12};
    const TFitResult result = root.Run();
    EXPECT_EQ(result.PointsUsed, 5u);
    EXPECT_EQ(result.PointsLeftOut, 1u);
    EXPECT_NEAR(root.Value(1), 3, 1e-14);
}

// With c at its start the first points have no value; where the fit ends they have.
TEST(CurveFitter, PointsThatGainAValueTakePart) {
    TModel root("a*sqrt(x-c)", {{"a", 1}, {"c", 2.5}});
    root.SetPoints(20, 1, [](double x) { return 2 * std::sqrt(x + 1); });
    const TFitResult result = root.Run();
    EXPECT_EQ(result.PointsUsed, 20u);
    EXPECT_EQ(result.PointsLeftOut, 0u);
    EXPECT_NEAR(root.Value(2), -1, 1e-7);
}

TEST(CurveFitter, StepsBackFromPlacesWithoutAValue) {
    for (const TFitProcedure procType : kEveryProcedure) {
        TModel power("a*ln(b*x+1)", {{"a", 40}, {"b", 0.01}}, procType);
        power.SetPoints(30, 1, [](double x) { return 2 * std::log(5 * x + 1); });
        EXPECT_EQ(power.Run().End, TFitEnd::Converged) << static_cast<int>(procType);
        EXPECT_NEAR(power.Value(2), 5, 1e-6) << static_cast<int>(procType);
    }
}

// Also where what is missing is only that the end is seen.
TEST(CurveFitter, TheIterationLimitEndsARun) {
    TModel whole("a*exp(-b*x)", {{"a", 100}, {"b", 3}});
    whole.SetPoints(50, 0.2, Decay);
    const int needed = whole.Run().Iterations;
    ASSERT_GT(needed, 3);
    for (int limit = 1; limit < needed; ++limit) {
        TModel decay("a*exp(-b*x)", {{"a", 100}, {"b", 3}});
        decay.SetPoints(50, 0.2, Decay);
        decay.fit.SetIterMax(limit);
        const TFitResult result = decay.Run();
        EXPECT_EQ(result.End, TFitEnd::IterationLimit) << limit;
        EXPECT_EQ(result.Iterations, limit);
    }
}

TEST(CurveFitter, ARunThatBreaksOffPutsTheParametersBack) {
    TModel decay("a*exp(-b*x)", {{"a", 1}, {"b", 0.01}});
    decay.SetPoints(50, 0.2, Decay);
    int iterations = 0;
    const auto breakOff = [&] {
        if (++iterations == 3) throw EFitError("enough");
    };
    EXPECT_EQ(ThrownText<EFitError>([&] { decay.Run({nullptr, breakOff, TFitStarts::Given}); }), "enough");
    EXPECT_EQ(decay.Value(1), 1);
    EXPECT_EQ(decay.Value(2), 0.01);
}

TEST(CurveFitter, NoFreedomLeavesNoErrors) {
    TModel line("a+b*x", {{"a", 1}, {"b", 1}});
    line.x = {1, 2};
    line.y = {1, 3};
    const TFitResult result = line.Run();
    EXPECT_NEAR(line.Value(2), 2, 1e-14);
    EXPECT_TRUE(std::isnan(result.ResidualSD));
    EXPECT_EQ(line.fit.Parameter(1)->FinalDeviation, 0);
}

struct TBadFit {
    const char* equation;
    std::initializer_list<TStart> starts;
    const char* message;
};

TEST(CurveFitter, WhatCannotBeFittedIsToldAndChangesNothing) {
    const TBadFit cases[] = {
        {"", {{"a", 1}}, "There is no equation to fit"},
        {"a*2", {{"a", 1}}, "The equation does not use the variable \"x\""},
        {"a*x+c", {{"a", 1}}, "Unknown name \"c\" in the equation"},
        {"a*x", {{"a", 1}, {"b", 2}}, "The equation does not use the parameter \"b\""},
        {"a*x", {{"a", 1, false}}, "No parameter is varied"},
        {"a*x", {}, "Unknown name \"a\" in the equation"},
        {"a+b*x+c*x*x+d*x^3",
         {{"a", 1}, {"b", 1}, {"c", 1}, {"d", 1}},
         "There are fewer points than varied parameters"},
        {"a*ln(-x-1)", {{"a", 1}}, "The equation has no value at any point"},
        {"a*x", {{"a", kNaN}}, "The parameter \"a\" has no finite starting value"},
        {"a*f*x", {{"a", 1}}, "The template \"f\" contains its own name"},
    };
    for (const TBadFit& c : cases) {
        TModel model(c.equation, c.starts);
        model.x = {1, 2, 3};
        model.y = {1, 3, 2};
        const bool hasTemplate = std::string(c.message).find("template") != std::string::npos;
        if (hasTemplate) model.fit.AddTemplate(std::make_unique<TDBLFunction>(TDBLFunction{"f", "2*F", ""}));
        EXPECT_EQ(ThrownText<EFitError>([&] { model.Run(); }), c.message);
        int number = 0;
        for (const TStart& start : c.starts) {
            const double value = model.Value(++number);
            EXPECT_TRUE(value == start.value || std::isnan(start.value)) << c.message;
        }
    }
    TModel broken("a*(x", {{"a", 1}});
    EXPECT_THROW(broken.Run(), EParserException);
}

// A name that the formula assigns to is no unknown one, and one that is part of another is not contained.
TEST(CurveFitter, AssignmentsAndPartsOfNamesAreFine) {
    TModel model("(t:=x*a)*t", {{"a", 1}});
    model.SetPoints(5, 1, [](double x) { return 4 * x * x; });
    model.Run();
    EXPECT_NEAR(model.Value(1), 2, 1e-9);
    TModel inner("f*a", {{"a", 1}});
    inner.fit.AddTemplate(std::make_unique<TDBLFunction>(TDBLFunction{"f", "max(x,ff)", ""}));
    inner.fit.AddTemplate(std::make_unique<TDBLFunction>(TDBLFunction{"ff", "0", ""}));
    inner.SetPoints(5, 1, [](double x) { return 4 * x; });
    EXPECT_ANY_THROW(inner.Run()); // expanded last to first, "ff" is text for "f"
}

TEST(CurveFitter, AtMostFiftyParametersAreVaried) {
    TModel sum("0*x", {});
    std::string equation = "0*x";
    for (int i = 0; i < 51; ++i) {
        AddParameter(sum.fit, "p" + std::to_string(i), 0.5).SetVary(true);
        equation += "+p" + std::to_string(i) + "*cos(" + std::to_string(i) + "*x)";
    }
    sum.fit.SetExpression(equation);
    sum.SetPoints(200, 0.01, [](double x) { return std::exp(x); });
    EXPECT_EQ(ThrownText<EFitError>([&] { sum.Run(); }),
              "Error: Maximum Number of Varied Parameters Nmax = 50 Exceeded!");
    sum.fit.Parameter(51)->SetVary(false);
    EXPECT_NO_THROW(sum.Run());
}

TEST(CurveFitter, ACancelledRunKeepsTheBestParametersReached) {
    for (const TFitProcedure procType : kEveryProcedure) {
        double start = 0;
        double reached = 0;
        for (const int steps : {5, 15}) {
            TModel decay("a*exp(-b*x)+c", {{"a", 1}, {"b", 0.01}, {"c", -3}}, procType);
            decay.SetPoints(50, 0.2, Decay);
            TCancellingProgress progress(steps);
            const TFitResult result = decay.Run({&progress, {}, TFitStarts::Given});
            EXPECT_EQ(progress.Stages, std::vector<std::string>{"Fitting Data...."});
            EXPECT_EQ(result.End, TFitEnd::Cancelled) << static_cast<int>(procType);
            double rss = 0;
            for (std::size_t i = 0; i < decay.x.size(); ++i)
                rss += std::pow(decay.fit.EvaluateAt(decay.x[i]) - decay.y[i], 2);
            EXPECT_NEAR(result.Rss, rss, 1e-9 * rss) << static_cast<int>(procType);
            (steps == 5 ? start : reached) = rss;
        }
        EXPECT_LT(reached, start) << static_cast<int>(procType);
    }
}

TEST(CurveFitter, ARunCancelledAtOnceKeepsItsStart) {
    for (const TFitProcedure procType : kEveryProcedure) {
        for (const int steps : {0, 1}) {
            TModel decay("a*exp(-b*x)", {{"a", 1}, {"b", 0.01}}, procType);
            decay.SetPoints(50, 0.2, Decay);
            TCancellingProgress progress(steps);
            EXPECT_EQ(decay.Run({&progress, {}}).End, TFitEnd::Cancelled) << static_cast<int>(procType);
            EXPECT_EQ(decay.Value(2), 0.01) << static_cast<int>(procType);
        }
    }
}

TEST(CurveFitter, EachIterationShowsTheBestParameters) {
    for (const TFitProcedure procType : kEveryProcedure) {
        TModel decay("a*exp(-b*x)", {{"a", 1}, {"b", 0.01}}, procType);
        decay.SetPoints(50, 0.2, Decay);
        std::vector<double> sums;
        const auto note = [&] {
            double rss = 0;
            for (std::size_t i = 0; i < decay.x.size(); ++i)
                rss += std::pow(decay.Value(1) * std::exp(-decay.Value(2) * decay.x[i]) - decay.y[i], 2);
            sums.push_back(rss);
        };
        const TFitResult result = decay.Run({nullptr, note, TFitStarts::Given});
        ASSERT_GE(sums.size(), 3u) << static_cast<int>(procType);
        EXPECT_TRUE(std::is_sorted(sums.rbegin(), sums.rend(), [](double a, double b) {
            return a < b * (1 - 1e-12);
        })) << static_cast<int>(procType);
        EXPECT_LE(sums.size(), static_cast<std::size_t>(result.Iterations)) << static_cast<int>(procType);
    }
}

// Places far from any start, hostile tolerances, constant data, a wildly oscillating model: no hang, no false
// claim.
TEST(CurveFitter, HopelessRunsEnd) {
    for (const TFitProcedure procType : kEveryProcedure) {
        TModel wild("a*sin(1e9*b*x)+exp(c*x)", {{"a", 1e-30}, {"b", -1e30}, {"c", 20}}, procType);
        wild.SetPoints(40, 0.3, [](double x) { return std::fmod(x * 7, 3); });
        EXPECT_NO_THROW(wild.Run()) << static_cast<int>(procType);
        TModel random("a*random+b*x", {{"a", 1}, {"b", 1}}, procType);
        random.SetPoints(20, 1, [](double) { return 5; });
        EXPECT_NO_THROW(random.Run()) << static_cast<int>(procType);
        TModel tight("a*exp(-b*x)", {{"a", 1}, {"b", 0.1}}, procType);
        tight.fit.SetTolerance(1e-300);
        tight.SetPoints(30, 0.2, Decay);
        EXPECT_EQ(tight.Run().End, TFitEnd::Converged) << static_cast<int>(procType);
        TModel zero("a*x", {{"a", 1}}, procType);
        zero.SetPoints(5, 1, [](double) { return 0; });
        EXPECT_EQ(zero.Run().End, TFitEnd::Converged) << static_cast<int>(procType);
        EXPECT_NEAR(zero.Value(1), 0, 1e-12) << static_cast<int>(procType);
    }
}

} // namespace
} // namespace lumoplot
