// What is exported as a text is read back as the same points, whatever they and the names are.
#include "common/seeds.h"
#include "graph/loading/source_loading.h"
#include "graph/model/axis.h"
#include "graph/plotted/series_text.h"

#include <QTemporaryDir>
#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace lumoplot {
namespace {

class TRandomPoints {
public:
    explicit TRandomPoints(unsigned seed) : m_random(seed) {}

    std::uint64_t Below(std::uint64_t limit) { return m_random() % limit; }
    double Value(std::uint64_t kind) {
        const auto whole = static_cast<double>(Below(2001)) - 1000;
        switch (kind) {
        case 0: return whole;
        case 1: return whole / 8;
        case 2: return static_cast<double>(1000 + Below(999000)) / 1000; // like groups of three digits
        case 3: return 45000 + static_cast<double>(Below(12000)) / 24;
        case 5: return OddValue(Below(9));
        default: break;
        }
        for (;;)
            if (const double value = std::bit_cast<double>(m_random()); std::isfinite(value)) return value;
    }

private:
    double OddValue(std::uint64_t kind) {
        const double infinity = std::numeric_limits<double>::infinity();
        return kind == 0 ? std::nan("") : kind == 1 ? infinity : kind == 2 ? -infinity : Value(kind % 2);
    }

    std::mt19937_64 m_random;
};

bool AreSame(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

TEST(SeriesText, ComesBackEqual) {
    const QTemporaryDir folder;
    const char* const kNames[] = {"v", "a b", "x;y",  "1,5",   "a \"q\"", "#1",  "2019",      "[x]",
                                  "-", "N/A", "Data", "t (s)", "a\tb",    "No.", "two\nrows", "%"};
    for (unsigned seed = 0; seed < Seeds(300); ++seed) {
        TRandomPoints random(seed);
        TxyGraph graph;
        TSeries& series = *graph.FindSeries(graph.AddSeries());
        series.SetDuplicatesAllowed(true);
        series.SetSeriesName("time");
        const char* const name = kNames[random.Below(std::size(kNames))];
        graph.YAxis()->SetTitle(name);
        const auto count = 1 + random.Below(seed % 3 == 0 ? 3 : 400);
        const auto xKind = random.Below(5);
        const auto yKind = random.Below(6);
        for (std::uint64_t i = 0; i < count; ++i) series.AddPoint(random.Value(xKind), random.Value(yKind));

        const std::string file =
            folder.filePath(seed % 2 == 0 ? QStringLiteral("a.csv") : QStringLiteral("a.dat")).toStdString();
        SaveSeriesAsText(series, file);
        TSeries& read = *graph.FindSeries(graph.AddSeries());
        read.SetDuplicatesAllowed(true);
        read.DataSourceInfo().SetKind(TSourceKind::TextFile);
        read.DataSourceInfo().SetSourceName(file);
        TSilentProgress progress;
        ASSERT_TRUE(LoadFromSource(read, progress));
        ASSERT_EQ(read.Count(), series.Count()) << seed << ' ' << name;
        TPointCursor other = read.First();
        for (TPointCursor point = series.First(); point; point = point.Next(), other = other.Next())
            ASSERT_TRUE(point.X() == other.X() && AreSame(point.Y(), other.Y()))
                << seed << ' ' << name << ": " << point.X() << ' ' << point.Y() << ", not " << other.X()
                << ' ' << other.Y();
    }
}

// "6.125" beside "18" is six thousand and more for who does not know the writer.
TEST(SeriesText, NoDecimalsLookLikeGroups) {
    TxyGraph graph;
    TSeries& series = *graph.FindSeries(graph.AddSeries());
    const auto text = [&] {
        const std::vector<std::uint8_t> bytes = SeriesAsText(series, "a.dat");
        const std::string all(bytes.begin(), bytes.end());
        return all.substr(all.find('\n') + 1);
    };
    series.AddPoint(6.125, -976);
    series.AddPoint(18, 2.375);
    EXPECT_EQ(text(), "6.1250\t-976\n18\t2.3750\n");
    series.AddPoint(19.5, 1000);
    EXPECT_EQ(text(), "6.125\t-976\n18\t2.375\n19.5\t1000\n") << "these are clear";
}

TEST(SeriesText, HoldsErrorsAndSaysWhatReadersPassOver) {
    const QTemporaryDir folder;
    const std::string file = folder.filePath(QStringLiteral("a.csv")).toStdString();
    TxyGraph graph;
    TSeries& series = *graph.FindSeries(graph.AddSeries());
    series.AddPoint(1, 2, 0.25);
    series.AddPoint(2, 3);
    EXPECT_EQ(SaveSeriesAsText(series, file), "");
    TSeries& read = *graph.FindSeries(graph.AddSeries());
    read.DataSourceInfo().SetKind(TSourceKind::TextFile);
    read.DataSourceInfo().SetSourceName(file);
    read.DataSourceInfo().SetYErrorRule({TYErrorKind::Column, 0, "3"});
    TSilentProgress progress;
    ASSERT_TRUE(LoadFromSource(read, progress));
    EXPECT_EQ(read.YErrors(), (std::vector<double>{0.25, 0}));
    series.AddPoint(3, std::numeric_limits<double>::infinity());
    series.AddPoint(4, std::nan(""));
    EXPECT_EQ(SaveSeriesAsText(series, file).find("2 of 4 points have no finite Y"), 0u);
    ASSERT_TRUE(LoadFromSource(read, progress));
    EXPECT_EQ(read.YErrors(), (std::vector<double>{0.25, 0, 0, 0}));
    const TPointCursor third = read.First().Next().Next();
    EXPECT_EQ(third.Y(), std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(third.Next().Y()));
}

} // namespace
} // namespace lumoplot
