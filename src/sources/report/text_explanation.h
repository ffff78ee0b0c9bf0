// What was made of a text file, as texts for a person: the same wherever a text is loaded.
#pragma once

#include "sources/text/loading/text_loader.h"
#include "support/export.h"

#include <string>
#include <vector>

namespace lumoplot {

struct TTextExplanation {
    std::string reading; ///< "semicolon, decimal comma, 1 header row, UTF-8"
    std::string columns; ///< "X is column 2 (Date) with column 3 (Time), Y is column 4 (V)"
    std::string other;   ///< the runner-up, by what it has of its own; empty without one
    std::string rows;    ///< "48 rows used, 2 skipped, 3 merged, every 5th read"
    std::string
        skipped; ///< "row 7: 'abc' in column 2 (Voltage) is not a number": the first; empty without one
    std::vector<std::string> leftOut; ///< "column 1 (No.) only counts the rows"
    std::vector<std::string> notes;   ///< "first read as …, then as a whole: row 3170: …"

    /// All of it, a line for each thing.
    XYGRAPH_EXPORT std::vector<std::string> Lines() const;
    /// What was found, the columns and those that are left out, as sentences; "… and 4 more" where there are
    /// many.
    XYGRAPH_EXPORT std::string Found() const;
};

XYGRAPH_EXPORT TTextExplanation Explain(const TTextReport& report);
/// As far as it can be said before the text is loaded.
XYGRAPH_EXPORT TTextExplanation Explain(const TTextReadings& readings);

} // namespace lumoplot
