// Where the ticks of an axis lie and what their labels say: linear, logarithmic and date axes. Plain
// functions of the numbers in TTickRules; nothing here measures texts or paints.
#pragma once

#include "graph/drawing/axes/label_text.h"

#include <string>
#include <vector>

namespace lumoplot {

enum class TTickKind { Major, Minor };

struct TTick {
    double Value = 0;
    TTickKind Kind = TTickKind::Major;
    TLabelText Label; ///< empty on minor ticks
};

/// What the ticks of an axis depend on.
struct TTickRules {
    double Min = 0;
    double Max = 1;
    double Step = 0.2;
    /// Ticks count from Min, as for a step of the user's own choice; otherwise from 0.
    bool CountsFromMin = false;
    int MinSteps = 5;
    bool LogScale = false;
    /// A decade on a logarithmic axis has so many labelled parts: 2 gives 1 and 5, 5 gives 1, 2, 4, 6, 8.
    int LogCycleDivisions = 2;
    TNumberFormat Numbers;
    bool ShowAsTime = false;
    std::string DateTimeFormat;
    TAxis::Dateticks DateTickType = TAxis::dt_minute;
};

/// The ticks of an axis in ascending order.
struct TTicks {
    std::vector<TTick> All;
    /// What is written once at the end of the axis, since it belongs to every label (TNumberLabels::Common).
    QString Common;
};

TTickRules TickRulesOf(const TAxis& axis);

/// No coarseness beyond this leaves more than a few labels.
inline constexpr int kCoarsest = 30;

/// Ticks for an axis that is `length` units long. A coarseness of 1, 2, … labels fewer and
/// fewer of them, for labels that would overlap; those left out become minor ticks. Never more ticks than
/// fit, empty for a range that is none.
TTicks ChooseTicks(const TTickRules& rules, double length, int coarseness);

// The three kinds of axis behind ChooseTicks.
TTicks LinearTicks(const TTickRules& rules, double length, int coarseness);
TTicks LogTicks(const TTickRules& rules, double length, int coarseness);
TTicks DateTicks(const TTickRules& rules, double length, int coarseness);

} // namespace lumoplot
