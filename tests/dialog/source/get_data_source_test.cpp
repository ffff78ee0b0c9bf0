// The chooser of data sources, driven from the page for sources.
#include "dialog/wizard_fixture.h"

#include "common/places.h"
#include "common/values_of.h"
#include "data/series/ds_info.h"
#include "dialogs/import/get_data_source.h"
#include "graph/model/holder.h"
#include "support/errors.h"

#include <QDropEvent>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QTableView>

namespace lumoplot {
namespace {

class TGetDataSourceTest : public TWizardTest {
protected:
    void SetUp() override {
        Write("one.csv", "t,volt,text,amp\n1,10,a,100\n2,20,b,200\n3,30,c,300\n");
        Write("two.txt", "5\t6\n7\t8\n");
        Write("notes.pdf", "no data");
        Graph.Appearance()->SetDataDirectory(Folder.path().toStdString());
        Wizard.SetStartPage(TxyDataWizard::kDataSourcePage);
        Show({"Run", "Other"});
    }
    /// Opens the chooser, runs the action and closes it by the button.
    void Choose(std::function<void(TxyGetDataSource&)> action, const char* button) {
        WhenModal<TxyGetDataSource>([action, button](TxyGetDataSource& chooser) {
            action(chooser);
            lumoplot::Click(chooser, button);
            if (chooser.isVisible()) {
                ADD_FAILURE() << button << " does not close it";
                chooser.reject();
            }
        });
        Click("btnChoose");
    }
    static QListWidgetItem* Item(TxyGetDataSource& chooser, const char* list, const char* text) {
        auto& widget = Control<QListWidget>(chooser, list);
        for (int i = 0; i < widget.count(); ++i)
            if (widget.item(i)->text().trimmed() == QLatin1String(text)) return widget.item(i);
        return nullptr;
    }
    static void ClickItem(TxyGetDataSource& chooser, const char* list, const char* text) {
        auto& widget = Control<QListWidget>(chooser, list);
        QListWidgetItem* item = Item(chooser, list, text);
        ASSERT_TRUE(item) << text;
        widget.scrollToItem(item);
        const QRect place = widget.visualItemRect(item);
        QTest::mouseClick(widget.viewport(), Qt::LeftButton, {}, {place.left() + 10, place.center().y()});
    }
    static std::vector<std::string> Texts(TxyGetDataSource& chooser, const char* list) {
        auto& widget = Control<QListWidget>(chooser, list);
        std::vector<std::string> texts;
        for (int i = 0; i < widget.count(); ++i)
            texts.push_back(widget.item(i)->text().trimmed().toStdString());
        return texts;
    }
};

TEST_F(TGetDataSourceTest, EveryCheckedColumnBecomesADataSet) {
    Choose(
        [&](TxyGetDataSource& chooser) {
            EXPECT_EQ(Texts(chooser, "l_Sources"),
                      (std::vector<std::string>{"In " + QDir::toNativeSeparators(Folder.path()).toStdString(),
                                                "one.csv", "two.txt"}));
            EXPECT_EQ(Texts(chooser, "l_YColumns"), (std::vector<std::string>{"2: volt", "4: amp"}));
            ClickItem(chooser, "l_YColumns", "4: amp");
            EXPECT_EQ(Control<QLabel>(chooser, "lblDataSets").text(), "2 data sets will be read.");
        },
        "btnOk");
    EXPECT_EQ(Sink.Only(), "Data from Current DataSet Will be lost, Continue?");
    EXPECT_EQ(Names(), (std::vector<std::string>{"volt", "Other", "amp"}));
    EXPECT_EQ(Selected(), "volt");
    EXPECT_EQ(Current().DataSourceInfo().SourceName(), PathOf("one.csv").toStdString());
    EXPECT_EQ(YsOf(Current()), (std::vector<double>{10, 20, 30}));
    EXPECT_EQ(YsOf(*Graph.FindSeries(3)), (std::vector<double>{100, 200, 300}));
    EXPECT_EQ(Graph.FindSeries(3)->DataSourceInfo().YDataColumn(), "amp");
    EXPECT_EQ(Find<QComboBox>("cbx_SourceKind").currentText(), "Text File");
}

TEST_F(TGetDataSourceTest, ASheetOfAFileIsChosen) {
    QFile::copy(QString::fromStdString(SourceFile("tests/data_files/levels.xlsx")), PathOf("levels.xlsx"));
    Choose(
        [&](TxyGetDataSource& chooser) {
            const auto& sheets = Control<QComboBox>(chooser, "cbx_Sheet");
            ClickItem(chooser, "l_Sources", "one.csv");
            EXPECT_FALSE(sheets.isVisibleTo(&chooser));
            ClickItem(chooser, "l_Sources", "levels.xlsx");
            EXPECT_EQ(sheets.currentText(), "Days") << "the first one with numbers";
            for (const char* of : {"cbx_Separator", "cbx_Encoding"})
                EXPECT_FALSE(Control<QComboBox>(chooser, of).isVisible()) << of << " of no text";
            EXPECT_EQ(Texts(chooser, "l_YColumns"), (std::vector<std::string>{"2: Level (cm)", "3: Flow"}));
            lumoplot::Choose(chooser, "cbx_Sheet", 2);
            EXPECT_EQ(Texts(chooser, "l_YColumns"), (std::vector<std::string>{"2: Volt"}));
        },
        "btnOk");
    EXPECT_EQ(YsOf(Current()), (std::vector<double>{0.5, 2, 4.5, 8, 12.5}));
    EXPECT_EQ(Current().DataSourceInfo().SourceName(), PathOf("levels.xlsx#Runs").toStdString());
    // The page shows the sheet and chooses among them, too.
    EXPECT_EQ(Find<QComboBox>("cbx_Sheet").currentText(), "Runs");
    for (const char* of : {"cb_FindSeparators", "e_TextMarkers", "cb_FixedWidth", "cbx_Encoding"})
        EXPECT_FALSE(Find<QWidget>(of).isVisible()) << of << " of no text";
    EXPECT_TRUE(Find<QWidget>("cbx_DecimalSign").isVisible());
    lumoplot::Choose(Wizard, "cbx_Sheet", 1);
    EXPECT_EQ(Current().Count(), 8);
}

TEST_F(TGetDataSourceTest, ThePreviewAndTheColumnsFollowTheChoice) {
    Choose(
        [&](TxyGetDataSource& chooser) {
            const auto& preview = *Control<QTableView>(chooser, "t_Preview").model();
            const auto& ok = Control<QPushButton>(chooser, "btnOk");
            lumoplot::Choose(chooser, "cbx_XColumn", 3); // volt
            EXPECT_EQ(Texts(chooser, "l_YColumns"), (std::vector<std::string>{"1: t", "4: amp"}));
            EXPECT_EQ(preview.headerData(3, Qt::Horizontal).toString(), "Y = 4\nnumber");
            ClickItem(chooser, "l_YColumns", "4: amp");
            EXPECT_FALSE(ok.isEnabled()) << "no column is checked";
            ClickItem(chooser, "l_YColumns", "1: t");
            EXPECT_EQ(preview.headerData(0, Qt::Horizontal).toString(), "Y = 1\nnumber");
            EXPECT_EQ(preview.headerData(1, Qt::Horizontal).toString(), "X = 2\nnumber");
            EXPECT_TRUE(ok.isEnabled());
        },
        "btnOk");
    EXPECT_EQ(YsOf(Current()), (std::vector<double>{1, 2, 3}));
    EXPECT_EQ(Current().First().X(), 10);
    EXPECT_EQ(Current().SeriesName(), "t");
    Choose(
        [&](TxyGetDataSource& chooser) {
            EXPECT_EQ(Texts(chooser, "l_Sources").front(), "In this graph");
            EXPECT_EQ(Control<QComboBox>(chooser, "cbx_XColumn").currentText(), "2: volt") << "what it has";
            ClickItem(chooser, "l_Sources", "two.txt");
            EXPECT_EQ(Control<QComboBox>(chooser, "cbx_XColumn").currentText(), "Auto (1)");
        },
        "btnOk");
    EXPECT_EQ(YsOf(Current()), (std::vector<double>{6, 8}));
    EXPECT_EQ(Current().SeriesName(), "two") << "after the file when no column has a name";
}

TEST_F(TGetDataSourceTest, EachYColumnGetsTheErrorsThatAreNamedAfterIt) {
    Write("errors.csv", "t,U,U_err,I,sigma_I\n1,10,1,100,5\n2,20,2,200,6\n3,30,3,300,7\n");
    const auto choose = [](TxyGetDataSource& chooser) {
        ClickItem(chooser, "l_Sources", "errors.csv");
        EXPECT_EQ(Control<QComboBox>(chooser, "cbx_YErrors").currentText(), "Auto (3: U_err)");
        lumoplot::Click(chooser, "btnAllY");
        EXPECT_EQ(chooser.YColumns(), (std::vector<std::string>{"U", "I"})) << "errors are no data";
    };
    Choose(choose, "btnOk");
    EXPECT_EQ(Current().YErrors(), (std::vector<double>{1, 2, 3}));
    EXPECT_EQ(Graph.FindSeries(3)->YErrors(), (std::vector<double>{5, 6, 7}));
    Choose(
        [](TxyGetDataSource& chooser) {
            EXPECT_EQ(Control<QComboBox>(chooser, "cbx_YErrors").currentText(), "3: U_err") << "what it has";
            lumoplot::Choose(chooser, "cbx_YErrors", 1);
        },
        "btnOk");
    EXPECT_FALSE(Current().HasYErrors());
}

TEST_F(TGetDataSourceTest, OtherFilesAreBrowsedForAndDropped) {
    Click("btnDuplicate");
    const QString saved = PathOf("saved.lds");
    AnswerFileDialog(saved);
    Click("btnExport");
    const QString broken = Write("broken.lds", "nothing of the kind");
    Choose(
        [&](TxyGetDataSource& chooser) {
            const auto& notes = Control<QLabel>(chooser, "lblNotes");
            const auto& ok = Control<QPushButton>(chooser, "btnOk");
            AnswerFileDialog(broken);
            lumoplot::Click(chooser, "btnBrowse");
            EXPECT_FALSE(ok.isEnabled());
            EXPECT_FALSE(notes.text().isEmpty());
            QMimeData mime;
            mime.setUrls({QUrl::fromLocalFile(saved)});
            QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &mime, Qt::LeftButton, {});
            QApplication::sendEvent(&chooser, &enter);
            EXPECT_TRUE(enter.isAccepted());
            QDropEvent drop(QPoint(50, 50), Qt::CopyAction, &mime, Qt::LeftButton, {});
            QApplication::sendEvent(&chooser, &drop);
            EXPECT_TRUE(notes.text().startsWith(QStringLiteral("Data set \"Run DPL 3\" with 2 points.")))
                << notes.text().toStdString();
            EXPECT_TRUE(ok.isEnabled());
        },
        "btnOk");
    EXPECT_EQ(Current().DataSourceInfo().Kind(), TSourceKind::DataFile);
    EXPECT_EQ(Current().SeriesName(), "Run DPL 3");
}

TEST_F(TGetDataSourceTest, SheetsAreListedAndReadingsChosen) {
    const std::string days = "day\tload\n1/2/2024\t1\n2/3/2024\t2\n3/4/2024\t3\n4/5/2024\t4\n";
    Graph.Holder()->OfferSheets(
        {[] {
             return std::vector<std::string>{"Days", "Gone"};
         },
         [&](const std::string& name) { return name == "Days" ? days : throw ELumoError("no " + name); }});
    Choose(
        [&](TxyGetDataSource& chooser) {
            ClickItem(chooser, "l_Sources", "Gone");
            EXPECT_FALSE(Control<QPushButton>(chooser, "btnOk").isEnabled());
            EXPECT_EQ(Texts(chooser, "l_Messages"), std::vector<std::string>{"no Gone"});
            ClickItem(chooser, "l_Sources", "Days");
            lumoplot::Click(chooser, "btnRunnerUp");
            EXPECT_TRUE(chooser.Wishes().dateOrder.has_value());
        },
        "btnOk");
    EXPECT_EQ(Current().DataSourceInfo().Kind(), TSourceKind::LumoSheet);
    EXPECT_EQ(Current().DataSourceInfo().SourceName(), "Days");
    EXPECT_TRUE(Current().TextWishes().dateOrder.has_value());
    EXPECT_EQ(YsOf(Current()), (std::vector<double>{1, 2, 3, 4}));
}

} // namespace
} // namespace lumoplot
