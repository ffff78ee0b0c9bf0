#include "expr/built_in_words.h"

#include "expr/scalar_math.h"

#include <algorithm>
#include <array>
#include <functional>
#include <random>
#include <vector>

namespace lumoplot {
namespace scalar {

// SplitMix64 (Steele, Lea, Flood 2014): one word of state, passes the usual statistical tests.
double Random() {
    thread_local std::uint64_t state = (std::uint64_t{std::random_device{}()} << 32) | std::random_device{}();
    std::uint64_t z = state += 0x9E3779B97F4A7C15U;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
    return static_cast<double>((z ^ (z >> 31)) >> 11) * 0x1p-53;
}

} // namespace scalar

namespace {

using namespace scalar;

using TCompute = double (*)(double a, double b, double c, double d);

double Pi() {
    return std::numbers::pi;
}

template <double (*F)()>
void Step(TEvalRecord& r) {
    r.Result = F();
}
template <double (*F)(double)>
void Step(TEvalRecord& r) {
    r.Result = F(*r.Args[0]);
}
template <double (*F)(double, double)>
void Step(TEvalRecord& r) {
    r.Result = F(*r.Args[0], *r.Args[1]);
}

template <double (*F)()>
double ComputeBy(double, double, double, double) {
    return F();
}
template <double (*F)(double)>
double ComputeBy(double a, double, double, double) {
    return F(a);
}
template <double (*F)(double, double)>
double ComputeBy(double a, double b, double, double) {
    return F(a, b);
}
template <double (*F)(double, double, double, double)>
double ComputeBy(double a, double b, double c, double d) {
    return F(a, b, c, d);
}

void AssignStep(TEvalRecord& r) {
    const double value = *r.Args[1];
    *r.Args[0] = value;
    r.Result = value;
}
double Second(double, double b) {
    return b;
}

/// How an operation works; those without a procedure come from no word.
struct TArithmetic {
    TOperation Operation;
    int Operands;
    TEvalProcedure Procedure;
    TCompute Compute;
};

constexpr TArithmetic kArithmetic[] = {
#define WORD(name, operands)                                                                                 \
    { TOperation::name, operands, &Step<name>, &ComputeBy<name> }
#define INNER(name, operands)                                                                                \
    { TOperation::name, operands, nullptr, &ComputeBy<name> }
#define PRODUCT(n)                                                                                           \
    { TOperation::Power##n, 1, nullptr, &ComputeBy<Product<n, double>> }
    WORD(Pi, 0),
    WORD(Random, 0),
    WORD(Factorial, 1),
    WORD(Percent, 1),
    WORD(Negate, 1),
    WORD(Identity, 1),
    WORD(Power, 2),
    WORD(IntPower, 2),
    WORD(Multiply, 2),
    WORD(Divide, 2),
    WORD(Div, 2),
    WORD(Mod, 2),
    WORD(Add, 2),
    WORD(Subtract, 2),
    WORD(Greater, 2),
    WORD(GreaterEqual, 2),
    WORD(LessEqual, 2),
    WORD(Less, 2),
    WORD(NotEqual, 2),
    WORD(Equal, 2),
    WORD(Not, 1),
    WORD(Or, 2),
    WORD(And, 2),
    WORD(Xor, 2),
    {TOperation::Assign, 2, &AssignStep, &ComputeBy<Second>},
    WORD(Exp, 1),
    WORD(Sqr, 1),
    WORD(Sqrt, 1),
    WORD(Abs, 1),
    WORD(Round, 1),
    WORD(Trunc, 1),
    WORD(Ln, 1),
    WORD(Log10, 1),
    WORD(LogN, 2),
    WORD(Max, 2),
    WORD(Min, 2),
    WORD(Sin, 1),
    WORD(Cos, 1),
    WORD(Tan, 1),
    WORD(ArcSin, 1),
    WORD(ArcCos, 1),
    WORD(ArcTan2, 2),
    WORD(Sinh, 1),
    WORD(Cosh, 1),
    WORD(Tanh, 1),
    WORD(ArcSinh, 1),
    WORD(ArcCosh, 1),
    WORD(ArcTanh, 1),
    WORD(DegToRad, 1),
    WORD(RadToDeg, 1),
    INNER(Sign, 1),
    INNER(PowerSlope, 2),
    INNER(ExponentSlope, 2),
    INNER(IntPowerSlope, 2),
    INNER(SelectGreaterEqual, 4),
    INNER(SelectLessEqual, 4),
    PRODUCT(2),
    PRODUCT(3),
    PRODUCT(4),
    PRODUCT(5),
    PRODUCT(6),
    PRODUCT(7),
    PRODUCT(8),
#undef WORD
#undef INNER
#undef PRODUCT
};

constexpr bool TableFollowsTheEnumeration() {
    for (int i = 0; i < kOperationCount; ++i)
        if (static_cast<int>(kArithmetic[i].Operation) != i) return false;
    return std::size(kArithmetic) == kOperationCount;
}
static_assert(TableFollowsTheEnumeration());

const TArithmetic& ArithmeticOf(TOperation operation) {
    return kArithmetic[static_cast<int>(operation)];
}

enum class TWordKind : std::uint8_t { Function, Operator, BooleanOperator };

struct TBuiltInWord {
    std::string_view Name;
    TWordKind Kind;
    int Priority;
    TOperation Operation;
};

constexpr TWordKind kFunction = TWordKind::Function;
constexpr TWordKind kOperator = TWordKind::Operator;
constexpr TWordKind kBoolean = TWordKind::BooleanOperator;

constexpr TBuiltInWord kBuiltInWords[] = {
    {"pi", kFunction, 0, TOperation::Pi},
    {"random", kFunction, 0, TOperation::Random},
    {"!", kOperator, 10, TOperation::Factorial},
    {"%", kOperator, 10, TOperation::Percent},
    {"-@", kOperator, 10, TOperation::Negate},
    {"+@", kOperator, 10, TOperation::Identity},
    {"^", kOperator, 20, TOperation::Power},
    {"^@", kOperator, 20, TOperation::IntPower},
    {"*", kOperator, 30, TOperation::Multiply},
    {"/", kOperator, 30, TOperation::Divide},
    {"div", kOperator, 30, TOperation::Div},
    {"mod", kOperator, 30, TOperation::Mod},
    {"+", kOperator, 40, TOperation::Add},
    {"-", kOperator, 40, TOperation::Subtract},
    {">", kBoolean, 50, TOperation::Greater},
    {">=", kBoolean, 50, TOperation::GreaterEqual},
    {"<=", kBoolean, 50, TOperation::LessEqual},
    {"<", kBoolean, 50, TOperation::Less},
    {"<>", kBoolean, 50, TOperation::NotEqual},
    {"=", kBoolean, 50, TOperation::Equal},
    {"not", kBoolean, 60, TOperation::Not},
    {"or", kBoolean, 70, TOperation::Or},
    {"and", kBoolean, 70, TOperation::And},
    {"xor", kBoolean, 70, TOperation::Xor},
    {":=", kOperator, 200, TOperation::Assign},
    {"exp", kFunction, 0, TOperation::Exp},
    {"sqr", kFunction, 0, TOperation::Sqr},
    {"sqrt", kFunction, 0, TOperation::Sqrt},
    {"abs", kFunction, 0, TOperation::Abs},
    {"round", kFunction, 0, TOperation::Round},
    {"trunc", kFunction, 0, TOperation::Trunc},
    {"ln", kFunction, 0, TOperation::Ln},
    {"log10", kFunction, 0, TOperation::Log10},
    {"logN", kFunction, 0, TOperation::LogN},
    {"power", kFunction, 0, TOperation::Power},
    {"pow", kFunction, 0, TOperation::Power},
    {"intpower", kFunction, 0, TOperation::IntPower},
    {"max", kFunction, 0, TOperation::Max},
    {"min", kFunction, 0, TOperation::Min},
    {"sin", kFunction, 0, TOperation::Sin},
    {"cos", kFunction, 0, TOperation::Cos},
    {"tan", kFunction, 0, TOperation::Tan},
    {"arcsin", kFunction, 0, TOperation::ArcSin},
    {"arccos", kFunction, 0, TOperation::ArcCos},
    {"arctan2", kFunction, 0, TOperation::ArcTan2},
    {"sinh", kFunction, 0, TOperation::Sinh},
    {"cosh", kFunction, 0, TOperation::Cosh},
    {"tanh", kFunction, 0, TOperation::Tanh},
    {"arcsinh", kFunction, 0, TOperation::ArcSinh},
    {"arccosh", kFunction, 0, TOperation::ArcCosh},
    {"arctanh", kFunction, 0, TOperation::ArcTanh},
    {"degtorad", kFunction, 0, TOperation::DegToRad},
    {"radtodeg", kFunction, 0, TOperation::RadToDeg},
};

std::unique_ptr<TExprWord> MakeWord(const TBuiltInWord& word) {
    const TArithmetic& arithmetic = ArithmeticOf(word.Operation);
    if (word.Kind == TWordKind::BooleanOperator)
        return std::make_unique<TBooleanFunction>(word.Name, word.Priority, true, arithmetic.Operands,
                                                  arithmetic.Procedure);
    return std::make_unique<TFunction>(word.Name, word.Priority, word.Kind == TWordKind::Operator,
                                       arithmetic.Operands, arithmetic.Procedure);
}

using TProcedureRow = std::pair<TEvalProcedure, TOperation>;

bool IsBefore(const TProcedureRow& a, const TProcedureRow& b) {
    return std::less<>()(a.first, b.first);
}

std::vector<TProcedureRow> SortedProcedures() {
    std::vector<TProcedureRow> rows;
    for (const TArithmetic& arithmetic : kArithmetic)
        if (arithmetic.Procedure) rows.emplace_back(arithmetic.Procedure, arithmetic.Operation);
    std::sort(rows.begin(), rows.end(), IsBefore);
    return rows;
}

} // namespace

const TOperation* FindOperation(TEvalProcedure procedure) {
    static const std::vector<TProcedureRow> rows = SortedProcedures();
    const auto row = std::lower_bound(rows.begin(), rows.end(), TProcedureRow{procedure, {}}, IsBefore);
    return row != rows.end() && row->first == procedure ? &row->second : nullptr;
}

bool IsPure(TOperation operation) {
    return operation != TOperation::Random && operation != TOperation::Assign;
}

double Compute(TOperation operation, double a, double b, double c, double d) {
    return ArithmeticOf(operation).Compute(a, b, c, d);
}

int OperandCount(TOperation operation) {
    return ArithmeticOf(operation).Operands;
}

void AddBuiltInWords(TExpressList& words) {
    words.Insert(std::make_unique<TLeftBracket>());
    words.Insert(std::make_unique<TRightBracket>());
    words.Insert(std::make_unique<TComma>());
    for (const TBuiltInWord& word : kBuiltInWords) words.Insert(MakeWord(word));
}

} // namespace lumoplot
