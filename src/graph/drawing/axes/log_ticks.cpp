// Ticks of logarithmic axes.
#include "graph/drawing/axes/ticks.h"
#include "graph/model/axis_scale.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace lumoplot {
namespace {

constexpr double kReach = 1e-9;     // ends of the range, relative
constexpr double kMinorSpacing = 3; // units between the two nearest minor ticks of a decade
constexpr int kMostDivisions = 20;
constexpr double kFewDecades = 2;
constexpr int kUsualDivisions = 2;  // of a new axis
constexpr int kOneTwoFive = -1;     // stands for the labels 1, 2 and 5
constexpr double kPlainFrom = 1e-4; // labels between these are written out
constexpr double kPlainTo = 1e5;

double PowerOfTen(int exponent) {
    return exponent >= 0 ? std::pow(10.0, exponent) : 1 / std::pow(10.0, -exponent);
}

class TLogLabels {
public:
    explicit TLogLabels(const TTickRules& rules) {
        using enum TAxis::TLabelFormat;
        const bool shortNumbers =
            rules.Min >= kPlainFrom * (1 - kReach) && rules.Max <= kPlainTo * (1 + kReach);
        m_isPlain = rules.Numbers.Format == lfFixed || (rules.Numbers.Format == lfAuto && shortNumbers);
    }
    TLabelText Text(double exact, int exponent) const {
        const double mantissa = WithFewDigits(exact);
        const bool writesOut = m_isPlain && std::abs(exponent) < 15;
        if (!writesOut) return PowerLabel(mantissa, exponent);
        return PlainLabel(mantissa * PowerOfTen(exponent), std::max(0, DecimalsOf(mantissa) - exponent));
    }

private:
    // A third of a decade is labelled 3.3; what has an end is written out.
    static double WithFewDigits(double mantissa) {
        return DecimalsOf(mantissa) > 2 ? std::round(10 * mantissa) / 10 : mantissa;
    }

    bool m_isPlain;
};

// The labelled parts of a decade above 1: multiples of 10/divisions.
std::vector<double> DivisionsOf(int divisions) {
    if (divisions == kOneTwoFive) return {2, 5};
    divisions = std::clamp(divisions == 9 ? 10 : divisions, 1, kMostDivisions);
    std::vector<double> mantissas;
    for (int i = 1; i < divisions; ++i)
        if (const double mantissa = 10.0 * i / divisions; mantissa > 1) mantissas.push_back(mantissa);
    return mantissas;
}

class TLogTickList {
public:
    explicit TLogTickList(const TTickRules& rules) : m_rules(rules), m_labels(rules) {}

    void Add(double mantissa, int exponent, TTickKind kind) {
        const double value = mantissa * PowerOfTen(exponent);
        if (!(value >= m_rules.Min * (1 - kReach) && value <= m_rules.Max * (1 + kReach))) return;
        const bool isMajor = kind == TTickKind::Major;
        Ticks.push_back({value, kind, isMajor ? m_labels.Text(mantissa, exponent) : TLabelText{}});
    }

    std::vector<TTick> Ticks;

private:
    const TTickRules& m_rules;
    TLogLabels m_labels;
};

int DecadeStride(int coarseness) {
    constexpr int kStrides[] = {1, 1, 2, 3, 5, 10, 20, 50, 100, 200};
    return kStrides[std::min<int>(coarseness, std::size(kStrides) - 1)];
}

void AddDecade(TLogTickList& list, int exponent, const TTickRules& rules, double decadeLength,
               int coarseness) {
    const bool labelsParts = coarseness == 0;
    const auto divisions = DivisionsOf(rules.LogCycleDivisions);
    if (labelsParts)
        for (const double mantissa : divisions) list.Add(mantissa, exponent, TTickKind::Major);
    if (decadeLength * (1 - std::log10(9.0)) < kMinorSpacing) return;
    for (int digit = 2; digit <= 9; ++digit) {
        const auto isDigit = [digit](double mantissa) { return std::abs(mantissa - digit) < 1e-9; };
        if (!labelsParts || std::ranges::none_of(divisions, isDigit))
            list.Add(digit, exponent, TTickKind::Minor);
    }
}

// Less than a decade: round numbers as on a linear axis say more than one power of ten.
TTicks TicksInsideDecade(const TTickRules& rules, double length, int coarseness) {
    TTickRules linear = rules;
    linear.Step = TickStep(rules.Min, rules.Max, rules.MinSteps).value_or(rules.Step);
    linear.CountsFromMin = false;
    linear.ShowAsTime = false;
    return LinearTicks(linear, length, coarseness);
}

} // namespace

TTicks LogTicks(const TTickRules& rules, double length, int coarseness) {
    const double decades = std::log10(rules.Max) - std::log10(rules.Min);
    if (decades < 1 - kReach) return TicksInsideDecade(rules, length, coarseness);
    const int first = static_cast<int>(std::floor(std::log10(rules.Min) + kReach));
    const int last = static_cast<int>(std::ceil(std::log10(rules.Max) - kReach));
    const int stride = DecadeStride(coarseness);
    TTickRules labelled = rules;
    // A short axis has too few powers of ten to read values off; 1, 2 and 5 are even on the paper.
    if (decades < kFewDecades && rules.LogCycleDivisions == kUsualDivisions)
        labelled.LogCycleDivisions = kOneTwoFive;
    TLogTickList list(labelled);
    for (int exponent = first; exponent <= last; ++exponent) {
        const bool isLabelled = exponent % stride == 0;
        const bool fits = length / decades >= kMinorSpacing;
        if (isLabelled || fits) list.Add(1, exponent, isLabelled ? TTickKind::Major : TTickKind::Minor);
        if (stride == 1) AddDecade(list, exponent, labelled, length / decades, coarseness);
    }
    std::ranges::sort(list.Ticks, {}, &TTick::Value);
    return {std::move(list.Ticks), {}};
}

} // namespace lumoplot
