#include "sources/text/row_formulas.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

std::unique_ptr<TColumnFormula> Compile(const std::string& text, const TTextFormat& format,
                                        const char* name) {
    if (text.empty()) return nullptr;
    try {
        return std::make_unique<TColumnFormula>(text, &format);
    } catch (const ELumoError& error) {
        throw EParserException(std::string("The expression for ") + name +
                               " can not be used: " + error.what());
    }
}

} // namespace

TRowFormulas::TRowFormulas(const TFormulaTexts& texts, const TTextFormat& format)
    : m_x(Compile(texts.EffectiveX(), format, "X")), m_y(Compile(texts.EffectiveY(), format, "Y")) {
    for (const TColumnFormula* formula : {m_x.get(), m_y.get()}) {
        if (!formula) continue;
        for (const int input : formula->Inputs())
            if (input >= 0 && std::ranges::find(m_columns, input) == m_columns.end())
                m_columns.push_back(input);
    }
}

// Both see X and Y as they are read.
void TRowFormulas::Apply(const TRowBlock& block) {
    if (m_x) Evaluate(*m_x, block, m_xValues);
    if (m_y) Evaluate(*m_y, block, m_yValues);
    if (m_x) std::ranges::copy(m_xValues, block.x.begin());
    if (m_y) std::ranges::copy(m_yValues, block.y.begin());
}

void TRowFormulas::Evaluate(TColumnFormula& formula, const TRowBlock& block,
                            std::vector<double>& values) const {
    std::vector<std::span<const double>> inputs;
    for (const int input : formula.Inputs()) {
        const auto column = static_cast<std::size_t>(std::ranges::find(m_columns, input) - m_columns.begin());
        inputs.push_back(input == row_input::kX     ? block.x
                         : input == row_input::kY   ? block.y
                         : input == row_input::kRow ? block.rows
                                                    : block.columns[column]);
    }
    values.resize(block.x.size());
    formula.Evaluate(inputs, values);
}

std::string NoValueText(double x, double y) {
    if (std::isfinite(x) && std::isfinite(y)) return {};
    return std::isfinite(x) ? "the expression for Y gives no value" : "the expression for X gives no value";
}

} // namespace lumoplot
