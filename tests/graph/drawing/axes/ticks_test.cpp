#include "graph/drawing/axes/ticks.h"

#include "common/case_file.h"
#include "graph/drawing/axes/rich_text.h"
#include "graph/model/axis_scale.h"
#include "graph/model/graph.h"
#include "graph/plotted/date_text.h"
#include "graph/plotted/scale_map.h"

#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <set>

namespace lumoplot {
namespace {

std::string Plain(const TLabelText& label) {
    const QString exponent = label.Exponent.isEmpty() ? QString() : QStringLiteral("^") + label.Exponent;
    return (label.Base + exponent).toStdString();
}

std::string LabelsOf(const TTickRules& rules, double length = 500, int coarseness = 0) {
    std::string text;
    for (const TTick& tick : ChooseTicks(rules, length, coarseness).All)
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
    for (const auto& row : ReadCases("tick_labels.tsv", 4)) {
        const auto number = [&row](std::size_t i) { return std::strtod(row[i].c_str(), nullptr); };
        EXPECT_EQ(LabelsOf(Linear(number(0), number(1), number(2))), row[3]);
    }
}

// The step that the model keeps is off by rounding in its last digits; what is drawn is the decimal it stands
// for.
TEST(LinearTicks, AComputedStepStandsForItsDecimal) {
    const TTickRules rules = Linear(0, 1e12, 2e11 * (1 + 5e-9));
    EXPECT_EQ(LabelsOf(rules), "0 2.0×10^11 4.0×10^11 6.0×10^11 8.0×10^11 1.0×10^12");
    for (const double step : {0.2500000001, 1.0000000005474308, 2e-300 * (1 + 1e-7), 5e300}) {
        const double decimal = DecimalStep(step);
        EXPECT_LT(std::abs(decimal / step - 1), 1e-6) << step;
        EXPECT_LE(QString::number(decimal, 'g', 15).size(), 6) << step;
    }
    EXPECT_EQ(DecimalStep(0.1234567), 0.1234567);
}

TEST(LinearTicks, WhatAllLabelsShareIsWrittenOnce) {
    for (const auto& row : ReadCases("common_parts.tsv", 4)) {
        const double min = std::strtod(row[0].c_str(), nullptr), max = std::strtod(row[1].c_str(), nullptr);
        TTickRules rules = Linear(min, max, *TickStep(min, max, 5));
        rules.Numbers.CommonPart = TCommonPart::Once;
        EXPECT_EQ(LabelsOf(rules), row[3]);
        EXPECT_EQ(ChooseTicks(rules, 500, 0).Common.toStdString(), row[2]);
    }
}

double ValueOf(QString text) {
    return text.replace(QChar(0x2212), QLatin1Char('-')).toDouble();
}

// "×10^{3}+5×10^{9}" as a factor and an offset.
std::pair<double, double> CommonOf(const QString& text) {
    const static QRegularExpression form(
        QString::fromUtf8("^(?:×10\\^\\{(.+?)\\})?(?:([+−][0-9.]+)(?:×10\\^\\{(.+?)\\})?)?$"));
    const QRegularExpressionMatch match = form.match(text);
    EXPECT_TRUE(match.hasMatch()) << text.toStdString();
    const auto power = [&](int group) {
        return match.captured(group).isEmpty() ? 1 : std::pow(10.0, ValueOf(match.captured(group)));
    };
    return {power(1), match.captured(2).isEmpty() ? 0 : ValueOf(match.captured(2)) * power(3)};
}

// Over random ranges: what a label says lies within half a pixel of its tick, and no two say the same.
TEST(LinearTicks, LabelsSayWhereTheirTicksAre) {
    std::mt19937 random(17);
    std::uniform_real_distribution<> exponents(-12, 12), part(-1, 1);
    constexpr double kPixels = 600;
    for (int round = 0; round < 500; ++round) {
        const double middle = part(random) * std::pow(10.0, exponents(random));
        const double span = std::max(std::pow(10.0, exponents(random)), std::abs(middle) * 1e-9);
        TTickRules rules = Linear(middle - span / 2, middle + span / 2, 1);
        rules.Step = *TickStep(rules.Min, rules.Max, 5);
        rules.Numbers.CommonPart = TCommonPart::Once;
        const TTicks ticks = ChooseTicks(rules, kPixels, 0);
        const auto [factor, offset] = CommonOf(ticks.Common);
        std::set<QString> seen;
        for (const TTick& tick : ticks.All) {
            if (tick.Label.IsEmpty()) continue;
            EXPECT_TRUE(seen.insert(tick.Label.Base).second) << rules.Min << ' ' << rules.Max;
            const double said = ValueOf(tick.Label.Base) * factor + offset;
            EXPECT_LE(std::abs(said - tick.Value), span / kPixels / 2) << rules.Min << ' ' << rules.Max;
        }
        EXPECT_GE(seen.size(), 4u) << rules.Min << ' ' << rules.Max;
    }
}

TEST(LinearTicks, AStepOfTheUsersChoiceCountsFromMin) {
    TTickRules rules = Linear(1, 10, 3);
    EXPECT_EQ(LabelsOf(rules), "3 6 9");
    rules.CountsFromMin = true;
    EXPECT_EQ(LabelsOf(rules), "1 4 7 10");
    TxyGraph graph;
    TAxis& axis = *graph.XAxis();
    axis.SetMin(1);
    axis.SetMax(10);
    axis.SetStepSize(3);
    EXPECT_EQ(LabelsOf(TickRulesOf(axis)), "1 4 7 10");
    axis.SetAutoStepping(true);
    EXPECT_FALSE(TickRulesOf(axis).CountsFromMin);
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
    EXPECT_EQ(ChooseTicks(rules, 500, 1).All.size(), 9u);
}

TEST(LinearTicks, MinorTicksDivideAStepByItsLeadingDigit) {
    // 0 to three steps: two whole steps inside and as many parts more as fit.
    for (const auto& [step, parts] : {std::pair(0.1, 5), {20.0, 4}, {500.0, 5}, {2.5, 1}}) {
        const auto ticks = ChooseTicks(Linear(0, 3 * step, step), 600, 0).All;
        EXPECT_EQ(ticks.size(), static_cast<std::size_t>(3 * parts + 1)) << step;
        EXPECT_NEAR(ticks[1].Value, step / parts, 1e-9 * step) << step;
    }
    EXPECT_EQ(ChooseTicks(Linear(0, 10, 1), 200, 0).All.size(), 11u) << "no place for minor ticks";
}

TEST(LinearTicks, CrowdedTicksGiveWay) {
    EXPECT_LE(ChooseTicks(Linear(0, 1, 1e-9), 400, 0).All.size(), 140u);
    EXPECT_LE(ChooseTicks(Linear(0, 1, 1e-300), 400, 0).All.size(), 140u);
    EXPECT_TRUE(ChooseTicks(Linear(1, 1, 1), 400, 0).All.empty());
    EXPECT_TRUE(ChooseTicks(Linear(0, std::numeric_limits<double>::infinity(), 1), 400, 0).All.empty());
    EXPECT_TRUE(ChooseTicks(Linear(1e300, 1e300 * (1 + 1e-15), 1e200), 400, 0).All.empty());
}

TEST(LogTicks, DecadesAndTheirDivisionsAreLabelled) {
    struct TCase {
        double min, max;
        int divisions;
        const char* labels;
    };
    const TCase cases[] = {
        {0.1, 100, 1, "0.1 1 10 100"},
        {1, 100, 2, "1 5 10 50 100"},
        {1, 100, 3, "1 3.3 6.7 10 33 67 100"},
        {1e5, 1e6, 3, "10^5 3.3×10^5 6.7×10^5 10^6"},
        {1, 10, 8, "1 1.25 2.5 3.75 5 6.25 7.5 8.75 10"},
        {1, 10, 5, "1 2 4 6 8 10"},
        {1e-6, 1e-5, 2, "10^−6 2×10^−6 5×10^−6 10^−5"},
        {1e5, 1e7, 1, "10^5 10^6 10^7"},
        {2, 4, 2, "2.0 2.2 2.4 2.6 2.8 3.0 3.2 3.4 3.6 3.8 4.0"},
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
    EXPECT_TRUE(ChooseTicks(rules, 500, 0).All.empty());
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

// What a label leaves out of the time of its tick: all that is finer than the finest unit that it names.
double LeftOut(double value, const QString& label) {
    const double units = label.contains(u'.')
                             ? 86400e3
                             : std::array{1.0, 1440.0, 86400.0}[std::min<qsizetype>(2, label.count(u':'))];
    return std::abs(value * units - std::round(value * units)) / units;
}

// Where the format of the axis says the same at neighbouring ticks, one that tells them apart takes its
// place; a label says where its tick lies to half a pixel.
TEST(DateTicks, LabelsTellTicksApartAtEverySpan) {
    const double day = ValueOfDate(QDate(2024, 2, 27));
    const double second = 1 / 86400.0;
    for (const double length : {0.02 * second, 5 * second, 300 * second, 0.5, 40.0, 2000.0, 100000.0})
        for (const auto type : {TAxis::dt_minute, TAxis::dt_custom})
            for (int coarseness = 0; coarseness < 12; ++coarseness) {
                TTickRules rules = Linear(day, day + length, length / 5);
                rules.ShowAsTime = true;
                rules.DateTickType = type;
                rules.DateTimeFormat = "dd-mmm";
                QString previous;
                for (const TTick& tick : ChooseTicks(rules, 1000, coarseness).All) {
                    EXPECT_EQ(tick.Kind == TTickKind::Minor, tick.Label.IsEmpty());
                    if (tick.Label.IsEmpty()) continue;
                    EXPECT_NE(tick.Label.Base, previous) << length << ' ' << coarseness;
                    EXPECT_LE(LeftOut(tick.Value, tick.Label.Base), std::max(length / 2000, 1e-11))
                        << length << ' ' << tick.Label.Base.toStdString();
                    previous = tick.Label.Base;
                }
            }
}

TEST(DateTicks, MinorTicksDivideWhatLiesBetweenLabels) {
    const double minute = 1 / 1440.0;
    for (const double length : {0.0001, 0.02, 0.7, 3.0, 14.0, 70.0, 300.0})
        for (int coarseness = 0; coarseness < 8; ++coarseness) {
            TTickRules rules = Linear(45000, 45000 + length * minute, minute);
            rules.ShowAsTime = true;
            rules.DateTickType = TAxis::dt_minute;
            std::vector<double> since; // the last label
            for (const TTick& tick : ChooseTicks(rules, 600, coarseness).All) {
                if (tick.Kind == TTickKind::Minor && since.empty()) continue;
                since.push_back(tick.Value);
                if (tick.Kind == TTickKind::Minor) continue;
                const double part = (since.back() - since.front()) / static_cast<double>(since.size() - 1);
                for (std::size_t i = 1; i < since.size(); ++i)
                    EXPECT_NEAR(since[i] - since[i - 1], part, 1e-10) << length << ' ' << coarseness;
                since = {tick.Value};
            }
        }
}

TEST(DateTicks, MinutesOverDecadesBecomeYears) {
    TTickRules rules = Linear(20000, 45000, 5000);
    rules.ShowAsTime = true;
    rules.DateTimeFormat = "yyyy";
    EXPECT_LE(ChooseTicks(rules, 400, 0).All.size(), 150u);
    rules.Min = -1e300;
    rules.Max = 1e300;
    rules.Step = 1e300;
    EXPECT_EQ(LabelsOf(rules), "−1×10^300 0 1×10^300");
}

TEST(DateTexts, EveryTokenIsKnown) {
    const double value = 44990 + (14 * 3600 + 7 * 60 + 9.25) / 86400;
    for (const auto& row : ReadCases("date_formats.tsv", 2))
        EXPECT_EQ(DateText(value, row[0]).toStdString(), row[1]);
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

// Each line as its runs, raised ones behind ^ and lowered ones behind _, lines apart by |.
std::string Read(const char* text) {
    std::string result;
    for (const TTextLine& line : RichLines(QString::fromUtf8(text))) {
        if (!result.empty()) result += '|';
        for (const TTextRun& run : line) {
            if (run.Level != TTextLevel::Base) result += run.Level == TTextLevel::Raised ? "^" : "_";
            result += "<" + run.Text.toStdString() + ">";
        }
    }
    return result;
}

TEST(RichText, OnlyBracesAndKnownNamesMeanSomething) {
    for (const auto& row : ReadCases("rich_texts.tsv", 2)) EXPECT_EQ(Read(row[0].c_str()), row[1]);
}

} // namespace
} // namespace lumoplot
