// The text form of a data set, for programs that read columns of numbers. Only the points and two names
// survive it; a data-set file keeps everything.
#pragma once

#include "graph/model/series.h"

#include <cstdint>
#include <string>
#include <vector>

namespace lumoplot {

/// Writes the names of the two columns as the first line: the title of the X axis ("X" for none) and the data
/// set's name; into a .dat file its name and the title of its Y axis. Then come X and raw Y of each point,
/// and the standard error of Y where points have some (no text for one without), in the shortest form that
/// reads back (an infinite Y is "inf" or "-inf", one that is not a number "-nan"; decimals that
/// look like a group of digits get a 0), with the point as decimal sign; lines end with a line feed. Columns
/// are divided by a tab, or by a comma when the file's extension is .csv (letter case ignored). A header text
/// that holds the divider, a quote or a line break is quoted, its quotes doubled. Texts are UTF-8. Returns
/// what readers of such a text pass over, "2 of 40 points have no finite Y: …", in one line; empty where they
/// pass over nothing. Throws EFileError "Can not save to file NAME"; the old file is then untouched.
XYGRAPH_EXPORT std::string SaveSeriesAsText(const TSeries& series, const std::string& fileName);

/// The text that a file of that name would get.
XYGRAPH_EXPORT std::vector<std::uint8_t> SeriesAsText(const TSeries& series, const std::string& fileName);

} // namespace lumoplot
