// Any text either compiles or is refused with a message and leaves no trace; what compiles can be evaluated.
#include "expr/blocks/block_evaluator.h"

#include <array>
#include <cstdint>
#include <cstdlib>

namespace {

using namespace lumoplot;

void Require(bool condition) {
    if (!condition) std::abort();
}

class TOpenParser : public TExpressionParser {
public:
    using TExpressionParser::Constants;
    using TExpressionParser::Words;
};

void EvaluateAll(TExpressionParser& parser, double& x, double& y) {
    parser.Evaluate();
    const std::array<double, 11> xs = {-2, -1, 0, 0.5, 1, 2, 3, 100, 1e20, -1e300, 5e-324};
    std::array<double, 11> values;
    std::array<double, 22> slopes;
    double* variables[] = {&x, &y};
    TBlockEvaluator evaluator(parser, &x, variables);
    evaluator.Evaluate(xs, values);
    evaluator.EvaluateWithDerivatives(xs, values, slopes);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    TOpenParser parser;
    double x = 0.5;
    double y = 2;
    parser.DefineVariable("x", &x);
    parser.DefineVariable("y", &y);
    const int words = parser.Words().Count();
    try {
        parser.AddExpression(text);
        EvaluateAll(parser, x, y);
    } catch (const ELumoError&) {
        Require(parser.Words().Count() == words && parser.Constants().Count() == 0);
        Require(parser.ExpressionCount() == 0);
    }
    return 0;
}
