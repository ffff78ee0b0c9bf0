// SELECT statements: what a user may ask for, and what is made of a data set's description.
#pragma once

#include "data/series/ds_info.h"
#include "sources/database/connection/sql_session.h"
#include "sources/database/table_columns.h"

#include <optional>
#include <string>
#include <vector>

namespace lumoplot {

/// Why the text is no single SELECT (or WITH … SELECT), for the user; empty when it is one. Comments and one
/// semicolon at the end are allowed.
std::string SelectProblem(const std::string& text);

/// A SELECT of the user's own, or a condition or an order, without comments and the semicolon at the end.
std::string CleanedSql(const std::string& text);

/// What the rows come from: the quoted table, or the user's own SELECT in parentheses. Throws EFileError: no
/// such table (with the names of those that there are), nothing but a SELECT is allowed.
std::string SourceSql(TSqlSession& session, const TDSInfo& info);

/// The SELECTs by which a data set is read.
class TSelectBuilder {
public:
    /// `columns` are those that are read, X and Y first; X may be none (null): the number of the row.
    TSelectBuilder(const TSqlSession& session, const TDSInfo& info, std::string source,
                   std::vector<const TTableColumn*> columns, bool choosesRowsByX);

    /// Every row, with the columns as they are stored.
    std::string EveryRow() const;
    /// Number of rows, of those with X and Y, smallest and largest X.
    std::string Extent() const;
    /// Every n-th row.
    std::string EveryNth(int n) const;
    /// The rows with the smallest and the largest Y in each of `count` equal parts of the range of X.
    std::string ExtremesOfParts(double from, double to, int count) const;
    /// The engine can number rows, cut them off and do arithmetic with X and Y. Otherwise EveryRow is all
    /// there is to ask for, and rows are to be chosen by who reads them.
    bool CanThin() const;
    /// Both X and Y can be compared by the engine.
    bool CanFindExtremes() const;

private:
    enum class TForm { AsStored, Numbers };

    std::string NumberSql(const TTableColumn& column) const;
    std::string StoredSql(const TTableColumn& column) const;
    std::string Base(TForm form, const std::string& more = {}) const;
    std::string Condition() const;
    std::int64_t FirstRow() const;
    std::string RowLimits() const;
    std::string Order() const;
    std::string RowNumber() const;

    const TSqlSession& m_session;
    const TDSInfo& m_info;
    std::string m_source;
    std::vector<const TTableColumn*> m_columns;
    bool m_choosesRowsByX;
};

} // namespace lumoplot
