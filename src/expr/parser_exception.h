// The exception of the expression evaluator.
#pragma once

#include "support/errors.h"

namespace lumoplot {

/// A formula that does not compile: "Unequal brackets", "Syntax error in expression TEXT",
/// "Can not find operand/function", "Too many arguments", "OPERATOR is not a valid string operand".
class EParserException : public ELumoError {
public:
    using ELumoError::ELumoError;
};

} // namespace lumoplot
