// Whether points and commas in the numbers of a table look like what a reading takes them for.
#pragma once

#include "sources/text/layout/sample_table.h"

namespace lumoplot {

/// 1 where nothing speaks against the reading; less where another one of the same numbers is likelier: a
/// number like 1,234 is one with a group beside plain numbers below 1000, and one with decimals beside plain
/// numbers above; without either the decimals are likelier.
double NumberEvidence(const TSampleTable& table);

/// A number has that decimal sign, or groups that only go with it.
bool HasDecimalSign(const TSampleTable& table, char sign);

} // namespace lumoplot
