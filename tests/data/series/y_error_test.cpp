#include "data/series/data_series.h"
#include "data/series/ds_info.h"
#include "data/series/plotted_values.h"
#include "data/series/y_error_rule.h"
#include "fit/definition/cur_fit.h"
#include "support/errors.h"

#include "common/thrown_text.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace lumoplot {
namespace {

using TErrors = std::vector<double>;

void AddFour(TDataSeries& series) {
    for (const double y : {4.0, -9.0, 0.0, 16.0}) series.AddPoint(series.Count(), y);
}

struct TRuleCase {
    const char* text;
    TErrors errors;
};

TEST(YErrors, EachRuleGivesThePointsTheirs) {
    const TRuleCase cases[] = {
        {"constant 0.5", {0.5, 0.5, 0.5, 0.5}},
        {"percent 25", {1, 2.25, 0, 4}},
        {"sqrt", {2, 0, 0, 4}},
        {"", {}},
        {"column sigma", {}},
    };
    for (const auto& [text, errors] : cases) {
        TDataSeries series;
        AddFour(series);
        const TYErrorRule rule = YErrorRuleOf(text);
        SetYErrorsBy(series, rule);
        EXPECT_EQ(series.YErrors(), errors) << text;
        EXPECT_EQ(TextOf(series.DataSourceInfo().YErrorRule()), text);
        EXPECT_EQ(series.DataSourceInfo().NeedsReload(), rule.Kind == TYErrorKind::Column);
    }
}

TEST(YErrors, TextsThatAreNoRuleGiveNone) {
    for (const char* text : {"percent", "percent -1", "percent nan", "constant 0", "constant inf", "column ",
                             "sqrt 2", "by hand"})
        EXPECT_EQ(YErrorRuleOf(text), TYErrorRule()) << text;
    TDataSeries series;
    AddFour(series);
    EXPECT_EQ(ThrownText([&] {
                  SetYErrorsBy(series, {TYErrorKind::Percent, -1});
              }),
              "The percentage of Y must be a number above 0");
    EXPECT_EQ(series.DataSourceInfo().YErrorRule(), TYErrorRule());
}

TEST(YErrors, AnotherDataSetGivesThemBetweenItsPoints) {
    TDataSeries series;
    AddFour(series);
    TDataSeries errors;
    errors.AddPoint(0, 1);
    errors.AddPoint(2, 5);
    errors.AddPoint(2.5, -1);
    EXPECT_EQ(SetYErrorsFrom(series, errors), 3);
    EXPECT_EQ(series.YErrors(), (TErrors{1, 3, 5, 0}));
}

TEST(YErrors, OneCanBeSetAndAnImpossibleOneIsRefused) {
    TDataSeries series;
    AddFour(series);
    int told = 0;
    series.AddChangeHandler(1, [&](TDataSeries&, TChangeReasons reasons) {
        if (reasons.Has(TDataSeries::kPointChanged)) ++told;
    });
    series.SetYError(2, 0.25);
    series.SetYError(2, 0.25);
    series.SetYError(99, 1);
    EXPECT_EQ(told, 1);
    for (const double error : {-1.0, std::numeric_limits<double>::infinity()})
        EXPECT_EQ(ThrownText([&] { series.SetYError(2, error); }),
                  "The standard error of Y must be a number above 0");
    EXPECT_EQ(series.YError(2), 0.25);
    EXPECT_EQ(ThrownText([&] {
                  series.SetYErrors(TErrors{1, 2, 3});
              }),
              "There are 3 standard errors for 4 points");
    EXPECT_TRUE(DropYErrors(series));
    EXPECT_FALSE(DropYErrors(series));
}

TEST(YErrors, TheyGoWithThePoints) {
    TDataSeries series;
    AddFour(series);
    SetYErrorsBy(series, {TYErrorKind::Constant, 0.5});
    series.SetAutoZero(true);
    series.SetBaseline(1, 2);
    EXPECT_EQ(PlottedValues(series).YErrors, (TErrors{0.5, 0.5, 0.5, 0.5}));
    series.DeletePoint(2);
    series.AddPoint(0.5, 1, 0.75);
    series.AddPoint(3, 7); // takes the place of a point with an error
    EXPECT_EQ(series.YErrors(), (TErrors{0.5, 0.75, 0.5, 0}));
    TPointChain points = series.SwapPoints({});
    EXPECT_FALSE(series.HasYErrors());
    series.SwapPoints(std::move(points));
    EXPECT_EQ(series.YErrors(), (TErrors{0.5, 0.75, 0.5, 0}));
}

TEST(YErrors, OnlyAFitThatWeighsByThemBecomesStale) {
    TDataSeries series;
    AddFour(series);
    for (const bool weighs : {false, true}) {
        series.CurveFit().SetWeighting({.ByYErrors = weighs});
        series.CurveFit().ClearStale();
        SetYErrorsBy(series, {TYErrorKind::Constant, weighs ? 1.0 : 2.0});
        EXPECT_EQ(series.CurveFit().IsStale(), weighs);
    }
}

// The two keys that a data set's record has for them, and the third entry.
TEST(YErrors, FilesHoldThemAndOtherReadersPassOverThem) {
    TDataSeries series;
    AddFour(series);
    SetYErrorsBy(series, {TYErrorKind::Percent, 50});
    for (const TEncoding encoding : {TEncoding::Compact, TEncoding::Text}) {
        TBytes bytes;
        TxyWriter writer(bytes, encoding);
        series.WriteToStream(writer, true);
        TDataSeries plain; // in the same stream, none of it is for this one
        plain.AddPoint(1, 2);
        plain.WriteToStream(writer, true);
        TByteSource source(bytes);
        TxyReader reader(source);
        TDataSeries read;
        SetYErrorsBy(read, {TYErrorKind::SquareRoot});
        read.ReadFromStream(reader);
        EXPECT_EQ(read.YErrors(), series.YErrors());
        EXPECT_EQ(read.DataSourceInfo().YErrorRule(), series.DataSourceInfo().YErrorRule());
        read.Clear();
        read.ReadFromStream(reader);
        EXPECT_FALSE(read.HasYErrors());
        EXPECT_EQ(read.DataSourceInfo().YErrorRule(), TYErrorRule());
        EXPECT_EQ(source.Remaining(), 0u);
    }
}

TEST(YErrors, AThirdEntryWithoutTheKeyIsNone) {
    TDataSeries series;
    series.AddPoint(1, 2, 0.5);
    TBytes bytes;
    TxyWriter writer(bytes, TEncoding::Text);
    series.WriteToStream(writer, true);
    const std::string key = "YErrors72S";
    const auto place = std::ranges::search(bytes, key).begin();
    ASSERT_NE(place, bytes.end());
    place[static_cast<std::ptrdiff_t>(key.size()) - 2] = '9'; // another reader's unknown key
    TByteSource source(bytes);
    TxyReader reader(source);
    TDataSeries read;
    read.ReadFromStream(reader);
    EXPECT_EQ(read.Count(), 1);
    EXPECT_FALSE(read.HasYErrors());
}

} // namespace
} // namespace lumoplot
