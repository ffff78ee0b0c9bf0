// Rows of a text file from any place, for a person who looks for one of them.
#pragma once

#include "sources/text/loading/text_preview.h"

namespace lumoplot {

/// As PreviewText, with `maxRows` rows at most from the row with that number on (1 is the first); what is in
/// front of it is read and counted. None where the file has fewer.
TTextPreview PreviewTextFrom(const TTextSource& source, const TDSInfo& info, std::int64_t firstRow,
                             int maxRows, const TTextWishes& wishes = {}, const TFormulaTexts& formulas = {});

} // namespace lumoplot
