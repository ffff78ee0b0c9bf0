// Files come into the window and go out of it, and what is broken or not saved is never lost in silence.
#include "data/series/ds_info.h"
#include "host/window_fixture.h"

#include "graph/loading/rows_text.h"
#include "graph/model/child_graph.h"
#include "host/files/recent_files.h"

#include <QDropEvent>
#include <QMenu>
#include <QMimeData>

namespace lumoplot {
namespace {

struct TExampleCase {
    const char* file;
    int points;
    double largestX;
    double sumOfY;
    const char* xTitle;
    const char* name;
    bool joined; ///< by a line; not where an X repeats
};
// Counted and summed up from the files by other means.
constexpr TExampleCase kExampleCases[] = {
    {"enso.csv", 168, 168, 1787.8, "Month", "Pressure difference", true},
    {"gauss1.dat", 250, 250, 15132.848935, "x", "y", true},
    {"chwirut1.txt", 214, 6, 6475.96, "Metal distance", "Ultrasonic response", false},
    {"hahn1.csv", 236, 851.61, 3354.81, "Temperature (K)", "Thermal expansion", false},
};

double SumOfY(const TSeries& series) {
    double sum = 0;
    for (TPointCursor point = series.First(); point; point = point.Next()) sum += point.Y();
    return sum;
}

using OpenAndSave = TWindowTest;

TEST_F(OpenAndSave, ExamplesAreReadWhole) {
    for (const TExampleCase& example : kExampleCases) {
        SCOPED_TRACE(example.file);
        Window->Document().New();
        Open(Example(example.file));
        ASSERT_EQ(Graph().Series().size(), 1u);
        EXPECT_EQ(First().Count(), example.points);
        EXPECT_EQ(First().MaxX(), example.largestX);
        EXPECT_NEAR(SumOfY(First()), example.sumOfY, 1e-9 * example.sumOfY);
        EXPECT_EQ(First().SeriesName(), example.name);
        EXPECT_EQ(Graph().XAxis()->Title(), example.xTitle);
        EXPECT_EQ(First().LinesShown(), example.joined);
        EXPECT_TRUE(First().PointsShown());
        EXPECT_TRUE(Window->isWindowModified());
    }
    EXPECT_TRUE(Sink.Texts.empty());
}

TEST_F(OpenAndSave, SavedGraphComesBackEqual) {
    Open(Example("enso.csv"));
    Open(Example("gauss1.dat"));
    const TBytes saved = Content();
    AnswerPath(PathOf("two"));
    Press(Qt::Key_S);
    EXPECT_FALSE(Window->isWindowModified());
    EXPECT_EQ(Window->Document().FileName(), PathOf("two.ltp")) << "the suffix is added";
    Press(Qt::Key_N);
    EXPECT_TRUE(Graph().Series().empty());
    AnswerPath(PathOf("two.ltp"));
    Press(Qt::Key_O);
    EXPECT_EQ(Content(), saved);
    EXPECT_TRUE(Window->windowTitle().contains(QStringLiteral("two.ltp")));
    EXPECT_FALSE(Window->isWindowModified());
}

TEST_F(OpenAndSave, BrokenFilesLeaveTheGraphAsItWas) {
    Open(Example("enso.csv"));
    Window->Document().SaveTo(PathOf("good.ltp"));
    const TBytes before = Content();
    const QByteArray good = Read(PathOf("good.ltp"));
    const QString broken[] = {
        Write("cut.ltp", good.left(good.size() / 2)),
        Write("none.ltp", "no graph"),
        Write("empty.ltp", ""),
        Write("empty.csv", ""),
        Write("words.txt", "these are\nonly words\n"),
        PathOf("missing.csv"),
        PathOf("missing.ltp"),
        Folder.path(),
    };
    for (const QString& file : broken) {
        SCOPED_TRACE(file.toStdString());
        Sink.Texts.clear();
        Open(file);
        EXPECT_EQ(Sink.Texts.size(), 1u);
        EXPECT_EQ(Content(), before);
        EXPECT_EQ(Window->Document().FileName(), PathOf("good.ltp"));
        EXPECT_FALSE(Window->isWindowModified());
    }
}

TEST_F(OpenAndSave, AFileThatAnotherProgramHasWrittenIsNotReplacedWithoutAQuestion) {
    Open(Example("enso.csv"));
    Window->Document().SaveTo(PathOf("mine.ltp"));
    Press(Qt::Key_S);
    EXPECT_TRUE(Sink.Texts.empty());
    const QString other = Write("mine.ltp", "written by another program");
    for (const bool answer : {false, true}) {
        Sink.Answer = answer;
        Sink.Texts.clear();
        Press(Qt::Key_S);
        ASSERT_EQ(Sink.Texts.size(), 1u);
        EXPECT_NE(Sink.Only().find("was changed by another program"), std::string::npos) << Sink.Only();
        EXPECT_EQ(Read(other) == "written by another program", !answer);
    }
    Sink.Texts.clear();
    Press(Qt::Key_S);
    EXPECT_TRUE(Sink.Texts.empty()) << "it is ours now";
}

TEST_F(OpenAndSave, SaveThatFailsIsToldAndTheGraphStaysModified) {
    Open(Example("enso.csv"));
    AnswerPath(PathOf("gone.ltp"));
    Press(Qt::Key_S);
    Open(Example("gauss1.dat"));
    ASSERT_TRUE(QFile::remove(PathOf("gone.ltp")));
    ASSERT_TRUE(QDir().mkpath(PathOf("gone.ltp")));
    Press(Qt::Key_S);
    EXPECT_TRUE(Sink.Only().starts_with("Can not save to file " + PathOf("gone.ltp").toStdString() + ": "))
        << Sink.Only();
    EXPECT_TRUE(Window->isWindowModified());
    AnswerBox(QMessageBox::Save);
    EXPECT_FALSE(Window->close()) << "the window stays while saving fails";
}

TEST_F(OpenAndSave, ModifiedGraphAsksBeforeTheWindowCloses) {
    Open(Example("enso.csv"));
    AnswerBox(QMessageBox::Cancel);
    EXPECT_FALSE(Window->close());
    AnswerBox(QMessageBox::Save, [this] { AnswerPath(PathOf("kept.ltp")); });
    EXPECT_TRUE(Window->close());
    EXPECT_TRUE(QFile::exists(PathOf("kept.ltp")));
    Window->show();
    Open(Example("gauss1.dat"));
    AnswerBox(QMessageBox::Discard);
    EXPECT_TRUE(Window->close());
}

TEST_F(OpenAndSave, AskingToKeepAGraphComesBeforeAnotherTakesItsPlace) {
    Open(Example("enso.csv"));
    AnswerBox(QMessageBox::Cancel);
    Press(Qt::Key_N);
    EXPECT_EQ(First().Count(), 168);
    Window->Document().SaveTo(PathOf("enso.ltp"));
    Open(Example("gauss1.dat"));
    AnswerBox(QMessageBox::Discard);
    Open(PathOf("enso.ltp"));
    EXPECT_EQ(Graph().Series().size(), 1u);
    EXPECT_FALSE(Window->isWindowModified());
}

TEST_F(OpenAndSave, RowsThatAreNoNumbersAreTold) {
    Open(Write("gaps.csv", "t,v\n1,10\n2,oops\n3,30\n4,40\n5,50\n"));
    EXPECT_EQ(First().Count(), 4);
    ASSERT_EQ(Sink.Texts.size(), 1u);
    EXPECT_NE(Sink.Texts[0].find("oops"), std::string::npos) << Sink.Texts[0];
    EXPECT_NE(Sink.Texts[0].find("row 3"), std::string::npos) << Sink.Texts[0];
}

TEST_F(OpenAndSave, EveryRowIsLoadedAndThoseThatAreThinnedForTheEyeWhenItIsWanted) {
    QByteArray rows = "t,v\n";
    for (int i = 0; i < 20000; ++i) rows += QByteArray::number(i) + ',' + QByteArray::number(i % 7) + '\n';
    Open(Write("long.csv", rows));
    EXPECT_EQ(First().Count(), 20000);
    EXPECT_EQ(Rows(), "1 data set, all 20000 rows");
    First().DataSourceInfo().SetAutoRowHitFreq(true);
    auto& everyRow = Control<QAction>(*Window, "a_LoadEveryRow");
    for (int i = 0; i < 2; ++i) {
        everyRow.trigger();
        EXPECT_EQ(First().Count(), 20000);
        EXPECT_EQ(Rows(), "1 data set, all 20000 rows");
        everyRow.trigger();
        EXPECT_EQ(First().Count(), 5000);
        EXPECT_EQ(Rows(), "1 data set, drawn from 5000 of 20000 rows");
    }
    NotePointsAreMade(First());
    everyRow.trigger();
    EXPECT_EQ(Rows(), "1 data set, 5000 points") << "what was worked out is not read again";
    Window->Document().New();
    const int budget = TxyGraph::kHostPointBudget;
    EXPECT_EQ(Graph().PointBudget(), budget) << "the wish was for the graph before";
}

TEST_F(OpenAndSave, ATitleOfTheXAxisThatSomebodyWroteStays) {
    for (const char* title : {"elapsed", "X axis"}) {
        Window->Document().New();
        Graph().XAxis()->SetTitle(title);
        Open(Write("a.csv", "hours,v\n1,2\n2,3\n"));
        EXPECT_EQ(Graph().XAxis()->Title(), title == std::string("elapsed") ? "elapsed" : "hours");
    }
}

TEST_F(OpenAndSave, ALoadingThatIsCancelledLeavesTheGraphAsItWas) {
    QByteArray rows = "t,v\n";
    for (int i = 0; i < 300000; ++i) rows += QByteArray::number(i) + ',' + QByteArray::number(i % 7) + '\n';
    const QString file = Write("long.csv", rows);
    Open(Example("gauss1.dat"));
    Window->Document().SaveTo(PathOf("a.ltp"));
    const TBytes before = Content();
    const QString shown = Rows();
    const int steps = Window->Document().Session().StepsBack();
    CancelNextWork();
    Open(file);
    EXPECT_EQ(Content(), before);
    EXPECT_EQ(Rows(), shown);
    EXPECT_FALSE(Window->isWindowModified());
    EXPECT_EQ(Window->Document().Session().StepsBack(), steps);
    Open(file);
    ASSERT_EQ(Graph().Series().size(), 2u);
    Window->Document().SaveTo(PathOf("a.ltp"));
    const TBytes both = Content();
    CancelNextWork();
    Control<QAction>(*Window, "a_LoadEveryRow").trigger();
    EXPECT_EQ(Content(), both);
    EXPECT_FALSE(Control<QAction>(*Window, "a_LoadEveryRow").isChecked());
    EXPECT_FALSE(Window->isWindowModified());
}

TEST_F(OpenAndSave, OpenDataShowsHowAFileIsReadAndTakesSeveralColumns) {
    AnswerPath(Write("run.csv", "No.,day,volt,amp\n1,2024-01-29,1.5,10\n2,2024-01-30,2.5,20\n"
                                "3,2024-01-31,3.5,30\n"));
    WhenModal<QDialog>(
        [](QDialog& chooser) {
            EXPECT_TRUE(
                Control<QLabel>(chooser, "lblFound").text().contains(QStringLiteral("X is column 2 (day)")));
            Click(chooser, "btnAllY");
            Click(chooser, "btnOk");
        },
        "TxyGetDataSource");
    Control<QAction>(*Window, "a_OpenData").trigger();
    ASSERT_EQ(Graph().Series().size(), 2u) << "what counts the rows is no Y";
    EXPECT_EQ(First().SeriesName(), "volt");
    EXPECT_EQ(Graph().FindSeries(2)->SeriesName(), "amp");
    EXPECT_EQ(Graph().FindSeries(2)->First().X(), 45320);
    EXPECT_TRUE(Graph().XAxis()->ShowAsTime());
    EXPECT_EQ(Graph().XAxis()->Title(), "day");
    Press(Qt::Key_Z);
    EXPECT_EQ(Graph().Series().size(), 0u);
}

TEST_F(OpenAndSave, OpenDataTakesTheErrorsThatItShows) {
    AnswerPath(Write("run.csv", "t,U,U_err\n1,2,0.5\n2,3,0.25\n3,4,0.5\n"));
    WhenModal<QDialog>([](QDialog& chooser) { Click(chooser, "btnOk"); }, "TxyGetDataSource");
    Control<QAction>(*Window, "a_OpenData").trigger();
    ASSERT_EQ(Graph().Series().size(), 1u);
    EXPECT_EQ(First().YErrors(), (std::vector<double>{0.5, 0.25, 0.5}));
    Press(Qt::Key_Z);
    EXPECT_EQ(Graph().Series().size(), 0u);
    Open(PathOf("run.csv")); // at once
    EXPECT_EQ(First().YErrors(), (std::vector<double>{0.5, 0.25, 0.5}));
}

TEST_F(OpenAndSave, AFileWithTwoReadingsIsOfferedInTheOther) {
    QByteArray text = "day,load\n";
    for (int day = 1; day <= 12; ++day)
        text += QByteArray::number(day) + "/" + QByteArray::number(13 - day) + "/2024," +
                QByteArray::number(day) + "\n";
    Open(Write("days.csv", text));
    const double first = First().First().Y();
    auto& other = Control<QAbstractButton>(*Window, "btnReadOtherwise");
    ASSERT_TRUE(other.isVisible());
    WhenModal<QDialog>(
        [](QDialog& chooser) {
            Click(chooser, "btnRunnerUp");
            Click(chooser, "btnOk");
        },
        "TxyGetDataSource");
    QTest::mouseClick(&other, Qt::LeftButton);
    ASSERT_EQ(Graph().Series().size(), 1u);
    EXPECT_EQ(First().Count(), 12);
    EXPECT_NE(First().First().Y(), first);
    EXPECT_FALSE(other.isVisible());
}

TEST_F(OpenAndSave, FilesCanBeDropped) {
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(Example("enso.csv")), QUrl::fromLocalFile(Example("gauss1.dat"))});
    QDragEnterEvent enter(QPoint(50, 150), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(Window.get(), &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(50, 150), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(Window.get(), &drop);
    EXPECT_EQ(Graph().Series().size(), 2u);
    EXPECT_TRUE(Graph().Legend()->visible());
}

TEST_F(OpenAndSave, RecentFilesComeNewestFirstAndWithoutTheLost) {
    Open(Write("one.csv", "1,2\n3,4\n"));
    Open(Write("two.csv", "1,2\n3,4\n"));
    Open(Write("lost.csv", "1,2\n3,4\n"));
    Open(PathOf("one.csv"));
    QFile::remove(PathOf("lost.csv"));
    auto& menu = Control<QMenu>(*Window, "m_Recent");
    Q_EMIT menu.aboutToShow();
    QStringList shown;
    for (const QAction* action : menu.actions()) shown += action->text();
    EXPECT_EQ(shown.mid(0, 3).join(QLatin1Char('|')), "&1  one.csv|&2  two.csv|")
        << shown.join(u'|').toStdString();
    menu.actions()[1]->trigger();
    EXPECT_EQ(Graph().Series().size(), 5u);
}

// By a link, and where case does not matter by another case.
TEST_F(OpenAndSave, AFileIsRecentOnceWhateverItIsCalled) {
    const QString file = Write("one.csv", "1,2\n3,4\n");
    Open(file);
#if defined(Q_OS_WIN)
    const QString other = PathOf("ONE.CSV");
#else
    const QString other = PathOf("link.csv");
    ASSERT_TRUE(QFile::link(file, other));
#endif
    Open(other);
    QMenu menu;
    EXPECT_EQ(TRecentFiles(menu).Files(), QStringList(other));
}

TEST_F(OpenAndSave, TheListOfRecentFilesIsLimited) {
    QMenu menu;
    TRecentFiles recent(menu);
    for (int i = 0; i < TRecentFiles::kMaxFiles + 3; ++i) recent.Add(PathOf(std::to_string(i).c_str()));
    EXPECT_EQ(recent.Files().size(), qsizetype{TRecentFiles::kMaxFiles});
    EXPECT_EQ(recent.Files().front(), PathOf(std::to_string(TRecentFiles::kMaxFiles + 2).c_str()));
}

TEST_F(OpenAndSave, ANewGraphTakesTheLookOfTheTemplateAndNothingThatItShows) {
    Open(Example("enso.csv"));
    Graph().AddMark({.Caption = "peak"});
    Graph().AddChildGraph();
    Graph().Appearance()->SetGraphTitle("Old");
    Graph().XAxis()->SetTitle("Hours");
    ASSERT_TRUE(QDir().mkpath(PathOf("templates")));
    Graph().SaveTemplate(PathOf("templates/default.ltp").toStdString(), TPoints::Include);
    Window->Document().New();
    EXPECT_EQ(Graph().XAxis()->Title(), "Hours");
    EXPECT_EQ(Graph().Appearance()->GraphTitle(), "");
    EXPECT_TRUE(Graph().Series().empty());
    EXPECT_EQ(Graph().Marks().Count(), 0);
    EXPECT_TRUE(Graph().ChildGraphs().empty());
}

} // namespace
} // namespace lumoplot
