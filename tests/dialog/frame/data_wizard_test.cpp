#include "dialog/wizard_fixture.h"

#include "data/series/ds_info.h"
#include "graph/file/graph_file.h"
#include "graph/model/holder.h"
#include "support/replace_file.h"

#include <QStackedWidget>
#include <QTabWidget>

namespace lumoplot {
namespace {

using TNames = std::vector<std::string>;

TEST_F(TWizardTest, WithoutDataSetsEverythingIsInert) {
    Show({});
    EXPECT_EQ(Find<QComboBox>("cbx_DataSets").count(), 0);
    EXPECT_FALSE(Find<QLineEdit>("e_SeriesName").isEnabled());
    EXPECT_FALSE(Find<QAbstractButton>("btnExport").isEnabled());
    EXPECT_TRUE(Wizard.Filling());
    EXPECT_FALSE(Find<QAbstractButton>("btnDelete").isEnabled());
    Click("btnDelete");
    EXPECT_EQ(Sink.Only(), "There is no DataSet selected");
    Click("btnNew");
    EXPECT_EQ(Selected(), "DataSet 1");
    EXPECT_TRUE(Find<QLineEdit>("e_SeriesName").isEnabled());
    EXPECT_FALSE(Wizard.Filling());
}

struct TButtonCase {
    const char* button;
    int selectedBefore;
    TNames names;
    const char* selectedAfter;
};

TEST_F(TWizardTest, ListButtonsChangeTheChainAndTheSelection) {
    const TButtonCase cases[] = {
        {"btnNew", 1, {"Run", "beta", "Alpha", "DataSet 4"}, "DataSet 4"},
        {"btnDuplicate", 0, {"Run", "beta", "Alpha", "Run DPL 4"}, "Run DPL 4"},
        {"btnDelete", 1, {"Run", "Alpha"}, "Alpha"},
        {"btnDelete", 2, {"Run", "beta"}, "beta"},
        {"btnMoveFirst", 2, {"Alpha", "Run", "beta"}, "Alpha"},
        {"btnMoveFirst", 0, {"Run", "beta", "Alpha"}, "Run"},
        {"btnSort", 0, {"Alpha", "beta", "Run"}, "Alpha"},
        {"btnReverse", 0, {"Alpha", "beta", "Run"}, "Alpha"},
    };
    for (const auto& c : cases) {
        Graph.FreeAllSeries();
        Wizard.hide();
        Show({"Run", "beta", "Alpha"});
        Choose("cbx_DataSets", c.selectedBefore);
        Click(c.button);
        EXPECT_EQ(Names(), c.names) << c.button;
        EXPECT_EQ(Selected(), c.selectedAfter) << c.button;
        EXPECT_EQ(Current().SeriesName(), c.selectedAfter) << c.button;
        EXPECT_EQ(Current().Count(), std::string(c.button) == "btnNew" ? 0 : 2) << c.button;
        EXPECT_EQ(Find<QLineEdit>("e_SeriesName").text().toStdString(), c.selectedAfter) << c.button;
    }
}

TEST_F(TWizardTest, DeletingAsksFirst) {
    Show({"Run"});
    Sink.Answer = false;
    Click("btnDelete");
    EXPECT_EQ(Sink.Only(), "Delete DataSet  \"Run\"  permanently?");
    EXPECT_EQ(Names(), TNames{"Run"});
}

TEST_F(TWizardTest, ExportProposesASafeNameAndImportReadsItBack) {
    Show({" a/b*c:d?e "});
    QString proposed;
    WhenModal<QFileDialog>([&](QFileDialog& dialog) {
        proposed = Control<QLineEdit>(dialog, "fileNameEdit").text();
        EnterFileName(dialog, PathOf("run.lds"));
    });
    Click("btnExport");
    EXPECT_EQ(proposed.section(QLatin1Char('.'), 0, 0), "a_b_c_d_e");
    ASSERT_TRUE(QFile::exists(PathOf("run.lds")));
    AnswerFileDialog(PathOf("run.lds"));
    Click("btnImport");
    EXPECT_EQ(Names(), (TNames{" a/b*c:d?e ", " a/b*c:d?e "}));
    EXPECT_EQ(Current().SeriesIndex(), 2);
    EXPECT_EQ(Current().Count(), 2);
}

TEST_F(TWizardTest, ExportAsTextHasAHeaderAndOneLineAPoint) {
    Show({"Run"});
    Graph.YAxis()->SetTitle("Volt");
    AnswerFileDialog(PathOf("run.dat"));
    Click("btnExport");
    const auto bytes = ReadWholeFile(PathOf("run.dat").toStdString());
    QString text =
        QString::fromUtf8(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
    EXPECT_EQ(text.remove(QLatin1Char('\r')).toStdString(), "Run\tVolt\n1\t10\n2\t20\n");
}

TEST_F(TWizardTest, FiguresAndExportsComeFromEveryRow) {
    Show({"Run"});
    TDSInfo& source = Current().DataSourceInfo();
    source.SetKind(TSourceKind::TextFile);
    source.SetSourceName(WriteRows(20000, ",").toStdString());
    const auto showSome = [&] {
        source.SetAutoRowHitFreq(true);
        source.SetNeedsReload(true);
        Find<QTabWidget>("tabs").setCurrentIndex(TxyDataWizard::kDataSourcePage);
        Click("btnReload");
        ASSERT_EQ(Current().Count(), 5000);
    };
    showSome();
    Find<QTabWidget>("tabs").setCurrentIndex(TxyDataWizard::kRegressionsPage);
    EXPECT_TRUE(Find<QLabel>("lblYStatistics").text().endsWith(QStringLiteral("points: 20000")))
        << Find<QLabel>("lblYStatistics").text().toStdString();
    showSome();
    AnswerFileDialog(PathOf("all.dat"));
    Click("btnExport");
    const auto bytes = ReadWholeFile(PathOf("all.dat").toStdString());
    EXPECT_EQ(std::ranges::count(bytes, '\n'), 20001);
}

TEST_F(TWizardTest, AnExistingFileIsOverwrittenOnlyOnYes) {
    Show({"Run"});
    const std::string file = PathOf("run.lds").toStdString();
    const std::vector<std::uint8_t> old = {'o', 'l', 'd'};
    ReplaceFile(file, old);
    Sink.Answer = false;
    AnswerFileDialog(PathOf("run.lds"));
    Click("btnExport");
    EXPECT_EQ(Sink.Only(), "File \"" + file + "\" exists. Overwrite?");
    EXPECT_EQ(ReadWholeFile(file), old);
}

TEST_F(TWizardTest, ABrokenFileAddsNothing) {
    Show({"Run"});
    const std::vector<std::uint8_t> garbage = {6, 200, 'x'};
    ReplaceFile(PathOf("broken.lds").toStdString(), garbage);
    AnswerFileDialog(PathOf("broken.lds"));
    Click("btnImport");
    EXPECT_EQ(Sink.Only(), PathOf("broken.lds").toStdString() +
                               " is not a data-set file. Choose one that was exported as .lds");
    EXPECT_EQ(Names(), TNames{"Run"});
    EXPECT_EQ(Selected(), "Run");
}

TEST_F(TWizardTest, PreviewShowsTheGraphAndEditComesBack) {
    Show({"Run"});
    Click("btnPreview");
    EXPECT_TRUE(Wizard.PreviewMode());
    EXPECT_TRUE(Graph.isVisible());
    Click("btnPreview");
    EXPECT_FALSE(Wizard.PreviewMode());
    EXPECT_FALSE(Graph.isVisible());
    EXPECT_TRUE(Find<QLineEdit>("e_SeriesName").isVisible());
}

TEST_F(TWizardTest, EveryWayOfClosingHasItsResult) {
    const std::pair<std::function<void()>, int> cases[] = {
        {[this] { Click("btnOk"); }, TxyDataWizard::kOk},
        {[this] { Click("btnCancel"); }, TxyDataWizard::kCancel},
        {[this] { Click("btnSetDefault"); }, TxyDataWizard::kSetDefault},
        {[this] { QTest::keyClick(&Wizard, Qt::Key_Escape); }, TxyDataWizard::kCancel},
        {[this] { Wizard.close(); }, TxyDataWizard::kCancel},
    };
    for (const auto& [close, result] : cases) {
        Wizard.show();
        close();
        EXPECT_EQ(Wizard.result(), result);
        EXPECT_FALSE(Wizard.isVisible());
    }
}

TEST_F(TWizardTest, TheStartPageOrTheLastOneIsInFront) {
    Show({"Run"});
    auto& tabs = Find<QTabWidget>("tabs");
    tabs.setCurrentIndex(1);
    for (const auto& [start, expected] : {std::pair{-1, 1}, {0, 0}, {1, 1}, {99, 1}}) {
        Wizard.hide();
        Wizard.SetStartPage(start);
        Wizard.show();
        EXPECT_EQ(tabs.currentIndex(), expected) << start;
    }
}

TEST_F(TWizardTest, RestoringTheMinimisedWindowChangesNothing) {
    Wizard.SetStartPage(TxyDataWizard::kGeneralPage);
    Show({"Run"});
    Find<QTabWidget>("tabs").setCurrentIndex(TxyDataWizard::kDataSourcePage);
    Click("btnPreview");
    QShowEvent restored;
    QSpontaneKeyEvent::setSpontaneous(&restored);
    qApp->notify(&Wizard, &restored); // sendEvent would make it an event of our own
    EXPECT_TRUE(Wizard.PreviewMode());
    EXPECT_EQ(Find<QTabWidget>("tabs").currentIndex(), TxyDataWizard::kDataSourcePage);
}

TEST_F(TWizardTest, APageThatCannotBeFilledLeavesTheOthersAtWork) {
    Show({"Run", "Broken"});
    Graph.Holder()->OfferSheets(
        {[] { return TNames{"Sheet"}; },
         [](auto&) -> std::string { throw std::runtime_error("The sheet is gone"); }});
    TDSInfo& source = Graph.FindSeries(2)->DataSourceInfo();
    source.SetKind(TSourceKind::LumoSheet);
    source.SetSourceName("Sheet");
    source.SetNeedsReload(false);
    Choose("cbx_DataSets", 1);
    EXPECT_EQ(Sink.Only(), "The sheet is gone");
    Type("e_SeriesName", QStringLiteral("renamed"));
    EXPECT_EQ(Names(), (TNames{"Run", "renamed"}));
    Choose("cbx_DataSets", 0);
    EXPECT_EQ(Current().SeriesName(), "Run");
}

} // namespace
} // namespace lumoplot
