#include "dialog/wizard_fixture.h"

#include "common/random_graph.h"
#include "data/series/ds_info.h"
#include "fit/definition/cur_fit.h"
#include "graph/mouse/graph_mouse.h"

#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableView>
#include <QToolButton>

namespace lumoplot {
namespace {

using TNames = std::vector<std::string>;

constexpr int kFilteringPage = 4;

/// What a step may change, filed or not.
struct TWholeState {
    TBytes File;
    int CurrentMark = 0;
    std::vector<TFitRunState> Fits;
    std::vector<TSourceRows> Rows;
    std::vector<TTextWishes> Wishes;
    std::vector<bool> Flags;
    QStringList Cells; ///< of the manual grid

    bool operator==(const TWholeState&) const = default;
};

class DataWizardUndo : public TWizardTest {
protected:
    void ShowRuns(int page = TxyDataWizard::kGeneralPage) {
        Wizard.SetStartPage(page);
        Show({"Run 1", "Run 2"});
        Restart();
    }
    /// What was set up so far is where the steps begin.
    void Restart() {
        Wizard.FillList(Graph.Appearance()->CurrSerIndex());
        QCoreApplication::processEvents();
        Wizard.Session().Start();
    }
    /// A window in front of it has had the focus.
    void Activate() {
        Wizard.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Wizard));
    }
    void ToPage(int page) {
        Find<QTabWidget>("tabs").setCurrentIndex(page);
        QCoreApplication::processEvents();
    }
    /// Ctrl+Z as the window system would send it.
    void Undo() { PressOnFocus(Qt::Key_Z, Qt::ControlModifier); }
    void Redo() { PressOnFocus(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }
    void PressOnFocus(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QWidget* focus = QApplication::focusWidget();
        QTest::keyClick(focus ? focus : &Wizard, key, modifiers);
        QCoreApplication::processEvents();
    }
    void Leave() { Find<QWidget>("cbx_DataSets").setFocus(); }
    std::string Tip(const char* button) {
        QCoreApplication::processEvents();
        return Find<QToolButton>(button).toolTip().toStdString();
    }
    bool CanUndo() { return Wizard.Session().CanUndo(); }
    bool CanRedo() { return Wizard.Session().CanRedo(); }

    QString Write(const char* name, const QByteArray& text) {
        QFile file(PathOf(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }
    void TypeCell(int row, int column, const char* text, Qt::Key end = Qt::Key_Return) {
        auto& grid = Find<QTableView>("grid");
        grid.setFocus();
        grid.setCurrentIndex(grid.model()->index(row, column));
        for (const char* key = text; *key; ++key) QTest::keyClick(QApplication::focusWidget(), *key);
        PressOnFocus(end);
    }
    std::string Cell(int row, int column) {
        return Find<QTableView>("grid").model()->index(row, column).data().toString().toStdString();
    }

    TWholeState State() {
        QCoreApplication::processEvents();
        TWholeState state{FileOf(Graph), Graph.Marks().CurrentID(), {}, {}, {}, {}, {}};
        for (const auto& series : Graph.Series()) {
            state.Fits.push_back(series->CurveFit().RunState());
            state.Rows.push_back(series->SourceRows());
            state.Wishes.push_back(series->TextWishes());
            state.Flags.push_back(series->IsThinned());
            state.Flags.push_back(series->DataSourceInfo().NeedsReload());
        }
        const QAbstractItemModel& grid = *Find<QTableView>("grid").model();
        for (int i = 0; i < 2 * grid.rowCount(); ++i)
            state.Cells.append(grid.index(i / 2, i % 2).data().toString());
        return state;
    }
    void PrepareGraph();
    void CheckStep(int page, const char* name, const std::function<void()>& act);
};

/// Something for each kind of step to work on: a fit, a mark, and in the second data set a text file.
void DataWizardUndo::PrepareGraph() {
    TSeries& series = *Graph.FindSeries(1);
    for (int i = 3; i <= 40; ++i) series.AddPoint(i, 10 * i + i % 3);
    series.SetPointsShown(true);
    series.SetRegressionType(TRegressionType::Linear);
    TCurFit& fit = series.CurveFit();
    for (const char* name : {"a", "b"}) {
        auto parameter = std::make_unique<TDBLParameter>();
        parameter->SetName(name);
        parameter->SetVary(true);
        fit.AddParameter(std::move(parameter));
    }
    fit.SetExpression("a*x+b");
    fit.SetNPoints(150);
    fit.SetStatus(TFitStatus::FinalResult);
    TGraphMark mark;
    mark.TypeOfMark = TMarkType::Line;
    mark.Y1 = 2;
    mark.X2 = 5;
    mark.Y2 = 3;
    Graph.SelectMark(Graph.AddMark(mark));
    Wizard.ShowSeries(2);
    Sink.Answer = true;
    Wizard.AttachSource(Write("enso.csv", "t,U,I\n1,2,3\n2,3,4\n2,4,4\n3,4,5\n").toStdString());
    Graph.FindSeries(2)->SetSeriesName("Run 2");
    Graph.FindSeries(2)->SetSeriesFlag(false);
    Graph.Appearance()->SetCurrSerIndex(1);
    Restart();
    Sink.Texts.clear();
}

/// One step of that name; undo and redo give what was there, with looking at everything in between.
void DataWizardUndo::CheckStep(int page, const char* name, const std::function<void()>& act) {
    SCOPED_TRACE(name);
    ToPage(page);
    const TWholeState before = State();
    act();
    Activate();
    Leave();
    const TWholeState after = State();
    EXPECT_TRUE(before != after);
    EXPECT_EQ(Tip("btnUndoStep"), std::string("Undo ") + name);
    EXPECT_EQ(Wizard.Session().StepsBack(), 1);
    Undo();
    EXPECT_TRUE(State() == before);
    EXPECT_EQ(Tip("btnRedoStep"), std::string("Redo ") + name);
    Redo();
    EXPECT_TRUE(State() == after);
    Undo();
    for (const int look : {0, 1, 2, 3, kFilteringPage}) ToPage(look);
    Click("btnPreview");
    Wizard.grab();
    Click("btnPreview");
    ToPage(page);
    EXPECT_TRUE(CanRedo()) << "looking is no step";
    Redo();
    EXPECT_TRUE(State() == after);
    EXPECT_EQ(Sink.Texts, TNames{});
}

struct TStepCase {
    int page;
    const char* name;
    std::function<void()> act;
};

TEST_F(DataWizardUndo, EachKindOfStepHasItsNameAndGoesBackAndForth) {
    const auto spinUp = [this](const char* spin) {
        Find<QSpinBox>(spin).setFocus();
        for (int i = 0; i < 3; ++i) PressOnFocus(Qt::Key_Up); // held down
    };
    const TStepCase cases[] = {
        {0, "rename to Temperature", [&] { Type("e_SeriesName", "Temperature"); }},
        {0, "automatic name of Run 1", [&] { Click("cb_AutoName"); }},
        {0, "hide Run 1", [&] { Click("cb_Active"); }},
        {0, "hide others than Run 1", [&] { Click("btnHideOthers"); }},
        {0, "Y axis of Run 1", [&] { Click("rb_SecondAxis"); }},
        {0, "automatic baseline of Run 1", [&] { Click("cb_AutoZero"); }},
        {0, "baseline of Run 1", [&] { Type("e_ZeroValue", "12.5"); }},
        {0, "slope of Run 1", [&] { Type("e_Slope", "0.25"); }},
        {0, "baseline from mark of Run 1", [&] { Click("btnReadMark"); }},
        {0, "point shape of Run 1", [&] { Choose("cbx_PointShape", 3); }},
        {0, "line style of Run 1", [&] { Choose("cbx_LineStyle", 3); }},
        {0, "point size of Run 1", [&] { spinUp("se_PointSize"); }},
        {0, "add data set", [&] { Click("btnNew"); }},
        {0, "duplicate Run 1", [&] { Click("btnDuplicate"); }},
        {0, "reverse data sets", [&] { Click("btnReverse"); }},
        {1, "edit points of Run 1", [&] { TypeCell(0, 1, "11"); }},
        {1, "insert rows of Run 1", [&] { Click("btnInsertRows"); }},
        {1, "delete rows of Run 1", [&] { Click("btnDeleteRows"); }},
        {1, "X format of Run 1", [&] { Choose("cbx_ManualXFormat", 1); }},
        {1, "paste points of Run 1",
         [&] {
             QApplication::clipboard()->setText(QStringLiteral("7\t70\n8\t80\n"));
             Click("btnPaste");
         }},
        {1, "set values of Run 1",
         [&] {
             WhenModal<QDialog>([](QDialog& window) {
                 lumoplot::Type(window, "e_Formula", QStringLiteral("2*y"));
                 lumoplot::Click(window, "btnOk");
             });
             Click("btnSetValues");
         }},
        {1, "kind of source of Run 1",
         [&] {
             Choose("cbx_SourceKind", 1);
             EXPECT_EQ(std::exchange(Sink.Texts, {}).size(), 1u) << "asks whether the points may go";
         }},
        {2, "regression of Run 1", [&] { Choose("cbx_Regression", 2); }},
        {2, "bounds of Run 1", [&] { Choose("cbx_Bounds", 1); }},
        {2, "regression line of Run 1", [&] { spinUp("se_RegressionLineWidth"); }},
        {3, "fit Run 1", [&] { Click("btnFit"); }},
        {3, "generate 150 points", [&] { Click("btnGenerate"), Sink.Texts.clear(); }},
        {3, "fit of Run 1: status", [&] { Choose("cbx_Status", 1); }},
        {3, "fit of Run 1: new parameter", [&] { Click("btnAddParam"); }},
        {3, "fit of Run 1: delete parameter", [&] { Click("btnDeleteParam"); }},
        {3, "fit of Run 1: value of a parameter", [&] { Type("e_ParamValue", "17"); }},
        {3, "fit of Run 1: formula", [&] { Type("m_Equation", "a*x^2+b"); }},
        {3, "fit of Run 1: margins", [&] { Type("e_LeftMargin", "2"); }},
        {3, "fit of Run 1: new template", [&] { Click("btnAddTemplate"); }},
        {3, "curve of Run 1", [&] { Choose("cbx_CurveLine", 2); }},
        {kFilteringPage, "apply filter to Run 1", [&] { Click("btnApply"); }},
    };
    for (const TStepCase& c : cases) {
        Graph.FreeAllSeries();
        Graph.ClearMarks();
        ShowRuns(c.page);
        PrepareGraph();
        CheckStep(c.page, c.name, c.act);
    }
    const TStepCase textCases[] = {
        {1, "reload Run 2",
         [&] {
             Write("enso.csv", "t,U,I\n1,20,3\n2,30,4\n");
             Click("btnReload");
         }},
        {1, "text options of Run 2", [&] { Click("cb_FindHeaders"); }},
        {1, "load other.csv",
         [&] {
             Type("e_SourceName", Write("other.csv", "t,U\n1,7\n2,8\n"));
             PressOnFocus(Qt::Key_Return);
         }},
        {1, "keep all points of Run 2", [&] { Click("btnKeepAll"); }},
    };
    for (const TStepCase& c : textCases) {
        Graph.FreeAllSeries();
        ShowRuns(c.page);
        PrepareGraph();
        Choose("cbx_DataSets", 1);
        Click("btnReload"); // the preview tells about merged points
        Restart();
        CheckStep(c.page, c.name, c.act);
    }
}

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

TEST_F(DataWizardUndo, WhatFollowsByItselfCostsNoRedo) {
    ShowRuns();
    PrepareGraph();
    ToPage(TxyDataWizard::kCurveFittingPage);
    Click("btnFit");
    const TWholeState fitted = State();
    Type("e_ParamValue", "17");
    Leave();
    Undo();
    Undo();
    ASSERT_TRUE(Current().CurveFit().IsStale());
    Click("btnPreview"); // runs the pending fit
    Graph.grab();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Current().CurveFit().IsStale(); }));
    Click("btnPreview");
    EXPECT_EQ(Tip("btnRedoStep"), "Redo fit Run 1");
    Leave();
    Redo();
    EXPECT_TRUE(State() == fitted);
    Redo();
    EXPECT_EQ(Current().CurveFit().Parameter(1)->Value(), 17);
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
    EXPECT_EQ(result.text().toStdString(), "2 points from 2 rows.");
    Leave();
    Undo();
    EXPECT_NE(result.text().toStdString(), "2 points from 2 rows.") << "there are three again";
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

// Whatever is clicked and typed, all goes back and forth.
TEST_F(DataWizardUndo, RandomInputIsUndoneAndRedone) {
    Show({"Run", "beta", "Alpha"});
    TRandom random(7);
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
        switch (pick(6)) {
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

} // namespace
} // namespace lumoplot
