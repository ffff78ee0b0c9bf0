// The switch --read-as: how a text file is read, said in the words in which info and --explain describe it.
#pragma once

#include "data/series/ds_info.h"

#include <string>

namespace lumoplot {

/// Puts the parts of the reading, divided by commas ("semicolon, decimal comma", "dates month/day/year"),
/// into `info` and `wishes`. Throws EUsage for a part that is none.
void ReadAs(const std::string& reading, TDSInfo& info, TTextWishes& wishes);

/// The text is "other": the runner-up of what is found is meant.
bool IsOther(const std::string& reading);

} // namespace lumoplot
