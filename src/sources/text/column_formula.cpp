#include "sources/text/column_formula.h"

#include "expr/names.h"
#include "sources/cells/decimal.h"
#include "sources/text/text_columns.h"
#include "support/number_text.h"

#include <algorithm>

namespace lumoplot {
namespace {

// The names in the lower-cased formula, each once.
std::vector<std::string> DistinctNames(const std::string& formula) {
    std::vector<std::string> names;
    for (TNameUse& use : NamesIn(formula)) names.push_back(std::move(use.Name));
    std::ranges::sort(names);
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

// The number in a name like c12, from 1; 0 for any other name.
int ColumnNumber(const std::string& name) {
    if (name.size() < 2 || name[0] != 'c' || name[1] == '0' ||
        !std::all_of(name.begin() + 1, name.end(), decimal::IsDigit))
        return 0;
    return TryParseInteger(name.substr(1)).value_or(0);
}

int ColumnOf(const std::string& name, const TTextFormat& format) {
    const int number = ColumnNumber(name);
    const bool exists = number > 0 && number <= static_cast<int>(format.columns.size());
    return exists ? number - 1 : ColumnNamed(format, name);
}

std::optional<int> InputOf(const std::string& name, const TTextFormat* format) {
    if (name == "x") return row_input::kX;
    if (name == "y") return row_input::kY;
    if (name == "row") return row_input::kRow;
    const int column = format ? ColumnOf(name, *format) : TTextFormat::kNoColumn;
    if (column == TTextFormat::kNoColumn) return std::nullopt;
    if (column == format->yColumn) return row_input::kY;
    const bool isX = column == format->xColumn && format->timeColumn == TTextFormat::kNoColumn;
    return isX ? row_input::kX : column;
}

} // namespace

TColumnFormula::TColumnFormula(std::string_view text, const TTextFormat* format) {
    const std::vector<std::string> names = DistinctNames(LowerCased(text));
    m_values.reserve(names.size()); // the formula points into it
    for (const std::string& name : names) Bind(name, format);
    m_parser.AddExpression(text);
    if (format != nullptr) RequireKnownNames(*format);
    KeepWhatIsRead();
    if (m_variables.size() <= 1)
        m_block =
            std::make_unique<TBlockEvaluator>(m_parser, m_variables.empty() ? nullptr : m_variables.front());
}

TColumnFormula::~TColumnFormula() = default;

bool TColumnFormula::Reads(int input) const {
    return std::ranges::find(m_inputs, input) != m_inputs.end();
}

// Makes a variable of a name that stands for something in the row and for nothing in the language.
void TColumnFormula::Bind(const std::string& name, const TTextFormat* format) {
    const auto input = m_parser.FindWord(name) ? std::nullopt : InputOf(name, format);
    if (!input) return;
    m_inputs.push_back(*input);
    m_values.push_back(0);
    m_parser.DefineVariable(name, &m_values.back());
}

void TColumnFormula::KeepWhatIsRead() {
    std::vector<int> inputs;
    for (std::size_t i = 0; i < m_inputs.size(); ++i) {
        double* variable = &m_values[i];
        const auto reads = [variable](const TEvalRecord& record) {
            return std::ranges::find(record.Args, variable) != record.Args.end();
        };
        if (!std::ranges::any_of(m_parser.Selected()->Records, reads)) continue;
        inputs.push_back(m_inputs[i]);
        m_variables.push_back(variable);
    }
    m_inputs = std::move(inputs);
}

// A name that nobody defined makes a variable without a value, unless the formula gives it one.
void TColumnFormula::RequireKnownNames(const TTextFormat& format) {
    const auto& records = m_parser.Selected()->Records;
    for (TExprWord* word : m_parser.Words()) {
        if (!word->IsGenerated()) continue;
        const auto assigns = [word](const TEvalRecord& record) {
            return record.Word && record.Word->Name() == ":=" && record.Args[0] == word->ValuePointer();
        };
        if (std::ranges::any_of(records, assigns)) continue;
        const int number = ColumnNumber(word->Name());
        const auto count = std::to_string(format.columns.size());
        if (number > 0)
            throw EParserException("there is no column " + std::to_string(number) + ", only " + count);
        throw EParserException("no column is named '" + word->Name() + "' (" + ColumnNameList(format) + ")");
    }
}

void TColumnFormula::Evaluate(std::span<const std::span<const double>> inputs, std::span<double> values) {
    if (m_block) return m_block->Evaluate(inputs.empty() ? values : inputs.front(), values);
    TCompiledExpression& formula = *m_parser.Selected();
    for (std::size_t row = 0; row < values.size(); ++row) {
        for (std::size_t i = 0; i < inputs.size(); ++i) *m_variables[i] = inputs[i][row];
        values[row] = formula.Evaluate();
    }
}

std::string EffectiveFormula(std::string_view text, std::string_view asRead) {
    const std::string_view trimmed = Trimmed(text);
    return LowerCased(trimmed) == LowerCased(asRead) ? std::string() : std::string(trimmed);
}

std::string FormulaProblem(std::string_view text, const TTextFormat* format) {
    try {
        if (!Trimmed(text).empty()) TColumnFormula(text, format);
    } catch (const ELumoError& error) {
        return error.what();
    }
    return {};
}

} // namespace lumoplot
