// Whether what a run has found deserves to be believed.
#pragma once

#include "fit/run/local_fit.h"

namespace lumoplot {

/// The sum of squares about the best horizontal line, weighted, of residuals
/// multiplied by `scale`.
double SumAboutLine(const TFitPoints& points, double scale);

/// Y − f(x), weighted, in the order of the points, and in that of X.
std::vector<double> ResidualsOf(TCurFit& fit, const TFitPoints& points);
std::vector<double> ResidualsByX(TCurFit& fit, const TFitPoints& points);

/// Σ(eᵢ − eᵢ₋₁)² / Σeᵢ²: near 2 for residuals that are independent, near 0
/// where neighbours are alike (Durbin, Watson, Biometrika 37, 1950);
/// not-a-number where all are 0.
double DurbinWatson(std::span<const double> residuals);

/// The model, with its parameters as they are, is infinite somewhere between
/// two points.
bool HasPoleBetween(TCurFit& fit, const TFitPoints& points);

/// Of two curves that fit equally well the one that varies less than this part of the other is preferred.
inline constexpr double kSmoother = 0.7;

/// How far the model, with its parameters as they are, goes up and down between the first and the last point.
double VariationBetween(TCurFit& fit, const TFitPoints& points);

/// Neighbouring residuals go together so much that the curve seems to miss the
/// points' course, or it tells little of it: another minimum may be better. The
/// fit has the parameters found.
bool MissesCourse(TCurFit& fit, const TLocalFit& found, const TFitPoints& points);

/// How a run ends in the light of its points: a minimum with a pole between
/// points or one that a horizontal line beats is told as such. The fit has the
/// parameters found.
TFitEnd Judged(const TLocalFit& found, TCurFit& fit, const TFitPoints& points);

/// The varied parameter (its place) that has no best finite value: with it far
/// beyond its value, and the others fitted again, the sum of squares is no
/// larger. -1 for none. Where parameters are not determined it must have come
/// far from its start, too. The fit has the parameters found, and keeps them.
int RunawayOf(const TFitTask& task, const TFitPoints& points, const TVector& start, const TLocalFit& found);

} // namespace lumoplot
