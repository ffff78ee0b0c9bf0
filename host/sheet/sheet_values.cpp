#include "host/sheet/sheet_values.h"

#include "sources/text/column_formula.h"
#include "support/errors.h"
#include "support/number_text.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace lumoplot {
namespace {

constexpr double kNoValue = std::numeric_limits<double>::quiet_NaN();

// Works the columns out, each when it is first needed.
class TWorkOut {
public:
    explicit TWorkOut(const TSheet& sheet)
        : m_sheet(sheet), m_rows(static_cast<std::size_t>(sheet.RowCount())),
          m_results(static_cast<std::size_t>(sheet.ColumnCount())), m_isOpen(m_results.size()),
          m_typed(m_results.size()) {
        for (int i = 0; i < sheet.ColumnCount(); ++i) {
            TTextColumn column;
            column.name = sheet.Column(i).Name();
            column.kind = TCellKind::Number;
            m_format.columns.push_back(column);
        }
    }

    std::vector<std::optional<TSheetResult>> All() {
        for (int i = 0; i < m_sheet.ColumnCount(); ++i)
            if (!m_sheet.Column(i).Formula().empty()) Result(i);
        return std::move(m_results);
    }

private:
    const TSheetResult& Result(int column) {
        auto& result = m_results[static_cast<std::size_t>(column)];
        if (result) return *result;
        m_isOpen[static_cast<std::size_t>(column)] = true;
        TSheetResult made;
        try {
            made.values = Values(column);
        } catch (const ELumoError& error) {
            made.problem = error.what();
        }
        m_isOpen[static_cast<std::size_t>(column)] = false;
        result = std::move(made);
        return *result;
    }

    std::vector<double> Values(int column) {
        TColumnFormula formula(m_sheet.Column(column).Formula(), &m_format);
        std::vector<std::span<const double>> inputs;
        for (const int input : formula.Inputs()) inputs.push_back(Input(input));
        std::vector<double> values(m_rows);
        formula.Evaluate(inputs, values);
        for (std::size_t row = 0; row < m_rows; ++row) {
            const auto isNone = [row](std::span<const double> input) { return std::isnan(input[row]); };
            if (std::ranges::any_of(inputs, isNone)) values[row] = kNoValue;
        }
        return values;
    }

    std::span<const double> Input(int input) {
        if (input == row_input::kRow) {
            m_rowNumbers.resize(m_rows);
            std::iota(m_rowNumbers.begin(), m_rowNumbers.end(), 1.0);
            return m_rowNumbers;
        }
        const int column = input >= 0 ? input : ColumnNamed(input == row_input::kX ? "x" : "y");
        if (m_sheet.Column(column).Formula().empty()) return Typed(column);
        if (m_isOpen[static_cast<std::size_t>(column)])
            throw EParserException("'" + m_sheet.Column(column).Name() + "' is worked out from itself");
        const TSheetResult& result = Result(column);
        if (!result.problem.empty())
            throw EParserException("'" + m_sheet.Column(column).Name() + "': " + result.problem);
        return result.values;
    }

    int ColumnNamed(const std::string& name) const {
        for (int i = 0; i < m_sheet.ColumnCount(); ++i)
            if (LowerCased(m_sheet.Column(i).Name()) == name) return i;
        throw EParserException("no column is named '" + name + "'");
    }

    std::span<const double> Typed(int column) {
        auto& values = m_typed[static_cast<std::size_t>(column)];
        if (values.empty()) {
            values.resize(m_rows);
            for (std::size_t row = 0; row < m_rows; ++row)
                values[row] = SheetNumber(m_sheet.Cell(static_cast<int>(row), column));
        }
        return values;
    }

    const TSheet& m_sheet;
    std::size_t m_rows;
    TTextFormat m_format;
    std::vector<std::optional<TSheetResult>> m_results;
    std::vector<bool> m_isOpen;
    std::vector<std::vector<double>> m_typed;
    std::vector<double> m_rowNumbers;
};

} // namespace

double SheetNumber(const std::string& text) {
    const double value = TryParseFloat(text).value_or(kNoValue);
    return std::isfinite(value) ? value : kNoValue;
}

std::vector<std::optional<TSheetResult>> SheetResults(const TSheet& sheet) {
    return TWorkOut(sheet).All();
}

} // namespace lumoplot
