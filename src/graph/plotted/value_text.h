// Values of an axis as a person reads them off: no more digits than mean something, dates on a date axis.
#pragma once

#include "graph/model/axis.h"

#include <QString>

namespace lumoplot {

/// A value of the axis to `resolution`, the difference that a reader can tell (0: all digits that a value of
/// a data set means, up to 12). Not-a-number and infinite values give "–".
QString ValueText(const TAxis& axis, double value, double resolution = 0);

} // namespace lumoplot
