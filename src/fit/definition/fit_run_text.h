// The last run of a curve fit as one line of text, in which files hold it.
#pragma once

#include "fit/definition/cur_fit.h"

#include <string>
#include <string_view>

namespace lumoplot {

/// "1 R …" with how the run ended, its figures and the covariance, then its remarks, each on a line of its
/// own, or "1 F …" with why it was not possible, or "1 N" where none is known. The first digit is 0 for a run
/// since which something has changed, and 2 where that is held: a run was taken back. Empty when there was
/// none and one is pending.
std::string FitRunText(const TFitRunState& state);
/// What a text of FitRunText says; stale and without a run for any other text.
TFitRunState FitRunOf(std::string_view text);

} // namespace lumoplot
