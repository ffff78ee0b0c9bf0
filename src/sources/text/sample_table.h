// The first rows of a text divided by one reading of it, and what their cells look like. Used to find the
// format; holds views of the sample's text.
#pragma once

#include "sources/text/text_detect.h"
#include "sources/text/text_rows.h"

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace lumoplot {

struct TSampleRow {
    TRowKind kind = TRowKind::Data;
    std::vector<TTextCell> cells;
    std::vector<TCellKind> kinds; ///< one a cell

    /// The number of cells without an empty one behind a trailing separator.
    std::size_t Width() const;
    bool HasValue() const;
};

using TSamplePoints = std::vector<std::pair<double, double>>;

/// A number, a date or a time of day.
bool IsValue(TCellKind kind);

class TSampleTable {
public:
    /// Behind the header rows where they are known.
    static constexpr std::size_t kMaxRows = 400;

    /// With header rows below 0 in the format they are found, else kept.
    TSampleTable(const TTextSample& sample, const TTextFormat& format);

    const std::vector<TSampleRow>& Rows() const { return m_rows; }
    /// What the columns hold by the majority of their cells, empty ones not counted; as many as most rows
    /// with values have cells.
    const std::vector<TCellKind>& Columns() const { return m_columns; }
    /// Rows in front of the first row of the data: one that fits the columns and is followed by rows of which
    /// most fit too, or a row before it that would but for a bad cell.
    std::size_t HeaderRows() const;
    /// Each cell in a column of values is of the column's kind or empty, and at least half of them are not
    /// empty.
    bool FitsColumns(const TSampleRow& row) const;
    /// The names that the header rows give to the columns; cells are empty where there is none.
    std::vector<TTextCell> ColumnNames(std::size_t headerRows) const;
    /// Which share of the rows behind the header rows becomes values, lowered by rows of another width.
    double Score(std::size_t headerRows) const;
    /// Every row behind the header rows ends with a separator.
    bool HasTrailingSeparator(std::size_t headerRows) const;
    /// A number in the rows has this decimal sign.
    bool HasDecimalSign(char sign) const;
    /// X and Y of the rows that give them. The format is the table's, with its columns chosen.
    TSamplePoints Points(const TTextFormat& format) const;
    /// Dates of the rows that the order reads, and how often they run backwards then.
    struct TDateFit {
        std::size_t read = 0;
        std::size_t reversals = 0;
        std::size_t open = 0; ///< whose order is not in the text itself
    };
    TDateFit FitDates(TDateOrder order) const;

private:
    std::size_t FindWidth() const;
    std::size_t FirstFitting() const;
    bool IsSpoilt(std::size_t index) const;
    TCellKind FindKind(std::size_t column) const;
    std::span<const TTextCell> NameCells(const TSampleRow& row) const;

    std::vector<TSampleRow> m_rows;
    std::vector<TCellKind> m_columns;
    int m_fixedHeaderRows = 0;
};

} // namespace lumoplot
