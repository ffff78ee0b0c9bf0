#include "fit/functions/function_groups.h"

namespace lumoplot {

using enum TParameterRole;

void AddPeaks(std::vector<TReadyFunction>& functions) {
    const char* const group = "Peaks";
    const TReadyParameter height = {"h", 1, Linear, "y", "Height above the baseline"};
    const TReadyParameter position = {"m", 0, Place, "x", "Position of the maximum"};
    const TReadyParameter deviation = {"s", 1, Width, "x", "Standard deviation"};
    const TReadyParameter half = {"w", 1, Width, "x", "Half of the width at half height"};
    const TReadyParameter baseline = {"b", 0, Linear, "y", "Baseline"};
    functions.push_back({"gaussian_peak",
                         group,
                         "Gaussian peak",
                         "A symmetric peak whose flanks vanish fast, as random scatter makes it.",
                         "x",
                         "h*exp(-sqr((x - m)/s)/2) + b",
                         -5,
                         5,
                         {height, position, deviation, baseline}});
    functions.push_back({"lorentzian_peak",
                         group,
                         "Lorentzian peak",
                         "A symmetric peak with wide flanks, as a resonance makes it.",
                         "x",
                         "h/(1 + sqr((x - m)/w)) + b",
                         -8,
                         8,
                         {height, position, half, baseline}});
    functions.push_back(
        {"pseudo_voigt_peak",
         group,
         "Pseudo-Voigt peak",
         "A mixture of a Lorentzian and a Gaussian of one width, for spectral lines and diffraction.",
         "x",
         "h*(q/(1 + sqr((x - m)/w)) + (1 - q)*exp(-ln(2)*sqr((x - m)/w))) + b",
         -6,
         6,
         {height, position, half, {"q", 0.5, Share, "", "Share of the Lorentzian"}, baseline}});
    functions.push_back({"gaussian_on_line",
                         group,
                         "Gaussian peak on a sloping baseline",
                         "A peak over a background that rises or falls evenly.",
                         "x",
                         "h*exp(-sqr((x - m)/s)/2) + b0 + b1*x",
                         -5,
                         5,
                         {height,
                          position,
                          deviation,
                          {"b0", 0.3, Linear, "y", "Baseline at x = 0"},
                          {"b1", 0.05, Linear, "y/x", "Slope of the baseline"}}});
    functions.push_back({"two_gaussian_peaks",
                         group,
                         "Two Gaussian peaks",
                         "Two peaks that may overlap, each with its own width.",
                         "x",
                         "h1*exp(-sqr((x - m1)/s1)/2) + h2*exp(-sqr((x - m2)/s2)/2) + b",
                         -6,
                         8,
                         {{"h1", 1, Linear, "y", "Height of the first peak"},
                          {"m1", -1.5, Place, "x", "Position of the first peak"},
                          {"s1", 0.9, Width, "x", "Standard deviation of the first peak"},
                          {"h2", 0.6, Linear, "y", "Height of the second peak"},
                          {"m2", 2.5, Place, "x", "Position of the second peak"},
                          {"s2", 1.3, Width, "x", "Standard deviation of the second peak"},
                          baseline}});
    functions.push_back({"two_lorentzian_peaks",
                         group,
                         "Two Lorentzian peaks",
                         "Two resonances with wide flanks that may overlap.",
                         "x",
                         "h1/(1 + sqr((x - m1)/w1)) + h2/(1 + sqr((x - m2)/w2)) + b",
                         -10,
                         10,
                         {{"h1", 1, Linear, "y", "Height of the first peak"},
                          {"m1", -3, Place, "x", "Position of the first peak"},
                          {"w1", 0.8, Width, "x", "Half of the first width at half height"},
                          {"h2", 0.7, Linear, "y", "Height of the second peak"},
                          {"m2", 3, Place, "x", "Position of the second peak"},
                          {"w2", 1.2, Width, "x", "Half of the second width at half height"},
                          baseline}});
    functions.push_back({"asymmetric_peak",
                         group,
                         "Peak with two widths",
                         "A Gaussian whose flanks differ, as a chromatogram shows it.",
                         "x",
                         "h*exp(-sqr((x - m)/(s1*(x < m) + s2*(x >= m)))/2) + b",
                         -4,
                         8,
                         {height,
                          position,
                          {"s1", 0.8, Width, "x", "Standard deviation of the left flank"},
                          {"s2", 2, Width, "x", "Standard deviation of the right flank"},
                          baseline}});
    functions.push_back({"lognormal_peak",
                         group,
                         "Log-normal peak",
                         "A peak over positive X with a long right flank, such as the sizes of particles.",
                         "x",
                         "h*exp(-sqr(ln(x/m)/s)/2) + b",
                         0.1,
                         8,
                         {height,
                          {"m", 1.5, Scale, "x", "Position of the maximum"},
                          {"s", 0.5, Share, "", "Width on a logarithmic axis"},
                          baseline}});
    functions.push_back({"sech_peak",
                         group,
                         "Hyperbolic secant peak",
                         "A symmetric peak with exponential flanks, such as pulses of light and solitons.",
                         "x",
                         "h/sqr(cosh((x - m)/w)) + b",
                         -6,
                         6,
                         {height, position, {"w", 1, Width, "x", "Width"}, baseline}});
    functions.push_back(
        {"pearson_vii_peak",
         group,
         "Pearson VII peak",
         "Between a Lorentzian (p = 1) and a Gaussian (large p), for diffraction.",
         "x",
         "h/(1 + (2^(1/p) - 1)*sqr((x - m)/w))^p + b",
         -6,
         6,
         {height, position, half, {"p", 2, Exponent, "", "Shape: 1 for a Lorentzian"}, baseline}});
}

} // namespace lumoplot
