// The short way from a row's text to X and Y, for rows of plain numbers between plain separators. Every row
// that is anything else is left to TRowSplitter and TRowValues, which say what it is.
#pragma once

#include "sources/text_rows.h"

namespace lumoplot {

class TFastRows {
public:
    /// The splitter is borrowed.
    TFastRows(const TTextFormat& format, const TRowSplitter& splitter);

    /// Whether rows of this format can be read the short way at all.
    bool IsPossible() const { return m_possible; }
    /// Reads the row at `text`, which ends before `end` with a CR or LF. Returns where that line end is, or
    /// null when the row needs the long way. X is left alone when it is the row number.
    const char* Read(const char* text, const char* end, double& x, double& y) const;

private:
    const char* SkipCells(const char* text, int count) const;
    const char* ReadCell(const char* text, double& value) const;

    const TRowSplitter& m_splitter;
    bool m_possible = false;
    bool m_blanksSeparate = false;
    char m_decimalSign = '.';
    bool m_xFirst = true;
    bool m_hasX = true;
    int m_firstColumn = 0;  ///< the lower of the two
    int m_betweenCells = 0; ///< cells between the two
};

} // namespace lumoplot
