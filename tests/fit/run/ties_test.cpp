// Parameters that follow from others by a formula.
#include "fit/run/curve_fitter.h"

#include "common/fit_parameters.h"
#include "common/thrown_text.h"

#include <cmath>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

struct TTied {
    const char* name;
    double start;
    const char* tie = "";
};

void Define(TCurFit& fit, const char* equation, std::initializer_list<TTied> parameters) {
    fit.SetExpression(equation);
    fit.SetIterMax(2000);
    for (const TTied& tied : parameters) {
        TDBLParameter& parameter = AddParameter(fit, tied.name, tied.start);
        parameter.SetVary(true);
        parameter.SetTie(tied.tie);
    }
}

std::vector<double> TiePlaces() {
    std::vector<double> x;
    for (int i = 0; i < 40; ++i) x.push_back(0.25 * i);
    return x;
}

std::vector<double> TwoDecays(const std::vector<double>& x) {
    std::vector<double> y;
    for (std::size_t i = 0; i < x.size(); ++i)
        y.push_back(3 * std::exp(-0.4 * x[i]) + 2 * std::exp(-0.8 * x[i]) + (i % 3 == 0 ? 0.02 : -0.01));
    return y;
}

// The same model with the formula written into it has the same fit.
TEST(Ties, AFitIsThatOfTheEquationWithTheFormulaInIt) {
    const std::vector<double> x = TiePlaces();
    const std::vector<double> y = TwoDecays(x);
    for (const TFitProcedure procedure : kEveryProcedure) {
        TCurFit tied;
        Define(tied, "a*exp(-b1*x)+c*exp(-B2*x)",
               {{"a", 1}, {"b1", 0.3}, {"c", 1}, {"b2", 7, "2*h"}, {"h", 1, "(b1)"}});
        TCurFit written;
        Define(written, "a*exp(-b1*x)+c*exp(-2*b1*x)", {{"a", 1}, {"b1", 0.3}, {"c", 1}});
        for (TCurFit* fit : {&tied, &written}) {
            fit->SetProcType(procedure);
            EXPECT_EQ(RunFit(*fit, x, y).End, TFitEnd::Converged);
        }
        for (int i = 1; i <= 3; ++i) {
            const TDBLParameter& wanted = *written.Parameter(i);
            EXPECT_NEAR(tied.Parameter(i)->Value(), wanted.Value(), 1e-6);
            EXPECT_NEAR(tied.Parameter(i)->FinalDeviation, wanted.FinalDeviation, 1e-6);
        }
        const TDBLParameter& b1 = *tied.Parameter(2);
        EXPECT_DOUBLE_EQ(tied.Parameter(4)->Value(), 2 * b1.Value());
        EXPECT_NEAR(tied.Parameter(4)->FinalDeviation, 2 * b1.FinalDeviation, 1e-8 * b1.FinalDeviation);
    }
}

// σ of ln(2)/b is ln(2)/b² σ(b); that of a/c needs the covariance.
TEST(Ties, ErrorsArePropagatedWithTheCovariance) {
    const std::vector<double> x = TiePlaces();
    const std::vector<double> y = TwoDecays(x);
    TCurFit fit;
    Define(fit, "a*exp(-b*x)+c+0*r*t",
           {{"a", 4}, {"b", 0.5}, {"c", 1}, {"t", 0, "ln(2)/b"}, {"r", 0, "a/c"}});
    const TFitResult result = RunFit(fit, x, y);
    ASSERT_EQ(result.Varied, (std::vector<int>{1, 2, 3}));
    const double b = fit.Parameter(2)->Value();
    const double half = std::log(2.0) / b;
    EXPECT_DOUBLE_EQ(fit.Parameter(4)->Value(), half);
    EXPECT_NEAR(fit.Parameter(4)->FinalDeviation, half / b * fit.Parameter(2)->FinalDeviation, 1e-9);
    const double a = fit.Parameter(1)->Value();
    const double c = fit.Parameter(3)->Value();
    const double variance = (result.Covariance(0, 0) - 2 * a / c * result.Covariance(0, 2) +
                             a * a / (c * c) * result.Covariance(2, 2)) /
                            (c * c);
    EXPECT_NEAR(fit.Parameter(5)->FinalDeviation / std::sqrt(variance), 1, 1e-6);
}

TEST(Ties, BoundsOfTheOthersHold) {
    const std::vector<double> x = TiePlaces();
    for (const TFitProcedure procedure : kEveryProcedure) {
        TCurFit fit;
        Define(fit, "a*exp(-b1*x)+c*exp(-b2*x)", {{"a", 1}, {"b1", 0.3}, {"c", 1}, {"b2", 0, "2*b1"}});
        fit.Parameter(2)->SetBounds(0, 0.35);
        fit.SetProcType(procedure);
        RunFit(fit, x, TwoDecays(x));
        EXPECT_EQ(fit.Parameter(2)->Value(), 0.35);
        EXPECT_DOUBLE_EQ(fit.Parameter(4)->Value(), 0.7);
    }
}

struct TBadTie {
    const char* tie;
    const char* error;
};

TEST(Ties, WhatCanNotBeAFormulaIsSaid) {
    const TBadTie cases[] = {
        {"2*b", "The parameter \"b\" is tied to itself"},
        {"c", "The parameter \"b\" is tied to itself"},
        {"2*x", "The formula of the parameter \"b\" can not use \"x\": it is no parameter"},
        {"2*q", "The formula of the parameter \"b\" can not use \"q\": it is no parameter"},
        {"a:=2", "The formula of the parameter \"b\" can not assign"},
    };
    for (const auto& [tie, error] : cases) {
        TCurFit fit;
        Define(fit, "a*x+b+c", {{"a", 1}, {"b", 1, tie}, {"c", 1, "b+a"}});
        EXPECT_EQ(ThrownText([&] { RunFit(fit, TiePlaces(), TiePlaces()); }), error);
    }
    TCurFit fit;
    Define(fit, "a*x+b", {{"a", 1}, {"b", 1, "2*a"}});
    fit.Parameter(2)->SetBounds(0, 1);
    EXPECT_EQ(ThrownText([&] { RunFit(fit, TiePlaces(), TiePlaces()); }),
              "The parameter \"b\" follows a formula: bounds belong to the parameters of that");
}

TEST(Ties, TheDefinitionKeepsThemWithTheWeighting) {
    TCurFit fit;
    Define(fit, "a*x+b", {{"a", 3}, {"b", 1, " 2*a "}});
    EXPECT_EQ(fit.Parameter(2)->Value(), 6) << "a tied parameter follows at once";
    fit.SetWeighting({.ByYErrors = true, .Errors = TErrorSource::Points, .Robust = TRobust::Cauchy});
    TCurFit copy;
    copy.Assign(&fit);
    EXPECT_EQ(copy.Parameter(2)->Tie(), "2*a");
    EXPECT_FALSE(copy.Parameter(2)->Vary());
    EXPECT_EQ(copy.Weighting(), fit.Weighting());
    fit.SetWeighting({});
    fit.Parameter(2)->SetTie("");
    EXPECT_TRUE(fit.Parameter(2)->Vary());
    copy.Assign(&fit);
    EXPECT_EQ(copy.Weighting(), TFitWeighting()) << "a file without the entry switches it off";
    EXPECT_FALSE(copy.Parameter(2)->IsTied());
}

} // namespace
} // namespace lumoplot
