// Cells of a database as the values that points are made of.
#pragma once

#include "sources/database/table_columns.h"

#include <cstdint>
#include <optional>
#include <string>

namespace lumoplot {

/// What was met in the cells of a load.
struct TCellCounts {
    std::int64_t nulls = 0;
    std::int64_t rounded = 0;
    std::int64_t fromTexts = 0;
};

class TValueReader {
public:
    explicit TValueReader(const TTableColumn& column) : m_column(&column) {}

    /// Nothing for NULL and for what is no value; Problem() then says why, empty for NULL.
    std::optional<double> Read(const TSqlCell& cell, TCellCounts& counts);
    /// "'abc' in column volt is not a number".
    const std::string& Problem() const { return m_problem; }

private:
    std::optional<double> ReadText(std::string_view text);

    const TTableColumn* m_column;
    std::string m_problem;
};

} // namespace lumoplot
