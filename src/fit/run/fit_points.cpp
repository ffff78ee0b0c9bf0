#include "fit/run/fit_points.h"

#include "fit/definition/fit_result.h"

#include <cmath>

namespace lumoplot {

TFitPoints PointsBetweenMargins(const TCurFit& fit, std::span<const double> x, std::span<const double> y,
                                std::span<const double> errors, std::vector<std::size_t>* places) {
    TFitPoints points;
    for (std::size_t i = 0; i < x.size(); ++i) {
        if (!std::isfinite(x[i]) || !std::isfinite(y[i])) continue;
        if (!errors.empty() && !(errors[i] > 0 && std::isfinite(1 / errors[i]))) continue;
        if (fit.UseLeftMargin() && x[i] < fit.LeftMargin()) continue;
        if (fit.UseRightMargin() && x[i] > fit.RightMargin()) continue;
        points.X.push_back(x[i]);
        points.Y.push_back(y[i]);
        if (places) places->push_back(i);
        if (!errors.empty()) points.Weights.push_back(1 / errors[i]);
    }
    if (points.X.empty())
        throw EFitError(x.empty()        ? "There are no points to fit"
                        : errors.empty() ? "There are no points between the margins"
                                         : "There are no points with a standard error between the margins");
    return points;
}

TFitPoints PointsWithValue(TCurFit& fit, const TFitPoints& points) {
    std::vector<double> values(points.X.size());
    TBlockEvaluator(fit, fit.XRef()).Evaluate(points.X, values);
    TFitPoints usable;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (!std::isfinite(values[i])) continue;
        usable.X.push_back(points.X[i]);
        usable.Y.push_back(points.Y[i]);
        if (!points.Weights.empty()) usable.Weights.push_back(points.Weights[i]);
    }
    return usable;
}

} // namespace lumoplot
