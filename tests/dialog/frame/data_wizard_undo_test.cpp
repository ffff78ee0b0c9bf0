#include "dialog/frame/undo_fixture.h"

#include "common/seeds.h"
#include "common/special_values.h"
#include "graph/mouse/graph_mouse.h"

#include <QCheckBox>
#include <QLabel>
#include <QSpinBox>

namespace lumoplot {
namespace {

using TNames = std::vector<std::string>;

TEST_F(DataWizardUndo, ADeletedDataSetComesBackWithItsPoints) {
    ShowRuns();
    EXPECT_FALSE(CanUndo());
    const TWholeState before = State();
    Click("btnDelete");
    EXPECT_EQ(Tip("btnUndoStep"), "Undo delete data set Run 1");
    Click("btnUndoStep");
    EXPECT_TRUE(State() == before);
    EXPECT_EQ(Selected(), "Run 1");
    EXPECT_EQ(Tip("btnUndoStep"), "Undo");
    EXPECT_EQ(Tip("btnRedoStep"), "Redo delete data set Run 1");
    Leave();
    Redo();
    EXPECT_EQ(Names(), TNames{"Run 2"});
    EXPECT_EQ(Selected(), "Run 2");
}

TEST_F(DataWizardUndo, AnEditUndoesItsOwnTypingFirst) {
    ShowRuns();
    Click("cb_Active");
    auto& edit = Find<QLineEdit>("e_SeriesName");
    edit.setFocus();
    edit.end(false);
    QTest::keyClicks(&edit, "ning");
    EXPECT_EQ(Tip("btnUndoStep"), "Undo rename to Run 1ning");
    Undo();
    EXPECT_EQ(Current().SeriesName(), "Run 1");
    EXPECT_FALSE(Current().Active());
    EXPECT_EQ(Tip("btnUndoStep"), "Undo hide Run 1"); // what was typed and taken back is no step
    Undo();
    EXPECT_TRUE(Current().Active());
}

TEST_F(DataWizardUndo, AStepIsDoneAgainBeforeTypingThatWasUndoneEarlier) {
    ShowRuns();
    Current().SetPointsShown(true);
    Restart();
    const int width = Current().PointBorderWidth();
    Click("cb_Active");
    Type("se_PointBorderWidth", "13");
    for (int i = 0; i < 4 && Current().PointBorderWidth() != width; ++i) Undo();
    ASSERT_EQ(Tip("btnUndoStep"), "Undo hide Run 1");
    Undo();
    ASSERT_TRUE(Current().Active());
    Redo();
    EXPECT_FALSE(Current().Active());
    EXPECT_EQ(Current().PointBorderWidth(), width);
}

TEST_F(DataWizardUndo, AStepIsUndoneOnTheDataSetThatItWasMadeOn) {
    ShowRuns();
    Choose("cbx_DataSets", 1);
    EXPECT_FALSE(CanUndo()) << "choosing is no step";
    Click("cb_Active");
    Choose("cbx_DataSets", 0);
    Undo();
    EXPECT_EQ(Selected(), "Run 2");
    EXPECT_TRUE(Current().Active());
    EXPECT_FALSE(CanUndo());
}

// On another page nothing is seen to change.
TEST_F(DataWizardUndo, WhichStepWentIsSaidUntilTheNext) {
    ShowRuns();
    Wizard.resize(800, 600);
    Click("cb_Active");
    ToPage(kFilteringPage);
    const auto& told = Find<QLabel>("lblStep");
    EXPECT_EQ(told.text(), "");
    Undo();
    EXPECT_EQ(told.text(), "Undone: hide Run 1");
    EXPECT_TRUE(told.isVisible());
    Redo();
    EXPECT_EQ(told.text(), "Redone: hide Run 1");
    Click("btnReverse");
    EXPECT_EQ(told.text(), "");
}

TEST_F(DataWizardUndo, RowsOfTheGridAreStepsBeforeAndAfterTheyBecomePoints) {
    ShowRuns(TxyDataWizard::kDataSourcePage);
    TypeCell(0, 1, "11");
    TypeCell(2, 0, "3");
    TypeCell(2, 1, "x");
    EXPECT_EQ(Wizard.Session().StepsBack(), 3);
    TypeCell(2, 1, "7", Qt::Key_Shift);
    Undo(); // the edit's own
    Undo(); // what is no number goes like anything else
    EXPECT_EQ(Cell(2, 0) + Cell(2, 1), "3");
    EXPECT_TRUE(Find<QTableView>("grid").hasFocus());
    Redo();
    EXPECT_EQ(Cell(2, 1), "x");
    TypeCell(2, 1, "30");
    ToPage(TxyDataWizard::kGeneralPage);
    EXPECT_EQ(Current().Count(), 3);
    Click("cb_Active");
    Undo();
    EXPECT_EQ(Tip("btnUndoStep"), "Undo edit points of Run 1");
    for (int i = 0; i < 3; ++i) Undo();
    EXPECT_EQ(Current().Count(), 2);
    EXPECT_EQ(Current().First().Y(), 11) << "on other pages the rows are points";
    Undo();
    EXPECT_EQ(Current().First().Y(), 10);
    for (int i = 0; i < 4; ++i) Redo();
    EXPECT_EQ(Current().Count(), 3);
    ToPage(TxyDataWizard::kDataSourcePage);
    EXPECT_EQ(Cell(2, 1), "30");
    EXPECT_TRUE(CanRedo());
}

TEST_F(DataWizardUndo, RowsHaveNoLimitOfTheirOwn) {
    ShowRuns(TxyDataWizard::kDataSourcePage);
    constexpr int kEdits = 300;
    for (int i = 0; i < kEdits; ++i) TypeCell(0, 1, std::to_string(1000 + i).c_str());
    for (int i = 0; i < kEdits; ++i) Undo();
    EXPECT_EQ(Cell(0, 1), "10");
    EXPECT_FALSE(CanUndo());
    for (int i = 0; i < kEdits; ++i) Redo();
    EXPECT_EQ(Cell(0, 1), "1299");
}

TEST_F(DataWizardUndo, AnUndoneFilterBringsSlopeAndBaselineBack) {
    ShowRuns(kFilteringPage);
    for (int i = 3; i <= 100; ++i) Current().AddPoint(i, i % 7 + 0.5 * i);
    Type("e_LowFreq", QStringLiteral("0.01"));
    for (const bool isAutomatic : {false, true}) {
        Current().SetZeroValue(3);
        Current().SetBaseLineSlope(0.5);
        Current().SetAutoZero(isAutomatic);
        Restart();
        const double slope = Current().BaseLineSlope();
        const TWholeState before = State();
        Click("btnApply");
        EXPECT_LT(Current().Count(), 100);
        Leave();
        Undo();
        EXPECT_TRUE(State() == before) << isAutomatic;
        EXPECT_EQ(Current().BaseLineSlope(), slope);
    }
}

TEST_F(DataWizardUndo, APreviewRunsAFitThatIsPendingAndNoneThatWasTakenBack) {
    ShowRuns();
    PrepareGraph();
    ToPage(TxyDataWizard::kCurveFittingPage);
    const double start = Current().CurveFit().Parameter(1)->Value();
    Click("btnFit");
    const TWholeState fitted = State();
    ASSERT_NE(Current().CurveFit().Parameter(1)->Value(), start);
    const auto look = [this] {
        Click("btnPreview");
        Graph.grab();
        QTest::qWait(50);
        Click("btnPreview");
    };
    Type("e_ParamValue", "17");
    Leave();
    look();
    EXPECT_NE(Current().CurveFit().Parameter(1)->Value(), 17) << "pending: what it finds belongs to the step";
    Undo();
    EXPECT_TRUE(State() == fitted);
    Undo();
    look();
    EXPECT_EQ(Current().CurveFit().Parameter(1)->Value(), start);
    EXPECT_FALSE(Current().CurveFit().Result());
    EXPECT_EQ(Tip("btnRedoStep"), "Redo fit Run 1");
    Leave();
    Redo();
    EXPECT_TRUE(State() == fitted);
    Redo();
    EXPECT_NE(Current().CurveFit().Parameter(1)->Value(), 17);
    Undo();
    Undo();
    Current().AddPoint(41, 0);
    EXPECT_TRUE(Current().CurveFit().IsStale()) << "what it depends on has changed";
}

TEST_F(DataWizardUndo, AFileThatCannotBeReadLeavesItsNameAsAStep) {
    ShowRuns(TxyDataWizard::kDataSourcePage);
    PrepareGraph();
    Choose("cbx_DataSets", 1);
    const std::string file = Current().DataSourceInfo().SourceName();
    const auto missing = PathOf("missing.csv");
    Type("e_SourceName", missing);
    PressOnFocus(Qt::Key_Return);
    EXPECT_EQ(Sink.Texts.size(), 1u);
    EXPECT_EQ(Find<QLineEdit>("e_SourceName").text(), missing);
    EXPECT_EQ(Current().DataSourceInfo().SourceName(), missing.toStdString());
    EXPECT_EQ(Current().Count(), 3);
    EXPECT_EQ(Tip("btnUndoStep"), "Undo source of Run 2");
    ToPage(TxyDataWizard::kGeneralPage);
    EXPECT_EQ(Sink.Texts.size(), 1u) << "told once";
    Undo();
    EXPECT_EQ(Current().DataSourceInfo().SourceName(), file);
    EXPECT_FALSE(CanUndo());
}

TEST_F(DataWizardUndo, WhatIsLoadedWhenThePageIsLeftBelongsToTheStep) {
    ShowRuns(TxyDataWizard::kDataSourcePage);
    PrepareGraph();
    Choose("cbx_DataSets", 1);
    Choose("cbx_YColumn", 3);
    const auto firstY = [this] { return Current().First().Y(); };
    EXPECT_EQ(firstY(), 2);
    ToPage(TxyDataWizard::kGeneralPage);
    EXPECT_EQ(firstY(), 3);
    EXPECT_EQ(Tip("btnUndoStep"), "Undo text options of Run 2");
    while (CanUndo()) Undo();
    EXPECT_EQ(firstY(), 2);
    while (CanRedo()) Redo();
    EXPECT_EQ(firstY(), 3);
    ToPage(TxyDataWizard::kDataSourcePage);
    Write("enso.csv", "t,U,I\n1,20,3\n2,30,4\n");
    Click("btnReload");
    const auto& result = Find<QLabel>("lblResult");
    EXPECT_EQ(result.text().toStdString(), "2 points from all 2 rows.");
    Leave();
    Undo();
    EXPECT_NE(result.text().toStdString(), "2 points from all 2 rows.") << "there are three again";
}

TEST_F(DataWizardUndo, WhatTheMouseEditsOnThePreviewIsAStep) {
    ShowRuns();
    Click("btnPreview");
    Click("btnAddPoint");
    Graph.grab();
    const QPoint place = Graph.Mouse().Map()->Plot.center().toPoint();
    QTest::mouseClick(&Graph, Qt::LeftButton, {}, place);
    Graph.grab(); // the axes follow
    EXPECT_EQ(Current().Count(), 3);
    EXPECT_EQ(Tip("btnUndoStep"), "Undo add point to Run 1");
    QTest::keyClick(&Graph, Qt::Key_Plus);
    QTest::keyClick(&Graph, Qt::Key_Plus);
    EXPECT_EQ(Tip("btnUndoStep"), "Undo change of view");
    QTest::keyClick(&Graph, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(Graph.XAxis()->AutoSizing());
    QTest::keyClick(&Graph, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Current().Count(), 2);
    EXPECT_FALSE(CanUndo());
}

TEST_F(DataWizardUndo, MarksEditedInTheirOwnWindowAreOneStep) {
    ShowRuns();
    Click("btnPreview");
    WhenModal<QDialog>([](QDialog& editor) {
        lumoplot::Click(editor, "btnNew");
        lumoplot::Click(editor, "btnNew");
        lumoplot::Click(editor, "btnOk");
    });
    Click("btnMarks");
    EXPECT_EQ(Graph.Marks().Count(), 2);
    EXPECT_EQ(Tip("btnUndoStep"), "Undo edit marks");
    Click("btnUndoStep");
    EXPECT_EQ(Graph.Marks().Count(), 0);
}

TEST_F(DataWizardUndo, EachShowingStartsAnew) {
    ShowRuns();
    Click("btnNew");
    EXPECT_TRUE(CanUndo());
    Click("btnCancel");
    Show({});
    EXPECT_FALSE(CanUndo());
}

TEST_F(DataWizardUndo, OnlyEscAndTheFrameAskBeforeStepsAreLost) {
    const std::function<void()> ways[] = {[this] { QTest::keyClick(&Wizard, Qt::Key_Escape); },
                                          [this] { Wizard.close(); }};
    ShowRuns();
    for (const auto& close : ways) {
        Sink.Texts.clear();
        Show({});
        close();
        EXPECT_FALSE(Wizard.isVisible()) << "nothing would be lost";
        EXPECT_EQ(Sink.Texts, TNames{});
        Show({});
        Click("cb_Active");
        Click("cb_AutoZero");
        Leave();
        Undo();
        Sink.Answer = false;
        close();
        EXPECT_TRUE(Wizard.isVisible());
        EXPECT_EQ(Sink.Only(), Current().Active() ? "Discard the changes?\n1 step: show Run 1"
                                                  : "Discard the changes?\n1 step: hide Run 1");
        Redo();
        Sink.Texts.clear();
        Sink.Answer = true;
        close();
        EXPECT_EQ(Sink.Only(), "Discard the changes?\n2 steps, last: automatic baseline of Run 1");
        EXPECT_FALSE(Wizard.isVisible());
    }
    Sink.Texts.clear();
    Wizard.SetStartPage(TxyDataWizard::kDataSourcePage);
    Show({});
    TypeCell(0, 1, "1", Qt::Key_Shift); // goes on
    Wizard.close();
    EXPECT_EQ(Sink.Only(), "Discard the changes?");
    Sink.Texts.clear();
    Show({});
    Click("cb_Active");
    Click("btnCancel");
    EXPECT_FALSE(Wizard.isVisible());
    EXPECT_EQ(Sink.Texts, TNames{});
}

class DataWizardUndoOfSeed : public DataWizardUndo, public testing::WithParamInterface<unsigned> {};

// Whatever is clicked and typed, all goes back and forth.
TEST_P(DataWizardUndoOfSeed, RandomInputIsUndoneAndRedone) {
    Show({"Run", "beta", "Alpha"});
    TRandom random(GetParam());
    const auto pick = [&random](int count) { return std::uniform_int_distribution(0, count - 1)(random); };
    const std::vector<const char*> buttons = {"btnNew",       "btnDelete",  "btnDuplicate",
                                              "btnMoveFirst", "btnSort",    "cb_Active",
                                              "cb_AutoZero",  "btnReverse", "btnHideOthers"};
    TGraphSession& session = Wizard.Session();
    // Which data set is current is no content.
    const auto content = [this] {
        const int current = Graph.Appearance()->CurrSerIndex();
        Graph.Appearance()->SetCurrSerIndex(1);
        TBytes file = FileOf(Graph);
        Graph.Appearance()->SetCurrSerIndex(current);
        return file;
    };
    std::vector<TBytes> states = {content()};
    for (int tries = 0; tries < 1000 && states.size() < 80; ++tries) {
        if (Graph.SeriesCount() == 0) Click("btnNew");
        switch (pick(9)) {
        case 6: EditCellAtRandom(random); break;
        case 7: session.Change("X data set", [&] { Graph.Appearance()->SetXAxisSerIndex(pick(3)); }); break;
        case 8:
            session.Change("points", [&] {
                Current().SetNumericalTolerance(pick(3));
                Current().SetDuplicatesAllowed(pick(2) == 1);
                Current().AddPoint(pick(9),
                                   pick(4) == 0   ? kNaN
                                   : pick(4) == 0 ? kInfinity
                                                  : pick(9),
                                   pick(3));
                Current().CurveFit().SetWeighting({pick(2) == 0, TErrorSource::Points, TRobust::Tukey});
            });
            Wizard.RefillPages();
            break;
        case 0: Type("e_SeriesName", QString::number(pick(1000))); break;
        case 1: Choose("cbx_LineStyle", pick(5)); break;
        case 2: Choose("cbx_DataSets", pick(Graph.SeriesCount())); break;
        case 3: ToPage(pick(5)), ToPage(TxyDataWizard::kGeneralPage); break;
        default: Click(buttons[static_cast<std::size_t>(pick(static_cast<int>(buttons.size())))]);
        }
        Leave();
        states.resize(static_cast<std::size_t>(session.StepsBack()) + 1);
        states.back() = content();
    }
    ASSERT_GE(states.size(), 50u);
    for (int round = 0; round < 2; ++round) {
        for (std::size_t at = states.size() - 1; at > 0; --at) {
            Undo();
            ASSERT_EQ(content(), states[at - 1]) << at;
        }
        EXPECT_FALSE(CanUndo());
        for (std::size_t at = 1; at < states.size(); ++at) {
            Redo();
            ASSERT_EQ(content(), states[at]) << at;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Random, DataWizardUndoOfSeed, testing::Range(7u, 7u + Seeds(1)));

} // namespace
} // namespace lumoplot
