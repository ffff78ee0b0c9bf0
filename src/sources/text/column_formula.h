// One of the formulas by which a data set makes its X or its Y of the cells of a row. Its names are X and Y
// as they are read, row (the number of the data row, from 1), c1, c2, … for the columns by number, and the
// columns' header names where they are legal names of the language and mean nothing else there.
#pragma once

#include "expr/blocks/block_evaluator.h"
#include "sources/text/text_format.h"
#include "support/export.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lumoplot {

/// What a formula can read of a row: a column, from 0, or one of these.
namespace row_input {
inline constexpr int kX = -1;
inline constexpr int kY = -2;
inline constexpr int kRow = -3;
} // namespace row_input

class TColumnFormula {
public:
    /// Compiles the text for a file of that format; without one (null) any name may turn out to be a column.
    /// Throws EParserException and EConvertError with the parser's texts, "there is no column 7, only 3" and
    /// "no column is named 'volt' (its columns are time, current)".
    XYGRAPH_EXPORT TColumnFormula(std::string_view text, const TTextFormat* format);
    TColumnFormula(const TColumnFormula&) = delete;
    TColumnFormula& operator=(const TColumnFormula&) = delete;
    XYGRAPH_EXPORT ~TColumnFormula();

    /// What the names in the formula stand for. The columns of X and Y count as X and Y where those are
    /// single cells.
    const std::vector<int>& Inputs() const { return m_inputs; }
    bool Reads(int input) const;
    /// The values of a block of rows; inputs[i] holds those of Inputs()[i].
    XYGRAPH_EXPORT void Evaluate(std::span<const std::span<const double>> inputs, std::span<double> values);

private:
    void Bind(const std::string& name, const TTextFormat* format);
    void KeepWhatIsRead();
    void RequireKnownNames(const TTextFormat& format);

    /// Opens the dictionary, in which names that nobody defined turn up.
    class TParser : public TExpressionParser {
    public:
        using TExpressionParser::Words;
    };

    TParser m_parser;
    std::vector<double> m_values; ///< the variables of the names in the formula
    std::vector<int> m_inputs;
    std::vector<double*> m_variables; ///< those of m_values that the formula reads, one for each of m_inputs
    std::unique_ptr<TBlockEvaluator> m_block; ///< null when several inputs vary: that goes row by row
};

/// The formula without blanks around it; empty where it changes nothing: `asRead` is "X" or "Y".
XYGRAPH_EXPORT std::string EffectiveFormula(std::string_view text, std::string_view asRead);

/// Why the text is no formula for the file, for the user; empty when it is one. `format` may be null as
/// above.
XYGRAPH_EXPORT std::string FormulaProblem(std::string_view text, const TTextFormat* format);

} // namespace lumoplot
