// What the import of a text file found, as a document.
#pragma once

#include "cli/output.h"
#include "sources/text/loading/series_supplier.h"

namespace lumoplot {

TDocument TextDocument(const TTextReport& report);

} // namespace lumoplot
