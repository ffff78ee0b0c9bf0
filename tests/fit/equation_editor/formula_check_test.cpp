#include "fit/equation_editor/formula_check.h"

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

} // namespace
} // namespace lumoplot
