#include "fit/run/fit_remarks.h"

#include "fit/procedures/jacobi.h"
#include "fit/run/fit_statistics.h"
#include "support/number_text.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kTakesPart = 0.1; // of a direction of unit length
constexpr double kCorrelated = 0.99;
constexpr int kCorrelationDigits = 4;
constexpr double kByChance = 0.05;
constexpr int kProbabilityDigits = 2;

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
    for (int i = 0; i < result.Correlations.Size(); ++i) {
        for (int j = i + 1; j < result.Correlations.Size(); ++j) {
            const double r = result.Correlations(i, j);
            if (!(std::abs(r) > kCorrelated)) continue;
            result.Remarks.push_back(task.Varied[static_cast<std::size_t>(i)]->Name() + " and " +
                                     task.Varied[static_cast<std::size_t>(j)]->Name() +
                                     " are strongly correlated (r = " + FormatFixed(r, kCorrelationDigits) +
                                     ").");
        }
    }
}

void AddLeftOut(TFitResult& result, const TFitPoints& used, const TFitPoints& points) {
    const std::size_t count = points.X.size() - used.X.size();
    if (count == 0) return;
    result.Remarks.push_back("The equation has no value at " + std::to_string(count) + " of " +
                             std::to_string(points.X.size()) + " points, the first at " +
                             FormatShortest(FirstLeftOut(used, points)) +
                             (count == 1 ? "; it was left out." : "; they were left out."));
}

// Against the line that the curve may become: F of Fisher. What is held off would decide it alone.
void AddAgainstLine(TFitResult& result, const TFitPoints& used) {
    if (result.Outliers > 0) return;
    if (std::ranges::all_of(used.Y, [&](double y) { return y == used.Y.front(); }) && used.Y.size() > 1)
        return result.Remarks.push_back("All values of Y are equal: a horizontal line is as good.");
    const auto parameters = static_cast<double>(result.Varied.size());
    const double freedom = result.Quality.Freedom;
    if (result.End != TFitEnd::Converged || !(parameters > 1) || !(freedom > 0)) return;
    const double f = (result.RSquared / (parameters - 1)) / ((1 - result.RSquared) / freedom);
    const double probability = FisherProbability(f, parameters - 1, freedom);
    if (!(probability > kByChance)) return;
    result.Remarks.push_back("The curve is hardly better than a horizontal line: by chance alone it is as "
                             "good with a probability of " +
                             FormatGeneral(probability, kProbabilityDigits) + ".");
}

} // namespace

double FirstLeftOut(const TFitPoints& used, const TFitPoints& points) {
    std::size_t first = 0;
    while (first < used.X.size() && used.X[first] == points.X[first]) ++first;
    return points.X[first];
}

void AddRemarks(TFitResult& result, const TFitTask& task, const TLocalFit& found, const TFitPoints& used,
                const TFitPoints& points) {
    AddOpen(result, found);
    AddOnBound(result, task, found);
    AddCorrelated(result, task);
    AddLeftOut(result, used, points);
    AddAgainstLine(result, used);
}

} // namespace lumoplot
