// How good a fit is, and what its residuals say.
#pragma once

#include "fit/definition/cur_fit.h"
#include "fit/definition/fit_result.h"
#include "fit/procedures/fit_rows.h"

namespace lumoplot {

/// The probability of a |t| as large by chance (Student), of an F as large (Fisher, with the degrees of
/// freedom of the variances above and below), of a χ² as large, and of a standard normal |z| as large.
/// Not-a-number without degrees of freedom.
double StudentProbability(double t, double freedom);
double FisherProbability(double f, double above, double below);
double ChiSquareProbability(double chiSquare, double freedom);
double NormalProbability(double z);

/// The t that is exceeded on both sides together with the probability 1 − confidence; not-a-number without
/// degrees of freedom. 0 < confidence < 1.
double StudentQuantile(double confidence, double freedom);

/// So many that Student's t is as a normal number.
inline constexpr double kManyFreedoms = 1e7;
/// The degrees of freedom with which the standard errors of a fit that has run are known: those of its
/// residuals; practically infinite where the errors of the points are taken as they are.
double FreedomOfErrors(const TCurFit& fit);

/// What the residuals say, a sentence for each test that has a figure: runs, Durbin-Watson, χ². A test is
/// said to fail where chance would do as much in less than 5 % of cases.
XYGRAPH_EXPORT std::vector<std::string> ResidualWords(const TFitResult& result);

/// From the weighted residuals in the order of X and the number of parameters.
TFitQuality QualityOf(std::vector<double> residuals, double rss, double rSquared, int parameters);

} // namespace lumoplot
