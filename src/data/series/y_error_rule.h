// Where the standard errors of the Y of a data set come from: a column of its source, or a rule that gives
// each point one. Errors that were typed in or taken from another data set have no rule: they are lost where
// the points are read again.
#pragma once

#include "data/series/ds_info.h"
#include "support/export.h"

#include <string>
#include <string_view>

namespace lumoplot {

class TDataSeries;

/// "column sigma", "constant 0.1", "percent 5", "sqrt"; empty for none.
std::string TextOf(const TYErrorRule& rule);
/// What a text of TextOf says, letter case of the first word ignored; none for any other text.
TYErrorRule YErrorRuleOf(std::string_view text);

/// The standard error of a raw Y; 0 where the rule has none, as for a column, Y = 0 and √Y of Y < 0.
double YErrorBy(const TYErrorRule& rule, double y);

/// Gives every point of the data set its error and keeps the rule with its source, so that points that are
/// read again get theirs. A column is only noted: reading the source fills it; None drops all errors. Returns
/// how many points have an error. Throws EYError for a constant or a percentage that is not above 0.
XYGRAPH_EXPORT int SetYErrorsBy(TDataSeries& series, const TYErrorRule& rule);

/// Takes the raw Y of another data set, between its neighbouring points, as the errors of this one, which
/// then has no rule; points outside its range get none. Returns how many points have an error.
XYGRAPH_EXPORT int SetYErrorsFrom(TDataSeries& series, const TDataSeries& errors);

/// Drops errors and rule; true when there were errors.
bool DropYErrors(TDataSeries& series);

/// For points that are new or have another Y: by the rule of the source where it needs only Y.
XYGRAPH_EXPORT void RenewYErrors(TDataSeries& series);

} // namespace lumoplot
