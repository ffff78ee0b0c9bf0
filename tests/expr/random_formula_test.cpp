// The scalar chain, the blocks and the derivatives over many random formulas, against a table, each other and
// differences.
#include "common/case_file.h"
#include "common/thrown_text.h"
#include "expr/blocks/block_evaluator.h"
#include "expr/blocks/block_kernels.h"
#include "expr/formula_maker.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace lumoplot::tests {
namespace {

constexpr int kFormulas = 100'000;
/// What the blocks compute by other means than the chain, to 2 ulp.
constexpr const char* kRoundedWords[] = {"exp", "ln", "log10", "sin", "cos", "tan"};
const std::vector<double> kX = {-3.7, -1, -0.25, 0, 1e-9, 0.3, 0.999, 1, 2.5, 17, 1e5};

/// A parser with x, y and z bound.
struct TBoundParser {
    TBoundParser() {
        double* variables[] = {&X, &Y, &Z};
        for (std::size_t i = 0; i < 3; ++i)
            Parser.DefineVariable(std::string_view("xyz").substr(i, 1), variables[i]);
    }

    TExpressionParser Parser;
    double X = 0;
    double Y = 1.5;
    double Z = -0.4;
};

bool IsRounded(const std::string& formula) {
    return std::ranges::any_of(kRoundedWords, [text = LowerCased(formula)](const char* word) {
        return text.find(word) != std::string::npos;
    });
}

bool IsSame(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

TEST(RandomFormulas, GiveWhatASlowEvaluationOfTheirTreeGave) {
    for (const auto& row : ReadCases("random_formulas.tsv", 3)) {
        TBoundParser bound;
        bound.X = std::strtod(row[0].c_str(), nullptr);
        const std::string& formula = row[2];
        if (row[1] == "syntax" || row[1].starts_with("error: ")) {
            const std::string error =
                row[1] == "syntax" ? "Syntax error in expression " + formula : row[1].substr(7);
            EXPECT_EQ(ThrownText([&] { bound.Parser.AddExpression(formula); }), error);
            continue;
        }
        bound.Parser.AddExpression(formula);
        const double expected = row[1] == "nan" ? kNotANumber : std::strtod(row[1].c_str(), nullptr);
        const double value = bound.Parser.Evaluate();
        // Between one library and another.
        const double tolerance = IsRounded(formula) ? 1e-9 * std::fabs(expected) : 0;
        EXPECT_TRUE(IsSame(value, expected) || std::fabs(value - expected) <= tolerance)
            << formula << " at " << row[0] << ": " << value << " for " << expected;
    }
}

// Where every operation of the blocks is exact they agree with the chain to the last bit; what is no formula
// leaves the parser at work.
TEST(RandomFormulas, BlocksGiveWhatTheChainGives) {
    TFormulaMaker maker(20240601);
    TBoundParser bound;
    const TBlockKernels* const* kernels = AvailableKernels();
    int compared = 0, refused = 0;
    for (int i = 0; i < kFormulas; ++i) {
        std::string text = maker.Any(1 + maker.Below(5));
        if (i % 4 == 3) text = maker.Broken(std::move(text));
        bound.Parser.ClearExpressions();
        try {
            bound.Parser.AddExpression(text);
        } catch (const ELumoError&) {
            ++refused;
            continue;
        }
        if (IsRounded(text) || text.find(":=") != std::string::npos) continue;
        std::vector<double> block(kX.size());
        TBlockEvaluator(bound.Parser, &bound.X, {},
                        compared++ % 3 == 1 && kernels[1] ? kernels[1] : kernels[0])
            .Evaluate(kX, block);
        for (std::size_t k = 0; k < kX.size(); ++k) {
            bound.X = kX[k];
            const double expected = bound.Parser.Evaluate();
            ASSERT_TRUE(IsSame(block[k], expected))
                << text << " at " << kX[k] << ": " << block[k] << " for " << expected;
        }
    }
    // The test means something only while it has enough of each.
    EXPECT_GT(compared, kFormulas / 4);
    EXPECT_GT(refused, kFormulas / 10);
}

/// The derivative by differences with two steps; nothing where they disagree, or the two sides do, as near
/// kinks and poles.
bool CentralDifference(TExpressionParser& parser, double& variable, double& slope) {
    const double kept = variable;
    const auto valueAt = [&](double value) {
        variable = value;
        const double result = parser.Evaluate();
        variable = kept;
        return result;
    };
    constexpr double kStep = 1e-4;
    const double value = valueAt(kept);
    const double left = (value - valueAt(kept - kStep)) / kStep;
    const double right = (valueAt(kept + kStep) - value) / kStep;
    const double narrow = (left + right) / 2;
    const double wide = (valueAt(kept + 2 * kStep) - valueAt(kept - 2 * kStep)) / (4 * kStep);
    slope = narrow + (narrow - wide) / 3;
    const double scale = std::fabs(slope) + 1e-6;
    // Cancellation leaves about 1e-16 / kStep of the value in the difference.
    const bool resolved = std::fabs(value) * 1e-11 < 1e-6 * scale;
    const bool smooth = std::fabs(narrow - wide) < 1e-5 * scale && std::fabs(left - right) < 0.01 * scale;
    return std::isfinite(slope) && resolved && smooth;
}

TEST(RandomFormulas, DerivativesAgreeWithCentralDifferences) {
    TFormulaMaker maker(7);
    TBoundParser bound;
    TExpressionParser& parser = bound.Parser;
    double& x = bound.X;
    bound.Y = 0.8;
    bound.Z = 0.35;
    double* variables[] = {&bound.X, &bound.Y, &bound.Z};
    const std::vector<double> xs = {0.2, 0.47, 0.6, 0.93, 1.7};
    int compared = 0;
    int missing = 0;
    for (int formula = 0; formula < 10'000; ++formula) {
        parser.ClearExpressions();
        parser.AddExpression(maker.Smooth(1 + maker.Below(4)));
        std::vector<double> values(xs.size());
        std::vector<double> slopes(3 * xs.size());
        TBlockEvaluator(parser, &x, variables).EvaluateWithDerivatives(xs, values, slopes);
        for (std::size_t i = 0; i < xs.size(); ++i) {
            x = xs[i];
            for (std::size_t v = 0; v < 3; ++v) {
                double expected = 0;
                if (!CentralDifference(parser, *variables[v], expected)) continue;
                ++compared;
                const double value = parser.Evaluate();
                ASSERT_NEAR(values[i], value, 1e-9 * (1 + std::fabs(value))) << parser.ExpressionText(0);
                const double slope = slopes[v * xs.size() + i];
                if (std::isnan(slope)) {
                    ++missing; // an infinite slope of something that has underflowed
                    continue;
                }
                ASSERT_NEAR(slope, expected, 1e-4 * (std::fabs(expected) + 1e-4))
                    << parser.ExpressionText(0) << " by "
                    << "xyz"[v] << " at " << xs[i];
            }
        }
    }
    EXPECT_GT(compared, 50'000);
    EXPECT_LT(missing, compared / 200);
}

} // namespace
} // namespace lumoplot::tests
