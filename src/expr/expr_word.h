// The vocabulary of the expression language: each constant, variable, bracket, function and operator is a
// word. The dictionary (TExpressList) or the parser owns words; token lists and compiled chains borrow them.
#pragma once

#include "expr/eval_record.h"
#include "support/export.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace lumoplot {

enum class TResultType : std::uint8_t {
    Number = 0,
    Boolean = 1,
    String = 2,
    LeftBracket = 3,
    RightBracket = 4,
    Comma = 5,
};

/// The text with the letters A to Z in lower case; other bytes are left alone.
XYGRAPH_EXPORT std::string LowerCased(std::string_view text);

/// The procedure of value words: copies the double behind the first argument into the result.
void CopyValue(TEvalRecord& record);

class TExprWord {
public:
    /// The name is stored in lower case.
    TExprWord(std::string_view name, TEvalProcedure procedure);
    virtual ~TExprWord();
    TExprWord(const TExprWord&) = delete;
    TExprWord& operator=(const TExprWord&) = delete;

    virtual bool IsOperator() const { return false; }
    virtual std::string AsString() const { return {}; }
    virtual TResultType ResultType() const { return TResultType::Number; }
    virtual int ArgCount() const { return 0; }
    /// Where the word's number is, or null for a word that has none.
    virtual double* ValuePointer() { return nullptr; }

    const std::string& Name() const { return m_name; }
    TEvalProcedure Procedure() const { return m_procedure; }
    /// True for constants, strings and variables.
    bool IsValue() const { return m_procedure == &CopyValue; }
    /// A formula used the name before anybody defined it.
    virtual bool IsGenerated() const { return false; }

private:
    std::string m_name;
    TEvalProcedure m_procedure;
};

class TDoubleConstant : public TExprWord {
public:
    /// An empty text gives kNotANumber. Throws EConvertError "'TEXT' is not a valid floating point value".
    TDoubleConstant(std::string_view name, std::string_view text);

    double* ValuePointer() override { return &m_value; }
    double Value() const { return m_value; }
    void SetValue(double value) { m_value = value; }

private:
    double m_value;
};

/// A name that a formula used before anybody defined it; not-a-number until a formula assigns to it.
class TGeneratedVariable : public TDoubleConstant {
public:
    explicit TGeneratedVariable(std::string_view name);

    std::string AsString() const override { return m_stringValue; }
    TResultType ResultType() const override { return m_varType; }
    bool IsGenerated() const override { return true; }
    void SetStringValue(std::string_view text) { m_stringValue = text; }
    TResultType VarType() const { return m_varType; }
    void SetVarType(TResultType type) { m_varType = type; }

private:
    std::string m_stringValue;
    TResultType m_varType = TResultType::Number;
};

/// A name for a double that lives outside and must outlive every expression compiled with it.
class TDoubleVariable : public TExprWord {
public:
    TDoubleVariable(std::string_view name, double* value);

    double* ValuePointer() override { return m_valueRef; }
    double* ValueRef() const { return m_valueRef; }

private:
    double* m_valueRef;
};

/// A text between single quotes; one quote alone belongs to the text.
class TStringConstant : public TExprWord {
public:
    explicit TStringConstant(std::string_view text);

    std::string AsString() const override { return m_stringValue; }
    TResultType ResultType() const override { return TResultType::String; }
    const std::string& StringValue() const { return m_stringValue; }

private:
    std::string m_stringValue;
};

class TLeftBracket : public TExprWord {
public:
    TLeftBracket() : TExprWord("(", nullptr) {}
    TResultType ResultType() const override { return TResultType::LeftBracket; }
};

class TRightBracket : public TExprWord {
public:
    TRightBracket() : TExprWord(")", nullptr) {}
    TResultType ResultType() const override { return TResultType::RightBracket; }
};

class TComma : public TExprWord {
public:
    TComma() : TExprWord(",", nullptr) {}
    TResultType ResultType() const override { return TResultType::Comma; }
};

/// A function or an operator. Among operators the smaller priority number binds tighter.
class TFunction : public TExprWord {
public:
    /// Throws EParserException "Too many arguments" for more than six.
    TFunction(std::string_view name, int priority, bool operatorFlag, int nArgs, TEvalProcedure procedure);
    /// A plain function: priority 0 and no operator.
    TFunction(std::string_view name, int nArgs, TEvalProcedure procedure);

    bool IsOperator() const override { return m_operatorFlag; }
    int ArgCount() const override { return m_nArgs; }
    int Priority() const { return m_priority; }

private:
    bool m_operatorFlag;
    int m_priority;
    int m_nArgs;
};

/// A function whose result is a truth value, 0 or 1.
class TBooleanFunction : public TFunction {
public:
    using TFunction::TFunction;
    TResultType ResultType() const override { return TResultType::Boolean; }
};

enum class TStringComparison : std::uint8_t {
    Equal = 0,
    Greater = 1,
    Less = 2,
    GreaterOrEqual = 3,
    LessOrEqual = 4,
};

/// The comparison of two texts, byte by byte; 1 or 0.
class TLogicalStringOper : public TExprWord {
public:
    /// Borrows both words. Throws EParserException "OPTEXT is not a valid string operand" for an operator
    /// other than "=", ">", "<", ">=" and "<=".
    TLogicalStringOper(std::string_view opText, const TExprWord* left, const TExprWord* right);

    TResultType ResultType() const override { return TResultType::Boolean; }
    TStringComparison Op() const { return m_op; }
    bool Holds() const;

private:
    TStringComparison m_op;
    const TExprWord* m_left;
    const TExprWord* m_right;
};

} // namespace lumoplot
