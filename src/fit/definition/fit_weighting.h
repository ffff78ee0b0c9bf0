// How the points of a fit count: all alike or by their standard errors, where the errors of parameters come
// from, and whether outliers are held off.
#pragma once

#include "support/export.h"

#include <string>
#include <string_view>

namespace lumoplot {

/// Where the standard errors of the parameters come from, for points that have standard errors.
enum class TErrorSource {
    Residuals, ///< the errors of points are only relative to each other
    Points,    ///< the errors of points are what they say
};

/// How the weight of a point falls with the size of its residual. Each leaves 95 % of the efficiency of least
/// squares on points without outliers.
///
/// P. J. Huber, Robust Statistics (1981); A. E. Beaton, J. W. Tukey, Technometrics 16 (1974) 147-185; P. W.
/// Holland, R. E. Welsch, Comm. Statist. A 6 (1977) 813-827, for the constants.
enum class TRobust {
    None,
    Huber,  ///< 1 for small ones, then as 1/r
    Cauchy, ///< 1/(1 + r²), never 0
    Tukey,  ///< (1 − r²)², 0 for large ones: such points do not count at all
};

struct TFitWeighting {
    bool ByYErrors = false; ///< weights 1/σ², of points that have a standard error
    TErrorSource Errors = TErrorSource::Residuals;
    TRobust Robust = TRobust::None;

    bool operator==(const TFitWeighting&) const = default;
};

/// The words of what is not the default: "y-errors absolute huber"; empty for the default.
std::string TextOf(const TFitWeighting& weighting);
/// Words that are none of these are passed over.
TFitWeighting FitWeightingOf(std::string_view text);

} // namespace lumoplot
