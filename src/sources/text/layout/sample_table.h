// Rows of a text divided by one reading of it, and what their cells look like: the first rows of the file,
// and some of those behind them. Used to find the format; holds views of the sample's text.
#pragma once

#include "sources/text/layout/text_detect.h"
#include "sources/text/text_rows.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace lumoplot {

struct TSampleRow {
    TRowKind kind = TRowKind::Data;
    std::string_view text; ///< with its row end
    std::vector<TTextCell> cells;
    std::vector<TCellKind> kinds;        ///< one a cell; Empty for a mark of a missing value
    std::vector<TNumberReading> numbers; ///< one a cell; meaningless where that is no number

    bool HasValue() const;
    TCellKind KindAt(std::size_t column) const {
        return column < kinds.size() ? kinds[column] : TCellKind::Empty;
    }
};

using TSamplePoints = std::vector<std::pair<double, double>>;

/// A number, a date or a time of day.
bool IsValue(TCellKind kind);

class TSampleTable {
public:
    /// Rows with values at the front of the file, and as many again from behind them.
    static constexpr std::size_t kMaxRows = 300;

    /// With header rows below 0 in the format they are found, else kept.
    TSampleTable(const TTextSample& sample, const TTextFormat& format);

    /// Those from the front of the file, without a gap.
    const std::vector<TSampleRow>& Rows() const { return m_rows; }
    /// The rows of the table itself: from the front where it begins, and all from behind, in the file's
    /// order.
    const std::vector<const TSampleRow*>& Voters() const { return m_voters; }
    /// What the columns hold by the majority of their cells, empty ones not counted; as many as most rows of
    /// the table have cells.
    const std::vector<TCellKind>& Columns() const { return m_columns; }
    /// What stands around the numbers of a column.
    const std::vector<TUnitMarks>& Units() const { return m_units; }
    /// Some cells of a column hold marks of a missing value, other than for what is not a number.
    bool HasMarks(std::size_t column) const;
    /// Which share of a column's cells is not empty.
    double Fill(std::size_t column) const { return m_fill[column]; }
    /// Adds columns that only the names have.
    void WidenTo(std::size_t columns);
    /// Takes the last column off.
    void DropLastColumn();

    bool HasFixedHeader() const { return m_fixedHeaderRows >= 0; }
    int FixedHeaderRows() const { return m_fixedHeaderRows; }
    /// Each cell in a column of values is of the column's kind or empty, and at least half of those are not
    /// empty that seldom are.
    bool FitsColumns(const TSampleRow& row) const;
    /// Which share of the rows behind the header rows becomes values, lowered by rows of another width.
    double Score(std::size_t headerRows) const;
    /// X and Y of the rows that give them. The format is the table's, with its columns chosen.
    TSamplePoints Points(const TTextFormat& format) const;

private:
    void ReadFront(const TTextSample& sample, const TRowSplitter& splitter, char decimalSign);
    void ReadBehind(std::string_view text, TTextEnd textEnd, const TRowSplitter& splitter, char decimalSign);
    void FindVoters();
    std::size_t FindWidth() const;
    TCellKind FindKind(std::size_t column);
    double FindFill(std::size_t column) const;
    bool FindUnits(std::size_t column);
    bool IsInfinite(std::size_t column) const;
    void FindBrackets(std::size_t column);
    void TakeDigitsForDates(std::size_t column);

    std::vector<TSampleRow> m_rows;
    std::vector<TSampleRow> m_behind;
    std::size_t m_read = 0; ///< characters of the sample's front that m_rows are
    std::vector<const TSampleRow*> m_voters;
    std::vector<TCellKind> m_columns;
    std::vector<TUnitMarks> m_units;
    std::vector<double> m_fill;
    int m_fixedHeaderRows = 0;
    char m_decimalSign = '.';
};

} // namespace lumoplot
