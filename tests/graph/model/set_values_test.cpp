#include "graph/model/set_values.h"

#include "expr/parser_exception.h"
#include "graph/model/graph.h"

#include <cmath>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

class SetValues : public testing::Test {
protected:
    SetValues() {
        for (int i = 0; i < 3; ++i) Graph.AddSeries();
        for (int i = 1; i <= 4; ++i) Target().AddPoint(i, 10 * i);
        Graph.FindSeries(2)->SetSeriesName("Blank");
        Graph.FindSeries(2)->AddPoint(0, 0);
        Graph.FindSeries(2)->AddPoint(2, 8);
        Graph.FindSeries(2)->AddPoint(3, 9);
        Graph.FindSeries(3)->SetSeriesName("sin"); // means something else already
    }

    TSeries& Target() { return *Graph.FindSeries(1); }
    std::vector<double> Ys() {
        std::vector<double> ys;
        for (auto point = Target().First(); point; point = point.Next()) ys.push_back(point.Y());
        return ys;
    }

    TxyGraph Graph;
};

struct TFormulaCase {
    const char* formula;
    std::vector<double> ys;
    int unusable;
};

TEST_F(SetValues, ErrorsOfYGoThroughTheFormula) {
    const auto errorsAfter = [&](const char* formula) {
        Target().Clear();
        for (int i = 1; i <= 3; ++i) Target().AddPoint(i, 10 * i, i == 3 ? 0 : 0.5 * i);
        TValueFormula(Target(), formula).Apply(std::nullopt);
        return Target().YErrors();
    };
    using TErrors = std::vector<double>;
    EXPECT_EQ(errorsAfter("3-2*y"), (TErrors{1, 2, 0}));
    EXPECT_EQ(errorsAfter("2*y1"), (TErrors{1, 2, 0})) << "the data set by its other name";
    EXPECT_EQ(errorsAfter("y*y"), (TErrors{10, 40, 0}));
    EXPECT_EQ(errorsAfter("x"), TErrors()) << "what does not depend on Y has none";
    EXPECT_EQ(errorsAfter("1/(x-1)"), (TErrors{0.5, 0, 0})) << "a point without a new value stays as it is";
}

TEST_F(SetValues, FormulasReadThePointAndTheOtherDataSets) {
    const TFormulaCase cases[] = {
        {"x+1", {2, 3, 4, 5}, 0},
        {"2*y", {20, 40, 60, 80}, 0},
        {"n*n", {1, 4, 9, 16}, 0},
        {"y-y2", {6, 12, 21, 40}, 1}, // 4, 8 and 9 in between; nothing behind the last point
        {"y-BLANK+0*y1", {6, 12, 21, 40}, 1},
        {"(x+n)*(y+y1)-x*n", {39, 156, 351, 624}, 0},
        {"sin(0)+x", {1, 2, 3, 4}, 0},
        {"1/(x-2)", {-1, 20, 1, 0.5}, 1},
        {"y3", {10, 20, 30, 40}, 4}, // has no points
        {"k := y + n", {11, 22, 33, 44}, 0},
    };
    for (const auto& c : cases) {
        const TPointChain before = Target().Points();
        EXPECT_EQ(TValueFormula(Target(), c.formula).Apply({}), c.unusable) << c.formula;
        EXPECT_EQ(Ys(), c.ys) << c.formula;
        Target().SwapPoints(before);
    }
}

TEST_F(SetValues, OnlyTheRangeChangesAndIdsAndNumbersStay) {
    Target().AddPoint(0, 0); // Id 5, number 1
    TValueFormula(Target(), "100*n").Apply(TXRange{2, 3});
    EXPECT_EQ(Ys(), (std::vector<double>{0, 10, 300, 400, 40}));
    EXPECT_EQ(Target().GetPoint(5)->Y, 0);
    EXPECT_EQ(Target().MaxY(), 400);
    TValueFormula formula(Target(), "x");
    EXPECT_EQ(formula.Evaluate({}, 2).Y, (std::vector<double>{0, 1}));
    EXPECT_TRUE(formula.Evaluate(TXRange{3, 2}).Points.empty());
}

TEST_F(SetValues, WhatIsNoFormulaIsRefused) {
    for (const char* text : {"", "  ", "2*", "(x", "foo(x)"})
        EXPECT_THROW(TValueFormula(Target(), text), ELumoError) << text;
}

TEST_F(SetValues, TheNamesOfDataSetsAreToldWhereTheyAreVariables) {
    EXPECT_EQ(SeriesVariables(Graph), (std::vector<std::string>{"y1", "y2, Blank", "y3"}));
}

// Blocks agree with the compiled chain for many points and several columns.
TEST_F(SetValues, BlocksOfSeveralColumnsAreThoseOfOnePointAfterTheOther) {
    Target().Clear();
    for (int i = 0; i < 1000; ++i) Target().AddPoint(i * 0.003, std::cos(i));
    const char* text = "(y*x + y2)*(n - y) + y2*y2 - x";
    const TNewValues values = TValueFormula(Target(), text).Evaluate({});
    for (std::size_t i = 0; i < values.Y.size(); ++i) {
        const double x = values.Points[i].X;
        const double y = values.Points[i].Y;
        const double n = static_cast<double>(i) + 1;
        const double y2 = x <= 2 ? 4 * x : 8 + (x - 2);
        EXPECT_NEAR(values.Y[i], (y * x + y2) * (n - y) + y2 * y2 - x, 1e-9 * n) << i;
    }
}

TEST_F(SetValues, AnotherDataSetIsReadInTheOrderOfItsX) {
    TSeries& other = *Graph.FindSeries(2);
    other.SetNumericalTolerance(2.6);
    other.AddPoint(2.5, 0); // takes the place of the first point, in front of a smaller X
    ASSERT_EQ(other.First().X(), 2.5);
    TValueFormula(Target(), "y2").Apply({});
    EXPECT_EQ(Ys(), (std::vector<double>{10, 8, 9, 40}));
}

} // namespace
} // namespace lumoplot
