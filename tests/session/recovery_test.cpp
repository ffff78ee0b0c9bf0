// Recovery files: what is kept comes back as it was, what is broken is refused, what lives is left alone.
#include "common/graph_state.h"
#include "common/seeds.h"
#include "common/special_values.h"
#include "data/series/ds_info.h"
#include "session/recovery_writer.h"
#include "support/errors.h"
#include "support/replace_file.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

constexpr std::size_t kHeaderBytes = 52; // magic, version, hash of what follows

TRecoveryInfo SomeInfo() {
    return {QStringLiteral("Plots"),
            QStringLiteral("/data/r\u00fcn.ltp"),
            QDateTime::fromMSecsSinceEpoch(1234567890123),
            3,
            QStringLiteral("fit Run 1"),
            {QStringLiteral("a (1 points)"), QString()}};
}

std::vector<std::int32_t> IdsOf(const TxyGraph& graph) {
    std::vector<std::int32_t> ids;
    for (const auto& series : graph.Series()) {
        ids.push_back(series->Points().LastId());
        for (auto point = series->First(); point; point = point.Next()) ids.push_back(point.Id());
    }
    return ids;
}

TBytes BytesOf(const TxyGraph& graph) {
    return RecoveryBytes(SomeInfo(), TGraphSnapshot(graph, nullptr, std::make_shared<TMemoryMeter>()));
}

/// The text of the error; empty when the bytes are read.
std::string ErrorOf(std::span<const std::uint8_t> bytes) {
    TxyGraph graph;
    try {
        ReadRecovery(bytes, graph);
    } catch (const EGraphFileError& error) {
        return error.what();
    }
    return {};
}

TEST(RecoveryFileTest, AGraphComesBackAsItWas) {
    TRandom random(5);
    for (unsigned i = 0; i < Seeds(40); ++i) {
        TxyGraph graph;
        FillRandomly(graph, random, 2);
        for (const auto& series : graph.Series()) {
            series->SetDuplicatesAllowed(true);
            for (const double x : {3.0, 1.0, 2.0, 2.0}) series->AddPoint(x, std::nan(""));
            series->DeletePoint(series->First().Id());
        }
        graph.PrepareForDrawing();
        TxyGraph read;
        const TRecoveryInfo info = ReadRecovery(BytesOf(graph), read);
        EXPECT_EQ(TGraphState::Difference(TGraphState(read), TGraphState(graph)), "") << i;
        EXPECT_EQ(IdsOf(read), IdsOf(graph));
        EXPECT_EQ(info.DocumentName, SomeInfo().DocumentName);
        EXPECT_EQ(info.DataSets, SomeInfo().DataSets);
        EXPECT_EQ(info.Written, SomeInfo().Written);
    }
}

TEST(RecoveryFileTest, WhatNoGraphFileHoldsIsKeptToo) {
    TxyGraph graph;
    for (int i = 0; i < 3; ++i) graph.AddSeries();
    graph.DeleteSeries(1);
    TSeries& series = *graph.Series().back();
    for (int i = 0; i < 4; ++i) series.AddPoint(i, i);
    series.SetSourceRows({200, 4});
    series.SetThinned(true);
    series.DataSourceInfo().SetSamplingChosen(true);
    TTextWishes wishes;
    wishes.decimalSign = ',';
    wishes.quotes = "'";
    wishes.columns = TColumnLayout::Aligned;
    series.SetTextWishes(wishes);
    graph.Appearance()->SetCurrSerIndex(series.SeriesIndex());
    TxyGraph read;
    ReadRecovery(BytesOf(graph), read);
    ASSERT_EQ(read.Series().size(), 2u);
    const TSeries& back = *read.Series()[1];
    EXPECT_EQ(back.Count(), series.Count());
    EXPECT_EQ(back.SourceRows(), series.SourceRows());
    EXPECT_TRUE(back.IsThinned());
    EXPECT_EQ(back.TextWishes(), wishes);
    EXPECT_TRUE(back.DataSourceInfo().IsSamplingChosen());
    EXPECT_EQ(read.Appearance()->CurrSerIndex(), back.SeriesIndex());
}

TEST(RecoveryFileTest, EveryDamageIsFound) {
    TxyGraph graph;
    graph.FindSeries(graph.AddSeries())->AddPoint(1, 2);
    const TBytes good = BytesOf(graph);
    ASSERT_EQ(ErrorOf(good), "");
    for (std::size_t i = 0; i < good.size(); ++i) {
        EXPECT_NE(ErrorOf(std::span(good).first(i)), "") << i;
        TBytes flipped = good;
        flipped[i] ^= 0x10;
        EXPECT_NE(ErrorOf(flipped), "") << i;
    }
    EXPECT_EQ(ErrorOf(std::span(good).first(good.size() - 1)), "The recovery file is damaged");
    EXPECT_EQ(ErrorOf({}), "This is not a recovery file");
}

// Somebody who makes such a file knows how to make its hash.
TEST(RecoveryFileTest, HostileContentIsReadOrRefused) {
    TRandom random(11);
    TxyGraph graph;
    FillRandomly(graph, random, 1);
    graph.FindSeries(graph.AddSeries())->AddPoint(1, 2);
    const TBytes good = BytesOf(graph);
    std::uniform_int_distribution<std::size_t> place(kHeaderBytes, good.size() - 1);
    int refused = 0;
    for (int i = 0; i < 1500; ++i) {
        TBytes hostile = good;
        for (int change = 0; change < 3; ++change) {
            static constexpr std::uint8_t kValues[] = {0, 1, 0x7F, 0x80, 0xFF};
            hostile[place(random)] = kValues[random() % std::size(kValues)];
        }
        const QByteArray hash =
            QCryptographicHash::hash(QByteArray(reinterpret_cast<const char*>(hostile.data()) + kHeaderBytes,
                                                static_cast<qsizetype>(hostile.size() - kHeaderBytes)),
                                     QCryptographicHash::Sha256);
        std::copy(hash.begin(), hash.end(), hostile.begin() + (kHeaderBytes - 32));
        if (!ErrorOf(hostile).empty()) ++refused;
    }
    EXPECT_GT(refused, 0);
}

class RecoveryWriterTest : public testing::Test {
protected:
    RecoveryWriterTest() : m_folder(m_place.filePath(QStringLiteral("state"))) { m_session.Start(); }

    TRecoveryOptions Options(int intervalMs = 1) const {
        return {.Kind = QStringLiteral("host"),
                .DocumentName = QStringLiteral("/run.ltp"),
                .Folder = m_folder,
                .IntervalMs = intervalMs};
    }
    void Step() {
        m_session.Change("mark", [&] { m_graph.AddMark({.Caption = "peak"}); });
    }
    QStringList Files(const char* filter = "*.recovery") const {
        return QDir(m_folder).entryList({QString::fromLatin1(filter)}, QDir::Files);
    }
    /// The file of a living session under the name of one whose process is gone.
    void LeaveCopy(const char* name = "host-1-gone.recovery") const {
        const QStringList own =
            Files().filter(QStringLiteral("-%1-").arg(QCoreApplication::applicationPid()));
        ASSERT_EQ(own.size(), 1);
        QFile::copy(QDir(m_folder).filePath(own[0]), QDir(m_folder).filePath(QString::fromLatin1(name)));
    }
    TLeftSessions Left() const { return FindLeftSessions(m_folder, {QStringLiteral("host")}); }

    QTemporaryDir m_place;
    QString m_folder;
    TxyGraph m_graph;
    TGraphSession m_session{m_graph};
};

TEST_F(RecoveryWriterTest, AFileIsThereWhileThereAreUnsavedSteps) {
    {
        TRecoveryWriter writer(m_session, Options());
        writer.Flush();
        EXPECT_EQ(Files(), QStringList());
        Step();
        writer.Flush();
        EXPECT_EQ(Files().size(), 1);
        m_session.Undo();
        writer.Flush();
        EXPECT_EQ(Files(), QStringList()) << "undone to what was saved";
        m_session.Redo();
        writer.Flush();
        EXPECT_EQ(Files().size(), 1);
        m_session.MarkClean();
        writer.Flush();
        EXPECT_EQ(Files(), QStringList()) << "saved";
        Step();
        writer.Flush();
    }
    EXPECT_EQ(Files("*"), QStringList()) << "ended, with its lock";
}

TEST_F(RecoveryWriterTest, StepsOfOneIntervalAreWrittenTogether) {
    TRecoveryWriter writer(m_session, Options(100000));
    QSignalSpy written(&writer, &TRecoveryWriter::Written);
    Step();
    ASSERT_TRUE(written.wait()) << "the first one at once";
    for (int i = 0; i < 5; ++i) Step();
    QTest::qWait(20);
    EXPECT_EQ(written.size(), 1);
    const TOpenStep editor(m_session, "edit data"); // its window is still shown
    writer.Flush();
    LeaveCopy();
    TxyGraph read;
    const TRecoveryInfo info = Left().at(0)->Read(read);
    EXPECT_EQ(read.Marks().Count(), 6);
    EXPECT_EQ(info.StepCount, 6);
    EXPECT_EQ(info.LastStep, "mark");
    EXPECT_EQ(info.DocumentName, "/run.ltp");
}

TEST_F(RecoveryWriterTest, OnlySessionsWhoseProcessIsGoneAreLeft) {
    TRecoveryWriter writer(m_session, Options());
    Step();
    writer.Flush();
    EXPECT_TRUE(Left().empty());
    LeaveCopy("host-1-gone.recovery");
    LeaveCopy("editor_12-1-gone.recovery");
    QFile incomplete(QDir(m_folder).filePath(QStringLiteral("host-1-gone.recovery.new0")));
    ASSERT_TRUE(incomplete.open(QIODevice::WriteOnly));
    incomplete.close();
    TLeftSessions left = Left();
    ASSERT_EQ(left.size(), 1u);
    EXPECT_FALSE(incomplete.exists());
    EXPECT_TRUE(Left().empty()) << "nobody else is offered it meanwhile";
    left[0]->SetAside();
    left.clear();
    EXPECT_TRUE(Left().empty());
    EXPECT_EQ(Files("*.aside").size(), 1);
}

// Killed before the disk had confirmed it.
TEST_F(RecoveryWriterTest, ContentThatIsWholeBesideTheFileIsTheLast) {
    TRecoveryWriter writer(m_session, Options());
    Step();
    writer.Flush();
    LeaveCopy();
    Step();
    writer.Flush();
    LeaveCopy("host-1-gone.recovery.new0");
    QFile half(QDir(m_folder).filePath(QStringLiteral("host-1-gone.recovery.new1")));
    ASSERT_TRUE(half.open(QIODevice::WriteOnly));
    half.write(QByteArray(100, 'x'));
    half.close();
    TxyGraph read;
    TLeftSessions left = Left();
    ASSERT_EQ(left.size(), 1u);
    left[0]->Read(read);
    EXPECT_EQ(read.Marks().Count(), 2);
    left.clear();
    EXPECT_EQ(Files("host-1-gone*"), QStringList(QStringLiteral("host-1-gone.recovery")));
    QFile::remove(QDir(m_folder).filePath(QStringLiteral("host-1-gone.recovery")));
    LeaveCopy("host-1-gone.recovery.new0");
    EXPECT_EQ(Left().size(), 1u) << "the first writing of all";
}

TEST_F(RecoveryWriterTest, SessionsOfAllGraphsOfAProgramAreFoundTogetherAndGivenOn) {
    TRecoveryOptions options = Options();
    options.Kind = RecoveryKind(m_graph, "/a.ltp");
    TRecoveryWriter writer(m_session, options);
    Step();
    writer.Flush();
    LeaveCopy((options.Kind + QStringLiteral("-1-gone.recovery")).toLatin1().constData());
    LeaveCopy("editor_00000000_0000000000000000-1-other.recovery");
    TLeftSessions left = FindLeftSessions(m_folder, {QStringLiteral("host"), EditorKinds()});
    ASSERT_EQ(left.size(), 1u) << "another program's is its own";
    EXPECT_TRUE(IsOfEditor(*left[0]));
    const QString other = RecoveryKind(m_graph, "/b.ltp");
    EXPECT_TRUE(left[0]->GiveTo(other));
    EXPECT_EQ(FindLeftSessions(m_folder, {options.Kind}).size(), 0u);
    EXPECT_EQ(FindLeftSessions(m_folder, {other}).size(), 1u);
}

TEST_F(RecoveryWriterTest, WhatBelongsToAStepBesideTheGraphIsKeptWithIt) {
    struct TNote : TSideState {
        std::size_t BytesBeside(const TSideState*) const override { return 1; }
        TBytes ToBytes(const TGraphSnapshot& graph) const override {
            return {7, static_cast<std::uint8_t>(graph.Marks().size())};
        }
    };
    TSideStatePtr side;
    m_session.SetSide({[&] { return side; }, [&](const TSideStatePtr& state) { side = state; }});
    m_session.Start();
    TRecoveryWriter writer(m_session, Options());
    const auto kept = [&] {
        writer.Flush();
        LeaveCopy();
        TxyGraph read;
        TLeftSessions left = Left();
        TBytes beside = left.at(0)->Read(read).Beside;
        left[0]->Discard();
        return beside;
    };
    Step();
    EXPECT_EQ(kept(), TBytes());
    m_session.Change("note", [&] { side = std::make_shared<TNote>(); });
    EXPECT_EQ(kept(), (TBytes{7, 1}));
    m_session.Undo();
    EXPECT_EQ(kept(), TBytes());
}

// What is typed into an edit that is still open is no step, and is lost no more than one.
TEST_F(RecoveryWriterTest, WhatIsBeingTypedIsKeptWhileItIs) {
    struct TTyped : TSideState {
        std::size_t BytesBeside(const TSideState*) const override { return 1; }
        TBytes ToBytes(const TGraphSnapshot&) const override { return {9}; }
    };
    bool isTyping = false;
    m_session.SetSide({[] { return nullptr; }, [](const TSideStatePtr&) {}, [&] { return isTyping; },
                       [] { return std::make_shared<const TTyped>(); }});
    m_session.Start();
    TRecoveryWriter writer(m_session, Options());
    const auto note = [&](bool typing) {
        isTyping = typing;
        Q_EMIT m_session.Typed();
        writer.Flush();
    };
    note(true);
    LeaveCopy();
    TxyGraph read;
    EXPECT_EQ(Left().at(0)->Read(read).Beside, TBytes{9});
    EXPECT_TRUE(m_session.IsClean());
    Left().at(0)->Discard();
    note(false);
    EXPECT_EQ(Files(), QStringList());
    Step();
    note(true);
    note(false);
    EXPECT_EQ(Files().size(), 1);
}

TEST_F(RecoveryWriterTest, ALeftFileStaysUntilItsContentIsKeptAgain) {
    {
        TRecoveryWriter gone(m_session, Options());
        Step();
        gone.Flush();
        LeaveCopy();
    }
    TRecoveryWriter writer(m_session, Options());
    writer.Flush();
    const QString left = QStringLiteral("host-1-gone.recovery");
    EXPECT_TRUE(Files().contains(left));
    writer.Continue(std::move(Left().at(0)));
    writer.Flush();
    EXPECT_FALSE(Files().contains(left));
    EXPECT_EQ(Files().size(), 1);
}

TEST_F(RecoveryWriterTest, AFolderThatCanNotBeUsedIsToldOnce) {
    QFile file(m_folder);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    TRecoveryWriter writer(m_session, Options());
    QSignalSpy failed(&writer, &TRecoveryWriter::Failed);
    for (int i = 0; i < 3; ++i) {
        Step();
        QTest::qWait(5);
    }
    ASSERT_EQ(failed.size(), 1);
    EXPECT_TRUE(failed[0][0].toString().startsWith(QStringLiteral("Can not save to file ")));
}

TEST_F(RecoveryWriterTest, AGraphIsKnownByItsNamesNotByItsPoints) {
    TSeries& series = *m_graph.FindSeries(m_graph.AddSeries());
    const QString kind = RecoveryKind(m_graph, "/a.ltp");
    series.AddPoint(1, 2);
    series.SetLineWidth(5);
    EXPECT_EQ(RecoveryKind(m_graph, "/a.ltp"), kind);
    EXPECT_NE(RecoveryKind(m_graph, "/b.ltp"), kind);
    series.SetSeriesName("other");
    EXPECT_NE(RecoveryKind(m_graph, "/a.ltp"), kind);
}

#if defined(Q_OS_WIN)
TEST(RecoveryFolderTest, LiesWithTheUsersOwnDataOfThisMachine) {
    const QByteArray state = qgetenv("XDG_STATE_HOME");
    qunsetenv("XDG_STATE_HOME");
    EXPECT_EQ(QDir::toNativeSeparators(RecoveryFolder()),
              qEnvironmentVariable("LOCALAPPDATA") + QStringLiteral(R"(\lumoplot\recovery)"));
    qputenv("XDG_STATE_HOME", state);
}
#endif

} // namespace
} // namespace lumoplot
