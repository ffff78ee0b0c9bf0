#include "fit/functions/function_groups.h"

namespace lumoplot {

using enum TParameterRole;

namespace {

void AddWaves(std::vector<TReadyFunction>& functions) {
    const char* const group = "Waveforms";
    const TReadyParameter amplitude = {"a", 1, Linear, "y", "Amplitude"};
    const TReadyParameter frequency = {"f", 0.5, Frequency, "1/x", "Frequency"};
    const TReadyParameter phase = {"p", 0.6, Phase, "rad", "Phase at x = 0"};
    const TReadyParameter rest = {"c", 0.2, Linear, "y", "Mean value"};
    functions.push_back({"sine_wave",
                         group,
                         "Sine wave",
                         "An even oscillation.",
                         "x",
                         "a*sin(2*pi*f*x + p) + c",
                         0,
                         8,
                         {amplitude, frequency, phase, rest}});
    functions.push_back({"sine_on_line",
                         group,
                         "Sine wave on a trend",
                         "An oscillation about a straight line.",
                         "x",
                         "a*sin(2*pi*f*x + p) + b0 + b1*x",
                         0,
                         8,
                         {amplitude,
                          frequency,
                          phase,
                          {"b0", 0.2, Linear, "y", "Line at x = 0"},
                          {"b1", 0.3, Linear, "y/x", "Slope of the line"}}});
    functions.push_back({"damped_oscillation",
                         group,
                         "Damped oscillation",
                         "An oscillation that dies away: a plucked string, a ringing circuit.",
                         "x",
                         "a*exp(-k*x)*sin(2*pi*f*x + p) + c",
                         0,
                         8,
                         {{"a", 1, Linear, "y", "Amplitude at x = 0"},
                          {"k", 0.3, Rate, "1/x", "Damping constant"},
                          frequency,
                          phase,
                          {"c", 0, Linear, "y", "Value at rest"}}});
    functions.push_back({"two_sine_waves",
                         group,
                         "Two sine waves",
                         "Two oscillations at once, which may beat.",
                         "x",
                         "a1*sin(2*pi*f1*x + p1) + a2*sin(2*pi*f2*x + p2) + c",
                         0,
                         12,
                         {{"a1", 1, Linear, "y", "Amplitude of the first wave"},
                          {"f1", 0.4, Frequency, "1/x", "Frequency of the first wave"},
                          {"p1", 0.6, Phase, "rad", "Phase of the first wave"},
                          {"a2", 0.5, Linear, "y", "Amplitude of the second wave"},
                          {"f2", 0.9, Frequency, "1/x", "Frequency of the second wave"},
                          {"p2", 1.5, Phase, "rad", "Phase of the second wave"},
                          rest}});
    functions.push_back({"harmonic_wave",
                         group,
                         "Wave with its first harmonic",
                         "A periodic course of any shape in two terms, such as the tide or the day.",
                         "x",
                         "c + a1*cos(2*pi*f*x) + b1*sin(2*pi*f*x) + a2*cos(4*pi*f*x) + b2*sin(4*pi*f*x)",
                         0,
                         8,
                         {rest,
                          {"a1", 1, Linear, "y", "Cosine of the fundamental"},
                          {"b1", 0.4, Linear, "y", "Sine of the fundamental"},
                          {"a2", 0.4, Linear, "y", "Cosine of the harmonic"},
                          {"b2", -0.3, Linear, "y", "Sine of the harmonic"},
                          frequency}});
    functions.push_back(
        {"square_wave",
         group,
         "Square wave with soft edges",
         "Switching to and fro.",
         "x",
         "a*tanh(s*sin(2*pi*f*x + p)) + c",
         0,
         8,
         {amplitude, {"s", 4, Exponent, "", "Steepness of the edges"}, frequency, phase, rest}});
}

void AddDistributions(std::vector<TReadyFunction>& functions) {
    const char* const group = "Distributions";
    const TReadyParameter area = {"n", 1, Linear, "x·y", "Area below the curve"};
    const TReadyParameter mean = {"m", 0, Place, "x", "Mean"};
    functions.push_back({"normal_density",
                         group,
                         "Normal distribution",
                         "A Gaussian by its area: histograms.",
                         "x",
                         "n/(s*sqrt(2*pi))*exp(-sqr((x - m)/s)/2)",
                         -4,
                         4,
                         {area, mean, {"s", 1, Width, "x", "Standard deviation"}}});
    functions.push_back({"lognormal_density",
                         group,
                         "Log-normal distribution",
                         "Quantities that are products of many: incomes, sizes of particles.",
                         "x",
                         "n/(x*s*sqrt(2*pi))*exp(-sqr(ln(x/m)/s)/2)",
                         0.05,
                         6,
                         {area,
                          {"m", 1.2, Scale, "x", "Median"},
                          {"s", 0.6, Share, "", "Standard deviation of the logarithm"}}});
    functions.push_back({"weibull_density",
                         group,
                         "Weibull distribution",
                         "Lifetimes and speeds of wind.",
                         "x",
                         "n*k/l*(x/l)^(k - 1)*exp(-((x/l)^k))",
                         0.05,
                         5,
                         {area, {"l", 2, Scale, "x", "Scale"}, {"k", 1.8, Exponent, "", "Shape"}}});
    functions.push_back({"weibull_cumulative",
                         group,
                         "Weibull distribution, cumulative",
                         "The share that has failed until X.",
                         "x",
                         "n*(1 - exp(-((x/l)^k)))",
                         0,
                         6,
                         {{"n", 1, Linear, "y", "Limiting value"},
                          {"l", 2, Scale, "x", "Scale"},
                          {"k", 1.8, Exponent, "", "Shape"}}});
    functions.push_back({"exponential_density",
                         group,
                         "Exponential distribution",
                         "Times between events that know nothing of each other.",
                         "x",
                         "n*k*exp(-k*x)",
                         0,
                         5,
                         {area, {"k", 1, Rate, "1/x", "Rate"}}});
    functions.push_back({"gamma_density",
                         group,
                         "Gamma distribution (shape)",
                         "Waiting times for several events; positive X.",
                         "x",
                         "a*x^(p - 1)*exp(-x/t)",
                         0.05,
                         12,
                         {{"a", 1, Linear, "", "Factor"},
                          {"p", 2.5, Exponent, "", "Shape"},
                          {"t", 1.2, Scale, "x", "Scale"}}});
    functions.push_back({"rayleigh_density",
                         group,
                         "Rayleigh distribution",
                         "The length of a vector with random components.",
                         "x",
                         "n*x/sqr(s)*exp(-sqr(x/s)/2)",
                         0,
                         6,
                         {area, {"s", 1.5, Scale, "x", "Position of the maximum"}}});
    functions.push_back({"maxwell_density",
                         group,
                         "Maxwell distribution",
                         "Speeds of molecules in a gas.",
                         "x",
                         "n*sqrt(2/pi)*sqr(x)/s^3*exp(-sqr(x/s)/2)",
                         0,
                         6,
                         {area, {"s", 1.3, Scale, "x", "Scale"}}});
    functions.push_back(
        {"cauchy_density",
         group,
         "Cauchy distribution",
         "A Lorentzian by its area.",
         "x",
         "n*w/(pi*(sqr(w) + sqr(x - m)))",
         -8,
         8,
         {area, {"m", 0, Place, "x", "Median"}, {"w", 1, Width, "x", "Half of the width at half height"}}});
    functions.push_back(
        {"gumbel_density",
         group,
         "Gumbel distribution",
         "The largest of many values, such as floods.",
         "x",
         "n/s*exp(-(x - m)/s - exp(-(x - m)/s))",
         -3,
         8,
         {area, {"m", 0.5, Place, "x", "Position of the maximum"}, {"s", 1, Width, "x", "Scale"}}});
    functions.push_back({"logistic_cumulative",
                         group,
                         "Logistic distribution, cumulative",
                         "A symmetric step, nearly that of a normal distribution.",
                         "x",
                         "n/(1 + exp(-(x - m)/s))",
                         -6,
                         6,
                         {{"n", 1, Linear, "y", "Limiting value"},
                          {"m", 0, Place, "x", "Median"},
                          {"s", 0.8, Width, "x", "Scale"}}});
}

} // namespace

void AddWavesAndDistributions(std::vector<TReadyFunction>& functions) {
    AddWaves(functions);
    AddDistributions(functions);
}

} // namespace lumoplot
