// The last run of a curve fit as one line of text, in which files hold it.
#pragma once

#include "fit/definition/cur_fit.h"

#include <string>
#include <string_view>

namespace lumoplot {

/// "1 R …" with how the run ended, its figures and the covariance, then its remarks, each on a line of its
/// own, or "1 F …" with why it was not possible; the first digit is 0 for a run since which something has
/// changed. "1 N" for one that was taken back and is not pending; empty when there was none.
std::string FitRunText(const TFitRunState& state);
/// What a text of FitRunText says; stale and without a run for any other text.
TFitRunState FitRunOf(std::string_view text);

} // namespace lumoplot
