// A file that is damaged is refused, with an error that names it and leaves the target as it was, or what it
// still says is taken: something that a file can hold.
#include "common/fit_parameters.h"
#include "common/graph_state.h"
#include "common/recording_sink.h"
#include "graph/file/graph_file.h"
#include "support/errors.h"
#include "support/replace_file.h"

#include <QTemporaryDir>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <set>

namespace lumoplot {
namespace {

constexpr int kRounds = 600;
constexpr std::size_t kLongestMessage = 200;

std::size_t Place(TRandom& random, std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
}

/// Flipped bits, other bytes, a cut end, or a block that is there twice, is missing or is all 0.
TBytes Damaged(TBytes bytes, TRandom& random) {
    const std::size_t at = Place(random, bytes.size());
    const std::size_t length = 1 + Place(random, std::min<std::size_t>(600, bytes.size() - at));
    const auto first = bytes.begin() + static_cast<std::ptrdiff_t>(at);
    const auto last = first + static_cast<std::ptrdiff_t>(length);
    switch (Place(random, 6)) {
    case 0: *first ^= static_cast<std::uint8_t>(1 << Place(random, 8)); break;
    case 1:
        for (int i = 0; i < 4; ++i) bytes[Place(random, bytes.size())] = static_cast<std::uint8_t>(random());
        break;
    case 2: bytes.resize(at); break;
    case 3: {
        const TBytes block(first, last);
        bytes.insert(last, block.begin(), block.end());
        break;
    }
    case 4: bytes.erase(first, last); break;
    default: std::fill(first, last, std::uint8_t{0});
    }
    return bytes;
}

class DamagedFiles : public testing::TestWithParam<TEncoding> {
protected:
    DamagedFiles() {
        SetCompactStreams(GetParam() == TEncoding::Compact);
        FillRandomly(m_original, m_random);
        TSeries& series = *m_original.FindSeries(m_original.AddSeries());
        series.SetSeriesName(std::string(300, 'n') + "\nwhole");
        series.SetNumericalTolerance(0.5);
        for (int i = 0; i < 40; ++i) series.AddPoint(i * 0.75, i * i, i % 5);
        AddParameter(series.CurveFit(), "rate", 2).SetVary(true);
        series.CurveFit().SetExpression("rate*x");
    }
    ~DamagedFiles() override { SetCompactStreams(true); }

    template <class TTarget>
    void Try(const TBytes& good, TTarget& target) {
        const std::string name = m_folder.filePath(QStringLiteral("ru\u00F1\u7B2C.any")).toStdString();
        int loaded = 0;
        for (int round = 0; round < kRounds && !HasFailure(); ++round) {
            SCOPED_TRACE(round);
            ReplaceFile(name, Damaged(good, m_random));
            target.Set();
            const auto before = target.State();
            TRecordingSink sink;
            try {
                target.Load(name);
                ++loaded;
                target.Check();
            } catch (const ELumoError& error) {
                ASSERT_EQ(target.Difference(before), "") << error.what();
                ASSERT_NE(std::string(error.what()).find(name), std::string::npos) << error.what();
                ShowMessage(error.what());
            }
            for (const std::string& text : sink.Texts) CheckMessage(text);
        }
        EXPECT_GT(loaded, 0);
        EXPECT_LT(loaded, kRounds);
    }

    static void CheckMessage(const std::string& text) {
        const QString shown = QString::fromStdString(text);
        EXPECT_FALSE(shown.isEmpty());
        EXPECT_LE(shown.toUcs4().size(), static_cast<qsizetype>(kLongestMessage)) << text;
        for (const QChar c : shown) EXPECT_EQ(c.category() == QChar::Other_Control, false) << text;
    }

    TRandom m_random{7};
    QTemporaryDir m_folder;
    TxyGraph m_original;
};

void CheckSeries(const TSeries& series) {
    EXPECT_TRUE(series.NumericalTolerance() >= 0 && std::isfinite(series.NumericalTolerance()));
    std::set<int> ids;
    for (TPointCursor point = series.First(); point; point = point.Next()) {
        EXPECT_TRUE(std::isfinite(point.X()));
        EXPECT_TRUE(point.YError() >= 0 && std::isfinite(point.YError()));
        ids.insert(point.Id());
    }
    EXPECT_EQ(static_cast<int>(ids.size()), series.Count());
}

/// What was taken can be saved, and is what a file says from then on.
void CheckGraph(const TxyGraph& graph) {
    for (const TSeries* series : graph.Series()) CheckSeries(*series);
    for (const TAxis* axis : {graph.XAxis(), graph.YAxis(), graph.YAxis_Second()})
        EXPECT_TRUE(std::isfinite(axis->Min()) && std::isfinite(axis->Max()) && axis->Min() < axis->Max());
    TxyGraph once, twice;
    LoadBytes(once, FileOf(graph));
    LoadBytes(twice, FileOf(once));
    EXPECT_EQ(TGraphState::Difference(TGraphState(once), TGraphState(twice)), "");
}

/// A graph with a data set, which files are loaded into.
struct TGraphTarget {
    std::function<void(TxyGraph&, const std::string& name)> LoadInto;
    TxyGraph Graph{};

    void Set() {
        Graph.FreeAllSeries();
        Graph.FindSeries(Graph.AddSeries())->AddPoint(1, 2);
    }
    TGraphState State() const { return TGraphState(Graph); }
    std::string Difference(const TGraphState& before) const {
        return TGraphState::Difference(before, TGraphState(Graph));
    }
    void Load(const std::string& name) { LoadInto(Graph, name); }
    void Check() const { CheckGraph(Graph); }
};

TEST_P(DamagedFiles, GraphFiles) {
    TGraphTarget target{[](TxyGraph& graph, const std::string& name) { graph.LoadFromFile(name); }};
    Try(FileOf(m_original), target);
}

TEST_P(DamagedFiles, DataSetFiles) {
    TGraphTarget target{
        [](TxyGraph& graph, const std::string& name) { LoadSeriesFromFile(*graph.FirstSeries(), name); }};
    Try(SeriesBytes(*m_original.Series().back()), target);
}

TEST_P(DamagedFiles, FunctionFiles) {
    struct TTarget {
        TCurFit Fit;
        void Set() {
            Fit.ClearParameters();
            Fit.ClearTemplates();
            Fit.ResetSettings();
            AddParameter(Fit, "kept", 3);
            Fit.SetExpression("kept*x");
            Fit.Compile();
        }
        TBytes State() const {
            TBytes bytes;
            TxyWriter writer(bytes);
            Fit.SaveToStream(writer);
            return bytes;
        }
        std::string Difference(const TBytes& before) {
            return State() == before && Fit.EvaluateAt(2) == 6 ? "" : "definition";
        }
        void Load(const std::string& name) { Fit.LoadFromFile(name, true); }
        void Check() const {
            TCurFit again;
            again.Assign(&Fit);
            EXPECT_EQ(again.NParams(), Fit.NParams());
            EXPECT_TRUE(Fit.Tolerance() > 0 && Fit.IterMax() > 0);
        }
    } target;
    const TBytes good = [this] {
        TBytes bytes;
        TxyWriter writer(bytes);
        m_original.Series().back()->CurveFit().SaveToStream(writer);
        return bytes;
    }();
    Try(good, target);
}

INSTANTIATE_TEST_SUITE_P(Encodings, DamagedFiles, testing::Values(TEncoding::Compact, TEncoding::Text),
                         [](const auto& each) {
                             return each.param == TEncoding::Compact ? "Compact" : "Text";
                         });

} // namespace
} // namespace lumoplot
