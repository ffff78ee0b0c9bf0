#include "fit/procedures/fit_problem.h"

#include "common/fit_parameters.h"

#include <cmath>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

// Of a few points, and of more than one thread takes at a time: parts that want different linear parameters.
TEST(FitProblem, AValueIsTheSumOfSquaresAtTheBestLinearParameters) {
    for (const int count : {100, 50000}) {
        TCurFit fit;
        fit.SetExpression("a*exp(-b*x)+c");
        for (const char* name : {"a", "b", "c"}) AddParameter(fit, name, 1).SetVary(true);
        fit.Compile();
        TFitPoints points;
        for (int i = 0; i < count; ++i) {
            points.X.push_back(10.0 * i / count);
            points.Y.push_back(std::sin(points.X.back()));
        }
        TSilentProgress progress;
        std::vector<TDBLParameter*> varied = {fit.Parameter(1), fit.Parameter(2), fit.Parameter(3)};
        TFitProblem problem(fit, varied, points, TLinearPart::Project, progress, {});
        ASSERT_EQ(problem.Size(), 1);
        for (const double rate : {0.01, 0.3, 2.0, 40.0}) {
            const TVector place = {rate / problem.ScaleOf(0)};
            const double value = problem.Value(place);
            double sum = 0;
            for (std::size_t i = 0; i < points.X.size(); ++i) {
                const double residual = (fit.EvaluateAt(points.X[i]) - points.Y[i]) * problem.ResidualScale();
                sum += residual * residual;
            }
            EXPECT_NEAR(2 * value / sum, 1, 1e-10) << count << ' ' << rate;
        }
    }
}

} // namespace
} // namespace lumoplot
