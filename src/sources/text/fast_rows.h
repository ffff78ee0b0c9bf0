// The short way from a row's text to X and Y, for rows of plain numbers between plain separators. Every row
// that is anything else is left to TRowSplitter and TRowValues, which say what it is.
#pragma once

#include "sources/text/text_rows.h"

#include <span>

namespace lumoplot {

class TFastRows {
public:
    /// The splitter is borrowed.
    TFastRows(const TTextFormat& format, const TRowSplitter& splitter);

    /// Whether rows of this format can be read the short way at all.
    bool IsPossible() const { return m_possible; }
    /// Reads rows one after the other until the text ends, `x` and `y` (of one size) are full or a row needs
    /// the long way. Returns where the next row begins; `count` is how many were read. When X is the row
    /// number, `firstX` is that of the first row. The text ends with a line end.
    const char* Read(const char* text, const char* end, std::span<double> x, std::span<double> y,
                     double firstX, std::size_t& count) const;

private:
    const char* ReadRow(const char* text, const char* end, double& x, double& y) const;
    const char* SkipCells(const char* text, int count) const;
    const char* ReadCell(const char* text, double& value) const;
    const char* ReadAnyCell(const char* text, double& value) const;
    const char* SkipRest(const char* text, const char* end) const;
    bool HasMoreCells(const char* text, const char* lineEnd) const;

    const TRowSplitter& m_splitter;
    bool m_possible = false;
    bool m_blanksSeparate = false;
    char m_decimalSign = '.';
    bool m_xFirst = true;
    bool m_hasX = true;
    int m_firstColumn = 0;  ///< the lower of the two
    int m_betweenCells = 0; ///< cells between the two
    int m_restCells = -1;   ///< columns behind both; below 0 where any number of cells may follow
    char m_separator = 0;   ///< the only one there is; 0 for several
};

} // namespace lumoplot
