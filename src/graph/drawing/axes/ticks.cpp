#include "graph/drawing/axes/ticks.h"

#include "graph/model/appearance.h"
#include "graph/model/axis_scale.h"
#include "graph/model/graph.h"
#include "graph/plotted/date_text.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kTickReach = 1e-6;     // ticks so near to an end of the range, in steps, lie on it
constexpr double kMinorTickSpacing = 5; // units between minor ticks, at least
constexpr double kMajorSpacing = 3;     // and between major ones
constexpr double kMostTicks = 20000;
constexpr double kLargestCount = 4e15; // steps that a double still counts exactly

struct TStepGrid {
    double Origin;
    double Step;
    double First; ///< number of the first step inside the range
    double Last;

    double Value(double number) const { return Origin + number * Step; }
};

TStepGrid GridOf(double min, double max, double step, double origin) {
    return {origin, step, std::ceil((min - origin) / step - kTickReach),
            std::floor((max - origin) / step + kTickReach)};
}

bool IsCountable(const TStepGrid& grid) {
    return std::abs(grid.First) < kLargestCount && std::abs(grid.Last) < kLargestCount &&
           grid.Last - grid.First < kMostTicks && grid.Value(grid.First) < grid.Value(grid.First + 1);
}

// 1, 2, 5, 10, 20, 50, …
double Stride(int coarseness) {
    constexpr double kFirst[] = {1, 2, 5};
    return kFirst[coarseness % 3] * std::pow(10.0, coarseness / 3);
}

// Into how many parts the minor ticks divide a step, by its leading digit.
int PartsOf(double step) {
    const double mantissa = step / std::pow(10.0, std::floor(std::log10(step) + 1e-9));
    if (std::abs(mantissa - 2) < 1e-6) return 4;
    if (std::abs(mantissa - 1) < 1e-6 || std::abs(mantissa - 5) < 1e-6) return 5;
    return 1;
}

bool IsMultiple(double number, double stride) {
    return std::fmod(number, stride) == 0;
}

double UsableStep(const TTickRules& rules) {
    if (rules.Step > 0 && std::isfinite(rules.Step)) return rules.Step;
    return TickStep(rules.Min, rules.Max, rules.MinSteps).value_or((rules.Max / 2 - rules.Min / 2) / 2.5);
}

void AddMinorTicks(std::vector<TTick>& ticks, const TStepGrid& grid, const TTickRules& rules,
                   double spacing) {
    const int parts = PartsOf(grid.Step);
    if (parts == 1 || spacing / parts < kMinorTickSpacing) return;
    const TStepGrid fine = GridOf(rules.Min, rules.Max, grid.Step / parts, grid.Origin);
    if (!IsCountable(fine)) return;
    for (double number = fine.First; number <= fine.Last; ++number)
        if (!IsMultiple(number, parts)) ticks.push_back({fine.Value(number), TTickKind::Minor, {}});
}

} // namespace

TTickRules TickRulesOf(const TAxis& axis) {
    TTickRules rules;
    rules.Min = axis.Min();
    rules.Max = axis.Max();
    rules.Step = axis.StepSize();
    rules.CountsFromMin = !axis.AutoStepping() && !axis.AutoSizing();
    rules.MinSteps = axis.Graph().Appearance()->MinSteps();
    rules.LogScale = axis.LogScale();
    rules.LogCycleDivisions = axis.LogCycleDivisions();
    rules.Numbers = {axis.LabelFormat(), axis.LabelDecimals(), axis.AutoLabelDecimals()};
    rules.ShowAsTime = axis.ShowAsTime();
    rules.DateTimeFormat = axis.DateTimeFormat();
    rules.DateTickType = axis.DateTickType();
    return rules;
}

TTicks ChooseTicks(const TTickRules& rules, double length, int coarseness) {
    const bool hasRange = rules.Min < rules.Max && std::isfinite(rules.Min) && std::isfinite(rules.Max);
    if (!hasRange || !(length > 0)) return {};
    if (rules.LogScale) return rules.Min > 0 ? LogTicks(rules, length, coarseness) : TTicks();
    const bool hasDates = rules.Min >= kFirstDateValue && rules.Max < kLastDateValue;
    if (rules.ShowAsTime && hasDates) return DateTicks(rules, length, coarseness);
    TTickRules numbers = rules;
    numbers.ShowAsTime = false;
    return LinearTicks(numbers, length, coarseness);
}

TTicks LinearTicks(const TTickRules& rules, double length, int coarseness) {
    const double usable = DecimalStep(UsableStep(rules));
    double step = usable;
    const double origin = rules.CountsFromMin ? rules.Min : 0;
    const double steps = rules.Max / step - rules.Min / step;
    for (int finer = 0; length / steps * Stride(finer) < kMajorSpacing && finer < kCoarsest; ++finer)
        step = usable * Stride(finer + 1);
    const TStepGrid grid = GridOf(rules.Min, rules.Max, step, origin);
    if (!IsCountable(grid)) return {};
    const double stride = Stride(coarseness);
    const TNumberLabels labels(rules.Numbers, {rules.Min, rules.Max, step * stride, origin});
    TTicks ticks;
    for (double number = grid.First; number <= grid.Last; ++number) {
        const bool isMajor = IsMultiple(number, stride);
        const double value = grid.Value(number);
        ticks.All.push_back({value, isMajor ? TTickKind::Major : TTickKind::Minor,
                             isMajor && !rules.ShowAsTime ? labels.Text(value) : TLabelText()});
    }
    if (!rules.ShowAsTime) ticks.Common = labels.Common();
    if (coarseness == 0) AddMinorTicks(ticks.All, grid, rules, length * (step / (rules.Max - rules.Min)));
    std::ranges::sort(ticks.All, {}, &TTick::Value);
    return ticks;
}

} // namespace lumoplot
