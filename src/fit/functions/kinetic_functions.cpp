#include "fit/functions/function_groups.h"

namespace lumoplot {

using enum TParameterRole;

namespace {

void AddKinetics(std::vector<TReadyFunction>& functions) {
    const char* const group = "Kinetics";
    const TReadyParameter fastest = {"vmax", 1, Linear, "y", "Limiting rate"};
    functions.push_back({"michaelis_menten",
                         group,
                         "Michaelis-Menten",
                         "The rate of an enzyme by the concentration of its substrate.",
                         "s",
                         "vmax*s/(km + s)",
                         0,
                         10,
                         {fastest, {"km", 1, Scale, "x", "Concentration at half of the limiting rate"}}});
    functions.push_back({"hill",
                         group,
                         "Hill",
                         "Binding of several molecules that help or hinder each other.",
                         "x",
                         "vmax*x^n/(k^n + x^n)",
                         0,
                         5,
                         {{"vmax", 1, Linear, "y", "Limiting value"},
                          {"k", 1, Scale, "x", "X at half of the limiting value"},
                          {"n", 2, Exponent, "", "Hill coefficient"}}});
    functions.push_back({"substrate_inhibition",
                         group,
                         "Substrate inhibition",
                         "An enzyme that too much substrate slows down again.",
                         "s",
                         "vmax*s/(km + s + sqr(s)/ki)",
                         0,
                         20,
                         {fastest,
                          {"km", 1, Scale, "x", "Michaelis constant"},
                          {"ki", 8, Scale, "x", "Inhibition constant"}}});
    functions.push_back({"second_order_decay",
                         group,
                         "Second-order reaction",
                         "Two molecules of one kind that react with each other.",
                         "t",
                         "c0/(1 + k*t)",
                         0,
                         10,
                         {{"c0", 1, Linear, "y", "Concentration at the start"},
                          {"k", 0.8, Rate, "1/x", "Rate constant times the concentration at the start"}}});
    functions.push_back({"consecutive_reactions",
                         group,
                         "Consecutive reactions",
                         "What comes and goes: an intermediate product, a drug in the blood.",
                         "t",
                         "a*k1/(k1 - k2)*(exp(-k2*t) - exp(-k1*t))",
                         0,
                         12,
                         {{"a", 1, Linear, "y", "Amount at the start"},
                          {"k1", 1.5, Rate, "1/x", "Rate constant of the formation"},
                          {"k2", 0.3, Rate, "1/x", "Rate constant of the decay"}}});
    functions.push_back({"burst",
                         group,
                         "Burst and steady state",
                         "A fast first phase and an even rate behind it.",
                         "t",
                         "a*(1 - exp(-k*t)) + v*t",
                         0,
                         10,
                         {{"a", 1, Linear, "y", "Size of the burst"},
                          {"k", 1.5, Rate, "1/x", "Rate constant"},
                          {"v", 0.1, Linear, "y/x", "Rate afterwards"}}});
    functions.push_back({"arrhenius",
                         group,
                         "Arrhenius",
                         "A rate constant by temperature in kelvin; the activation energy is in J/mol.",
                         "T",
                         "a*exp(-ea/(8.314462618*T))",
                         280,
                         360,
                         {{"a", 1e6, Linear, "y", "Value at infinite temperature"},
                          {"ea", 40000, Energy, "J/mol", "Activation energy"}}});
    functions.push_back({"langmuir_isotherm",
                         group,
                         "Langmuir isotherm",
                         "Adsorption on a surface with a limited number of places.",
                         "c",
                         "q*k*c/(1 + k*c)",
                         0,
                         10,
                         {{"q", 1, Linear, "y", "Amount that covers the surface"},
                          {"k", 0.8, Rate, "1/x", "Equilibrium constant"}}});
    functions.push_back({"freundlich_isotherm",
                         group,
                         "Freundlich isotherm",
                         "Adsorption on a surface whose places differ.",
                         "c",
                         "k*c^(1/n)",
                         0.1,
                         10,
                         {{"k", 1, Linear, "y", "Amount at c = 1"}, {"n", 2, Exponent, "", "Exponent"}}});
}

void AddDoses(std::vector<TReadyFunction>& functions) {
    const char* const group = "Dose-Response";
    const TReadyParameter bottom = {"bottom", 0, Linear, "y", "Lower plateau"};
    const TReadyParameter top = {"top", 1, Linear, "y", "Upper plateau"};
    const TReadyParameter slope = {"n", 1.5, Exponent, "", "Steepness (Hill slope)"};
    functions.push_back({"sigmoid",
                         group,
                         "Sigmoid (Boltzmann)",
                         "A step of finite width between two plateaus.",
                         "x",
                         "bottom + (top - bottom)/(1 + exp((xm - x)/w))",
                         -6,
                         6,
                         {{"bottom", 0, Linear, "y", "Value far to the left"},
                          {"top", 1, Linear, "y", "Value far to the right"},
                          {"xm", 0, Place, "x", "X halfway between bottom and top"},
                          {"w", 1, Width, "x", "Width of the transition"}}});
    functions.push_back({"dose_response",
                         group,
                         "Dose-response, four parameters",
                         "The effect by the dose, between two plateaus.",
                         "x",
                         "bottom + (top - bottom)/(1 + (ec50/x)^n)",
                         0.01,
                         100,
                         {bottom, top, {"ec50", 2, Scale, "x", "Dose of half of the effect"}, slope}});
    functions.push_back({"dose_response_5",
                         group,
                         "Dose-response, five parameters",
                         "The same with a transition that is not symmetric.",
                         "x",
                         "bottom + (top - bottom)/(1 + (ec/x)^n)^s",
                         0.01,
                         100,
                         {bottom,
                          top,
                          {"ec", 2, Scale, "x", "Dose in the transition"},
                          slope,
                          {"s", 0.5, Exponent, "", "Asymmetry: 1 for none"}}});
    functions.push_back({"log_dose_response",
                         group,
                         "Dose-response by log dose",
                         "X is the decimal logarithm of the dose.",
                         "x",
                         "bottom + (top - bottom)/(1 + 10^(n*(lec50 - x)))",
                         -9,
                         -3,
                         {bottom,
                          top,
                          {"lec50", -6, Place, "x", "Logarithm of the dose of half of the effect"},
                          {"n", 1.2, Exponent, "", "Steepness (Hill slope)"}}});
    functions.push_back(
        {"inhibition",
         group,
         "Inhibition",
         "What is left of an effect by the dose of an inhibitor.",
         "x",
         "bottom + (top - bottom)/(1 + (x/ic50)^n)",
         0.01,
         100,
         {bottom, top, {"ic50", 3, Scale, "x", "Dose that takes half of the effect"}, slope}});
    functions.push_back({"hormesis",
                         group,
                         "Inhibition with hormesis",
                         "Small doses help before larger ones harm (Brain-Cousens).",
                         "x",
                         "bottom + (top - bottom + f*x)/(1 + (x/e)^n)",
                         0.01,
                         100,
                         {bottom,
                          top,
                          {"f", 0.3, Linear, "y/x", "Help by small doses"},
                          {"e", 5, Scale, "x", "Dose in the transition"},
                          {"n", 2.5, Exponent, "", "Steepness"}}});
}

} // namespace

void AddKineticsAndDoses(std::vector<TReadyFunction>& functions) {
    AddKinetics(functions);
    AddDoses(functions);
}

} // namespace lumoplot
