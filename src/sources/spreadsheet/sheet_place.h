// Which sheet of a spreadsheet file is read, as part of the file's name, and which ones there are.
#pragma once

#include "support/export.h"

#include <string>
#include <vector>

namespace lumoplot {

struct TBookSheet {
    std::string name;
    bool isHidden = false;
};

/// "book.xlsx#Runs" names a sheet of a file.
struct TSheetPlace {
    std::string file;
    std::string sheet; ///< empty: the first one that is not hidden and has rows of numbers
};

/// Without a sheet where the name ends otherwise than with that of a spreadsheet file, "#" and a sheet, and
/// where there is a file of the whole name.
XYGRAPH_EXPORT TSheetPlace SheetPlaceOf(const std::string& name);
/// Puts another sheet into the name; none for an empty one.
XYGRAPH_EXPORT std::string WithSheet(const std::string& name, const std::string& sheet);

/// The sheets of a file in their order; empty when it is no spreadsheet that can be read.
XYGRAPH_EXPORT std::vector<TBookSheet> SheetsOf(const std::string& fileName);

} // namespace lumoplot
