#include "common/cancelling_progress.h"
#include "common/places.h"
#include "data/series/ds_info.h"
#include "sources/text/loading/series_supplier.h"
#include "sources/text/text_fixture.h"
#include "support/errors.h"

namespace lumoplot {
namespace {

class SeriesSupplier : public TTextFiles {
protected:
    TTextReport LoadSeries(const std::string& file) {
        TSilentProgress progress;
        return LoadTextSeries(series, file, options, progress);
    }
    static std::string Replicates() { return SourceFile("tests/data_files/text/replicates.csv"); }

    TDataSeries series;
};

TEST_F(SeriesSupplier, MergedRowsAreCounted) {
    TTextReport report = LoadSeries(Replicates());
    EXPECT_EQ(series.Count(), 3);
    EXPECT_EQ(report.rowsUsed, 6);
    EXPECT_EQ(report.rowsMerged, 3);
    EXPECT_EQ(series.SeriesName(), "response");

    series.SetDuplicatesAllowed(true);
    report = LoadSeries(Replicates());
    EXPECT_EQ(series.Count(), 6);
    EXPECT_EQ(report.rowsMerged, 0);
}

TEST_F(SeriesSupplier, NameThatTheUserGaveStays) {
    series.SetSeriesFlag(false);
    series.SetSeriesName("Run 1");
    LoadSeries(Replicates());
    EXPECT_EQ(series.SeriesName(), "Run 1");
}

TEST_F(SeriesSupplier, FailedOrCancelledLoadChangesNothing) {
    series.AddPoint(1, 2);
    series.DataSourceInfo().SetTextSeparators(";");
    const TDSInfo before = series.DataSourceInfo();
    int changes = 0;
    series.AddChangeHandler(1, [&changes](TDataSeries&, TChangeReasons) { ++changes; });
    const auto expectUnchanged = [&] {
        EXPECT_EQ(series.Count(), 1);
        EXPECT_EQ(series.SeriesName(), "UnNamed Series");
        EXPECT_TRUE(series.DataSourceInfo() == before);
        EXPECT_EQ(changes, 0);
    };
    EXPECT_THROW(LoadSeries(Write("")), std::exception);
    expectUnchanged();

    TCancellingProgress never(0);
    EXPECT_TRUE(LoadTextSeries(series, Write("x;y\n1;2\n3;4\n"), options, never).cancelled);
    expectUnchanged();

    LoadSeries(Write("x;y\n1;2\n3;4\n"));
    EXPECT_EQ(series.Count(), 2);
    EXPECT_FALSE(series.DataSourceInfo().NeedsReload());
    EXPECT_EQ(changes, 1);
}

TEST_F(SeriesSupplier, AColumnGivesTheErrorsOfY) {
    const std::string file = Write("x;y;s\n1;10;0.5\n2;20;-1\n3;30;oops\n4;40;\n5;50;1e-3\n5;60;2\n");
    for (const char* column : {"3", "S"}) {
        series.DataSourceInfo().SetYErrorRule({TYErrorKind::Column, 0, column});
        const TTextReport report = LoadSeries(file);
        EXPECT_EQ(report.rowsUsed, 6) << "a row without an error counts";
        EXPECT_EQ(series.YErrors(), (std::vector<double>{0.5, 0, 0, 0, 2})) << "the last of equal X stays";
        ASSERT_FALSE(report.notes.empty());
        EXPECT_EQ(report.notes.back(), "3 rows have no number above 0 in column 3 (s) and no error of Y");
    }
    series.DataSourceInfo().SetYErrorRule({TYErrorKind::Percent, 10});
    LoadSeries(file);
    EXPECT_EQ(series.YErrors(), (std::vector<double>{1, 2, 3, 4, 6})) << "by its rule";
    series.DataSourceInfo().SetYErrorRule({});
    EXPECT_EQ(LoadSeries(file).notes.back(), "the errors of Y that were there are gone: the source has none");
    EXPECT_FALSE(series.HasYErrors());
    series.DataSourceInfo().SetYErrorRule({TYErrorKind::Column, 0, "sigma"});
    EXPECT_THROW(LoadSeries(file), EFileError);
}

// Rows of plain numbers go the short way, which leaves none of the errors behind.
TEST_F(SeriesSupplier, ErrorsStayWithTheirRowsWhenRowsAreLeftOut) {
    std::string text;
    for (int i = 1; i <= 5000; ++i)
        text += std::to_string(i) + "," + std::to_string(2 * i) + "," + std::to_string(3 * i) + "\n";
    const std::string file = Write(text);
    TDSInfo& choices = series.DataSourceInfo();
    choices.SetYErrorRule({TYErrorKind::Column, 0, "3"});
    choices.SetXDataColumn("1");
    choices.SetYDataColumn("2");
    for (const TRowChoice choice : {TRowChoice::ByNumber, TRowChoice::ByX}) {
        choices.SetRowChoiceMode(choice);
        choices.SetRowChoiceValue1(100);
        choices.SetRowChoiceValue2(4500);
        choices.SetRowSamplingFrequency(7);
        LoadSeries(file);
        EXPECT_GT(series.Count(), 600);
        for (auto point = series.First(); point; point = point.Next())
            ASSERT_EQ(point.YError(), 3 * point.X());
    }
}

TEST_F(SeriesSupplier, AutomaticFrequencyIsNoted) {
    std::string text;
    for (int i = 0; i < 1000; ++i) text += std::to_string(i) + ",1\n";
    options.budget = 100;
    series.DataSourceInfo().SetAutoRowHitFreq(true);
    LoadSeries(Write(text));
    EXPECT_EQ(series.DataSourceInfo().RowSamplingFrequency(), 10);
    EXPECT_EQ(series.Count(), 100);
}

} // namespace
} // namespace lumoplot
