// Runs a curve fit: checks its definition, chooses its points, lets the procedure work and writes what was
// found back into the definition.
#pragma once

#include "fit/cur_fit.h"
#include "fit/dense.h"
#include "support/errors.h"
#include "support/progress.h"

#include <functional>
#include <span>
#include <string>

namespace lumoplot {

/// A fit that cannot be run; the text says what is wrong with its definition or its points.
class XYGRAPH_EXPORT EFitError : public ELumoError {
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
};

/// "converged", "the iteration limit was reached", …
XYGRAPH_EXPORT std::string TextOf(TFitEnd end);

struct XYGRAPH_EXPORT TFitResult {
    TFitEnd End = TFitEnd::Converged;
    int Iterations = 0;
    int Evaluations = 0; ///< of the model over all points, with or without its derivatives
    std::size_t PointsUsed = 0;
    std::size_t PointsLeftOut = 0; ///< between the margins, but without a value of the model
    double Rss = 0;                ///< residual sum of squares
    /// √(Rss / (points − varied parameters)); not-a-number without degrees of freedom.
    double ResidualSD = 0;
    double RSquared = 0; ///< 1 − Rss / sum of squares about the mean; not-a-number where all Y are equal
    /// The numbers (from 1) of the varied parameters, and the covariance of their estimates in this order;
    /// not-a-number where the points do not determine them.
    std::vector<int> Varied;
    TMatrix Covariance;

    /// The standard error of a varied parameter, by its place in Varied.
    double StandardError(std::size_t place) const;
};

struct TFitRun {
    TProgress* Progress = nullptr;     ///< null: nobody watches
    std::function<void()> OnIteration; ///< called after each iteration, with the best parameters in the fit
};

/// At most so many parameters may be varied.
inline constexpr int kMaxVariedParameters = 50;

/// Fits the model to the points between the margins in use, by least squares; points whose X or Y is not
/// finite are left out, as are those where the model has no value. `x` and `y` (corrected) have the same
/// length. Afterwards the varied parameters hold the best values found, also after a cancelled run, and
/// FinalDeviation their standard errors (0 where there is none). Modified is set, the fit is no longer stale,
/// and OnChange is called once.
///
/// Throws EFitError, EParserException or EConvertError for a fit that cannot be run; its parameters are then
/// unchanged.
XYGRAPH_EXPORT TFitResult RunFit(TCurFit& fit, std::span<const double> x, std::span<const double> y,
                                 const TFitRun& run = {});

} // namespace lumoplot
