#include "graph/loading/source_loading.h"

#include "common/recording_sink.h"
#include "data/analysis/statistics.h"
#include "data/series/ds_info.h"
#include "fit/definition/cur_fit.h"
#include "graph/loading/rows_text.h"
#include "support/errors.h"

#include <QFile>
#include <QLocale>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

constexpr int kRows = 2000;

class SourceLoading : public testing::Test {
protected:
    SourceLoading() {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        QFile file(m_folder.filePath(QStringLiteral("long.csv")));
        if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error("no file");
        file.write("time,volts\n");
        for (int i = 0; i < kRows; ++i)
            file.write(QByteArray::number(i) + ',' + QByteArray::number(i % 7) + '\n');
        Series.DataSourceInfo().SetKind(TSourceKind::TextFile);
        Series.DataSourceInfo().SetSourceName(file.fileName().toStdString());
        File = file.fileName();
        Series.SetSeriesName("mine");
    }

    ~SourceLoading() override { QLocale::setDefault(m_locale); }

    double MeanY() const { return Series.YStatistics().Mean; }
    void Thin() {
        Series.DataSourceInfo().SetAutoRowHitFreq(true);
        ASSERT_TRUE(LoadFromSource(Series, Progress, {.Budget = 500}));
        ASSERT_EQ(Series.Count(), 500);
        ASSERT_NE(MeanY(), kMean);
    }

    static constexpr double kMean = 2.9975;
    QString File;
    TxyGraph Graph;
    TSeries& Series = *Graph.AddSeriesNumbered(1);
    TSilentProgress Progress;

private:
    QLocale m_locale;
    QTemporaryDir m_folder;
};

TEST_F(SourceLoading, WhatIsReadIsSaidByTheOptionsAlone) {
    struct TCase {
        bool inEditor;
        TLoadOptions options;
        int count;
        bool thinned;
        const char* name;
    };
    const TCase cases[] = {
        {false, {}, 1000, false, "volts"},
        {true, {}, 500, true, "volts"},
        {true, {.Name = TLoadedName::Kept}, 500, true, "mine"},
        {true, {.Budget = 1000, .Name = TLoadedName::Kept}, 1000, false, "mine"},
        {true, {.Budget = kEveryRow}, kRows, false, "volts"},
        {false, {.Budget = 500}, 500, true, "volts"},
    };
    Graph.SetPointBudget(1000);
    Series.DataSourceInfo().SetAutoRowHitFreq(true);
    for (const TCase& c : cases) {
        SCOPED_TRACE(testing::Message() << &c - cases);
        Graph.SetEditorMode(c.inEditor);
        Series.SetSeriesName("mine");
        EXPECT_TRUE(LoadFromSource(Series, Progress, c.options));
        EXPECT_EQ(Series.Count(), c.count);
        EXPECT_EQ(Series.IsThinned(), c.thinned);
        EXPECT_EQ(Series.SeriesName(), c.name);
        EXPECT_EQ(Graph.EditorMode(), c.inEditor);
        EXPECT_EQ(Graph.PlotBudget(), 1000);
    }
    Series.SetSeriesName("mine");
    EXPECT_TRUE(LoadEveryRow(Series, Progress));
    EXPECT_EQ(Series.Count(), kRows);
    EXPECT_EQ(Series.SeriesName(), "mine");
}

TEST_F(SourceLoading, WhatWasThinnedIsReadAgainUnderItsEditedName) {
    TxyGraph edited;
    Graph.SetEditorMode(true);
    Series.DataSourceInfo().SetAutoRowHitFreq(true);
    LoadFromSource(Series, Progress);
    Series.SetSeriesName("edited");
    edited.CopyFrom(Graph);
    Graph.SetEditorMode(false);
    LoadThinnedAgain(Graph, edited, Progress);
    EXPECT_EQ(Series.Count(), kRows);
    EXPECT_FALSE(Series.IsThinned());
    EXPECT_EQ(Series.SeriesName(), "edited");
}

TEST_F(SourceLoading, EveryRowOfANewSourceIsReadUnlessThereAreTooMany) {
    Graph.SetPointBudget(400);
    EXPECT_TRUE(LoadFromSource(Series, Progress));
    EXPECT_EQ(Series.Count(), kRows);
    EXPECT_FALSE(Series.DataSourceInfo().AutoRowHitFreq());
    EXPECT_EQ(RowsText(RowsOf(Series)), "all 2,000 rows");
    TTextReport report;
    const TLoadOptions few{.MostRowsUnasked = kRows - 1, .Report = &report};
    EXPECT_TRUE(LoadFromSource(Series, Progress, few)) << "the file has become longer";
    EXPECT_EQ(Series.Count(), kRows);
    TSeries& added = *Graph.AddSeriesNumbered(2);
    added.DataSourceInfo().SetKind(TSourceKind::TextFile);
    added.DataSourceInfo().SetSourceName(File.toStdString());
    Series.CopyFrom(added); // which is not loaded yet
    EXPECT_TRUE(LoadFromSource(Series, Progress, {.MostRowsUnasked = kRows, .Report = &report}));
    EXPECT_EQ(Series.Count(), kRows);
    for (TSeries* series : {&added, &Series}) {
        series->DataSourceInfo().SetSourceName("elsewhere");
        EXPECT_THROW(LoadFromSource(*series, Progress, few), ELumoError);
        series->DataSourceInfo().SetSourceName(File.toStdString());
        EXPECT_TRUE(LoadFromSource(*series, Progress, few));
        EXPECT_TRUE(series->DataSourceInfo().AutoRowHitFreq());
        EXPECT_EQ(RowsText(RowsOf(*series)), "drawn from 400 of 2,000 rows");
        EXPECT_EQ(report.notes.back(), "there are more than 1,999 rows, so \"Auto\" has been switched on: "
                                       "drawn from 400 of 2,000 rows");
        series->DataSourceInfo().SetAutoRowHitFreq(false);
        series->DataSourceInfo().SetRowSamplingFrequency(1);
        EXPECT_TRUE(LoadFromSource(*series, Progress, few));
        EXPECT_EQ(series->Count(), kRows) << "as the user wants it";
    }
}

TEST_F(SourceLoading, ResultsComeFromEveryRowAndNothingElseReadsMore) {
    const auto fit = [](TSeries& series) {
        series.CurveFit().SetExpression("x");
        series.CurveFit().SetStatus(TFitStatus::FinalResult);
    };
    const std::function<void(TSeries&)> cases[] = {
        [](TSeries& series) { series.SetRegressionType(TRegressionType::Linear); },
        [](TSeries& series) { series.SetBoundsType(TBoundsType::TwoSD); },
        fit,
    };
    for (const auto& ask : cases) {
        SCOPED_TRACE(&ask - cases);
        TxyGraph graph;
        TSeries& series = *graph.AddSeriesNumbered(1);
        series.CopyFrom(Series);
        series.DataSourceInfo().SetAutoRowHitFreq(true);
        ASSERT_TRUE(LoadFromSource(series, Progress, {.Budget = 500}));
        graph.PrepareForDrawing();
        EXPECT_EQ(series.Count(), 500);
        ask(series);
        graph.PrepareForDrawing();
        EXPECT_EQ(series.Count(), kRows);
        EXPECT_EQ(series.YStatistics().Mean, kMean);
        EXPECT_TRUE(LoadFromSource(series, Progress));
        EXPECT_EQ(series.Count(), kRows);
    }
}

TEST_F(SourceLoading, WhatResultsLackIsToldOnceWhenItCannotBeRead) {
    Thin();
    QFile::remove(File);
    TRecordingSink sink;
    Series.SetRegressionType(TRegressionType::Linear);
    for (int i = 0; i < 3; ++i) Graph.PrepareForDrawing();
    EXPECT_EQ(Series.Count(), 500);
    EXPECT_NE(Series.RegressionLine(), nullptr);
    EXPECT_TRUE(sink.Only().starts_with(
        "Results of \"volts\" are worked out from what is drawn from 500 of 2,000 rows: Can not open file "))
        << sink.Texts.back();
}

} // namespace
} // namespace lumoplot
