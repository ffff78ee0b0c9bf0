// What tells a column of measured values from one that only counts rows, stays the same, or holds settings.
#pragma once

#include "sources/text/layout/sample_table.h"

namespace lumoplot {

/// Sets the roles of the columns of `format`, which are the table's and have their names.
void FindColumnRoles(const TSampleTable& table, TTextFormat& format);

} // namespace lumoplot
