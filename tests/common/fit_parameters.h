// Parameters for curve fits.
#pragma once

#include "fit/definition/cur_fit.h"

#include <initializer_list>
#include <memory>
#include <string>

namespace lumoplot {

inline constexpr TFitProcedure kEveryProcedure[] = {TFitProcedure::Powell, TFitProcedure::Simplex,
                                                    TFitProcedure::ConjugateGradient, TFitProcedure::Newton};

/// Adds a parameter, which is not varied, and returns the last one of the fit.
inline TDBLParameter& AddParameter(TCurFit& fit, const std::string& name, double value) {
    auto parameter = std::make_unique<TDBLParameter>();
    parameter->SetName(name);
    parameter->SetValue(value);
    fit.AddParameter(std::move(parameter));
    return *fit.Parameter(fit.NParams());
}

/// Adds parameters of value 0 that are varied.
inline void AddVaried(TCurFit& fit, std::initializer_list<const char*> names) {
    for (const char* name : names) AddParameter(fit, name, 0).SetVary(true);
}

} // namespace lumoplot
