#include "expr/compiled_expression.h"

#include "expr/built_in_words.h"

#include <cstdint>

namespace lumoplot {
namespace {

TOperation PowerBy(double exponent) {
    if (!(exponent >= 2 && exponent <= 8) || exponent != static_cast<int>(exponent))
        return TOperation::IntPower;
    return static_cast<TOperation>(static_cast<int>(TOperation::Power2) + static_cast<int>(exponent) - 2);
}

} // namespace

std::size_t TCompiledExpression::IndexOf(const double* result) const {
    const auto offset =
        reinterpret_cast<std::uintptr_t>(result) - reinterpret_cast<std::uintptr_t>(Records.data());
    return offset < Records.size() * sizeof(TEvalRecord) ? offset / sizeof(TEvalRecord) : Records.size();
}

std::optional<TOperation> TCompiledExpression::OperationOf(const TEvalRecord& record) const {
    const TOperation* operation = FindOperation(record.Procedure);
    if (!operation) return std::nullopt;
    if (*operation != TOperation::IntPower || record.Word->Name() != "^@") return *operation;
    // Behind "^@" stands a number, which no formula can change; intpower(x,n) may have a variable there.
    const std::size_t exponent = IndexOf(record.Args[1]);
    const bool fixed = exponent == Records.size() || Folded[exponent];
    return fixed ? PowerBy(*record.Args[1]) : *operation;
}

} // namespace lumoplot
