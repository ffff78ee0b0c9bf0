#include "data/series/y_error_rule.h"

#include "data/series/data_series.h"
#include "data/series/ds_info.h"
#include "expr/expr_word.h"
#include "support/errors.h"
#include "support/number_text.h"
#include "support/update_hold.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace lumoplot {
namespace {

constexpr std::string_view kColumn = "column ";
constexpr std::string_view kConstant = "constant ";
constexpr std::string_view kPercent = "percent ";
constexpr std::string_view kSquareRoot = "sqrt";

bool IsByValue(const TYErrorRule& rule) {
    return rule.Kind == TYErrorKind::Constant || rule.Kind == TYErrorKind::Percent;
}

bool NeedsOnlyY(const TYErrorRule& rule) {
    return IsByValue(rule) || rule.Kind == TYErrorKind::SquareRoot;
}

std::vector<double> ErrorsBy(const TYErrorRule& rule, const TDataSeries& series) {
    std::vector<double> errors;
    errors.reserve(static_cast<std::size_t>(series.Count()));
    for (auto point = series.First(); point; point = point.Next())
        errors.push_back(YErrorBy(rule, point.Y()));
    return errors;
}

/// Finite points by ascending X.
std::vector<std::pair<double, double>> SortedPoints(const TDataSeries& series) {
    std::vector<std::pair<double, double>> points;
    for (auto point = series.First(); point; point = point.Next())
        if (std::isfinite(point.Y())) points.emplace_back(point.X(), point.Y());
    std::ranges::stable_sort(points, {}, &std::pair<double, double>::first);
    return points;
}

double Between(const std::vector<std::pair<double, double>>& points, double x) {
    const auto next = std::ranges::lower_bound(points, x, {}, &std::pair<double, double>::first);
    if (next == points.end()) return 0;
    if (next->first == x) return next->second;
    if (next == points.begin()) return 0;
    const auto before = next - 1;
    return std::lerp(before->second, next->second, (x - before->first) / (next->first - before->first));
}

} // namespace

std::string TextOf(const TYErrorRule& rule) {
    switch (rule.Kind) {
    case TYErrorKind::Column: return std::string(kColumn) + rule.Column;
    case TYErrorKind::Constant: return std::string(kConstant) + FormatShortest(rule.Value);
    case TYErrorKind::Percent: return std::string(kPercent) + FormatShortest(rule.Value);
    case TYErrorKind::SquareRoot: return std::string(kSquareRoot);
    case TYErrorKind::None: break;
    }
    return {};
}

TYErrorRule YErrorRuleOf(std::string_view text) {
    const std::string lower = LowerCased(text);
    if (lower == kSquareRoot) return {TYErrorKind::SquareRoot};
    if (lower.starts_with(kColumn) && text.size() > kColumn.size())
        return {TYErrorKind::Column, 0, std::string(text.substr(kColumn.size()))};
    for (const auto& [word, kind] :
         {std::pair(kConstant, TYErrorKind::Constant), std::pair(kPercent, TYErrorKind::Percent)}) {
        if (!lower.starts_with(word)) continue;
        const std::optional<double> value = TryParseFloat(text.substr(word.size()));
        if (value && UsableYError(*value) > 0) return {kind, *value};
    }
    return {};
}

double YErrorBy(const TYErrorRule& rule, double y) {
    switch (rule.Kind) {
    case TYErrorKind::Constant: return UsableYError(rule.Value);
    case TYErrorKind::Percent: return UsableYError(std::abs(y) * rule.Value / 100);
    case TYErrorKind::SquareRoot: return UsableYError(std::sqrt(y));
    case TYErrorKind::Column:
    case TYErrorKind::None: break;
    }
    return 0;
}

int SetYErrorsBy(TDataSeries& series, const TYErrorRule& rule) {
    if (IsByValue(rule) && UsableYError(rule.Value) == 0)
        throw EYError(rule.Kind == TYErrorKind::Percent ? "The percentage of Y must be a number above 0"
                                                        : "The standard error of Y must be a number above 0");
    const TUpdateHold hold(series);
    series.DataSourceInfo().SetYErrorRule(rule);
    if (rule.Kind == TYErrorKind::Column) return static_cast<int>(series.HasYErrors());
    return series.SetYErrors(rule.Kind == TYErrorKind::None ? std::vector<double>() : ErrorsBy(rule, series));
}

int SetYErrorsFrom(TDataSeries& series, const TDataSeries& errors) {
    const auto points = SortedPoints(errors);
    std::vector<double> values;
    values.reserve(static_cast<std::size_t>(series.Count()));
    for (auto point = series.First(); point; point = point.Next())
        values.push_back(Between(points, point.X()));
    const TUpdateHold hold(series);
    series.DataSourceInfo().SetYErrorRule({});
    return series.SetYErrors(values);
}

bool DropYErrors(TDataSeries& series) {
    const bool had = series.HasYErrors();
    SetYErrorsBy(series, {});
    return had;
}

void RenewYErrors(TDataSeries& series) {
    const TYErrorRule rule = series.DataSourceInfo().YErrorRule();
    if (NeedsOnlyY(rule)) SetYErrorsBy(series, rule);
}

} // namespace lumoplot
