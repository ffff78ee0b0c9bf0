#include "graph/loading/source_loading.h"

#include "data/series/ds_info.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

constexpr int kRows = 2000;

class SourceLoading : public testing::Test {
protected:
    SourceLoading() {
        QFile file(m_folder.filePath(QStringLiteral("long.csv")));
        if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error("no file");
        file.write("time,volts\n");
        for (int i = 0; i < kRows; ++i)
            file.write(QByteArray::number(i) + ',' + QByteArray::number(i % 7) + '\n');
        Series.DataSourceInfo().SetKind(TSourceKind::TextFile);
        Series.DataSourceInfo().SetSourceName(file.fileName().toStdString());
        Series.SetSeriesName("mine");
    }

    TxyGraph Graph;
    TSeries& Series = *Graph.AddSeriesNumbered(1);
    TSilentProgress Progress;

private:
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
}

TEST_F(SourceLoading, WhatWasThinnedIsReadAgainUnderItsEditedName) {
    TxyGraph edited;
    Graph.SetEditorMode(true);
    LoadFromSource(Series, Progress);
    Series.SetSeriesName("edited");
    edited.CopyFrom(Graph);
    Graph.SetEditorMode(false);
    LoadThinnedAgain(Graph, edited, Progress);
    EXPECT_EQ(Series.Count(), kRows);
    EXPECT_FALSE(Series.IsThinned());
    EXPECT_EQ(Series.SeriesName(), "edited");
}

} // namespace
} // namespace lumoplot
