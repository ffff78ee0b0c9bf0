// Following files in the window, and its sheets.
#include "data/series/ds_info.h"
#include "graph/model/child_graph.h"
#include "host/window_fixture.h"
#include "session/recovery_writer.h"

#include <QInputDialog>
#include <QMenu>
#include <QTabBar>
#include <QTableView>

namespace lumoplot {
namespace {

class FollowTest : public TWindowTest {
protected:
    void Append(const QByteArray& rows) const {
        QFile file(PathOf("log.csv"));
        ASSERT_TRUE(file.open(QIODevice::Append));
        file.write(rows);
    }
    void Follow() {
        WhenModal<QDialog>([this](QDialog& dialog) {
            ASSERT_EQ(dialog.objectName(), QStringLiteral("TLinkDialog"));
            EXPECT_LE(dialog.minimumSizeHint().width(), 760);
            QTest::keyClicks(&Control<QLineEdit>(dialog, "e_Place"), PathOf("log.csv"));
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
        Control<QAction>(*Window, "a_Follow").trigger();
    }
    bool WaitForCount(int count) {
        return QTest::qWaitFor([&] { return !Graph().Series().empty() && First().Count() == count; });
    }
};

TEST_F(FollowTest, ThePlotFollowsAndStops) {
    Append("t,U\n1,10\n2,20\n");
    Follow();
    ASSERT_TRUE(WaitForCount(2));
    EXPECT_EQ(First().SeriesName(), "U");
    EXPECT_EQ(Graph().XAxis()->Title(), "t");
    Append("3,30\n");
    EXPECT_TRUE(WaitForCount(3));
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return Control<QLabel>(*Window, "l_Notice").text() == QStringLiteral("Following log.csv: 3 rows");
    }));
    Control<QAction>(*Window, "a_StopLinks").trigger();
    Append("4,40\n");
    QTest::qWait(150);
    EXPECT_EQ(First().Count(), 3);
    EXPECT_FALSE(Control<QAction>(*Window, "a_StopLinks").isEnabled());
    Press(Qt::Key_Z);
    EXPECT_TRUE(Graph().Series().empty());
}

TEST_F(FollowTest, WhatIsNoPlaceIsToldInTheDialog) {
    WhenModal<QDialog>([](QDialog& dialog) {
        auto& kind = Control<QComboBox>(dialog, "cbx_Kind");
        kind.setCurrentIndex(3);
        QTest::keyClicks(&Control<QLineEdit>(dialog, "e_Place"), QStringLiteral("lab"));
        QTest::keyClick(&dialog, Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_TRUE(Control<QLabel>(dialog, "lblProblem").text().contains(QStringLiteral("port")));
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    Control<QAction>(*Window, "a_Follow").trigger();
    EXPECT_TRUE(Graph().Series().empty());
}

TEST_F(FollowTest, SavedGraphGoesOnWhenItIsAskedTo) {
    Append("t,U\n1,10\n2,20\n");
    Follow();
    ASSERT_TRUE(WaitForCount(2));
    First().DataSourceInfo().SetLinkLimit({50, 0});
    Window->Document().SaveTo(PathOf("saved.ltp"));
    Window->Document().New();
    Append("3,30\n");
    Open(PathOf("saved.ltp"));
    EXPECT_EQ(First().Count(), 2);
    EXPECT_EQ(First().DataSourceInfo().Kind(), TSourceKind::Link);
    EXPECT_EQ(First().DataSourceInfo().LinkLimit().rows, 50);
    WhenModal<QDialog>([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
    Control<QAction>(*Window, "a_Follow").trigger();
    EXPECT_TRUE(WaitForCount(3));
    EXPECT_EQ(Graph().Series().size(), 1u);
}

class SheetWindowTest : public TWindowTest {
protected:
    QWidget& Sheets() {
        Control<QAction>(*Window, "a_Sheets").trigger();
        auto* sheets = Window->findChild<QWidget*>(QStringLiteral("SheetWindow"));
        sheets->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(sheets));
        return *sheets;
    }
    static void Do(QWidget& sheets, const char* action) { Control<QAction>(sheets, action).trigger(); }
    static QTableView& Table(QWidget& sheets) { return Control<QTableView>(sheets, "table"); }
    static QString Cell(QWidget& sheets, int row, int column) {
        return Table(sheets).model()->index(row, column).data().toString();
    }
    static void Go(QWidget& sheets, int row, int column) {
        Table(sheets).setCurrentIndex(Table(sheets).model()->index(row, column));
    }
    static void Type(QWidget& sheets, int row, int column, const QString& text) {
        Go(sheets, row, column);
        QTest::keyClick(&Table(sheets), text[0].toLatin1());
        auto* editor = Table(sheets).viewport()->findChild<QLineEdit*>();
        ASSERT_TRUE(editor) << text.toStdString();
        QTest::keyClicks(editor, text.mid(1));
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents(); // which takes the text
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    static void Paste(QWidget& sheets, const char* text) {
        QGuiApplication::clipboard()->setText(QString::fromUtf8(text));
        Do(sheets, "a_Paste");
    }
};

TEST_F(SheetWindowTest, DataSetsFollowWhatIsTyped) {
    QWidget& sheets = Sheets();
    EXPECT_LE(sheets.minimumSizeHint().width(), 760);
    Paste(sheets, "t\tU\n1\t10\n2\t20\n3\t30\n");
    Type(sheets, 0, 2, QStringLiteral("P = U*U"));
    EXPECT_EQ(Cell(sheets, 3, 2), QStringLiteral("900"));
    Go(sheets, 1, 2);
    Do(sheets, "a_Plot");
    ASSERT_EQ(Graph().Series().size(), 1u);
    EXPECT_EQ(First().SeriesName(), "P");
    EXPECT_EQ(First().MaxY(), 900);
    Type(sheets, 3, 1, QStringLiteral("40"));
    EXPECT_EQ(First().MaxY(), 1600);
    Do(sheets, "a_Undo");
    EXPECT_EQ(First().MaxY(), 900);
    EXPECT_EQ(Cell(sheets, 3, 1), QStringLiteral("30"));
    Do(sheets, "a_Redo");
    EXPECT_EQ(First().MaxY(), 1600);
    Go(sheets, 2, 1);
    Do(sheets, "a_DeleteRows");
    EXPECT_EQ(First().Count(), 2);
}

TEST_F(SheetWindowTest, PanelsFollowAsWell) {
    QWidget& sheets = Sheets();
    Paste(sheets, "t\tU\tI\n1\t10\t3\n2\t20\t4\n");
    Table(sheets).selectAll();
    Do(sheets, "a_Plot");
    ASSERT_EQ(Graph().Series().size(), 2u);
    auto& stack = Control<QAction>(*Window, "a_StackBelow");
    Q_EMIT qobject_cast<QMenu*>(stack.parent())->aboutToShow();
    stack.trigger();
    ASSERT_EQ(Graph().ChildGraphs().size(), 1u);
    Type(sheets, 2, 2, QStringLiteral("5"));
    EXPECT_EQ((*Graph().ChildGraphs().begin())->FirstSeries()->MaxY(), 5);
    Do(sheets, "a_Undo");
    EXPECT_EQ((*Graph().ChildGraphs().begin())->FirstSeries()->MaxY(), 4);
}

TEST_F(SheetWindowTest, SheetsLieBesideTheGraph) {
    QWidget& sheets = Sheets();
    Paste(sheets, "t\tP = 2*t\n1\t\n2\t\n");
    Do(sheets, "a_NewSheet");
    Go(sheets, 1, 0);
    Paste(sheets, "7\n8\n");
    Go(sheets, 1, 0);
    Do(sheets, "a_Plot");
    WhenModal<QFileDialog>([this](QFileDialog& dialog) { EnterPath(dialog, PathOf("plot.ltp")); });
    Control<QAction>(*Window, "a_Save").trigger();
    EXPECT_EQ(Read(PathOf("plot.Sheet 1.sheet.csv")), "t,P = 2*t\n1,2\n2,4\n");
    Control<QAction>(*Window, "a_New").trigger();
    EXPECT_EQ(Control<QTabBar>(sheets, "tabs").count(), 0);
    Open(PathOf("plot.ltp"));
    EXPECT_FALSE(Window->Document().IsModified());
    ASSERT_EQ(Control<QTabBar>(sheets, "tabs").count(), 2);
    EXPECT_EQ(Cell(sheets, 2, 1), QStringLiteral("4"));
    ASSERT_EQ(First().Count(), 2);
    Control<QTabBar>(sheets, "tabs").setCurrentIndex(1);
    Type(sheets, 3, 0, QStringLiteral("9"));
    EXPECT_EQ(First().Count(), 3);
}

TEST_F(SheetWindowTest, RenamingAndDeletingAreStepsThatFilesFollow) {
    const auto rename = [&](QWidget& sheets, const char* name) {
        WhenModal<QInputDialog>([name](QInputDialog& dialog) {
            dialog.setTextValue(QString::fromUtf8(name));
            dialog.accept();
        });
        Do(sheets, "a_Rename");
    };
    const auto files = [&] {
        return QDir(PathOf({})).entryList({QStringLiteral("plot.*.csv")}, QDir::Files);
    };
    QWidget& sheets = Sheets();
    Paste(sheets, "t\tU\n1\t10\n2\t20\n");
    Go(sheets, 1, 1);
    Do(sheets, "a_Plot");
    Do(sheets, "a_NewSheet");
    WhenModal<QFileDialog>([this](QFileDialog& dialog) { EnterPath(dialog, PathOf("plot.ltp")); });
    Control<QAction>(*Window, "a_SaveAs").trigger();
    EXPECT_EQ(files().size(), 2);
    auto& tabs = Control<QTabBar>(sheets, "tabs");
    tabs.setCurrentIndex(0);
    for (const auto& [name, refused] :
         {std::pair{"sheet 2", "There is a sheet"}, {"a/b", "can not have"}, {" ", "needs"}}) {
        Sink.Texts.clear();
        rename(sheets, name);
        EXPECT_NE(Sink.Only().find(refused), std::string::npos) << Sink.Only();
        EXPECT_EQ(tabs.tabText(0), QStringLiteral("Sheet 1"));
    }
    rename(sheets, " run 7 ");
    EXPECT_EQ(tabs.tabText(0), QStringLiteral("run 7"));
    EXPECT_EQ(First().DataSourceInfo().SourceName(), "run 7");
    Type(sheets, 2, 1, QStringLiteral("25"));
    EXPECT_EQ(First().MaxY(), 25);
    EXPECT_EQ(Table(sheets).currentIndex().row(), 3) << "Enter goes down";
    tabs.setCurrentIndex(1);
    Do(sheets, "a_Delete");
    EXPECT_EQ(tabs.count(), 1);
    Control<QAction>(*Window, "a_Save").trigger();
    EXPECT_EQ(files(), QStringList{QStringLiteral("plot.run 7.sheet.csv")});
    for (int i = 0; i < 3; ++i) Do(sheets, "a_Undo");
    EXPECT_EQ(tabs.count(), 2);
    EXPECT_EQ(First().DataSourceInfo().SourceName(), "Sheet 1");
    Do(sheets, "a_Delete");
    Do(sheets, "a_Delete");
    EXPECT_FALSE(Control<QAction>(sheets, "a_Rename").isEnabled());
    EXPECT_EQ(First().Count(), 2) << "its points stay";
}

TEST_F(SheetWindowTest, SheetsAreRecovered) {
    QDir().mkpath(PathOf("kept"));
    Window->StartRecovery(PathOf("kept"), 1);
    Paste(Sheets(), "t\tU\n1\t10\n");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !QDir(PathOf("kept")).entryList(QDir::Files).isEmpty(); }));
    QByteArray all;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        all.clear();
        for (const QFileInfo& file : QDir(PathOf("kept")).entryInfoList(QDir::Files))
            all += Read(file.filePath());
        return all.contains("U\t10");
    })) << all.size();
}

} // namespace
} // namespace lumoplot
