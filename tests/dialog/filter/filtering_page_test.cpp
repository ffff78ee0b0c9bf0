#include "data/series/ds_info.h"
#include "dialog/filter/filtering_page.h"
#include "dialog/wizard_fixture.h"

#include <QCheckBox>
#include <QLabel>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableView>
#include <cmath>
#include <numbers>

namespace lumoplot {
namespace {

using TPairs = std::vector<std::pair<double, double>>;

TPairs PointsOf(const TPointChain& chain) {
    TPairs points;
    for (TPointCursor p = chain.First(); p; p = p.Next()) points.emplace_back(p.X(), p.Y());
    return points;
}

/// The dialog on 400 points of two sines about a level, 0.05 apart, with its filtering page in front.
class FilteringPage : public TWizardTest {
protected:
    void SetUp() override {
        Show({"a", "b"});
        Current().Clear();
        for (int i = 0; i < 400; ++i) {
            const double x = 0.05 * i;
            Current().AddPoint(x, 5 + std::sin(2 * kTurn * x) + 0.5 * std::sin(7 * kTurn * x));
        }
        ToPage("&FFT Filtering");
    }
    void ToPage(const char* caption) {
        auto& tabs = Find<QTabWidget>("tabs");
        for (int i = 0; i < tabs.count(); ++i)
            if (tabs.tabText(i) == QString::fromLatin1(caption)) tabs.setCurrentIndex(i);
        ASSERT_EQ(tabs.tabText(tabs.currentIndex()).toStdString(), caption);
    }
    void SetNumber(const char* name, int value) {
        Type(name, QString::number(value));
        ASSERT_EQ(Find<QSpinBox>(name).value(), value);
    }
    /// Settings that leave 383 points.
    void SetUpBandPass() {
        Choose("cbx_FilterType", 1);
        Type("e_LowFreq", QStringLiteral("1.5"));
        Type("e_HighFreq", QStringLiteral("2.5"));
        SetNumber("se_CountEvery", 1);
        SetNumber("se_ResponseWidth", 8);
        Click("cb_Normalize");
    }
    static constexpr int kKept = 383;

    bool CanPress(const char* button) { return Find<QAbstractButton>(button).isEnabled(); }
    std::string State() { return Find<QLabel>("lblFilterState").text().toStdString(); }
    /// Waits until the preview has told about a change.
    bool StateBecomes(const std::string& part) {
        return QTest::qWaitFor([&] { return State().find(part) != std::string::npos; }, 2000);
    }
    TxyGraph& Preview() { return Find<TxyGraph>("preview"); }

    static constexpr double kTurn = 2 * std::numbers::pi;
};

TEST_F(FilteringPage, AppliesWhatItsControlsSay) {
    TSilentProgress progress;
    Type("e_NormZero", QStringLiteral("-1.5"));
    const TBandFilterSettings normalized{2, 10, TFilterType::BandStop, true, -1.5, 5, 5};
    const TPairs stopped = PointsOf(FilterBand(Current(), normalized, progress).Points);
    Click("btnApply");
    EXPECT_EQ(PointsOf(Current().Points()), stopped);
    Click("btnUndoStep");

    SetUpBandPass();
    const TBandFilterSettings plain{1.5, 2.5, TFilterType::BandPass, false, -1.5, 1, 8};
    const TPairs passed = PointsOf(FilterBand(Current(), plain, progress).Points);
    Click("btnApply");
    EXPECT_EQ(PointsOf(Current().Points()), passed);
    EXPECT_EQ(Current().Count(), kKept);
    EXPECT_TRUE(Sink.Texts.empty());
}

TEST_F(FilteringPage, SettingsOutliveDataSetsAndShowings) {
    SetUpBandPass();
    Choose("cbx_DataSets", 1);
    Wizard.hide();
    Wizard.show();
    ToPage("&FFT Filtering");
    EXPECT_EQ(Find<QLineEdit>("e_LowFreq").text(), "1.5");
    EXPECT_EQ(Find<QSpinBox>("se_ResponseWidth").value(), 8);
    Click("btnApply");
    EXPECT_EQ(Current().Count(), 0) << "two points are fewer than the response";
    Click("btnUndoStep");
    EXPECT_EQ(PointsOf(Current().Points()), (TPairs{{1, 10}, {2, 20}}));
}

TEST_F(FilteringPage, ARefusedRunIsToldAndChangesNothing) {
    SetUpBandPass();
    Type("e_HighFreq", QStringLiteral("1.5"));
    Click("cb_Normalize");
    const TPairs before = PointsOf(Current().Points());
    Click("btnApply");
    EXPECT_EQ(Sink.Only(), "Fail to Apply Filter");
    EXPECT_EQ(PointsOf(Current().Points()), before);
}

TEST_F(FilteringPage, TextsThatAreNoNumbersAreMarkedAndStopApply) {
    for (const char* edit : {"e_LowFreq", "e_HighFreq", "e_NormZero"})
        for (const char* text : {"", ".", "1x", "nan", "1,234"}) {
            Type(edit, QString::fromLatin1(text));
            EXPECT_FALSE(CanPress("btnApply")) << edit << text;
            EXPECT_FALSE(Find<QLineEdit>(edit).toolTip().isEmpty()) << edit << text;
            Type(edit, QStringLiteral("3"));
            EXPECT_TRUE(CanPress("btnApply")) << edit << text;
        }
}

TEST_F(FilteringPage, ThePreviewFollowsDataAndSettings) {
    ASSERT_TRUE(StateBecomes("80 samples"));
    SetNumber("se_CountEvery", 1);
    ASSERT_TRUE(StateBecomes("400 samples, 0.05 apart: frequencies up to 10. Apply leaves 389 points and "));
    Click("cb_Normalize");
    ASSERT_TRUE(StateBecomes("Apply leaves 389 points."));
    const TSeries& amplitudes = *Preview().FindSeries(1);
    const TSeries& gains = *Preview().FindSeries(2);
    const auto highest = [](const TSeries& curve, double from, double to) {
        double value = 0;
        for (TPointCursor p = curve.First(); p; p = p.Next())
            if (p.X() >= from && p.X() <= to) value = std::max(value, p.Y());
        return value;
    };
    EXPECT_NEAR(highest(amplitudes, 1.9, 2.1), 1, 0.05);
    EXPECT_NEAR(highest(amplitudes, 6.9, 7.1), 0.5, 0.05);
    EXPECT_NEAR(highest(amplitudes, 0, 0.01), 5, 0.05);
    SetNumber("se_ResponseWidth", 100);
    ASSERT_TRUE(StateBecomes("leaves 199 points"));
    EXPECT_LT(highest(gains, 3, 9), 0.05);
    Choose("cbx_FilterType", 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return highest(gains, 0, 1) < 0.05; }, 2000));
    EXPECT_GT(highest(gains, 3, 9), 0.95);
    EXPECT_NEAR(Preview().XAxis()->Max(), 10, 1e-9);
}

TEST_F(FilteringPage, ThePreviewTellsWhenThereIsNothingToFilter) {
    Type("e_LowFreq", QStringLiteral("50"));
    EXPECT_TRUE(StateBecomes("The band lies above every frequency of the samples."));
    EXPECT_FALSE(CanPress("btnApply"));
    Type("e_LowFreq", QStringLiteral("1"));
    SetNumber("se_ResponseWidth", 40);
    EXPECT_TRUE(StateBecomes("Apply leaves no points."));
    Choose("cbx_DataSets", 1);
    EXPECT_TRUE(StateBecomes("too few points"));
    Current().SetDuplicatesAllowed(true);
    for (int i = 0; i < 3; ++i) Current().AddPoint(2, 1);
    SetNumber("se_CountEvery", 2);
    EXPECT_TRUE(StateBecomes("2 samples"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return Preview().FindSeries(2)->Count() > 0; }, 2000));
    while (!Wizard.WorkGraph().Series().empty()) Click("btnDelete");
    EXPECT_EQ(State(), "");
    EXPECT_EQ(Preview().FindSeries(2)->Count(), 0);
}

// The points lie over the values of another data set, in the order of its points.
TEST_F(FilteringPage, WorksOnThePointsAsTheyArePlotted) {
    SetUpBandPass();
    Click("btnApply");
    const TPairs expected = PointsOf(Current().Points());
    Click("btnUndoStep");
    TSeries& x = *Graph.FindSeries(2);
    const TPairs plotted = PointsOf(Current().Points());
    x.Clear();
    Current().Clear();
    const auto count = static_cast<int>(plotted.size());
    for (int i = 0; i < count; ++i) {
        const auto& [at, y] = plotted[static_cast<std::size_t>(i * 7 % count)];
        x.AddPoint(i, at);
        Current().AddPoint(1000 + i, y);
    }
    Graph.Appearance()->SetXAxisSerIndex(2);
    EXPECT_TRUE(StateBecomes("as they are plotted")) << State();
    x.SetZeroValue(-1);
    EXPECT_TRUE(StateBecomes("X values of their own"));
    x.SetZeroValue(0);
    Click("btnApply");
    EXPECT_FALSE(Current().UseXAxisSeries());
    EXPECT_EQ(PointsOf(Current().Points()), expected);
    Click("btnUndoStep");
    EXPECT_TRUE(Current().UseXAxisSeries());
    EXPECT_EQ(Current().Count(), count);
}

TEST_F(FilteringPage, EditsOfTheGridAreTakenInFirst) {
    SetUpBandPass();
    ToPage("&Data Source");
    auto& grid = Find<QTableView>("grid");
    grid.model()->setData(grid.model()->index(0, 1), QStringLiteral("1e9"));
    ToPage("&FFT Filtering");
    Click("btnApply");
    EXPECT_GT(std::abs(Current().Points().First().Y()), 1e6);
    Click("btnUndoStep");
    EXPECT_EQ(Current().Points().First().Y(), 1e9);
}

// Where the user wants few rows to be shown, all of them are filtered.
TEST_F(FilteringPage, ADataSetThatWasReadInPartIsReadWhole) {
    QFile file(PathOf("long.csv"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    for (int i = 0; i < 1200; ++i) file.write(QByteArray::number(i) + ',' + QByteArray::number(i % 7) + '\n');
    file.close();
    Graph.SetEditorMode(true);
    ToPage("&Data Source");
    Wizard.AttachSource(PathOf("long.csv").toStdString());
    Click("cb_AutoFrequency");
    Click("btnReload");
    ASSERT_TRUE(Current().IsThinned());
    const std::string name = Current().SeriesName();
    ToPage("&FFT Filtering");
    EXPECT_TRUE(StateBecomes("240 samples"));
    Type("e_LowFreq", QStringLiteral("0.01"));
    EXPECT_EQ(Current().Count(), 1200);
    EXPECT_EQ(Current().SeriesName(), name);
    Click("btnApply");
    EXPECT_EQ(Current().Count(), 5 * (240 - 11));
    EXPECT_FALSE(Current().IsThinned()) << "it would be read anew otherwise when the editor is closed";
    EXPECT_TRUE(Graph.EditorMode());
}

} // namespace
} // namespace lumoplot
