#include "graph/file/graph_file.h"

#include "common/random_graph.h"
#include "common/recording_sink.h"
#include "common/seeds.h"
#include "graph/model/child_graph.h"
#include "support/errors.h"

#include <QTemporaryDir>
#include <filesystem>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

class TEncodingScope {
public:
    explicit TEncodingScope(TEncoding encoding) { SetCompactStreams(encoding == TEncoding::Compact); }
    ~TEncodingScope() { SetCompactStreams(true); }
};

std::string LoadError(const TBytes& bytes) {
    TxyGraph graph;
    try {
        LoadBytes(graph, bytes);
    } catch (const ELumoError& error) {
        return error.what();
    }
    return "none";
}

TBytes WithSignature(const char* signature) {
    TxyGraph graph;
    TBytes bytes = FileOf(graph);
    std::copy_n(signature, 9, bytes.begin() + 2);
    return bytes;
}

TEST(GraphFile, BeginsWithSignatureAndAppearance) {
    const TBytes bytes = FileOf(TxyGraph());
    const std::string start = "\x06\x09xygg06.01\x06\x03"
                              "99S\x06\x0A"
                              "Appearance\x06\x03 1B\x08";
    EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(start.size())), start);
}

TEST(GraphFile, RandomGraphsComeBackEqualInEveryKey) {
    for (const TEncoding encoding : {TEncoding::Compact, TEncoding::Text}) {
        const TEncodingScope scope(encoding);
        TRandom random(11);
        for (unsigned round = 0; round < Seeds(150); ++round) {
            TxyGraph graph, back;
            FillRandomly(graph, random);
            FillRandomly(back, random); // what the target holds must not matter
            const TBytes bytes = FileOf(graph);
            LoadBytes(back, bytes);
            ASSERT_EQ(FileOf(back), bytes) << "round " << round;
            SetCompactStreams(true);
            ASSERT_EQ(FileOf(back), FileOf(graph)) << "both encodings hold the same, round " << round;
            SetCompactStreams(encoding == TEncoding::Compact);
        }
    }
}

TEST(GraphFile, TemplatesCarryNeitherPointsNorTheDataDirectory) {
    TxyGraph graph;
    graph.FindSeries(graph.AddSeries())->AddPoint(1, 2);
    graph.Appearance()->SetDataDirectory("folder");
    TxyGraph back;
    LoadBytes(back, FileOf(graph, TPoints::LeaveOut));
    EXPECT_EQ(back.FindSeries(1)->Count(), 0);
    EXPECT_EQ(back.Appearance()->DataDirectory(), "");
    back.CopyFrom(graph);
    EXPECT_EQ(back.FindSeries(1)->Count(), 1);
    EXPECT_EQ(back.Appearance()->DataDirectory(), "folder");
}

TEST(GraphFile, OnlyTheFirstFiveCharactersOfTheSignatureCount) {
    EXPECT_EQ(LoadError(WithSignature("xygg05.99")), "none");
    EXPECT_EQ(LoadError(WithSignature("xygg16.01")), "Wrong Graph version");
    EXPECT_EQ(LoadError(WithSignature("xyxx06.01")), "Not a valid graph file");
    EXPECT_EQ(LoadError({}), "Not a valid graph file");
}

TEST(GraphFile, AnErrorCaptionIsReadButNeverWritten) {
    TBytes bytes;
    TxyWriter writer(bytes);
    writer.WriteBareString("xygg06.01");
    writer.WriteString(6, "", "OUT OF RANGE");
    for (int section = 0; section < 6; ++section) writer.WriteEndOfSection();
    for (int count = 0; count < 2; ++count) {
        writer.WriteBareString("I");
        writer.WriteBareInteger(0);
    }
    AppendInteger(bytes, 0, 4);
    TxyGraph graph;
    LoadBytes(graph, bytes);
    EXPECT_EQ(graph.Appearance()->ErrorCaption(), "OUT OF RANGE");
    EXPECT_EQ(FileOf(graph), FileOf(TxyGraph()));
}

TEST(GraphFile, ChildGraphsNestToALimit) {
    TxyGraph graph;
    TxyGraph* innermost = &graph;
    for (int i = 0; i < TxyGraph::kMaxNesting; ++i) innermost = innermost->AddChildGraph();
    TBytes deepest = FileOf(graph);
    EXPECT_EQ(LoadError(deepest), "none");
    deepest[deepest.size() - 4] = 1; // a child graph of the innermost one
    const TBytes one = FileOf(TxyGraph());
    deepest.insert(deepest.end(), one.begin(), one.end());
    EXPECT_EQ(LoadError(deepest), "Not a valid graph file");
    TBytes many = FileOf(TxyGraph());
    many[many.size() - 2] = 0x7F; // 0x7F0000 child graphs
    EXPECT_EQ(LoadError(many), "Not a valid graph file");
}

// A short file that has everything: data sets with points, marks and a child graph.
const TBytes& SmallFile() {
    static const TBytes file = [] {
        TRandom random(3);
        for (;;) {
            TxyGraph graph;
            FillRandomly(graph, random);
            const bool hasAll = !graph.Series().empty() && graph.Series().front()->Count() > 3 &&
                                graph.Marks().Count() > 0 && graph.ChildGraphCount() == 1;
            const TBytes bytes = FileOf(graph);
            if (hasAll && bytes.size() < 8000) return bytes;
        }
    }();
    return file;
}

TEST(GraphFile, DamagedBytesGiveAnErrorOrALegalGraph) {
    const TBytes& bytes = SmallFile();
    TRandom random(99);
    TxyGraph graph;
    int loaded = 0;
    for (int round = 0; round < 100000; ++round) {
        TBytes damaged = bytes;
        for (unsigned i = 0; i <= random() % 3; ++i)
            damaged[random() % damaged.size()] = static_cast<std::uint8_t>(random());
        try {
            LoadBytes(graph, damaged);
            ++loaded;
        } catch (const ELumoError& error) {
            ASSERT_STRNE(error.what(), "");
        }
    }
    EXPECT_GT(loaded, 1000); // most single bytes belong to values
    graph.PrepareForDrawing();
    TxyGraph back;
    LoadBytes(back, FileOf(graph));
}

class GraphFileOnDisk : public testing::Test {
protected:
    std::string NameOf(const char* name) {
        return m_folder.filePath(QString::fromLatin1(name)).toStdString();
    }
    QTemporaryDir m_folder;
};

TEST_F(GraphFileOnDisk, PointsThatMergeWhenTheyAreReadAreTold) {
    TxyGraph graph;
    TSeries& series = *graph.FindSeries(graph.AddSeries());
    series.SetSeriesName("Run");
    for (const double x : {1.0, 1.25, 2.0, 5.0, 5.5}) series.AddPoint(x, x);
    series.SetNumericalTolerance(0.5);
    SaveSeriesToFile(series, NameOf("run.lds"));
    TxyGraph other;
    other.AddSeries();
    TRecordingSink sink;
    LoadSeriesFromFile(*other.FindSeries(1), NameOf("run.lds"));
    EXPECT_EQ(sink.Only(), "DataSet \"Run\": 2 of 5 points merged into others with the same X within 0.5");
}

TEST_F(GraphFileOnDisk, ADataSetFileCarriesOneDataSetWhole) {
    TxyGraph graph;
    TRandom random(21);
    FillRandomly(graph, random, 0);
    TSeries& series = *graph.FindSeries(graph.AddSeries());
    series.SetNumericalTolerance(0);
    for (int i = 0; i < 5; ++i) series.AddPoint(i, i * i);
    SaveSeriesToFile(series, NameOf("run.lds"));
    TxyGraph other;
    other.AddSeries();
    LoadSeriesFromFile(*other.FindSeries(1), NameOf("run.lds"));
    TBytes expected, actual;
    TxyWriter expectedWriter(expected), actualWriter(actual);
    WriteSeries(expectedWriter, series, TPoints::Include);
    WriteSeries(actualWriter, *other.FindSeries(1), TPoints::Include);
    EXPECT_EQ(actual, expected);
}

TEST_F(GraphFileOnDisk, ABrokenDataSetFileChangesNothing) {
    TxyGraph graph;
    graph.AddSeries();
    TSeries& series = *graph.FindSeries(1);
    for (int i = 0; i < 10; ++i) series.AddPoint(i, i);
    SaveSeriesToFile(series, NameOf("run.lds"));
    const TBytes before = FileOf(graph);
    std::filesystem::resize_file(NameOf("run.lds"), std::filesystem::file_size(NameOf("run.lds")) - 1);
    EXPECT_THROW(LoadSeriesFromFile(series, NameOf("run.lds")), EStreamError);
    EXPECT_EQ(FileOf(graph), before);
}

} // namespace
} // namespace lumoplot
