#include "common/cancelling_progress.h"
#include "common/places.h"
#include "data/series/ds_info.h"
#include "sources/text/series_supplier.h"
#include "sources/text/text_fixture.h"

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
