#include "fit/functions/function_groups.h"

namespace lumoplot {

using enum TParameterRole;

namespace {

void AddGrowth(std::vector<TReadyFunction>& functions) {
    const char* const group = "Growth";
    const TReadyParameter limit = {"a", 1, Linear, "y", "Limiting value"};
    functions.push_back(
        {"exponential_growth",
         group,
         "Exponential growth",
         "Growth in proportion to what is there, without a limit.",
         "x",
         "a*exp(k*x)",
         0,
         3,
         {{"a", 1, Linear, "y", "Value at x = 0"}, {"k", 0.8, Rate, "1/x", "Rate constant"}}});
    functions.push_back({"exponential_rise",
                         group,
                         "Exponential rise to a limit",
                         "Fast at first, then ever slower: charging, warming up, first-order formation.",
                         "x",
                         "a*(1 - exp(-k*x)) + c",
                         0,
                         5,
                         {{"a", 1, Linear, "y", "Rise from x = 0 to the end"},
                          {"k", 1, Rate, "1/x", "Rate constant"},
                          {"c", 0, Linear, "y", "Value at x = 0"}}});
    functions.push_back(
        {"logistic_growth",
         group,
         "Logistic growth",
         "Growth that slows down evenly towards a limit; symmetric about its middle.",
         "x",
         "a/(1 + exp(-k*(x - m)))",
         0,
         12,
         {limit, {"k", 1, Rate, "1/x", "Rate constant"}, {"m", 5, Place, "x", "X at half the limit"}}});
    functions.push_back({"gompertz_growth",
                         group,
                         "Gompertz growth",
                         "Growth with a long approach to its limit, such as tumours and microbes.",
                         "x",
                         "a*exp(-exp(-k*(x - m)))",
                         0,
                         12,
                         {limit,
                          {"k", 0.7, Rate, "1/x", "Rate constant"},
                          {"m", 4, Place, "x", "X of the steepest growth"}}});
    functions.push_back({"richards_growth",
                         group,
                         "Richards growth",
                         "Logistic growth whose steepest place may lie anywhere between start and limit.",
                         "x",
                         "a/(1 + q*exp(-k*(x - m)))^(1/q)",
                         0,
                         12,
                         {limit,
                          {"q", 0.6, Exponent, "", "Shape: 1 for logistic growth"},
                          {"k", 1, Rate, "1/x", "Rate constant"},
                          {"m", 5, Place, "x", "X of the steepest growth"}}});
    functions.push_back(
        {"bertalanffy_growth",
         group,
         "Von Bertalanffy growth",
         "The length of animals by age: an exponential rise from a start before the first point.",
         "x",
         "a*(1 - exp(-k*(x - t0)))",
         0,
         12,
         {{"a", 50, Linear, "y", "Limiting value"},
          {"k", 0.3, Rate, "1/x", "Rate constant"},
          {"t0", -0.5, Place, "x", "X at which the value would be 0"}}});
    functions.push_back({"weibull_growth",
                         group,
                         "Weibull growth",
                         "A rise to a limit that may begin late and end fast.",
                         "x",
                         "a - (a - c)*exp(-((k*x)^d))",
                         0,
                         10,
                         {{"a", 1, Linear, "y", "Limiting value"},
                          {"c", 0.1, Linear, "y", "Value at x = 0"},
                          {"k", 0.25, Rate, "1/x", "Rate constant"},
                          {"d", 2, Exponent, "", "Shape"}}});
    functions.push_back({"power_law",
                         group,
                         "Power law",
                         "A straight line on two logarithmic axes.",
                         "x",
                         "a*x^b",
                         0.1,
                         10,
                         {{"a", 1, Linear, "y", "Value at x = 1"}, {"b", 1.5, Exponent, "", "Exponent"}}});
}

void AddDecay(std::vector<TReadyFunction>& functions) {
    const char* const group = "Decay";
    const TReadyParameter fall = {"a", 1, Linear, "y", "Fall from x = 0 to the end"};
    const TReadyParameter end = {"c", 0.1, Linear, "y", "Value at the end"};
    functions.push_back({"exponential_decay",
                         group,
                         "Exponential decay",
                         "A fall by the same share in each unit of X: discharge, first-order reactions.",
                         "x",
                         "a*exp(-k*x) + c",
                         0,
                         5,
                         {fall, {"k", 1, Rate, "1/x", "Rate constant"}, end}});
    functions.push_back({"half_life_decay",
                         group,
                         "Decay with a half-life",
                         "The same by its half-life, as for radioactive samples.",
                         "x",
                         "a*2^(-x/t) + c",
                         0,
                         10,
                         {fall, {"t", 2, Scale, "x", "Half-life"}, end}});
    functions.push_back({"double_exponential_decay",
                         group,
                         "Double exponential decay",
                         "Two decays side by side, a fast and a slow one.",
                         "x",
                         "a1*exp(-k1*x) + a2*exp(-k2*x) + c",
                         0,
                         10,
                         {{"a1", 1, Linear, "y", "Fall of the fast part"},
                          {"k1", 2, Rate, "1/x", "Rate constant of the fast part"},
                          {"a2", 0.8, Linear, "y", "Fall of the slow part"},
                          {"k2", 0.3, Rate, "1/x", "Rate constant of the slow part"},
                          end}});
    functions.push_back({"stretched_exponential",
                         group,
                         "Stretched exponential",
                         "A decay with a spread of rates: glasses, luminescence.",
                         "x",
                         "a*exp(-((k*x)^b)) + c",
                         0,
                         10,
                         {fall,
                          {"k", 0.8, Rate, "1/x", "Rate constant"},
                          {"b", 0.7, Exponent, "", "Stretching: 1 for one rate"},
                          end}});
    functions.push_back({"hyperbolic_decay",
                         group,
                         "Hyperbolic decay",
                         "A fall that slows down more than an exponential one: recombination, discounting.",
                         "x",
                         "a/(1 + k*x) + c",
                         0,
                         10,
                         {fall, {"k", 1, Rate, "1/x", "Rate constant"}, end}});
    functions.push_back({"power_decay",
                         group,
                         "Decay by a power",
                         "An even start that turns into a power law: afterglow, aftershocks.",
                         "x",
                         "a*(1 + x/t)^(-n)",
                         0,
                         20,
                         {{"a", 1, Linear, "y", "Value at x = 0"},
                          {"t", 2, Scale, "x", "X at which the power law begins"},
                          {"n", 1.5, Exponent, "", "Exponent"}}});
}

} // namespace

void AddGrowthAndDecay(std::vector<TReadyFunction>& functions) {
    AddGrowth(functions);
    AddDecay(functions);
}

} // namespace lumoplot
