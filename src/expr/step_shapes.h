// The shapes of steps that the scalar chain evaluates in one record.
#pragma once

#include "expr/eval_record.h"
#include "expr/operation.h"

#include <span>

namespace lumoplot {

/// Stands in a shape for an operand that is read from memory.
inline constexpr TOperation kLeaf = TOperation::Count;

/// A tree of operations: each operation is followed by its operands. The procedure evaluates the whole tree,
/// its leaves being the record's arguments from left to right.
struct TStepShape {
    std::span<const TOperation> Nodes;
    TEvalProcedure Procedure;
};

/// The shapes with this operation at the root, those of more operations first.
std::span<const TStepShape> ShapesOf(TOperation root);

} // namespace lumoplot
