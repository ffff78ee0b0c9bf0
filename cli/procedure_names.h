// The fitting procedures by the names that the command line uses.
#pragma once

#include "cli/arguments.h"

#include <array>

namespace lumoplot {

/// In the order of the numbers TCurFit::kPowell …
inline constexpr std::array kProcedures = {"powell", "simplex", "conjugate-gradient", "variable-metric"};

/// The number of a procedure. Throws EUsage for other names.
inline int ProcedureArgument(const std::string& name) {
    for (std::size_t i = 0; i < kProcedures.size(); ++i)
        if (name == kProcedures[i]) return static_cast<int>(i);
    throw EUsage("--procedure: '" + name +
                 "' is none of powell, simplex, conjugate-gradient, variable-metric");
}

} // namespace lumoplot
