#include "fit/run/fit_remarks.h"

#include "fit/procedures/jacobi.h"
#include "support/number_text.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kTakesPart = 0.1; // of a direction of unit length
constexpr double kCorrelated = 0.99;
constexpr int kCorrelationDigits = 4;

std::string Listed(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i)
        text += (i == 0 ? "" : i + 1 == names.size() ? " and " : ", ") + names[i];
    return text;
}

/// The parameters that change together without changing the curve.
std::vector<std::string> OpenParameters(const TLocalFit& found) {
    TMatrix unit = found.Triangle;
    for (int j = 0; j < unit.Size(); ++j) {
        const double length = Norm(unit.Column(j));
        if (!(length > 0)) return {found.Free[static_cast<std::size_t>(j)]->Name()};
        if (!std::isfinite(length)) return {};
        for (double& element : unit.Column(j)) element /= length;
    }
    if (unit.Size() == 0) return {};
    const TSingularValues parts = DecomposeSingular(unit);
    const auto smallest = std::ranges::min_element(parts.Values) - parts.Values.begin();
    std::vector<std::string> names;
    const auto direction = parts.Right.Column(static_cast<int>(smallest));
    for (std::size_t i = 0; i < direction.size(); ++i)
        if (std::abs(direction[i]) > kTakesPart) names.push_back(found.Free[i]->Name());
    return names;
}

void AddOpen(TFitResult& result, const TLocalFit& found) {
    if (found.IsDetermined || found.Triangle.Size() == 0) return;
    const std::vector<std::string> names = OpenParameters(found);
    if (names.size() == 1)
        result.Remarks.push_back("The points do not determine " + names.front() + ".");
    else if (!names.empty())
        result.Remarks.push_back("The points do not determine " + Listed(names) +
                                 ", only a combination of them: a change of one makes up for the others.");
}

void AddOnBound(TFitResult& result, const TFitTask& task, const TLocalFit& found) {
    if (found.Triangle.Size() != static_cast<int>(found.Free.size())) return;
    for (const TDBLParameter* parameter : task.Varied) {
        if (!parameter->IsOnBound() || std::ranges::count(found.Free, parameter) > 0) continue;
        const std::string side = parameter->Value() == parameter->Min() ? "lower" : "upper";
        result.Remarks.push_back(parameter->Name() + " ends on its " + side + " bound " +
                                 FormatShortest(parameter->Value()) +
                                 ": it has no standard error, and those of the others hold for it there.");
    }
}

void AddCorrelated(TFitResult& result, const TFitTask& task) {
    const TMatrix& covariance = result.Covariance;
    for (int i = 0; i < covariance.Size(); ++i) {
        for (int j = i + 1; j < covariance.Size(); ++j) {
            const double r = covariance(i, j) / std::sqrt(covariance(i, i) * covariance(j, j));
            if (!(std::abs(r) > kCorrelated)) continue;
            result.Remarks.push_back(task.Varied[static_cast<std::size_t>(i)]->Name() + " and " +
                                     task.Varied[static_cast<std::size_t>(j)]->Name() +
                                     " are strongly correlated (r = " + FormatFixed(r, kCorrelationDigits) +
                                     ").");
        }
    }
}

void AddLeftOut(TFitResult& result, const TFitPoints& used, const TFitPoints& points) {
    if (result.PointsLeftOut == 0) return;
    std::size_t first = 0;
    while (first < used.X.size() && used.X[first] == points.X[first]) ++first;
    result.Remarks.push_back("The equation has no value at " + std::to_string(result.PointsLeftOut) + " of " +
                             std::to_string(points.X.size()) + " points, the first at " +
                             FormatShortest(points.X[first]) + "; they were left out.");
}

} // namespace

void AddRemarks(TFitResult& result, const TFitTask& task, const TLocalFit& found, const TFitPoints& used,
                const TFitPoints& points) {
    AddOpen(result, found);
    AddOnBound(result, task, found);
    AddCorrelated(result, task);
    AddLeftOut(result, used, points);
}

} // namespace lumoplot
