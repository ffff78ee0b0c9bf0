// Values of an axis as a person reads them off: no more digits than mean something, dates on a date axis.
#pragma once

#include "graph/model/axis.h"

#include <QString>

namespace lumoplot {

/// A value of the axis to `resolution`, the difference that a reader can tell (0: all digits that a value of
/// a data set means, up to 12). Not-a-number and infinite values give "–".
QString ValueText(const TAxis& axis, double value, double resolution = 0);

/// The value to the decimal place, on a date axis to the unit of time, that is not coarser than `resolution`:
/// what is stored of a place that was pointed at. As it is where the resolution is no number above 0.
double RoundedTo(const TAxis& axis, double value, double resolution);

} // namespace lumoplot
