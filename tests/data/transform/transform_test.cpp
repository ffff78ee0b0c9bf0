#include "data/transform/baseline.h"
#include "data/transform/peaks.h"
#include "data/transform/transform.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace lumoplot {
namespace {

using enum TTransformKind;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kTransformRounding = 1e-12;

struct TTransformCase {
    const char* what;
    TCurveValues curve;
    TTransform transform;
    TCurveValues expected;
};

// Worked out by hand.
const TTransformCase kTransformCases[] = {
    {"shift", {{1, 2}, {5, 7}}, {Shift, 10, -1}, {{11, 12}, {4, 6}}},
    {"a mirror keeps X ascending", {{1, 2}, {5, 7}}, {Scale, -2, 3}, {{-4, -2}, {21, 15}}},
    {"normalise", {{0, 1, 2}, {4, 6, 5}}, {Normalise, -1, 1}, {{0, 1, 2}, {-1, 1, 0}}},
    {"both ends of a range stay", {{0, 1, 2, 3}, {4, 5, 6, 7}}, {CutRange, 1, 2}, {{1, 2}, {5, 6}}},
    {"resample", {{0, 1, 4}, {0, 2, 8}}, {Resample, 5, 0}, {{0, 1, 2, 3, 4}, {0, 2, 4, 6, 8}}},
    {"resample over a step", {{0, 1, 1, 2}, {0, 2, 4, 4}}, {Resample, 3, 0}, {{0, 1, 2}, {0, 3, 4}}},
    {"a rest is a block", {{0, 1, 2, 3, 5}, {1, 3, 5, 7, 9}}, {Average, 2, 0}, {{0.5, 2.5, 5}, {2, 6, 9}}},
    {"median",
     {{0, 1, 2, 3, 4}, {1, 90, 2, 3, 4}},
     {RunningMedian, 3, 0},
     {{0, 1, 2, 3, 4}, {1, 2, 3, 3, 4}}},
    {"the slope of x² at uneven X",
     {{0, 1, 3, 4}, {0, 1, 9, 16}},
     {Derivative, 0, 0},
     {{0, 1, 3, 4}, {0, 2, 6, 8}}},
    {"the slope of two points", {{0, 2}, {1, 5}}, {Derivative, 0, 0}, {{0, 2}, {2, 2}}},
    {"integral", {{0, 1, 3}, {2, 4, 0}}, {Integral, -9, 9}, {{0, 1, 3}, {0, 3, 7}}},
    {"integral between", {{0, 2, 4}, {0, 2, 4}}, {Integral, 1, 3}, {{1, 2, 3}, {0, 1.5, 4}}},
    {"no number is no point", {{0, 1, 2}, {1, kNaN, 3}}, {Shift, 0, 0}, {{0, 2}, {1, 3}}},
    // Table of Savitzky and Golay for 5 points and degree 2: (-3, 12, 17, 12, -3) / 35, the rest by the
    // parabola through the window at that end.
    {"Savitzky-Golay",
     {{0, 1, 2, 3, 4}, {0, 0, 35, 0, 0}},
     {SavitzkyGolay, 5, 2},
     {{0, 1, 2, 3, 4}, {-3, 12, 17, 12, -3}}},
    {"a cubic is its own smoothing",
     {{0, 1, 2, 4, 7, 8}, {0, 1, 8, 64, 343, 512}},
     {SavitzkyGolay, 5, 3},
     {{0, 1, 2, 4, 7, 8}, {0, 1, 8, 64, 343, 512}}},
};

struct TBaselineCase {
    const char* what;
    TBaselineShape shape;
    int degree;
    TCurveValues places;
    TCurveValues expected;
};

// Worked out by hand.
const TBaselineCase kBaselineCases[] = {
    {"lines go on beyond the ends",
     TBaselineShape::Lines,
     0,
     {{4, 0, 2}, {0, 0, 2}},
     {{-1, 0, 1, 3, 5}, {-1, 0, 1, 1, -1}}},
    {"a line amid three", TBaselineShape::Polynomial, 1, {{0, 1, 2}, {0, 3, 0}}, {{0, 1, 5}, {1, 1, 1}}},
    {"x² through three", TBaselineShape::Polynomial, 9, {{0, 1, 3}, {0, 1, 9}}, {{-2, 2, 4}, {4, 4, 16}}},
    {"a spline of two is a line", TBaselineShape::Spline, 0, {{0, 2}, {1, 5}}, {{-1, 1, 4}, {-1, 3, 9}}},
    // The bend at 1 is -3, so its slopes at the ends are 1.5 and -1.5.
    {"a natural spline",
     TBaselineShape::Spline,
     0,
     {{0, 1, 2}, {0, 1, 0}},
     {{-1, 0.5, 1, 1.5, 3}, {-1.5, 0.6875, 1, 0.6875, -1.5}}},
};

TEST(Baseline, GoesThroughItsPlaces) {
    for (const TBaselineCase& c : kBaselineCases) {
        SCOPED_TRACE(c.what);
        const std::vector<double> heights = BaselineAt({c.shape, c.degree, c.places}, c.expected.X);
        ASSERT_EQ(heights.size(), c.expected.Y.size());
        for (std::size_t i = 0; i < heights.size(); ++i)
            EXPECT_NEAR(heights[i], c.expected.Y[i], kTransformRounding) << c.expected.X[i];
    }
    const double x[] = {1};
    for (const TCurveValues& places : {TCurveValues{{1}, {1}}, {{1, 1}, {1, 2}}, {{1, kNaN}, {1, 2}}})
        EXPECT_THROW(BaselineAt({TBaselineShape::Lines, 1, places}, x), ETransformError);
}

TEST(Transform, GivesWhatWasWorkedOutByHand) {
    for (const TTransformCase& c : kTransformCases) {
        SCOPED_TRACE(c.what);
        const TCurveValues result = Transformed(c.curve, c.transform);
        ASSERT_EQ(result.X.size(), c.expected.X.size());
        for (std::size_t i = 0; i < result.X.size(); ++i) {
            EXPECT_NEAR(result.X[i], c.expected.X[i], kTransformRounding) << i;
            EXPECT_NEAR(result.Y[i], c.expected.Y[i], kTransformRounding * (1 + std::abs(c.expected.Y[i])))
                << i;
        }
    }
}

// A value and its error are known by the same rule: twice the value has twice the error.
TEST(Transform, ErrorsGoAlongWhereTheNewYAreIndependent) {
    const TCurveValues curve = {{0, 1, 2, kNaN, 3}, {4, 6, 5, 9, 8}, {0.3, 0.4, 0.6, 1, 0}};
    const std::pair<TTransform, std::vector<double>> cases[] = {
        {{Shift, 10, -1}, {0.3, 0.4, 0.6, 0}},
        {{Scale, -2, -3}, {0, 1.8, 1.2, 0.9}},
        {{Normalise, 1, 0}, {0.075, 0.1, 0.15, 0}},
        {{CutRange, 1, 2}, {0.4, 0.6}},
        {{Average, 2, 0}, {0.25, 0}},
        {{Resample, 4, 0}, {}},
        {{SavitzkyGolay, 3, 1}, {}},
        {{RunningMedian, 3, 0}, {}},
        {{Derivative, 0, 0}, {}},
        {{Integral, 0, 3}, {}},
    };
    for (const auto& [transform, expected] : cases) {
        const TCurveValues result = Transformed(curve, transform);
        ASSERT_EQ(result.YErrors.size(), expected.size()) << static_cast<int>(transform.Kind);
        for (std::size_t i = 0; i < expected.size(); ++i)
            EXPECT_NEAR(result.YErrors[i], expected[i], kTransformRounding)
                << static_cast<int>(transform.Kind);
    }
}

TEST(Transform, SaysWhatIsWrong) {
    const TCurveValues flat = {{1, 1, 1}, {2, 2, 2}};
    const std::pair<TTransform, const char*> cases[] = {
        {{Scale, 0, 1}, "A factor must not be 0"},
        {{Normalise, 0, 1}, "All Y are equal"},
        {{CutRange, 2, 1}, "The range ends before it begins"},
        {{CutRange, 2, 3}, "No point lies in the range"},
        {{Resample, 1.5, 0}, "The number of points must be a whole number from 2 on"},
        {{Resample, 10, 0}, "All X are equal"},
        {{SavitzkyGolay, 4, 2}, "The number of neighbours must be odd"},
        {{SavitzkyGolay, 3, 3}, "The degree must be below the number of neighbours"},
        {{RunningMedian, 1e300, 0}, "The number of neighbours must be a whole number from 3 on"},
        {{Derivative, 0, 0}, "All X are equal"},
        {{Shift, kNaN, 0}, "Both numbers are needed"},
    };
    for (const auto& [transform, text] : cases) {
        try {
            Transformed(flat, transform);
            ADD_FAILURE() << text;
        } catch (const ETransformError& error) {
            EXPECT_STREQ(error.what(), text);
        }
    }
    EXPECT_THROW(Transformed({{1}, {kNaN}}, {Shift, 0, 0}), ETransformError);
}

// Two triangles on a slope-free ground: one of height 4 about 2 with a flat top, one of height 2 about 7.
TEST(Peaks, HavePlaceHeightWidthAndArea) {
    const TCurveValues curve = {{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}, {0, 0, 4, 4, 0, 0, 0, 2, 0, 0}};
    const std::vector<TPeak> peaks = FindPeaks(curve, 0.1);
    ASSERT_EQ(peaks.size(), 2u);
    EXPECT_EQ(peaks[0].Position, 2.5);
    EXPECT_EQ(peaks[0].Height, 4);
    EXPECT_EQ(peaks[0].Width, 2);
    EXPECT_EQ(peaks[1].Position, 7);
    EXPECT_EQ(peaks[1].Width, 1);
    EXPECT_EQ(peaks[1].Area, 2);
    EXPECT_EQ(FindPeaks(curve, 0.6).size(), 1u) << "only one rises by more than half of the range";
    EXPECT_TRUE(FindPeaks({{0, 1, 2}, {1, 2, 3}}, 0).empty());
}

} // namespace
} // namespace lumoplot
