#include "graph/model/axis_scale.h"

#include "common/thrown_text.h"
#include "graph/model/graph.h"
#include "support/errors.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace lumoplot {
namespace {

constexpr double kRelativeError = 1e-9; // powers of ten are computed by exp and a rounded logarithm

void ExpectNear(double actual, double expected) {
    EXPECT_NEAR(actual, expected, kRelativeError * std::max(1.0, std::abs(expected)));
}

struct TRangeCase {
    double dataMin, dataMax;
    TAxisRange expected;
};

TEST(AxisScale, RangesAreRoundAndHoldTheData) {
    // Worked out by hand from the step and range rules with five steps at least.
    const TRangeCase cases[] = {
        {0, 0, {-1, 1, 0.2}},        // span 2: p = 1, and 2 / 0.5 = 4 steps are too few
        {5, 5, {0, 6, 1}},           //
        {-5, -5, {-6, 0, 1}},        //
        {0.3, 9.7, {0, 10, 1}},      // drawn to 0
        {-9.7, -0.3, {-10, 0, 1}},   //
        {1.5, 9.7, {0, 10, 1}},      //
        {-9.7, -1.5, {-10, 0, 1}},   //
        {12, 13, {11.8, 13.2, 0.2}}, // span 1: p = 1
        {-2, 3, {-3, 4, 1}},         // the extra step of a negative minimum leaves room already
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.dataMin << " .. " << c.dataMax);
        const TAxisRange range = AutoRange(c.dataMin, c.dataMax, {});
        ExpectNear(range.min, c.expected.min);
        ExpectNear(range.max, c.expected.max);
        ExpectNear(range.step, c.expected.step);
    }
    ExpectNear(*TickStep(0, 0.1, 5), 0.01); // spans below 1 start a decade lower
}

TEST(AxisScale, AUserStepIsKeptWhileItIsUsable) {
    ExpectNear(AutoRange(0, 10, {.autoStepping = false, .userStep = 2.5}).step, 2.5);
    ExpectNear(AutoRange(0, 10, {.autoStepping = false, .userStep = 0.001}).step, 1);
    ExpectNear(AutoRange(0, 10, {.autoStepping = false, .userStep = -1}).step, 1);
}

TEST(AxisScale, ImpossibleRangesAreErrors) {
    EXPECT_THROW(AutoRange(2, 1, {}), EScaleError);
    EXPECT_THROW(AutoRange(-1e308, 1e308, {}), EScaleError);
    EXPECT_THROW(AutoRange(5e-324, 5e-324, {}), EScaleError); // no step is that small
    EXPECT_FALSE(TickStep(1, 1, 5));
    EXPECT_FALSE(TickStep(0, std::numeric_limits<double>::quiet_NaN(), 5));
}

TEST(AxisScale, AnyFiniteDataLieInsideTheRange) {
    for (int exponent = -300; exponent <= 300; exponent += 20) {
        for (const double low : {-1.0, -0.3, 0.0, 0.7}) {
            const double unit = std::pow(10.0, exponent);
            const TAxisRange range = AutoRange(low * unit, 1.1 * unit, {});
            EXPECT_LE(range.min, low * unit);
            EXPECT_GE(range.max, 1.1 * unit);
            EXPECT_GT(range.step, 0);
        }
    }
}

TEST(Axis, RescalingFollowsTheDataOrSaysWhatIsWrong) {
    TxyGraph graph;
    TSeries& series = *graph.FindSeries(graph.AddSeries());
    series.AddPoint(0.3, 5);
    series.AddPoint(9.7, 5);
    series.SetZeroValue(5);
    graph.PrepareForDrawing();
    ExpectNear(graph.XAxis()->Min(), 0);
    ExpectNear(graph.XAxis()->Max(), 10);
    ExpectNear(graph.YAxis()->Min(), -1); // corrected Y is 0
    int failures = 0;
    QObject::connect(&graph, &TxyGraph::OnScaleError, [&] { ++failures; });
    graph.XAxis()->SetStepSize(1);
    graph.XAxis()->SetMin(11);
    graph.PrepareForDrawing();
    EXPECT_TRUE(graph.ScaleFailed());
    EXPECT_EQ(failures, 1);
    EXPECT_EQ(ThrownText<EScaleError>([&] { graph.XAxis()->Rescale(); }), "X axisAxis MIN exceeds axis MAX");
}

TEST(Axis, ARangeWithoutAStepIsGivenBackToTheData) {
    TxyGraph graph;
    TSeries& series = *graph.FindSeries(graph.AddSeries());
    series.AddPoint(0.3, 5);
    series.AddPoint(9.7, 6);
    TAxis& axis = *graph.XAxis();
    axis.SetMin(11);
    EXPECT_TRUE(axis.AutoSizing());
    graph.PrepareForDrawing();
    ExpectNear(axis.Min(), 0);
    ExpectNear(axis.Max(), 10);
    axis.SetMin(11);
    axis.SetMax(12);
    EXPECT_FALSE(axis.AutoSizing());
    graph.PrepareForDrawing();
    ExpectNear(axis.Min(), 11);
    ExpectNear(axis.StepSize(), 0.2);
    axis.SetMax(11);
    axis.SetAutoSizing(false);
    graph.PrepareForDrawing();
    EXPECT_FALSE(graph.ScaleFailed());
    ExpectNear(axis.Max(), 10);
}

TEST(Axis, EveryLogarithmicRangeHoldsItsData) {
    struct TCase {
        double first, last, min, max;
    };
    const TCase cases[] = {{10, 10, 10, 100},
                           {2, 3, 2, 5},
                           {0.5, 200, 0.1, 1000},
                           {-5, 200, 100, 1000}}; // only what is positive counts
    for (const TCase& c : cases) {
        TxyGraph graph;
        TSeries& series = *graph.FindSeries(graph.AddSeries());
        series.AddPoint(c.first, 1);
        series.AddPoint(c.last, 1);
        graph.XAxis()->SetLogScale(true);
        graph.PrepareForDrawing();
        ExpectNear(graph.XAxis()->Min(), c.min);
        ExpectNear(graph.XAxis()->Max(), c.max);
    }
}

TEST(AutoLogRange, IsWholeDecadesOrTheNearestOneTwoFive) {
    struct TCase {
        double dataMin, dataMax, min, max;
    };
    const TCase cases[] = {
        {3, 40, 2, 50}, {0.03, 40, 0.01, 100}, {1, 100, 1, 100},         {1.5, 1.6, 1, 2},    {7, 8, 5, 10},
        {5, 5, 1, 10},  {10, 10, 10, 100},     {2e-7, 9e-6, 2e-7, 1e-5}, {11, 1000, 10, 1000}};
    for (const TCase& c : cases) {
        const TAxisRange range = AutoLogRange(c.dataMin, c.dataMax);
        EXPECT_NEAR(range.min / c.min, 1, 1e-12) << c.dataMin << ' ' << c.dataMax;
        EXPECT_NEAR(range.max / c.max, 1, 1e-12) << c.dataMin << ' ' << c.dataMax;
    }
}

TEST(Axis, ARangeIsAtLeastAsLongAsItMustBe) {
    TxyGraph graph;
    TSeries& series = *graph.FindSeries(graph.AddSeries());
    series.AddPoint(0, 1);
    series.AddPoint(9.5, 1);
    for (const auto& [least, length, step] : {std::tuple(60.0, 60.0, 10.0), {3.0, 11.0, 1.0}}) {
        graph.XAxis()->SetMinScaleLength(least);
        graph.NeedRescale();
        graph.PrepareForDrawing();
        ExpectNear(graph.XAxis()->Max() - graph.XAxis()->Min(), length);
        ExpectNear(graph.XAxis()->StepSize(), step);
    }
}

} // namespace
} // namespace lumoplot
