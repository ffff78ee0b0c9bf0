// A model with its parameters, and points to fit it to.
#pragma once

#include "common/fit_parameters.h"
#include "fit/run/curve_fitter.h"

#include <cmath>
#include <vector>

namespace lumoplot {

struct TStart {
    const char* name;
    double value;
    bool vary = true;
};

struct TModel {
    TCurFit fit;
    std::vector<double> x;
    std::vector<double> y;

    TModel(const char* equation, std::initializer_list<TStart> starts,
           TFitProcedure procType = TFitProcedure::Newton) {
        fit.SetExpression(equation);
        fit.SetProcType(procType);
        fit.SetIterMax(2000);
        for (const TStart& start : starts) AddParameter(fit, start.name, start.value).SetVary(start.vary);
    }

    template <class TFunction>
    void SetPoints(int count, double step, TFunction&& function) {
        for (int i = 0; i < count; ++i) {
            x.push_back(step * i);
            y.push_back(function(x.back()));
        }
    }

    /// The values of the model itself with these parameters, and a ripple; the parameters then start anew.
    void SetPointsOfModel(int count, const std::vector<double>& values, double ripple = 0) {
        TVector starts;
        for (int i = 1; i <= fit.NParams(); ++i) {
            starts.push_back(Value(i));
            *fit.Parameter(i)->ValueRef() = values[static_cast<std::size_t>(i - 1)];
        }
        fit.Compile();
        SetPoints(count, 0.25, [&](double at) { return fit.EvaluateAt(at) + ripple * std::cos(28 * at); });
        for (int i = 1; i <= fit.NParams(); ++i)
            fit.Parameter(i)->SetValue(starts[static_cast<std::size_t>(i - 1)]);
    }

    TFitResult Run(const TFitRun& run = {nullptr, {}, TFitStarts::Given}) { return RunFit(fit, x, y, run); }
    TFitResult RunFromManyStarts() { return RunFit(fit, x, y, {}); }
    double Value(int number) const { return fit.Parameter(number)->Value(); }
};

} // namespace lumoplot
