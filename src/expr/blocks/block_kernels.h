// Operations on blocks of numbers, compiled for several instruction sets and chosen when the program runs.
// This header draws in nothing that the kernels of one processor could share with those of another.
#pragma once

#include "expr/operation.h"

namespace lumoplot {

/// Numbers that every kernel computes at once, and to whose multiple it rounds the count up.
inline constexpr int kLanes = 8;

/// An operand of a kernel: one number for each element, or the same number for all.
struct TBlockOperand {
    const double* Data;
    bool Uniform;
};

/// result[i] = operation(a[i], b[i]) for i from 0 to `count` rounded up to a multiple of kLanes: the arrays
/// reach that far. The result may be one of the operands.
using TBlockKernel = void (*)(double* result, const TBlockOperand* args, int count);

/// The kernels of one instruction set; null where it has none that is better than one number after the other.
struct TBlockKernels {
    const char* Name;
    TBlockKernel Of[kOperationCount];
};

/// Each is null when the library was built without it, or for another kind of processor.
const TBlockKernels* Avx2Kernels();
const TBlockKernels* Avx512Kernels();

/// The kernels that this processor can run, the fastest first and last those for every processor; behind them
/// a null. There are always some.
const TBlockKernels* const* AvailableKernels();

} // namespace lumoplot
