#include "expr/compiled_expression.h"

namespace lumoplot {

void MergeSteps(TCompiledExpression&) {
}

} // namespace lumoplot
