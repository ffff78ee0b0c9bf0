// Values as a person reads and types them in the data editor: numbers in their shortest form that reads back
// to the same double, or dates with their time of day for an X that counts days since 1899-12-30.
#pragma once

#include "data/series/ds_info.h"

#include <QString>

namespace lumoplot {

/// "12.5", or "2024-01-31 14:30:05.25" to the millisecond with as much of the time as is not 0. A value that
/// is no date of the years 1 to 9999 is shown as a number.
QString XValueText(double value, TColumnFormat format);

/// The value that the whole text stands for. Dates are read as ISO dates or in the order of the user's
/// locale. Throws EConvertError "'TEXT' is not a valid floating point value" or "'TEXT' is not a valid date".
double ParseXValue(const QString& text, TColumnFormat format);

} // namespace lumoplot
