// The fitting procedures by the names that the command line uses.
#pragma once

#include "cli/arguments.h"
#include "fit/definition/cur_fit.h"

#include <array>

namespace lumoplot {

/// In the order of TFitProcedure.
inline constexpr std::array kProcedures = {"powell", "simplex", "conjugate-gradient", "variable-metric"};

/// Throws EUsage for other names.
inline TFitProcedure ProcedureArgument(const std::string& name) {
    for (std::size_t i = 0; i < kProcedures.size(); ++i)
        if (name == kProcedures[i]) return TFitProcedure{static_cast<int>(i)};
    throw EUsage("--procedure: '" + name +
                 "' is none of powell, simplex, conjugate-gradient, variable-metric");
}

} // namespace lumoplot
