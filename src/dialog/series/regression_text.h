// What the Regressions page says about a data set: what its regression found, why there is none, and the mean
// of its Y. The regression is up to date.
#pragma once

#include "data/analysis/regression_types.h"

#include <QString>

namespace lumoplot {

class TSeries;

/// How many digits a number is shown with: as controls show them, or all that it has.
enum class TDigits { Four, All };

/// "Y = 0.2594 + 1.002 X" for the types 1 to 3, the window of a running average, nothing for the others.
QString RegressionResultText(const TSeries& series, TDigits digits);
/// The error of the regression, or why its settings give no curve; empty when there is one.
QString RegressionErrorText(const TSeries& series);
/// "Mean of Y: 12.3, SD: 0.45, points: 36", or why there are no statistics.
QString YStatisticsText(const TSeries& series, TDigits digits);

} // namespace lumoplot
