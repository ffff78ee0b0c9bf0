// What a run of a curve fit found, and how it ended.
#pragma once

#include "fit/definition/dense.h"
#include "support/errors.h"
#include "support/export.h"

#include <limits>
#include <string>
#include <vector>

namespace lumoplot {

/// A fit that cannot be run; the text says what is wrong with its definition or its points.
class EFitError : public ELumoError {
public:
    using ELumoError::ELumoError;
};

/// How a run ended.
enum class TFitEnd {
    Converged,
    IterationLimit, ///< IterMax was reached before the tolerance
    NoProgress,     ///< no step improves the fit, but it is no minimum that is known as one
    NotDetermined,  ///< the points leave some combination of the parameters open
    Cancelled,      ///< by the user; the best parameters reached are kept
    WorseThanLine,  ///< a minimum that a horizontal line beats
    Pole,           ///< the model is infinite between two points
    RunsAway,       ///< a parameter has no best finite value
};

/// "converged", "the iteration limit was reached", …
XYGRAPH_EXPORT std::string TextOf(TFitEnd end);

/// How good a fit is, and what its residuals say; not-a-number where there is no figure.
struct TFitQuality {
    int Freedom = 0; ///< points − varied parameters
    double AdjustedRSquared = 0;
    /// Akaike's information criterion, that with its correction for few points, and the Bayesian one, each up
    /// to a constant of the points: n·ln(Rss/n) and its penalty, the variance counted as a parameter.
    double Aic = 0;
    double Aicc = 0;
    double Bic = 0;
    /// That Rss, as χ², is as large by chance; only where the points have standard errors.
    double ChiSquareProbability = 0;
    /// Runs of residuals of one sign, in standard deviations from those expected by chance, and the
    /// probability of as much by chance.
    double RunsDeviation = 0;
    double RunsProbability = 0;
    double DurbinWatson = 0; ///< near 2 by chance, near 0 where neighbours are alike
};

struct TFitResult {
    TFitEnd End = TFitEnd::Converged;
    int Iterations = 0;
    int Evaluations = 0; ///< of the model over all points, with or without its derivatives
    std::size_t PointsUsed = 0;
    std::size_t PointsLeftOut =
        0;          ///< between the margins, but without a value of the model or an error to weigh by
    double Rss = 0; ///< residual sum of squares; χ² where the points have standard errors
    /// √(Rss / (points − varied parameters)); not-a-number without degrees of freedom.
    double ResidualSD = 0;
    double RSquared = 0; ///< 1 − Rss / sum of squares about the mean; not-a-number where all Y are equal
    TFitQuality Quality;
    std::size_t Outliers = 0; ///< points that robust weights have taken most of their influence from
    /// What there is to say besides the end, in whole sentences: which parameters are not determined, run
    /// away or depend on each other, points without a value, that the minimum was found from other starts.
    std::vector<std::string> Remarks;
    /// The numbers (from 1) of the varied parameters, and in this order the standard errors of their
    /// estimates and the correlations of these; not-a-number where the points do not determine them. A
    /// variance may be too small or too large for a number where an error is not.
    std::vector<int> Varied;
    std::vector<double> Errors;
    TMatrix Correlations;

    /// The varied parameters at a better minimum that other starts have found, and its Rss; empty where there
    /// is none or where it was taken (TFitStarts). Files do not hold it.
    std::vector<double> BetterValues;
    double BetterRss = 0;

    /// The standard error of a varied parameter, by its place in Varied; not-a-number after a cancelled run,
    /// which has not come to where it means something.
    double StandardError(std::size_t place) const {
        return End == TFitEnd::Cancelled ? std::numeric_limits<double>::quiet_NaN() : Errors[place];
    }
    /// Of two varied parameters, by their places.
    double Covariance(int i, int j) const {
        return Errors[static_cast<std::size_t>(i)] * Correlations(i, j) * Errors[static_cast<std::size_t>(j)];
    }
};

} // namespace lumoplot
