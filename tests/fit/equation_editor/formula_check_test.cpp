#include "fit/equation_editor/formula_check.h"

#include "common/fit_parameters.h"

#include <gtest/gtest.h>

namespace lumoplot {
namespace {

// An equation with its left side is rewritten; where y is a name of the fit, it is a comparison.
TEST(FormulaCheck, ALeftSideIsTakenOff) {
    const struct {
        const char* Formula;
        const char* Rewritten;
    } rows[] = {{"y = a*x + b", "a*x + b"},
                {" Y=2*x", "2*x"},
                {"y", ""},
                {"y =", ""},
                {"yy = 3", ""},
                {"2*(x=3)", ""}};
    for (const auto& row : rows) {
        TCurFit fit;
        fit.SetExpression(row.Formula);
        const TFormulaCheck check = CheckFormula(fit, row.Formula);
        EXPECT_EQ(check.Rewritten, row.Rewritten) << row.Formula;
        const bool isTold = check.Text().find("right side") != std::string::npos;
        EXPECT_TRUE(isTold || *row.Rewritten == '\0') << row.Formula;
    }
    TCurFit fit;
    fit.SetXVarName("y");
    fit.SetExpression("y = 3");
    EXPECT_EQ(CheckFormula(fit, "y = 3").Rewritten, "");
}

// Names of the fit in front of a bracket are values, too; a function that is misspelt comes first.
TEST(FormulaCheck, AProductWithoutItsSignIsOffered) {
    const struct {
        const char* Formula;
        const char* Rewritten;
        const char* Caption;
    } rows[] = {{"2x", "2*x", "Rewrite"},
                {"amp(1-x)", "amp*(1-x)", "Rewrite"},
                {"a (x+1)", "a*(x+1)", "Rewrite"},
                {"2sqt(x)", "2sqr(x)", "Use sqr"},
                {"2*x", "", ""}};
    for (const auto& row : rows) {
        TCurFit fit;
        AddParameter(fit, "amp", 1);
        fit.SetExpression(row.Formula);
        const TFormulaCheck check = CheckFormula(fit, row.Formula);
        EXPECT_EQ(check.Rewritten, row.Rewritten) << row.Formula;
        EXPECT_EQ(check.RewriteCaption, row.Caption) << row.Formula;
        EXPECT_EQ(check.Spans.empty(), check.Rewritten.empty()) << row.Formula;
    }
}

} // namespace
} // namespace lumoplot
