#include "graph/drawing/axes/ticks.h"

#include "graph/plotted/date_text.h"
#include "graph/plotted/scale_map.h"

#include <gtest/gtest.h>
#include <limits>

namespace lumoplot {
namespace {

std::string Plain(const TLabelText& label) {
    const QString exponent = label.Exponent.isEmpty() ? QString() : QStringLiteral("^") + label.Exponent;
    return (label.Base + exponent).toStdString();
}

std::string LabelsOf(const TTickRules& rules, double length = 500, int coarseness = 0) {
    std::string text;
    for (const TTick& tick : ChooseTicks(rules, length, coarseness))
        if (!tick.Label.IsEmpty()) text += (text.empty() ? "" : " ") + Plain(tick.Label);
    return text;
}

TTickRules Linear(double min, double max, double step) {
    TTickRules rules;
    rules.Min = min;
    rules.Max = max;
    rules.Step = step;
    return rules;
}

TEST(LinearTicks, LabelsAreRoundNumbers) {
    struct TCase {
        double min, max, step;
        const char* labels;
    };
    const TCase cases[] = {
        {0, 0.5, 0.1, "0.0 0.1 0.2 0.3 0.4 0.5"},
        {-0.3, 0.3, 0.1, "−0.3 −0.2 −0.1 0.0 0.1 0.2 0.3"},
        {0, 1, 0.25, "0.00 0.25 0.50 0.75 1.00"},
        {95, 205, 50, "100 150 200"},
        {0, 2e6, 5e5, "0 5.0×10^5 1.0×10^6 1.5×10^6 2.0×10^6"},
        {0, 4e-9, 2e-9, "0 2×10^−9 4×10^−9"},
        {0, 3e300, 1e300, "0 1×10^300 2×10^300 3×10^300"},
        {0, 2e-300, 1e-300, "0 1×10^−300 2×10^−300"},
        {1000000.001, 1000000.003, 0.001, "1.000000001×10^6 1.000000002×10^6 1.000000003×10^6"},
    };
    for (const TCase& c : cases) EXPECT_EQ(LabelsOf(Linear(c.min, c.max, c.step)), c.labels);
}

TEST(LinearTicks, AStepOfTheUsersChoiceCountsFromMin) {
    TTickRules rules = Linear(1, 10, 3);
    EXPECT_EQ(LabelsOf(rules), "3 6 9");
    rules.CountsFromMin = true;
    EXPECT_EQ(LabelsOf(rules), "1 4 7 10");
}

TEST(LinearTicks, TheFormatsOfTheAxisAreObeyed) {
    using enum TAxis::TLabelFormat;
    struct TCase {
        TNumberFormat format;
        double max, step;
        const char* labels;
    };
    const TCase cases[] = {
        {{lfFixed, 3, false}, 2, 1, "0.000 1.000 2.000"},
        {{lfFixed, 3, true}, 2, 1, "0 1 2"},
        {{lfExp, 2, false}, 200, 100, "0 1.00×10^2 2.00×10^2"},
        {{lfExp, 0, true}, 15, 5, "0 5.0×10^0 1.0×10^1 1.5×10^1"},
        {{lfAuto, 2, false}, 2, 1, "0.00 1.00 2.00"},
        {{lfAuto, 0, false}, 0.5, 0.25, "0.00 0.25 0.50"},
        {{lfFixed, 0, true}, 4e6, 2e6, "0 2000000 4000000"},
    };
    for (const TCase& c : cases) {
        TTickRules rules = Linear(0, c.max, c.step);
        rules.Numbers = c.format;
        EXPECT_EQ(LabelsOf(rules), c.labels);
    }
}

TEST(LinearTicks, CoarserLabelsLeaveTheirTicksBehind) {
    const TTickRules rules = Linear(-2, 2, 0.5);
    EXPECT_EQ(LabelsOf(rules, 500, 1), "−2 −1 0 1 2");
    EXPECT_EQ(LabelsOf(rules, 500, 2), "0.0");
    EXPECT_EQ(ChooseTicks(rules, 500, 1).size(), 9u);
}

TEST(LinearTicks, MinorTicksDivideAStepByItsLeadingDigit) {
    // 0 to three steps: two whole steps inside and as many parts more as fit.
    for (const auto& [step, parts] : {std::pair(0.1, 5), {20.0, 4}, {500.0, 5}, {2.5, 1}}) {
        const auto ticks = ChooseTicks(Linear(0, 3 * step, step), 600, 0);
        EXPECT_EQ(ticks.size(), static_cast<std::size_t>(3 * parts + 1)) << step;
        EXPECT_NEAR(ticks[1].Value, step / parts, 1e-9 * step) << step;
    }
    EXPECT_EQ(ChooseTicks(Linear(0, 10, 1), 200, 0).size(), 11u) << "no place for minor ticks";
}

TEST(LinearTicks, CrowdedTicksGiveWay) {
    EXPECT_LE(ChooseTicks(Linear(0, 1, 1e-9), 400, 0).size(), 140u);
    EXPECT_LE(ChooseTicks(Linear(0, 1, 1e-300), 400, 0).size(), 140u);
    EXPECT_TRUE(ChooseTicks(Linear(1, 1, 1), 400, 0).empty());
    EXPECT_TRUE(ChooseTicks(Linear(0, std::numeric_limits<double>::infinity(), 1), 400, 0).empty());
    EXPECT_TRUE(ChooseTicks(Linear(1e300, 1e300 * (1 + 1e-15), 1e200), 400, 0).empty());
}

TEST(LogTicks, DecadesAndTheirDivisionsAreLabelled) {
    struct TCase {
        double min, max;
        int divisions;
        const char* labels;
    };
    const TCase cases[] = {
        {0.1, 100, 1, "0.1 1 10 100"},   {1, 100, 2, "1 5 10 50 100"},
        {1, 10, 5, "1 2 4 6 8 10"},      {1e-6, 1e-5, 2, "10^−6 5×10^−6 10^−5"},
        {1e5, 1e7, 1, "10^5 10^6 10^7"}, {2, 4, 2, "2.0 2.2 2.4 2.6 2.8 3.0 3.2 3.4 3.6 3.8 4.0"},
    };
    for (const TCase& c : cases) {
        TTickRules rules = Linear(c.min, c.max, 1);
        rules.LogScale = true;
        rules.LogCycleDivisions = c.divisions;
        if (c.min == 2) rules.MinSteps = 10;
        EXPECT_EQ(LabelsOf(rules), c.labels);
    }
}

TEST(LogTicks, CoarserLabelsDropDivisionsThenDecades) {
    TTickRules rules = Linear(1, 1e6, 1);
    rules.LogScale = true;
    EXPECT_EQ(LabelsOf(rules, 500, 1), "10^0 10^1 10^2 10^3 10^4 10^5 10^6");
    EXPECT_EQ(LabelsOf(rules, 500, 3), "10^0 10^3 10^6");
    rules.Min = 1e-300;
    rules.Max = 1e300;
    EXPECT_EQ(LabelsOf(rules, 500, 8), "10^−300 10^−200 10^−100 10^0 10^100 10^200 10^300");
    rules.Min = -1;
    EXPECT_TRUE(ChooseTicks(rules, 500, 0).empty());
}

struct TDateCase {
    TAxis::Dateticks type;
    const char* format;
    double min, max;
    const char* labels;
};

TEST(DateTicks, TicksLieOnTheUnitsOfTheCalendar) {
    const double day = ValueOfDate(QDate(2024, 2, 27));
    const TDateCase cases[] = {
        {TAxis::dt_minute, "h:nn", day, day + 3 / 1440.0, "0:00 0:01 0:02 0:03"},
        {TAxis::dt_5minute, "hh:nn", day, day + 12 / 1440.0, "00:00 00:05 00:10"},
        {TAxis::dt_halfhourly, "h:nn am/pm", day + 0.49, day + 0.55, "12:00 pm 12:30 pm 1:00 pm"},
        {TAxis::dt_hourly, "h", day, day + 0.1, "0 1 2"},
        {TAxis::dt_daily, "dd-mmm", day, day + 4, "27-Feb 28-Feb 29-Feb 01-Mar 02-Mar"},
        {TAxis::dt_weekly, "ddd d", day, day + 14, "Mon 4 Mon 11"},
        {TAxis::dt_monthly, "mmm yy", day, day + 70, "Mar 24 Apr 24 May 24"},
        {TAxis::dt_2monthly, "m", day, day + 200, "3 5 7 9"},
        {TAxis::dt_quarterly, "mm/yyyy", day, day + 300, "04/2024 07/2024 10/2024"},
        {TAxis::dt_annually, "yyyy", day, day + 1000, "2025 2026"},
        {TAxis::dt_decade, "yyyy", day, day + 8000, "2030 2040"},
        {TAxis::dt_century, "yyyy", day, day + 70000, "2100 2200"},
    };
    for (const TDateCase& c : cases) {
        TTickRules rules = Linear(c.min, c.max, 1);
        rules.ShowAsTime = true;
        rules.DateTickType = c.type;
        rules.DateTimeFormat = c.format;
        EXPECT_EQ(LabelsOf(rules), c.labels);
    }
}

TEST(DateTicks, CustomTicksFollowTheStepOfTheAxis) {
    TTickRules rules = Linear(45000, 45010, 2.5);
    rules.ShowAsTime = true;
    rules.DateTickType = TAxis::dt_custom;
    rules.DateTimeFormat = "d.m. h'h'";
    EXPECT_EQ(LabelsOf(rules), "15.3. 0h 17.3. 12h 20.3. 0h 22.3. 12h 25.3. 0h");
}

TEST(DateTicks, MinutesOverDecadesBecomeYears) {
    TTickRules rules = Linear(20000, 45000, 5000);
    rules.ShowAsTime = true;
    rules.DateTimeFormat = "yyyy";
    EXPECT_LE(ChooseTicks(rules, 400, 0).size(), 150u);
    rules.Min = -1e300;
    rules.Max = 1e300;
    rules.Step = 1e300;
    EXPECT_EQ(LabelsOf(rules), "−1×10^300 0 1×10^300");
}

TEST(DateTexts, EveryTokenIsKnown) {
    // 2023-03-05 (a Sunday), 14:07:09.250.
    const double value = 44990 + (14 * 3600 + 7 * 60 + 9.25) / 86400;
    struct TCase {
        const char* format;
        const char* text;
    };
    const TCase cases[] = {{"d dd ddd dddd", "5 05 Sun Sunday"},
                           {"m mm mmm mmmm", "3 03 Mar March"},
                           {"y yy yyyy", "23 23 2023"},
                           {"h hh n nn s ss zzz", "14 14 7 07 9 09 250"},
                           {"h:mm", "14:07"},
                           {"hh:nn:ss AM/PM", "02:07:09 PM"},
                           {"ha/p", "2p"},
                           {"YYYY-MM-DD", "2023-03-05"},
                           {"'day' d \"of\" mmm, x", "day 5 of Mar, x"},
                           {"d 'open", "5 open"},
                           {"", ""}};
    for (const TCase& c : cases) EXPECT_EQ(DateText(value, c.format).toStdString(), c.text);
    EXPECT_EQ(DateText(0, "yyyy-mm-dd").toStdString(), "1899-12-30");
    EXPECT_EQ(DateText(-0.25, "yyyy-mm-dd h").toStdString(), "1899-12-29 18");
    EXPECT_EQ(DateText(44999.9999999999, "d h:nn").toStdString(), "15 0:00");
    for (const double outside : {-1e9, 1e9, std::nan("")}) EXPECT_TRUE(DateText(outside, "d").isEmpty());
}

TEST(ScaleMap, MapsEveryRangeAndBack) {
    struct TCase {
        double min, max;
        TScaleKind kind;
    };
    const TCase cases[] = {{0, 10, TScaleKind::Linear},      {-1e308, 1e308, TScaleKind::Linear},
                           {0, 1e-300, TScaleKind::Linear},  {0, 5e-324, TScaleKind::Linear},
                           {1e-300, 1e300, TScaleKind::Log}, {1, 1000, TScaleKind::Log}};
    for (const TCase& c : cases) {
        const TScaleMap map(c.min, c.max, 500, 100, c.kind);
        const double values[] = {c.min, c.max, std::nan("")};
        double places[3];
        map.MapAll(values, places);
        EXPECT_DOUBLE_EQ(places[0], 500);
        EXPECT_DOUBLE_EQ(places[1], 100);
        EXPECT_TRUE(std::isnan(places[2]));
        // Between 0 and the smallest number there is none.
        if (c.max > 5e-324) {
            EXPECT_DOUBLE_EQ(map.Position(map.Value(300)), 300);
        }
    }
    EXPECT_DOUBLE_EQ(TScaleMap(1, 100, 0, 200, TScaleKind::Log).Position(10), 100);
    EXPECT_TRUE(std::isnan(TScaleMap(1, 100, 0, 200, TScaleKind::Log).Position(0)));
}

} // namespace
} // namespace lumoplot
