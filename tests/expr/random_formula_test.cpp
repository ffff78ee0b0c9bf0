// The scalar chain, the blocks and the derivatives over many random formulas, against the syntax tree and
// against differences.
#include "expr/blocks/block_evaluator.h"
#include "expr/blocks/block_kernels.h"
#include "expr/formula_maker.h"
#include "expr/syntax_tree.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace lumoplot::tests {
namespace {

constexpr int kFormulas = 100'000;
/// What the blocks compute by other means than the chain, to 2 ulp.
constexpr const char* kRoundedWords[] = {"exp", "ln", "log10", "sin", "cos", "tan"};
const std::vector<double> kX = {-3.7, -1, -0.25, 0, 1e-9, 0.3, 0.999, 1, 2.5, 17, 1e5};

/// A parser and a tree over the same variables, which live on from formula to formula.
class TDuel {
public:
    TDuel() {
        m_parser.DefineVariable("x", &m_x);
        m_parser.DefineVariable("y", &m_y);
        m_parser.DefineVariable("z", &m_z);
    }

    /// What the tree says of the text; the parser has to agree to the last bit.
    void Compare(const std::string& text) {
        std::string expectedError;
        std::unique_ptr<TSyntaxTree> tree;
        try {
            tree = std::make_unique<TSyntaxTree>(text);
        } catch (const TTreeError& error) {
            expectedError = error.what();
        }
        std::string parserError;
        try {
            m_parser.ClearExpressions();
            m_parser.AddExpression(text);
        } catch (const ELumoError& error) {
            parserError = error.what();
        }
        ASSERT_EQ(parserError, expectedError) << text;
        if (!tree) return void(++m_errors);
        if (text.find(":=") != std::string::npos) return CompareAssigning(*tree, text);
        CompareValues(*tree, text);
    }

    int Errors() const { return m_errors; }
    int Compared() const { return m_compared; }

private:
    TVariables VariablesAt(double x) {
        m_x = x;
        m_known["x"] = m_x;
        m_known["y"] = m_y;
        m_known["z"] = m_z;
        return m_known;
    }

    void CompareScalar(double expected, const std::string& text) {
        const double value = m_parser.Evaluate();
        const bool equal = value == expected || (std::isnan(value) && std::isnan(expected));
        ASSERT_TRUE(equal) << text << " at " << m_x << ": " << value << " for " << expected;
    }

    void CompareAssigning(const TSyntaxTree& tree, const std::string& text) {
        for (const double x : kX) {
            VariablesAt(x);
            const double expected = tree.Evaluate(m_known);
            CompareScalar(expected, text);
            m_y = m_known["y"];
            m_z = m_known["z"];
        }
        m_y = 1.5;
        m_z = -0.4;
    }

    /// Where every operation of the blocks is exact they have to agree to the last bit, too.
    void CompareValues(const TSyntaxTree& tree, const std::string& text) {
        const bool isExact = std::ranges::none_of(kRoundedWords, [&](const char* word) {
            return LowerCased(text).find(word) != std::string::npos;
        });
        const TBlockKernels* const* kernels = AvailableKernels();
        const TBlockKernels* chosen = m_compared % 3 == 1 && kernels[1] ? kernels[1] : kernels[0];
        std::vector<double> block(kX.size());
        TBlockEvaluator(m_parser, &m_x, {}, chosen).Evaluate(kX, block);
        for (std::size_t i = 0; i < kX.size(); ++i) {
            TVariables variables = VariablesAt(kX[i]);
            const double expected = tree.Evaluate(variables);
            CompareScalar(expected, text);
            if (!isExact) continue;
            ASSERT_TRUE(block[i] == expected || (std::isnan(block[i]) && std::isnan(expected)))
                << text << " at " << kX[i] << ": " << block[i] << " for " << expected;
        }
        m_compared += isExact;
    }

    TExpressionParser m_parser;
    double m_x = 0;
    double m_y = 1.5;
    double m_z = -0.4;
    TVariables m_known;
    int m_errors = 0;
    int m_compared = 0;
};

TEST(RandomFormulas, ScalarBlocksAndSyntaxTreeAgree) {
    TFormulaMaker maker(20240601);
    TDuel duel;
    for (int i = 0; i < kFormulas; ++i) {
        std::string text = maker.Any(1 + maker.Below(5));
        if (i % 4 == 3) text = maker.Broken(std::move(text));
        duel.Compare(text);
        if (testing::Test::HasFatalFailure()) FAIL() << "formula " << i;
    }
    // The test means something only while it has enough of each.
    EXPECT_GT(duel.Errors(), kFormulas / 10);
    EXPECT_LT(duel.Errors(), kFormulas / 2);
    EXPECT_GT(duel.Compared(), kFormulas / 4);
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
    TExpressionParser parser;
    double x = 0;
    double y = 0.8;
    double z = 0.35;
    double* variables[] = {&x, &y, &z};
    for (std::size_t i = 0; i < 3; ++i)
        parser.DefineVariable(std::string_view("xyz").substr(i, 1), variables[i]);
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
