// How the points of a fit count, on the command line: --weights, --errors and --robust.
#pragma once

#include "cli/arguments.h"
#include "cli/data_input.h"
#include "fit/definition/cur_fit.h"

#include <string>
#include <vector>

namespace lumoplot {

struct TFitWeights {
    std::string weights;
    std::string errors;
    std::string robust;

    /// A column of a text file is read with the points. Throws EUsage for another kind of file.
    void TakeColumn(TDataOptions& data) const;
    /// What is not given stays as the fit has it. Throws EUsage for what is no choice.
    void Define(TCurFit& fit) const;
    /// The standard error of each point, 0 for none; empty where there are none.
    std::vector<double> ErrorsOf(const TDataInput& input) const;

private:
    bool IsColumn() const;
};

void AddWeightOptions(CLI::App& command, TFitWeights& weights);

} // namespace lumoplot
