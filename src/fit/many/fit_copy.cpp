#include "fit/many/fit_copy.h"

#include "fit/run/fit_check.h"
#include "fit/run/fit_judgement.h"
#include "fit/run/fit_points.h"
#include "fit/run/fit_statistics.h"

#include <cmath>

namespace lumoplot {

TFitCopy::TFitCopy(const TFittedData& data)
    : m_isAbsolute(!data.Run.Errors.empty() && data.Run.ErrorSource == TErrorSource::Points) {
    if (!data.Fit.Result()) throw EFitError("The fit has not run");
    Fit.Assign(&data.Fit);
    Varied = CheckedParameters(Fit);
    Points = PointsWithValue(Fit, PointsBetweenMargins(Fit, data.X, data.Y, data.Run.Errors));
    if (Points.X.size() <= Varied.size())
        throw EFitError("There are no more points than varied parameters: nothing is known of their errors");
    if (data.Run.Robust == TRobust::None) return;
    const std::vector<double> residuals = ResidualsOf(Fit, Points);
    const std::vector<double> weights = RobustWeights(data.Run.Robust, residuals, Varied.size());
    m_robustDeviation = RobustDeviation(data.Run.Robust, residuals, Varied.size());
    Points.Weights.resize(weights.size(), 1);
    for (std::size_t i = 0; i < weights.size(); ++i) Points.Weights[i] *= std::sqrt(weights[i]);
}

std::vector<std::size_t> OutliersOf(const TFittedData& data) {
    std::vector<std::size_t> places;
    if (!data.Fit.Result()) throw EFitError("The fit has not run");
    if (data.Run.Robust == TRobust::None) return places;
    TCurFit fit;
    fit.Assign(&data.Fit);
    fit.Compile();
    std::vector<std::size_t> used;
    const TFitPoints points = PointsBetweenMargins(fit, data.X, data.Y, data.Run.Errors, &used);
    std::vector<double> residuals = ResidualsOf(fit, points);
    std::vector<std::size_t> usable;
    for (std::size_t i = 0; i < residuals.size(); ++i)
        if (std::isfinite(residuals[i])) usable.push_back(i);
    std::vector<double> finite;
    for (const std::size_t i : usable) finite.push_back(residuals[i]);
    const std::vector<double> weights =
        RobustWeights(data.Run.Robust, finite, data.Fit.Result()->Varied.size());
    for (std::size_t i = 0; i < weights.size(); ++i)
        if (weights[i] < kOutlierWeight) places.push_back(used[usable[i]]);
    return places;
}

double TFitCopy::DeviationOf(double scaledRss, double scale) const {
    if (m_robustDeviation && !m_isAbsolute) return *m_robustDeviation * scale;
    return m_isAbsolute ? scale : std::sqrt(scaledRss / static_cast<double>(Points.X.size() - Varied.size()));
}

double TOfConfidence(const TFittedData& data) {
    const bool isAbsolute = !data.Run.Errors.empty() && data.Run.ErrorSource == TErrorSource::Points;
    return StudentQuantile(data.Confidence, isAbsolute ? kManyFreedoms : data.Fit.Result()->Quality.Freedom);
}

} // namespace lumoplot
