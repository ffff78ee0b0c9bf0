// What the steps of a formula compute. This header draws in nothing, so that the vector kernels, which are
// compiled for other processors, share no inline function with the rest.
#pragma once

#include <cstdint>

namespace lumoplot {

/// What a step computes, whatever the words that it is written with.
enum class TOperation : std::uint8_t {
    Pi,
    Random,
    Factorial,
    Percent,
    Negate,
    Identity,
    Power,
    IntPower,
    Multiply,
    Divide,
    Div,
    Mod,
    Add,
    Subtract,
    Greater,
    GreaterEqual,
    LessEqual,
    Less,
    NotEqual,
    Equal,
    Not,
    Or,
    And,
    Xor,
    Assign,
    Exp,
    Sqr,
    Sqrt,
    Abs,
    Round,
    Trunc,
    Ln,
    Log10,
    LogN,
    Max,
    Min,
    Sin,
    Cos,
    Tan,
    ArcSin,
    ArcCos,
    ArcTan2,
    Sinh,
    Cosh,
    Tanh,
    ArcSinh,
    ArcCosh,
    ArcTanh,
    DegToRad,
    RadToDeg,
    // Only in derivatives.
    Sign,
    PowerSlope,
    ExponentSlope,
    IntPowerSlope,
    SelectGreaterEqual,
    SelectLessEqual,
    // A whole power from 2 to 8 by products.
    Power2,
    Power3,
    Power4,
    Power5,
    Power6,
    Power7,
    Power8,
    Count,
};

inline constexpr int kOperationCount = static_cast<int>(TOperation::Count);

/// True when the result depends on nothing but the operands: all but "random" and ":=".
bool IsPure(TOperation operation);

/// Performs the operation on numbers, for ":=" without storing; operands behind its own count are not looked
/// at.
double Compute(TOperation operation, double a, double b = 0, double c = 0, double d = 0);

/// How many operands it takes, 0 to 4.
int OperandCount(TOperation operation);

} // namespace lumoplot
