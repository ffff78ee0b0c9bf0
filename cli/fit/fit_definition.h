// The definition of a fit on the command line: a formula with parameters, a function file, or the fit that
// the data set holds.
#pragma once

#include "cli/arguments.h"
#include "fit/definition/cur_fit.h"
#include "fit/run/curve_fitter.h"

#include <string>
#include <vector>

namespace lumoplot {

/// Of the options that say how a fit runs.
inline constexpr const char* kRunGroup = "Run";

struct TFitDefinition {
    std::string equation;
    std::string function; ///< file
    std::vector<std::string> parameters;
    std::vector<std::string> fixed;
    std::vector<std::string> bounds;
    std::vector<std::string> ties;
    std::string xName;
    std::vector<std::string> templates;
    std::string procedure;
    std::optional<int> iterations;
    std::optional<double> tolerance;
    std::optional<double> left;
    std::optional<double> right;

    bool HasModel() const { return !equation.empty() || !function.empty(); }
    /// `stored` is the data set's, needed where the command line has no model. Throws EUsage for what is
    /// wrong on the command line, EFitError where there is no fit at all.
    void Define(TCurFit& fit, const TCurFit* stored) const;

private:
    void TakeModel(TCurFit& fit, const TCurFit* stored) const;
    void TakeParameter(TCurFit& fit, const std::string& text) const;
    void TakeRun(TCurFit& fit) const;
};

void AddDefinitionOptions(CLI::App& command, TFitDefinition& definition);
/// How the fit runs: --procedure (with that help), --iterations, --local, --left and --right.
void AddRunOptions(CLI::App& command, TFitDefinition& definition, TFitStarts& starts,
                   const char* procedureHelp);

} // namespace lumoplot
