#include "fit/definition/fit_result.h"

namespace lumoplot {

std::string TextOf(TFitEnd end) {
    switch (end) {
    case TFitEnd::Converged: return "converged";
    case TFitEnd::IterationLimit: return "the iteration limit was reached";
    case TFitEnd::NoProgress: return "no step improves the fit any more";
    case TFitEnd::NotDetermined: return "the points do not determine all varied parameters";
    case TFitEnd::Cancelled: return "cancelled";
    case TFitEnd::WorseThanLine: return "the curve is no better than a horizontal line";
    case TFitEnd::Pole: return "the curve has a pole between the points";
    case TFitEnd::RunsAway: return "a parameter runs away: no finite value is best";
    }
    return {};
}

} // namespace lumoplot
