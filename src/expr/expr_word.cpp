#include "expr/expr_word.h"

#include "expr/parser_exception.h"
#include "support/number_text.h"

#include <array>

namespace lumoplot {
namespace {

void CompareStrings(TEvalRecord& record) {
    record.Result = static_cast<const TLogicalStringOper*>(record.Word)->Holds() ? 1 : 0;
}

TStringComparison ParseComparison(std::string_view text) {
    constexpr std::array<std::string_view, 5> kTexts = {"=", ">", "<", ">=", "<="};
    for (std::size_t i = 0; i < kTexts.size(); ++i)
        if (kTexts[i] == text) return static_cast<TStringComparison>(i);
    throw EParserException(std::string(text) + " is not a valid string operand");
}

std::string_view WithoutQuotes(std::string_view text) {
    const bool quoted = text.size() >= 2 && text.front() == '\'' && text.back() == '\'';
    return quoted ? text.substr(1, text.size() - 2) : text;
}

} // namespace

std::string LowerCased(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

void CopyValue(TEvalRecord& record) {
    record.Result = *record.Args[0];
}

TExprWord::TExprWord(std::string_view name, TEvalProcedure procedure)
    : m_name(LowerCased(name)), m_procedure(procedure) {
}

TExprWord::~TExprWord() = default;

TDoubleConstant::TDoubleConstant(std::string_view name, std::string_view text)
    : TExprWord(name, &CopyValue), m_value(text.empty() ? kNotANumber : ParseFloat(text)) {
}

TGeneratedVariable::TGeneratedVariable(std::string_view name) : TDoubleConstant(name, {}) {
}

TDoubleVariable::TDoubleVariable(std::string_view name, double* value)
    : TExprWord(name, &CopyValue), m_valueRef(value) {
}

TStringConstant::TStringConstant(std::string_view text)
    : TExprWord(text, &CopyValue), m_stringValue(WithoutQuotes(text)) {
}

TFunction::TFunction(std::string_view name, int priority, bool operatorFlag, int nArgs,
                     TEvalProcedure procedure)
    : TExprWord(name, procedure), m_operatorFlag(operatorFlag), m_priority(priority), m_nArgs(nArgs) {
    if (nArgs > kMaxArguments) throw EParserException("Too many arguments");
}

TFunction::TFunction(std::string_view name, int nArgs, TEvalProcedure procedure)
    : TFunction(name, 0, false, nArgs, procedure) {
}

TLogicalStringOper::TLogicalStringOper(std::string_view opText, const TExprWord* left, const TExprWord* right)
    : TExprWord(opText, &CompareStrings), m_op(ParseComparison(opText)), m_left(left), m_right(right) {
}

bool TLogicalStringOper::Holds() const {
    // char_traits compares bytes as unsigned, so the order is that of the bytes on every compiler.
    const int order = m_left->AsString().compare(m_right->AsString());
    switch (m_op) {
    case TStringComparison::Equal: return order == 0;
    case TStringComparison::Greater: return order > 0;
    case TStringComparison::Less: return order < 0;
    case TStringComparison::GreaterOrEqual: return order >= 0;
    case TStringComparison::LessOrEqual: return order <= 0;
    }
    return false;
}

} // namespace lumoplot
