#include "session/live_links.h"

#include "common/dde_server.h"
#include "common/recording_sink.h"
#include "data/series/ds_info.h"
#include "graph/model/child_graph.h"
#include "graph/model/graph.h"
#include "graph/model/holder.h"
#include "session/graph_session.h"
#include "session/graph_snapshot.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

// A graph with a data set that follows a file, and a session on it.
class LiveLinksTest : public testing::Test {
protected:
    LiveLinksTest() : m_session(m_graph), m_links(m_session) {
        TSeries& series = *m_graph.FindSeries(m_graph.AddSeries());
        series.SetDuplicatesAllowed(true);
        series.DataSourceInfo().SetKind(TSourceKind::Link);
        series.DataSourceInfo().SetSourceName(Name().toStdString());
        m_session.Start();
    }

    QString Name() const { return m_folder.filePath(QStringLiteral("log.txt")); }
    void Append(int from, int to) const {
        QFile file(Name());
        ASSERT_TRUE(file.open(QIODevice::Append));
        for (int i = from; i < to; ++i)
            file.write(QByteArray::number(i) + ' ' + QByteArray::number(-i) + '\n');
    }
    void Feed(int from, int to) {
        Append(from, to);
        m_links.Poll();
    }
    TSeries& Series() { return *m_graph.Series().front(); }
    std::vector<int> Xs() {
        std::vector<int> xs;
        for (TPointCursor point = Series().First(); point; point = point.Next())
            xs.push_back(static_cast<int>(point.X()));
        return xs;
    }
    static std::vector<int> Range(int from, int to) {
        std::vector<int> range;
        for (int i = from; i < to; ++i) range.push_back(i);
        return range;
    }

    QTemporaryDir m_folder;
    TRecordingSink m_sink;
    TxyGraph m_graph;
    TGraphSession m_session;
    TLiveLinks m_links;
};

TEST_F(LiveLinksTest, RowsAreFedAndAreNoSteps) {
    m_links.Start(Series());
    Feed(0, 3);
    EXPECT_EQ(Xs(), Range(0, 3));
    Feed(3, 500);
    EXPECT_EQ(Xs(), Range(0, 500));
    EXPECT_FALSE(m_session.CanUndo());
    EXPECT_TRUE(m_session.IsClean()); // they can be read again
    EXPECT_EQ(Series().MaxX(), 499);
    EXPECT_EQ(m_links.Status(), "Following log.txt: 500 rows");
}

TEST_F(LiveLinksTest, UndoAndRedoKeepFedPoints) {
    m_links.Start(Series());
    Feed(0, 200);
    m_session.Change("color", [&] { Series().SetLineWidth(7); });
    Feed(200, 300);
    m_session.Change("point", [&] { Series().DeletePoint(5); }); // X is 4
    Feed(300, 400);
    std::vector<int> without4 = Range(0, 400);
    without4.erase(without4.begin() + 4);
    EXPECT_EQ(Xs(), without4);
    m_session.Undo();
    EXPECT_EQ(Xs(), Range(0, 400));
    Feed(400, 450);
    m_session.Redo();
    without4.insert(without4.end(), {400, 401});
    for (int i = 402; i < 450; ++i) without4.push_back(i);
    EXPECT_EQ(Xs(), without4);
    m_session.Undo();
    m_session.Undo();
    EXPECT_NE(Series().LineWidth(), 7);
    EXPECT_EQ(Xs(), Range(0, 450));
    EXPECT_EQ(Series().MaxX(), 449);
    Feed(450, 460);
    EXPECT_EQ(Xs(), Range(0, 460));
    m_session.Redo();
    EXPECT_EQ(Series().LineWidth(), 7);
    EXPECT_EQ(Xs(), Range(0, 460));
}

TEST_F(LiveLinksTest, NothingIsFedWithinAStep) {
    m_links.Start(Series());
    Feed(0, 10);
    m_session.Change("slow", [&] {
        Feed(10, 20);
        EXPECT_EQ(Xs(), Range(0, 10));
        Series().SetLineWidth(5);
    });
    m_links.Poll();
    EXPECT_EQ(Xs(), Range(0, 20));
    m_session.Undo();
    EXPECT_EQ(Xs(), Range(0, 20));
}

TEST_F(LiveLinksTest, SnapshotHasWhatWasFed) {
    m_links.Start(Series());
    m_session.Change("color", [&] { Series().SetLineWidth(7); });
    Feed(0, 1000);
    EXPECT_EQ(m_session.Snapshot()->Series().front().Points->Count(), 1000u);
}

TEST_F(LiveLinksTest, OnlyTheNewestAreKept) {
    Series().DataSourceInfo().SetLinkLimit({250, 0});
    m_links.Start(Series());
    Feed(0, 100);
    Feed(100, 1000);
    EXPECT_EQ(Xs(), Range(750, 1000));
    m_session.Change("color", [&] { Series().SetLineWidth(7); });
    Feed(1000, 1100);
    m_session.Undo();
    Feed(1100, 1110);
    EXPECT_EQ(Xs(), Range(860, 1110));

    m_session.Change("limit", [&] { Series().DataSourceInfo().SetLinkLimit({0, 0.2}); });
    m_links.Renew();
    m_links.Poll();
    EXPECT_EQ(Xs().size(), 1110u);
    QTest::qWait(300);
    Feed(1110, 1120);
    EXPECT_EQ(Xs(), Range(1110, 1120));
    QTest::qWait(300);
    m_links.Poll();
    EXPECT_TRUE(Xs().empty());
}

TEST_F(LiveLinksTest, FileReadAgainTakesThePlaceOfWhatWasThere) {
    Series().AddPoint(-5, 1);
    m_links.Start(Series());
    m_links.Poll();
    EXPECT_TRUE(m_links.HasTrouble());
    EXPECT_NE(m_links.Status().find("Trying again in"), std::string::npos);
    EXPECT_EQ(Xs().size(), 1u); // while nothing has come
    Append(0, 5);
    m_links.StartAll();
    m_links.Poll();
    EXPECT_EQ(Xs(), Range(0, 5));
}

TEST_F(LiveLinksTest, PauseAndStop) {
    m_links.Start(Series());
    Feed(0, 10);
    m_links.SetPaused(true);
    Feed(10, 20);
    EXPECT_EQ(Xs(), Range(0, 10));
    EXPECT_EQ(m_links.Status(), "Paused: log.txt");
    m_links.SetPaused(false);
    m_links.Poll();
    EXPECT_EQ(Xs(), Range(0, 20));
    m_links.Stop();
    Feed(20, 30);
    EXPECT_EQ(Xs(), Range(0, 20));
    EXPECT_EQ(m_links.Status(), "");
}

TEST_F(LiveLinksTest, DataSetThatComesBackGoesOn) {
    m_links.Start(Series());
    Feed(0, 10);
    m_session.Change("delete", [&] { m_graph.DeleteSeries(1); });
    Feed(10, 20);
    m_session.Undo();
    m_links.Poll();
    EXPECT_EQ(Xs(), Range(0, 20));
    m_session.Change("other", [&] { Series().DataSourceInfo().SetKind(TSourceKind::Manual); });
    m_links.Renew();
    Feed(20, 30);
    EXPECT_EQ(Xs(), Range(0, 20));
    EXPECT_FALSE(m_links.IsFollowing());
}

TEST_F(LiveLinksTest, PanelsFollowAsTheirGraphDoes) {
    m_links.Start(Series());
    Feed(0, 10);
    m_session.Change("panel", [&] {
        TxyChildGr& panel = *m_graph.AddChildGraph();
        panel.FindSeries(panel.AddSeries())->CopyFrom(Series());
    });
    const auto inPanel = [&] { return (*m_graph.ChildGraphs().begin())->FirstSeries(); };
    m_links.Renew();
    Feed(10, 20);
    EXPECT_EQ(Xs(), Range(0, 20));
    EXPECT_EQ(inPanel()->Count(), 20);

    m_session.Change("color", [&] { inPanel()->SetLineWidth(7); });
    Feed(20, 30);
    m_session.Undo();
    EXPECT_NE(inPanel()->LineWidth(), 7);
    m_links.Poll();
    EXPECT_EQ(inPanel()->Count(), 30);

    m_session.Undo();
    EXPECT_EQ(m_links.Status(), "Following log.txt: 30 rows");
    m_session.Redo();
    Feed(30, 40);
    EXPECT_EQ(inPanel()->Count(), 40);
    EXPECT_EQ(Xs(), Range(0, 40));
    EXPECT_EQ(m_links.Status(), "Following log.txt: 40 rows (2 links)");
}

TEST_F(LiveLinksTest, WhatFollowsNothingIsTold) {
    Series().DataSourceInfo().SetSourceName("tcp://nowhere");
    m_links.Start(Series());
    EXPECT_FALSE(m_links.IsFollowing());
    EXPECT_EQ(m_sink.Texts.size(), 1u);
}

#if defined(_WIN32)
TEST_F(LiveLinksTest, OtherProgramsRowsAreSplitAsTheHolderSays) {
    TDdeServer program("LumoHolder");
    program.SetText("1/2,5/'a/b'\r\n3/4,5/'c/d'\r\n\xB5/x/y\r\n");
    m_graph.Holder()->SetTextSeparators("/");
    m_graph.Holder()->SetTextMarkers("'");
    Series().DataSourceInfo().SetSourceName("dde:LumoHolder|data!table");
    m_links.Start(Series());
    EXPECT_TRUE(QTest::qWaitFor([&] { return Series().Count() == 2; }));
    EXPECT_EQ(Xs(), (std::vector{1, 3}));
    EXPECT_EQ(Series().MaxY(), 4.5);
    EXPECT_TRUE(m_session.IsClean());
}
#endif

} // namespace
} // namespace lumoplot
