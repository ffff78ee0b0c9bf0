// One equation fitted to many data sets: to each by itself, or to all at once with some parameters in common.
#pragma once

#include "fit/run/curve_fitter.h"

#include <memory>
#include <string>
#include <vector>

namespace lumoplot {

/// A data set of a batch; borrowed. `YErrors` has one value a point, 0 for none, or is empty.
struct TBatchData {
    std::string Name;
    std::span<const double> X;
    std::span<const double> Y; ///< corrected
    std::span<const double> YErrors = {};
};

/// How a data set of a batch was fitted: a fit that has run, with its result, or why it was not possible.
struct TBatchFit {
    std::string Name;
    std::unique_ptr<TCurFit> Fit;
    std::string Error; ///< empty where it was
};

/// Fits a copy of the definition to each data set, every one from the parameters of the definition, and lets
/// points count as the definition says. A cancelled batch ends with the data sets that are done. Of `run` the
/// progress (of the data sets) and the starts are used.
XYGRAPH_EXPORT std::vector<TBatchFit> FitEach(const TCurFit& definition, std::span<const TBatchData> data,
                                              const TFitRun& run);

/// A parameter against the data sets of a batch, for a table or a data set of its own.
struct TParameterColumn {
    std::string Name;
    std::vector<double> Values; ///< one a data set, not-a-number where it could not be fitted
    std::vector<double> Errors; ///< standard errors, 0 where there is none
};

/// The parameters in the order of the definition; held ones only when `fits` is empty of varied ones.
std::vector<TParameterColumn> ParameterColumns(std::span<const TBatchFit> fits);

/// A table whose first row is its head: data set, each parameter and its error, R², residual deviation, end.
std::vector<std::vector<std::string>> BatchTable(std::span<const TBatchFit> fits);

/// Whether the values of a parameter in the fits of a batch are the same within their errors.
struct TParameterAgreement {
    std::string Name;
    double Mean = 0;        ///< weighted by the errors
    double Error = 0;       ///< of the mean
    double Probability = 0; ///< that they scatter as much by chance (χ²)
    bool Agrees() const { return Probability >= 0.05; }
};

/// Of each varied parameter that has an error in at least two of the fits, in the order of the definition.
XYGRAPH_EXPORT std::vector<TParameterAgreement> AgreementsOf(std::span<const TBatchFit* const> fits);
/// "k and c are the same in all data sets within their errors: they may have one value in common."; empty
/// where no parameter agrees.
XYGRAPH_EXPORT std::string AgreementText(std::span<const TParameterAgreement> agreements);

/// What FitTogether found.
struct TGlobalFit {
    /// One a data set, with the values and errors of its parameters; none after a cancelled run.
    std::vector<TBatchFit> Fits;
    /// Of all points together. Varied, Errors and Correlations are of the parameters of `Names`.
    TFitResult Result;
    /// Shared parameters first, then those of each data set: "k", "a [run 1]", "a [run 2]".
    std::vector<std::string> Names;
};

/// The sum of squares over all data sets is least, with the parameters of the names in `shared` (letter case
/// ignored) having one value for all of them; the others are each data set's own. Starts are the fits of each
/// data set by itself, and the definition. Throws EFitError for a name that is no varied parameter, for a
/// data set that can not be fitted ("DATA SET: …"), and for more than 400 parameters.
XYGRAPH_EXPORT TGlobalFit FitTogether(const TCurFit& definition, std::span<const TBatchData> data,
                                      std::span<const std::string> shared, const TFitRun& run);

} // namespace lumoplot
