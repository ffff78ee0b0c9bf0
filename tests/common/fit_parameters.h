// Parameters for curve fits.
#pragma once

#include "fit/definition/cur_fit.h"

#include <memory>
#include <string>

namespace lumoplot {

/// Adds a parameter, which is not varied, and returns the last one of the fit.
inline TDBLParameter& AddParameter(TCurFit& fit, const std::string& name, double value) {
    auto parameter = std::make_unique<TDBLParameter>();
    parameter->SetName(name);
    parameter->SetValue(value);
    fit.AddParameter(std::move(parameter));
    return *fit.Parameter(fit.NParams());
}

} // namespace lumoplot
