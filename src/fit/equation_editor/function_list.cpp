#include "fit/equation_editor/function_list.h"

namespace lumoplot {

std::span<const TListedFunction> ListedFunctions() {
    static constexpr TListedFunction kFunctions[] = {
        {"()", "() = brackets"},
        {"abs()", "abs(x) = absolute value"},
        {"arccos()", "arccos(x) = inverse cosine of x in rad"},
        {"arccosh()", "arccosh(x) = inverse hyperbolic cosine in rad"},
        {"arcsin()", "arcsin(x) = inverse sine of x in rad"},
        {"arcsinh()", "arcsinh(x) = inverse hyperbolic sine in rad"},
        {"cos()", "cos(x) = cosine of an angle in rad"},
        {"cosh()", "cosh(x) = hyperbolic cosine of an angle in rad"},
        {"degtorad()", "degtorad(x) = conversion from degrees to radians"},
        {"exp()", "exp(x) = the value of e raised to the power of x"},
        {"ln()", "ln(x) = natural logarithm of x"},
        {"log10()", "log10(x) = logarithm base 10 of x"},
        {"logn()", "logn(n,x) = logarithm base n of x"},
        {"max()", "max(x1,x2) = the maximum of both arguments"},
        {"min()", "min(x1,x2) = the minimum of both arguments"},
        {"pi", "pi = 3.1415926535897932385"},
        {"radtodeg()", "radtodeg(x) = conversion from degrees to radians"},
        {"random", "random = random number between 0 and 1"},
        {"round()", "round(x) = round to the nearest integer"},
        {"sin()", "sin(x) = sine of an angle in rad"},
        {"sinh()", "sinh(x) = hyperbolic sine of an angle in rad"},
        {"sqr()", "sqr(x) = the square of a number (x*x)"},
        {"sqrt()", "sqrt(x) = the square root of a number"},
        {"tanh()", "tanh(x) = the hyperbolic tangent of an angle in rad"},
        {"trunc()", "trunc(x) = truncates a real number to an integer"},
    };
    return kFunctions;
}

} // namespace lumoplot
