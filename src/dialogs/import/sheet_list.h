// The sheets of a spreadsheet file, listed without letting the user wait: some files have to be unpacked as a
// whole before the last sheet is known.
#pragma once

#include "controls/widgets_export.h"
#include "sources/spreadsheet/sheet_place.h"

#include <QObject>
#include <functional>
#include <string>
#include <vector>

namespace lumoplot {

/// Hands the sheets to `take` in this thread: at once when they are soon known, else later, unless `context`
/// has gone. None of a file that can not be read or is no spreadsheet.
XYWIDGETS_EXPORT void ListSheets(QObject& context, const std::string& fileName,
                                 const std::function<void(const std::vector<TBookSheet>&)>& take);

} // namespace lumoplot
