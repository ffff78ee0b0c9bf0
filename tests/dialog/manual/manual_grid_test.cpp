#include "dialog/wizard_fixture.h"

#include "data/series/ds_info.h"
#include "dialog/common/x_value_text.h"
#include "dialog/manual/manual_grid.h"
#include "dialog/manual/pasted_commas.h"
#include "dialog/manual/pending_rows.h"
#include "session/graph_snapshot.h"
#include "support/errors.h"

#include <QClipboard>
#include <QHeaderView>
#include <QSpinBox>
#include <QTabWidget>
#include <random>

namespace lumoplot {
namespace {

using TPairs = std::vector<std::pair<double, double>>;
using TBlock = QList<QStringList>;

class TManualGridTest : public TWizardTest {
protected:
    void ShowPage(std::initializer_list<const char*> names = {"Run"}) {
        Wizard.SetStartPage(TxyDataWizard::kDataSourcePage);
        Show(names);
    }
    TManualGrid& Grid() { return Find<TManualGrid>("grid"); }
    void GoTo(int row, int column) {
        TManualGrid& grid = Grid();
        grid.scrollTo(grid.model()->index(row, column));
        const QPoint cell = grid.visualRect(grid.model()->index(row, column)).center();
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, cell);
        grid.setFocus();
    }
    /// As the window system would: each key goes to whatever has the focus.
    static void TypeKeys(const QString& text) {
        for (const QChar c : text) QTest::keyClick(QApplication::focusWidget(), c.toLatin1());
    }
    static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        QCoreApplication::processEvents();
    }
    void TypeCell(int row, int column, const QString& text) {
        GoTo(row, column);
        TypeKeys(text);
        Press(Qt::Key_Return);
    }
    void Paste(int row, int column, const QString& text) {
        QApplication::clipboard()->setText(text);
        GoTo(row, column);
        Press(Qt::Key_V, Qt::ControlModifier);
    }
    std::string Cell(int row, int column) {
        return Grid().model()->index(row, column).data().toString().toStdString();
    }
    bool IsMarked(int row, int column) {
        return Grid().model()->index(row, column).data(Qt::BackgroundRole).isValid();
    }
    TPairs Points() {
        TPairs points;
        for (auto point = Current().First(); point; point = point.Next())
            points.emplace_back(point.X(), point.Y());
        return points;
    }
};

struct TBlockCase {
    const char* text;
    TBlock cells;
};

TEST(SplitBlock, DividesWhatProgramsCopy) {
    const TBlockCase cases[] = {
        {"1\t2\r\n3\t4\r\n", {{"1", "2"}, {"3", "4"}}}, // a spreadsheet
        {"1,5\t2,5\n3\t4", {{"1,5", "2,5"}, {"3", "4"}}},
        {"1\t\n\t4\n", {{"1", ""}, {"", "4"}}},
        {"1;2,5\n3;4", {{"1", "2,5"}, {"3", "4"}}},
        {"1.5,2\n3,4.5\n", {{"1.5", "2"}, {"3", "4.5"}}},
        {"1, 2\n3, 4", {{"1", "2"}, {"3", "4"}}},
        {"1,5\n2,5", {{"1,5"}, {"2,5"}}}, // decimal commas
        {"1,234.5\n12,345", {{"1,234.5"}, {"12,345"}}},
        {"  1   2\n3 4", {{"1", "2"}, {"3", "4"}}},
        {"1\r2\r3", {{"1"}, {"2"}, {"3"}}},
        {"", {}},
    };
    for (const auto& c : cases) EXPECT_EQ(SplitBlock(QString::fromLatin1(c.text)), c.cells) << c.text;
}

TEST(PastedCommas, AreReadByTheWholeColumn) {
    struct TCase {
        TBlock cells;
        TBlock read;
        const char* reading;
    };
    const char* groups = "The commas were read as groups of digits.";
    const char* decimals = "The commas were read as decimal signs.";
    const TCase cases[] = {
        {{{"1,234"}, {"999"}}, {{"1234"}, {"999"}}, groups},
        {{{"1,234"}, {"1,5"}}, {{"1.234"}, {"1.5"}}, decimals},
        {{{"1,234"}, {"1500"}}, {{"1.234"}, {"1500"}}, decimals},
        {{{"1,234"}, {"0,125"}}, {{"1.234"}, {"0.125"}}, decimals},
        {{{"-1,234,567.5"}, {"1,234"}}, {{"-1234567.5"}, {"1234"}}, groups},
        {{{"1,234.5"}, {"1,5"}}, {{"1,234.5"}, {"1,5"}}, ""},
        {{{"1,234", "7"}, {"999"}}, {{"1234", "7"}, {"999"}}, groups},
        {{{"1.5"}, {"2"}}, {{"1.5"}, {"2"}}, ""},
    };
    for (const TCase& c : cases) {
        TBlock block = c.cells;
        EXPECT_EQ(ReadCommas(block).toStdString(), c.reading) << c.cells[0][0].toStdString();
        EXPECT_EQ(block, c.read) << c.cells[0][0].toStdString();
    }
}

// The rows against a plain list of them, over random edits; copies stay what they were.
TEST(ManualRows, BehaveLikeAListAndItsCopies) {
    TPointChain points;
    for (int i = 0; i < 1500; ++i) points.Add(i, -i, {});
    TManualRows rows;
    rows.Show(&points);
    using TList = std::vector<std::string>;
    const auto textsOf = [](const TManualRows& shown) {
        TList texts;
        for (std::size_t i = 0; i < shown.Count(); ++i) {
            const TManualRow row = shown.Row(i);
            texts.push_back(row.X.isNull() ? std::to_string(shown.Point(row.Point).Id) : row.X.toStdString());
        }
        return texts;
    };
    TList list = textsOf(rows);
    std::vector<std::pair<TManualRows, TList>> copies;
    std::mt19937 random(7);
    const auto upTo = [&](std::size_t last) {
        return std::uniform_int_distribution<std::size_t>(0, last)(random);
    };
    for (int step = 0; step < 250; ++step) {
        if (step % 50 == 49) std::tie(rows, list) = copies[upTo(copies.size() - 1)];
        const std::size_t row = upTo(list.size());
        const std::size_t removed = std::min(list.size() - row, upTo(step % 10 == 9 ? 300 : 3));
        std::vector<TManualRow> added(upTo(3));
        const auto place = list.begin() + static_cast<std::ptrdiff_t>(row);
        list.erase(place, place + static_cast<std::ptrdiff_t>(removed));
        for (std::size_t i = 0; i < added.size(); ++i) {
            added[i].X = QString::number(step) + QLatin1Char('.') + QString::number(i);
            list.insert(list.begin() + static_cast<std::ptrdiff_t>(row + i), added[i].X.toStdString());
        }
        const bool changes = removed > 0 || !added.empty();
        const TManualRows before = rows;
        rows.Replace(row, removed, std::move(added));
        if (changes) {
            EXPECT_EQ(rows.FirstDifference(before), row) << step;
        }
        if (step % 5 == 0) copies.emplace_back(rows, list);
    }
    EXPECT_EQ(textsOf(rows), list);
    for (const auto& [copy, texts] : copies) EXPECT_EQ(textsOf(copy), texts);
}

// What a session keeps of rows that are no points yet comes back as it was.
TEST(PendingRows, ComeBackFromTheirBytes) {
    TxyGraph graph;
    graph.AddSeries();
    TSeries& series = *graph.FindSeries(graph.AddSeries());
    for (int i = 0; i < 1500; ++i) series.AddPoint(i, -i);
    std::mt19937 random(11);
    const auto upTo = [&](std::size_t last) {
        return std::uniform_int_distribution<std::size_t>(0, last)(random);
    };
    const TGraphSnapshot snapshot(graph, nullptr, std::make_shared<TMemoryMeter>());
    TPendingRows pending;
    pending.SeriesNumber = 2;
    pending.Rows.Show(&series.Points());
    for (int step = 0; step < 40; ++step) {
        const std::size_t row = upTo(pending.Rows.Count());
        const std::size_t removed = std::min(pending.Rows.Count() - row, upTo(30));
        std::vector<TManualRow> added(upTo(step % 10 == 9 ? 2500 : 3));
        for (TManualRow& each : added) {
            if (upTo(1) == 1) each.Point = upTo(1499);
            if (upTo(2) > 0) each.X = QString::number(step) + QStringLiteral(" Ω\t");
            if (upTo(2) > 0) each.Y = QLatin1String("");
        }
        pending.Rows.Replace(row, removed, std::move(added));
        const auto back = PendingRowsOf(pending.ToBytes(snapshot), graph);
        ASSERT_EQ(back->SeriesNumber, 2);
        ASSERT_EQ(back->Rows.Count(), pending.Rows.Count());
        for (std::size_t i = 0; i < pending.Rows.Count(); ++i) {
            const TManualRow a = back->Rows.Row(i);
            const TManualRow b = pending.Rows.Row(i);
            ASSERT_TRUE(a.Point == b.Point && a.X == b.X && a.X.isNull() == b.X.isNull() && a.Y == b.Y &&
                        a.Y.isNull() == b.Y.isNull())
                << step << ": row " << i;
        }
    }
    const TBytes good = pending.ToBytes(snapshot);
    for (std::size_t size = 0; size < good.size(); size += 1 + good.size() / 97)
        EXPECT_THROW(PendingRowsOf(std::span(good).first(size), graph), EStreamError);
    graph.DeleteSeries(2);
    EXPECT_THROW(PendingRowsOf(good, graph), EStreamError);
}

// It is lost in a crash no more than a step; Esc ends it.
TEST_F(TManualGridTest, WhatIsTypedIntoAnOpenCellBelongsToTheSession) {
    ShowPage();
    TGraphSession& session = Wizard.Session();
    int told = 0;
    QObject::connect(&session, &TGraphSession::Typed, [&] { ++told; });
    GoTo(2, 0);
    EXPECT_FALSE(session.IsTyping());
    for (const Qt::Key end : {Qt::Key_Escape, Qt::Key_Return}) {
        TypeKeys(QStringLiteral("7x"));
        ASSERT_TRUE(session.IsTyping() && told > 0);
        EXPECT_TRUE(session.IsClean());
        const auto kept = PendingRowsOf(session.Side()->ToBytes(*session.Snapshot()), Graph);
        ASSERT_EQ(kept->Rows.Count(), 3u);
        EXPECT_EQ(kept->Rows.Row(2).X, QStringLiteral("7x"));
        EXPECT_TRUE(kept->Rows.Row(1).X.isNull()) << "a point";
        told = 0;
        Press(end);
        EXPECT_FALSE(session.IsTyping());
        EXPECT_GT(told, 0);
    }
    EXPECT_EQ(session.StepsBack(), 1);
    EXPECT_EQ(Cell(2, 0), "7x");
}

TEST_F(TManualGridTest, TabGoesFromXToYToTheNextRow) {
    ShowPage();
    const int first = Grid().model()->rowCount() - 1;
    GoTo(first, 0);
    for (const char* text : {"1", "10", "2", "20"}) {
        TypeKeys(QString::fromLatin1(text));
        Press(Qt::Key_Tab);
    }
    ASSERT_EQ(Grid().model()->rowCount(), first + 3);
    const char* expected[] = {"1", "10", "2", "20"};
    for (int i = 0; i < 4; ++i) EXPECT_EQ(Cell(first + i / 2, i % 2), expected[i]) << i;
}

TEST_F(TManualGridTest, ACommaWithTwoReadingsIsMarked) {
    ShowPage();
    TypeCell(0, 1, QStringLiteral("1,234"));
    EXPECT_TRUE(IsMarked(0, 1));
    const std::string reason = Grid().model()->index(0, 1).data(Qt::ToolTipRole).toString().toStdString();
    EXPECT_NE(reason.find("can be 1234 or 1.234"), std::string::npos) << reason;
}

TEST_F(TManualGridTest, WhatIsTypedBecomesPointsWhenThePageIsCommitted) {
    ShowPage();
    TypeCell(0, 1, QStringLiteral("11,5"));
    EXPECT_EQ(Grid().currentIndex(), Grid().model()->index(1, 1)) << "Enter goes down";
    GoTo(2, 0);
    TypeKeys(QStringLiteral("0.5"));
    Press(Qt::Key_Return);
    TypeCell(2, 1, QStringLiteral("-3"));
    EXPECT_EQ(Points(), (TPairs{{1, 10}, {2, 20}})) << "before it is committed";
    const std::int32_t id = Current().First().Id();
    Click("btnPreview");
    EXPECT_EQ(Points(), (TPairs{{0.5, -3}, {1, 11.5}, {2, 20}}));
    EXPECT_EQ(Current().First().Next().Id(), id) << "a point whose Y alone is changed stays the same point";
    EXPECT_TRUE(Sink.Texts.empty());
}

TEST_F(TManualGridTest, ErrorsOfYHaveAColumnWhenTheyAreUsed) {
    ShowPage();
    EXPECT_EQ(Grid().model()->columnCount(), 2);
    Click("cb_ManualYErrors");
    ASSERT_EQ(Grid().model()->columnCount(), 3);
    TypeCell(0, 2, QStringLiteral("0,5"));
    TypeCell(1, 2, QStringLiteral("-1"));
    EXPECT_TRUE(IsMarked(1, 2));
    Click("btnPreview");
    EXPECT_EQ(Sink.Only(), "Row 2: The error of Y must be a number above 0");
    TypeCell(1, 2, QStringLiteral("1e-3"));
    Paste(2, 0, QStringLiteral("3\t30\t0.25\n4\t40\n"));
    TypeCell(1, 1, QStringLiteral("21"));
    Click("btnPreview");
    EXPECT_EQ(Points(), (TPairs{{1, 10}, {2, 21}, {3, 30}, {4, 40}}));
    EXPECT_EQ(Current().YErrors(), (std::vector<double>{0.5, 0.001, 0.25, 0}));
    Click("btnPreview");
    EXPECT_EQ(Cell(2, 2), "0.25");
    EXPECT_EQ(Cell(3, 2), "");
    GoTo(0, 2);
    Press(Qt::Key_Delete);
    Click("btnPreview");
    EXPECT_EQ(Current().YErrors()[0], 0) << "an empty cell is no error";
}

TEST_F(TManualGridTest, ATextThatIsBeingTypedIsTakenToo) {
    ShowPage();
    GoTo(1, 1);
    TypeKeys(QStringLiteral("77"));
    Press(Qt::Key_K, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Wizard.result() == TxyDataWizard::kOk; }));
    EXPECT_EQ(Points(), (TPairs{{1, 10}, {2, 77}}));
}

TEST_F(TManualGridTest, BlocksArePasted) {
    ShowPage();
    Paste(1, 1, QStringLiteral("5\t50\n6\t60\n7\t70\n")); // two columns fill both
    EXPECT_EQ(Grid().model()->rowCount(), 5);
    Paste(0, 1, QStringLiteral("9"));
    QApplication::clipboard()->setText(QStringLiteral("8\t80"));
    GoTo(4, 0);
    Click("btnPaste");
    Click("btnPreview");
    EXPECT_EQ(Points(), (TPairs{{1, 9}, {5, 50}, {6, 60}, {7, 70}, {8, 80}}));
    Click("btnPreview");
    Paste(0, 0, QStringLiteral("1\t2\t3\n"));
    EXPECT_EQ(Sink.Only(),
              "The copied block has 3 columns. Copy one column, or those of X and Y beside each other.");
}

TEST_F(TManualGridTest, ACopyPastesBackTheSame) {
    ShowPage();
    Current().AddPoint(0.1 + 0.2, 1.0 / 3);
    QCoreApplication::processEvents();
    Grid().setFocus();
    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_C, Qt::ControlModifier);
    const TPairs before = Points();
    Click("btnNew");
    GoTo(0, 0);
    Press(Qt::Key_V, Qt::ControlModifier);
    Click("btnPreview");
    EXPECT_EQ(Points(), before);
}

TEST_F(TManualGridTest, RowsAreInsertedAndDeleted) {
    ShowPage();
    GoTo(1, 0);
    Click("btnInsertRows");
    EXPECT_EQ(Cell(1, 0), "");
    EXPECT_EQ(Cell(2, 0), "2");
    TypeCell(1, 0, QStringLiteral("1.5"));
    TypeCell(1, 1, QStringLiteral("15"));
    GoTo(0, 0);
    Click("btnDeleteRows");
    EXPECT_EQ(Cell(0, 0), "1.5");
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Cell(0, 0), "1");
    EXPECT_EQ(Grid().currentIndex().row(), 0) << "where it happened";
    Click("btnPreview");
    EXPECT_EQ(Points(), (TPairs{{1, 10}, {1.5, 15}, {2, 20}}));
}

TEST_F(TManualGridTest, ClearedRowsAreDeletedPoints) {
    ShowPage();
    Grid().setFocus();
    QTest::mouseClick(Grid().verticalHeader()->viewport(), Qt::LeftButton, {}, QPoint(3, 3));
    Press(Qt::Key_Delete);
    Click("btnPreview");
    EXPECT_EQ(Points(), (TPairs{{2, 20}}));
}

TEST_F(TManualGridTest, ACellThatIsNoNumberStopsEveryCommit) {
    ShowPage({"Run", "Other"});
    TypeCell(1, 1, QStringLiteral("12x"));
    EXPECT_TRUE(IsMarked(1, 1));
    EXPECT_FALSE(IsMarked(0, 1));
    for (const char* button : {"btnPreview", "btnOk", "btnDuplicate", "btnNew", "btnSort", "btnSetDefault"}) {
        Sink.Texts.clear();
        Click(button);
        EXPECT_EQ(Sink.Only(), "Row 2: '12x' is not a valid floating point value") << button;
    }
    Sink.Texts.clear();
    AnswerFileDialog(PathOf("run.lds"));
    Click("btnExport");
    EXPECT_EQ(Sink.Texts.size(), 1u);
    EXPECT_FALSE(QFile::exists(PathOf("run.lds")));
    Wizard.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Wizard));
    Sink.Texts.clear();
    auto& list = Find<QComboBox>("cbx_DataSets");
    list.setFocus();
    Press(Qt::Key_Down);
    EXPECT_EQ(Sink.Texts.size(), 1u);
    EXPECT_EQ(Selected(), "Run");
    EXPECT_EQ(Current().SeriesName(), "Run");
    Choose("cbx_SourceKind", 0);
    Press(Qt::Key_Down);
    EXPECT_EQ(Find<QComboBox>("cbx_SourceKind").currentIndex(), 0);
    EXPECT_EQ(Cell(1, 1), "12x");
    EXPECT_TRUE(Wizard.isVisible());
    EXPECT_EQ(Names(), (std::vector<std::string>{"Run", "Other"}));
    EXPECT_EQ(Points(), (TPairs{{1, 10}, {2, 20}}));
    TypeCell(1, 1, QStringLiteral("12"));
    Click("btnOk");
    EXPECT_EQ(Points(), (TPairs{{1, 10}, {2, 12}}));
}

TEST_F(TManualGridTest, LeavingRowsThatCannotBecomePointsIsToldAndKeepsThem) {
    ShowPage();
    auto& tabs = Find<QTabWidget>("tabs");
    TypeCell(1, 1, QStringLiteral("oops"));
    tabs.setCurrentIndex(TxyDataWizard::kGeneralPage);
    tabs.setCurrentIndex(TxyDataWizard::kDataSourcePage);
    EXPECT_EQ(Cell(1, 1), "oops");
    EXPECT_EQ(Sink.Only(), "Row 2: 'oops' is not a valid floating point value. The edited rows stay in the "
                           "grid and are no points yet.");
    Sink.Texts.clear();
    TypeCell(1, 1, QStringLiteral("21"));
    tabs.setCurrentIndex(TxyDataWizard::kGeneralPage);
    EXPECT_EQ(Points(), (TPairs{{1, 10}, {2, 21}})) << "the other pages work on the points";
}

TEST_F(TManualGridTest, AnotherDataSetShowsItsOwnRows) {
    ShowPage({"Run", "Other"});
    Graph.FindSeries(2)->SetPointY(1, 99);
    TypeCell(0, 1, QStringLiteral("5"));
    Choose("cbx_DataSets", 1);
    EXPECT_EQ(Cell(0, 1), "99");
    Choose("cbx_DataSets", 0);
    EXPECT_EQ(Cell(0, 1), "5");
    Click("btnDelete");
    EXPECT_EQ(Cell(0, 1), "99");
    EXPECT_EQ(Sink.Only(), "Delete DataSet  \"Run\"  permanently?");
}

TEST_F(TManualGridTest, HalfARowIsNamedAndMarked) {
    ShowPage();
    TypeCell(2, 0, QStringLiteral("3"));
    EXPECT_FALSE(IsMarked(2, 1)) << "its Y is still to come";
    Find<QWidget>("btnOk").setFocus();
    Click("btnOk");
    EXPECT_EQ(Sink.Only(), "Row 3: Y is empty");
    EXPECT_TRUE(IsMarked(2, 1));
    EXPECT_EQ(Grid().currentIndex(), Grid().model()->index(2, 1));
    EXPECT_EQ(Wizard.focusWidget(), &Grid()) << "typing mends it";
    Sink.Texts.clear();
    TypeCell(2, 0, QStringLiteral("inf"));
    TypeCell(2, 1, QStringLiteral("1"));
    Click("btnOk");
    EXPECT_EQ(Sink.Only(), "Row 3: X must be a finite number");
}

TEST_F(TManualGridTest, RowsWithEqualXAreNotMergedInSilence) {
    for (const auto& [merge, leave] : {std::pair(true, false), {false, false}, {true, true}, {false, true}}) {
        Graph.FreeAllSeries();
        Wizard.hide();
        ShowPage();
        Sink.Texts.clear();
        Sink.Answer = merge;
        Paste(2, 0, QStringLiteral("2\t21\n2\t22\n"));
        if (leave)
            Find<QTabWidget>("tabs").setCurrentIndex(TxyDataWizard::kGeneralPage);
        else
            Click("btnPreview");
        EXPECT_EQ(Sink.Only(), "2 rows have the X of another row. Merge them? (The last row of each X stays; "
                               "No keeps them all.)");
        EXPECT_EQ(Current().Count(), merge ? 2 : 4);
        EXPECT_EQ(Current().DuplicatesAllowed(), !merge);
    }
}

TEST_F(TManualGridTest, DatesAreShownAndTyped) {
    ShowPage();
    const double exact = 45322.123456789; // finer than what is shown
    Current().Clear();
    Current().AddPoint(45322, 1);
    Current().AddPoint(exact, 2);
    QCoreApplication::processEvents();
    Choose("cbx_ManualXFormat", 1);
    EXPECT_EQ(Cell(0, 0), "2024-01-31");
    EXPECT_EQ(Cell(1, 0), "2024-01-31 02:57:46.667");
    TypeCell(1, 1, QStringLiteral("3"));
    TypeCell(2, 0, QStringLiteral("2024-02-01 12:00"));
    TypeCell(2, 1, QStringLiteral("4"));
    TypeCell(3, 0, QStringLiteral("45400"));
    EXPECT_TRUE(IsMarked(3, 0)) << "a number is no date";
    Click("btnUndoStep");
    Click("btnPreview");
    EXPECT_EQ(Points(), (TPairs{{45322, 1}, {exact, 3}, {45323.5, 4}}));
}

TEST_F(TManualGridTest, PointsThatChangeElsewhereAreFollowed) {
    ShowPage();
    Current().AddPoint(3, 30);
    QCoreApplication::processEvents();
    EXPECT_EQ(Cell(2, 1), "30");
    Graph.FreeAllSeries();
    EXPECT_EQ(Grid().model()->rowCount(), 0);
}

} // namespace
} // namespace lumoplot
