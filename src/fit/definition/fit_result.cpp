#include "fit/definition/fit_result.h"

#include <cmath>

namespace lumoplot {

double TFitResult::StandardError(std::size_t place) const {
    const int i = static_cast<int>(place);
    return std::sqrt(Covariance(i, i));
}

std::string TextOf(TFitEnd end) {
    switch (end) {
    case TFitEnd::Converged: return "converged";
    case TFitEnd::IterationLimit: return "the iteration limit was reached";
    case TFitEnd::NoProgress: return "no step improves the fit any more";
    case TFitEnd::NotDetermined: return "the points do not determine all varied parameters";
    case TFitEnd::Cancelled: return "cancelled";
    }
    return {};
}

} // namespace lumoplot
