// Reads the rows that a description asks for, in the thread that it is called from.
#pragma once

#include "sources/database/row_stream.h"
#include "sources/text/loading/text_loader.h"

namespace lumoplot {

struct TRowRequest {
    std::string connection;
    TDSInfo info;
    int budget = 0;            ///< with automatic sampling; 0: every row
    std::int64_t rowLimit = 0; ///< 0: none
    TFormulaTexts formulas;
};

/// Hands the points to the stream until it wants no more. Throws EFileError and EParserException.
TTextReport ReadRows(const TRowRequest& request, TRowStream& stream);

} // namespace lumoplot
