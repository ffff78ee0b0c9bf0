#include "fit/run/fit_statistics.h"

#include "fit/run/fit_judgement.h"
#include "support/number_text.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

constexpr double kNoFigure = std::numeric_limits<double>::quiet_NaN();
constexpr double kTiny = 1e-300;
constexpr double kSeriesEnd = 1e-16;
constexpr int kMostTerms = 10000;
constexpr int kBisections = 80;
constexpr double kUnlikely = 0.05;
constexpr double kNormalQuantile = 1.96; // of kUnlikely
constexpr int kWordDigits = 3;

// The continued fraction of the incomplete beta function, by Lentz's method
// (Abramowitz and Stegun 26.5.8).
double BetaFraction(double x, double a, double b) {
    double c = 1;
    double d = 1 - (a + b) * x / (a + 1);
    d = 1 / (std::abs(d) < kTiny ? kTiny : d);
    double value = d;
    for (int m = 1; m < kMostTerms; ++m) {
        double step = 0;
        for (const bool isEven : {true, false}) {
            const double factor = isEven ? m * (b - m) * x / ((a + 2 * m - 1) * (a + 2 * m))
                                         : -(a + m) * (a + b + m) * x / ((a + 2 * m) * (a + 2 * m + 1));
            d = 1 + factor * d;
            c = 1 + factor / c;
            d = 1 / (std::abs(d) < kTiny ? kTiny : d);
            if (std::abs(c) < kTiny) c = kTiny;
            step = c * d;
            value *= step;
        }
        if (std::abs(step - 1) < kSeriesEnd) break;
    }
    return value;
}

/// The regularised incomplete beta function; `rest` is 1 − x.
double IncompleteBeta(double x, double rest, double a, double b) {
    if (x <= 0 || rest <= 0) return x <= 0 ? 0 : 1;
    const double factor =
        std::exp(std::lgamma(a + b) - std::lgamma(a) - std::lgamma(b) + a * std::log(x) + b * std::log(rest));
    return x < (a + 1) / (a + b + 2) ? factor * BetaFraction(x, a, b) / a
                                     : 1 - factor * BetaFraction(rest, b, a) / b;
}

/// The regularised incomplete gamma function from x to infinity: by its series
/// below, by its continued fraction above a + 1 (Abramowitz and
/// Stegun 6.5.29, 6.5.31).
double UpperGamma(double a, double x) {
    if (x <= 0) return 1;
    const double factor = std::exp(a * std::log(x) - x - std::lgamma(a));
    if (x < a + 1) {
        double term = 1 / a;
        double sum = term;
        for (int n = 1; n < kMostTerms && term > sum * kSeriesEnd; ++n) sum += term *= x / (a + n);
        return 1 - factor * sum;
    }
    double b = x + 1 - a;
    double c = 1 / kTiny;
    double d = 1 / b;
    double value = d;
    for (int n = 1; n < kMostTerms; ++n) {
        const double numerator = -n * (n - a);
        b += 2;
        d = 1 / (numerator * d + b);
        c = b + numerator / c;
        value *= c * d;
        if (std::abs(c * d - 1) < kSeriesEnd) break;
    }
    return factor * value;
}

// How many more or fewer runs of one sign there are than by chance, in standard
// deviations (Wald, Wolfowitz, Ann. Math. Statist. 11, 1940).
double RunsDeviation(const std::vector<double>& residuals) {
    double above = 0;
    double below = 0;
    double runs = 0;
    double last = 0;
    for (const double residual : residuals) {
        if (residual == 0) continue;
        (residual > 0 ? above : below) += 1;
        if (last == 0 || (residual > 0) != (last > 0)) ++runs;
        last = residual;
    }
    const double count = above + below;
    const double mean = 2 * above * below / count + 1;
    const double variance = (mean - 1) * (mean - 2) / (count - 1);
    return variance > 0 ? (runs - mean) / std::sqrt(variance) : kNoFigure;
}

/// Divides by a power of two, so that squares are numbers; returns it.
double TakeUnitOut(std::vector<double>& residuals) {
    double largest = 0;
    for (const double residual : residuals) largest = std::max(largest, std::abs(residual));
    if (!(largest > 0) || !std::isfinite(largest)) return 1;
    const double unit = std::exp2(std::ilogb(largest));
    for (double& residual : residuals) residual /= unit;
    return unit;
}

std::string RunsWords(const TFitQuality& quality) {
    const std::string figure =
        " (runs test, probability " + FormatGeneral(quality.RunsProbability, kWordDigits) + ").";
    if (quality.RunsProbability >= kUnlikely)
        return "The signs of the residuals change as they do by chance" + figure;
    return quality.RunsDeviation < 0 ? "The residuals are not random: the model misses a trend" + figure
                                     : "The residuals are not random: their signs change too often" + figure;
}

std::string NeighbourWords(const TFitQuality& quality, double points) {
    const std::string figure =
        " (Durbin-Watson " + FormatGeneral(quality.DurbinWatson, kWordDigits) + ", by chance near 2).";
    const double scatter = 2 * kNormalQuantile / std::sqrt(points);
    if (std::abs(quality.DurbinWatson - 2) <= scatter)
        return "Neighbouring residuals do not depend on each other" + figure;
    return quality.DurbinWatson < 2
               ? "Neighbouring residuals are alike: the model misses a trend, or an error "
                 "of one point goes on in the next" +
                     figure
               : "Neighbouring residuals tend to opposite signs" + figure;
}

std::string ErrorWords(double probability) {
    const std::string figure = " (probability of χ² " + FormatGeneral(probability, kWordDigits) + ").";
    if (probability < kUnlikely) return "The points lie farther off the curve than their errors say" + figure;
    return probability > 1 - kUnlikely ? "The points lie nearer to the curve than their errors say" + figure
                                       : "The points lie about the curve as their errors say" + figure;
}

} // namespace

std::vector<std::string> ResidualWords(const TFitResult& result) {
    const TFitQuality& quality = result.Quality;
    std::vector<std::string> words;
    if (std::isfinite(quality.RunsProbability)) words.push_back(RunsWords(quality));
    if (std::isfinite(quality.DurbinWatson))
        words.push_back(NeighbourWords(quality, static_cast<double>(result.PointsUsed)));
    if (std::isfinite(quality.ChiSquareProbability))
        words.push_back(ErrorWords(quality.ChiSquareProbability));
    return words;
}

double StudentProbability(double t, double freedom) {
    if (!(freedom > 0) || std::isnan(t)) return kNoFigure;
    if (std::isinf(t)) return 0;
    const double x = freedom / (freedom + t * t);
    return IncompleteBeta(x, t * t / (freedom + t * t), 0.5 * freedom, 0.5);
}

double StudentQuantile(double confidence, double freedom) {
    if (!(freedom > 0)) return kNoFigure;
    double high = 1;
    while (StudentProbability(high, freedom) > 1 - confidence) high *= 2;
    double low = 0;
    for (int i = 0; i < kBisections; ++i) {
        const double middle = 0.5 * (low + high);
        (StudentProbability(middle, freedom) > 1 - confidence ? low : high) = middle;
    }
    return 0.5 * (low + high);
}

double FisherProbability(double f, double above, double below) {
    if (!(above > 0) || !(below > 0) || !(f >= 0)) return kNoFigure;
    if (std::isinf(f)) return 0;
    const double x = below / (below + above * f);
    return IncompleteBeta(x, above * f / (below + above * f), 0.5 * below, 0.5 * above);
}

double FreedomOfErrors(const TCurFit& fit) {
    const bool isAbsolute = fit.UsesYErrors() && fit.Weighting().Errors == TErrorSource::Points;
    return isAbsolute ? kManyFreedoms : fit.Result()->Quality.Freedom;
}

double ChiSquareProbability(double chiSquare, double freedom) {
    return freedom > 0 && chiSquare >= 0 ? UpperGamma(0.5 * freedom, 0.5 * chiSquare) : kNoFigure;
}

double NormalProbability(double z) {
    return std::erfc(std::abs(z) / std::sqrt(2));
}

TFitQuality QualityOf(std::vector<double> residuals, double rss, double rSquared, int parameters) {
    const double unit = TakeUnitOut(residuals);
    const auto count = static_cast<double>(residuals.size());
    const double freedom = count - parameters;
    const double estimated = parameters + 1; // with the variance
    TFitQuality quality;
    quality.Freedom = static_cast<int>(freedom);
    quality.AdjustedRSquared = freedom > 0 ? 1 - (1 - rSquared) * (count - 1) / freedom : kNoFigure;
    const double likelihood = count * (std::log(Dot(residuals, residuals) / count) + 2 * std::log(unit));
    quality.Aic = likelihood + 2 * estimated;
    quality.Aicc = count > estimated + 1
                       ? quality.Aic + 2 * estimated * (estimated + 1) / (count - estimated - 1)
                       : kNoFigure;
    quality.Bic = likelihood + estimated * std::log(count);
    quality.ChiSquareProbability = ChiSquareProbability(rss, freedom);
    quality.RunsDeviation = RunsDeviation(residuals);
    quality.RunsProbability = NormalProbability(quality.RunsDeviation);
    quality.DurbinWatson = DurbinWatson(residuals);
    return quality;
}

} // namespace lumoplot
