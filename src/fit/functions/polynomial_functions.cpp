#include "fit/functions/function_groups.h"

namespace lumoplot {

using enum TParameterRole;

void AddPolynomials(std::vector<TReadyFunction>& functions) {
    const char* const group = "Polynomials";
    const TReadyParameter a0 = {"a0", 0.3, Linear, "y", "Value at x = 0"};
    const TReadyParameter a1 = {"a1", 1, Linear, "y/x", "Coefficient of x"};
    const TReadyParameter a2 = {"a2", -0.5, Linear, "y/x^2", "Coefficient of x^2"};
    const TReadyParameter a3 = {"a3", 0.3, Linear, "y/x^3", "Coefficient of x^3"};
    const TReadyParameter a4 = {"a4", -0.2, Linear, "y/x^4", "Coefficient of x^4"};
    const TReadyParameter a5 = {"a5", 0.05, Linear, "y/x^5", "Coefficient of x^5"};
    const TReadyParameter atZero = {"a", 0.5, Linear, "y", "Value at x = 0"};
    functions.push_back({"straight_line",
                         group,
                         "Straight line",
                         "An even rise or fall.",
                         "x",
                         "a + b*x",
                         -2,
                         2,
                         {atZero, {"b", 1, Linear, "y/x", "Slope"}}});
    functions.push_back({"proportional",
                         group,
                         "Line through the origin",
                         "Proportion: a calibration without a blank.",
                         "x",
                         "b*x",
                         0,
                         4,
                         {{"b", 1, Linear, "y/x", "Slope"}}});
    functions.push_back({"polynomial_2",
                         group,
                         "Parabola",
                         "A course with one bend.",
                         "x",
                         "a0 + a1*x + a2*x^2",
                         -2,
                         3,
                         {a0, a1, a2}});
    functions.push_back({"polynomial_3",
                         group,
                         "Polynomial of degree 3",
                         "A course with two bends.",
                         "x",
                         "a0 + a1*x + a2*x^2 + a3*x^3",
                         -2,
                         3,
                         {a0, a1, a2, a3}});
    functions.push_back({"polynomial_4",
                         group,
                         "Polynomial of degree 4",
                         "A course with three bends.",
                         "x",
                         "a0 + a1*x + a2*x^2 + a3*x^3 + a4*x^4",
                         -2,
                         2.5,
                         {a0, a1, a2, a3, a4}});
    functions.push_back({"polynomial_5",
                         group,
                         "Polynomial of degree 5",
                         "A course with four bends.",
                         "x",
                         "a0 + a1*x + a2*x^2 + a3*x^3 + a4*x^4 + a5*x^5",
                         -2,
                         3,
                         {a0, a1, a2, a3, a4, a5}});
    functions.push_back({"hyperbola",
                         group,
                         "Hyperbola",
                         "What falls in inverse proportion, above a limit.",
                         "x",
                         "a + b/x",
                         0.2,
                         6,
                         {{"a", 0.5, Linear, "y", "Limiting value"}, {"b", 1, Linear, "x·y", "Factor"}}});
    functions.push_back(
        {"logarithm",
         group,
         "Logarithm",
         "A straight line on a logarithmic X axis.",
         "x",
         "a + b*ln(x)",
         0.1,
         10,
         {{"a", 0.5, Linear, "y", "Value at x = 1"}, {"b", 1, Linear, "y", "Rise with each factor e of x"}}});
    functions.push_back({"rational",
                         group,
                         "Rational function",
                         "A straight line over another: a bent calibration curve.",
                         "x",
                         "(a + b*x)/(1 + c*x)",
                         0,
                         10,
                         {{"a", 0.2, Linear, "y", "Value at x = 0"},
                          {"b", 1, Linear, "y/x", "Slope of the numerator"},
                          {"c", 0.3, Rate, "1/x", "Slope of the denominator"}}});
    functions.push_back({"broken_line",
                         group,
                         "Broken line",
                         "Two straight lines that meet at a corner.",
                         "x",
                         "a + b*x + c*max(x - m, 0)",
                         0,
                         10,
                         {atZero,
                          {"b", 0.2, Linear, "y/x", "Slope to the left of the corner"},
                          {"c", 0.8, Linear, "y/x", "Change of the slope at the corner"},
                          {"m", 6, Place, "x", "X of the corner"}}});
}

} // namespace lumoplot
