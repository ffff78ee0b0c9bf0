// The two formulas of a data set together, as the reading of rows needs them: which cells have to be values,
// and X and Y made of them a block of rows at a time.
#pragma once

#include "sources/text/column_formula.h"

#include <memory>

namespace lumoplot {

/// As texts; "X" for X, "Y" for Y and an empty text leave it as it is read.
struct TFormulaTexts {
    std::string x;
    std::string y;

    /// The formula without blanks around it, empty where it changes nothing.
    std::string EffectiveX() const { return EffectiveFormula(x, "X"); }
    std::string EffectiveY() const { return EffectiveFormula(y, "Y"); }
};

/// A block of rows on their way to the points. All spans have one element a row.
struct TRowBlock {
    std::span<double> x;
    std::span<double> y;
    std::span<const double> rows; ///< numbers of the data rows, from 1; empty unless NeedsRow()
    std::span<const std::span<const double>> columns; ///< those of Columns(), in its order
};

class TRowFormulas {
public:
    /// Compiles both for the format, which must have its columns chosen. Throws EParserException "The
    /// expression for X can not be used: REASON".
    TRowFormulas(const TFormulaTexts& texts, const TTextFormat& format);

    bool ChangeX() const { return m_x != nullptr; }
    bool ChangeY() const { return m_y != nullptr; }
    /// X (Y) as read counts, by itself or in a formula: its cell has to be a value.
    bool NeedsX() const { return !m_x || Reads(row_input::kX); }
    bool NeedsY() const { return !m_y || Reads(row_input::kY); }
    bool NeedsRow() const { return Reads(row_input::kRow); }
    /// Columns (from 0) beside those of X and Y whose cells have to be values.
    const std::vector<int>& Columns() const { return m_columns; }
    /// The Y that comes out has to do with the column of Y.
    bool KeepsY() const { return !m_y || m_y->Reads(row_input::kY); }

    /// Makes X and Y of the block. What has no value becomes not-a-number or infinite.
    void Apply(const TRowBlock& block);

private:
    bool Reads(int input) const { return (m_x && m_x->Reads(input)) || (m_y && m_y->Reads(input)); }
    void Evaluate(TColumnFormula& formula, const TRowBlock& block, std::vector<double>& values) const;

    std::unique_ptr<TColumnFormula> m_x; ///< null: as read
    std::unique_ptr<TColumnFormula> m_y;
    std::vector<int> m_columns;
    std::vector<double> m_xValues;
    std::vector<double> m_yValues;
};

/// "the expression for X gives no value" when that which was made for X (or else Y) is not finite, else
/// empty.
std::string NoValueText(double x, double y);

} // namespace lumoplot
