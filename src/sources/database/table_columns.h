// The columns of a table or of a SELECT: names, and what their first rows hold.
#pragma once

#include "sources/database/connection/sql_session.h"
#include "sources/text/text_format.h"

#include <string>
#include <vector>

namespace lumoplot {

enum class TSqlColumnKind { Empty, Number, Date, TimeOfDay, NumberText, DateText, Text, Binary };

struct TTableColumn {
    std::string name;
    TSqlColumnKind kind = TSqlColumnKind::Empty;

    /// Points can be made of it.
    bool HasValues() const { return kind != TSqlColumnKind::Text && kind != TSqlColumnKind::Binary; }
    bool IsDate() const { return kind == TSqlColumnKind::Date || kind == TSqlColumnKind::DateText; }
};

/// "number", "date and time", "text of numbers", …: for a user.
XYGRAPH_EXPORT std::string KindText(TSqlColumnKind kind);

struct TTablePreview {
    std::vector<TTableColumn> columns;
    std::vector<std::vector<std::string>> rows;
};

/// The first rows. `source` is a table or SELECT as SQL has it, `condition` a condition or empty.
TTablePreview ReadPreview(TSqlSession& session, const std::string& source, const std::string& condition,
                          int maxRows);

/// X and Y of the description: by name, else by number from 1; empty: the first columns that have values.
/// X is kRowNumber for "0" and where there is one such column alone. Throws EFileError: there is no such
/// column; a column of binary data.
struct TChosenColumns {
    int x = TTextFormat::kRowNumber;
    int y = TTextFormat::kNoColumn;
    int yError = TTextFormat::kNoColumn; ///< the standard errors of Y, where a column of them is asked for
};
TChosenColumns ChooseColumns(const std::vector<TTableColumn>& columns, const TDSInfo& info);

} // namespace lumoplot
