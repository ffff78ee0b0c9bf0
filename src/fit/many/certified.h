// Fitting problems with certified results: how many digits of them a run reaches. The problems that ship with
// the product are in examples/certified.
#pragma once

#include "fit/run/curve_fitter.h"

#include <array>
#include <string_view>

namespace lumoplot {

/// A model y = f(x; b1, b2, …) with two starts and what is certified of its fit, to eleven digits.
struct TCertifiedProblem {
    std::string Name;
    std::string Equation;
    std::array<std::vector<double>, 2> Starts;
    std::vector<double> Parameters;
    std::vector<double> Deviations; ///< standard errors; may be missing
    double Rss = 0;
    /// Groups of parameter numbers (from 1) that may change places without changing the model.
    std::vector<std::vector<int>> Exchangeable;
    /// Numbers of the parameters whose sign does not matter.
    std::vector<int> Even;
};

struct TCertifiedData {
    std::vector<double> X;
    std::vector<double> Y;
};

/// A tab-divided table with one header line: name, equation, two starts, parameters, deviations, rss,
/// exchangeable groups ("1 2,3 4"), even parameters. Numbers are divided by commas. Throws EConvertError.
std::vector<TCertifiedProblem> ReadCertifiedProblems(std::string_view table);
/// Lines "x,y" below a header line. Throws EConvertError.
TCertifiedData ReadCertifiedData(std::string_view text);

/// The digits in which a value agrees with a certified one: 0 to 11.
double CorrectDigits(double value, double certified);

struct TCertifiedRun {
    TFitResult Result;
    double ParameterDigits = 0; ///< of the worst parameter
    double DeviationDigits = 0; ///< of the worst standard error; 0 when none are certified
};

/// Fits the problem from its first (0) or second (1) start.
TCertifiedRun RunCertified(const TCertifiedProblem& problem, const TCertifiedData& data, int start,
                           TFitProcedure procedure, int iterMax);

} // namespace lumoplot
