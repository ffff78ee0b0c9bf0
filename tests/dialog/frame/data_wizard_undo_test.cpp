#include "dialog/wizard_fixture.h"

#include "common/random_graph.h"
#include "fit/definition/cur_fit.h"
#include "graph/mouse/graph_mouse.h"

#include <QCheckBox>
#include <QTabWidget>
#include <QTableView>
#include <QToolButton>

namespace lumoplot {
namespace {

using TNames = std::vector<std::string>;

class DataWizardUndo : public TWizardTest {
protected:
    void Undo() { QTest::keyClick(&Find<QWidget>("cbx_DataSets"), Qt::Key_Z, Qt::ControlModifier); }
    void Redo() {
        QTest::keyClick(&Find<QWidget>("cbx_DataSets"), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    }
    void Leave() { Find<QWidget>("cbx_DataSets").setFocus(); }
    std::string Tip(const char* button) {
        QCoreApplication::processEvents();
        return Find<QToolButton>(button).toolTip().toStdString();
    }
    bool CanUndo() {
        QCoreApplication::processEvents();
        return Find<QToolButton>("btnUndoStep").isEnabled();
    }
};

TEST_F(DataWizardUndo, ADeletedDataSetComesBackWithItsPoints) {
    Show({"Run 1", "Run 2"});
    EXPECT_FALSE(CanUndo());
    const TBytes before = FileOf(Graph);
    Click("btnDelete");
    EXPECT_EQ(Tip("btnUndoStep"), "Undo delete data set Run 1");
    Click("btnUndoStep");
    EXPECT_EQ(FileOf(Graph), before);
    EXPECT_EQ(Selected(), "Run 1");
    EXPECT_EQ(Tip("btnUndoStep"), "Undo");
    EXPECT_EQ(Tip("btnRedoStep"), "Redo delete data set Run 1");
    Redo();
    EXPECT_EQ(Names(), TNames{"Run 2"});
    EXPECT_EQ(Selected(), "Run 2");
}

TEST_F(DataWizardUndo, TypingInOneEditIsOneStep) {
    Show({"Run"});
    Type("e_SeriesName", "Temperature");
    Type("e_ZeroValue", "12.5");
    EXPECT_EQ(Tip("btnUndoStep"), "Undo change Zero Value of Temperature");
    Leave();
    Undo();
    EXPECT_EQ(Current().ZeroValue(), 0);
    EXPECT_EQ(Find<QLineEdit>("e_ZeroValue").text(), "0");
    Undo();
    EXPECT_EQ(Names(), TNames{"Run"});
    EXPECT_EQ(Find<QLineEdit>("e_SeriesName").text(), "Run");
    EXPECT_FALSE(CanUndo());
}

TEST_F(DataWizardUndo, AnEditUndoesItsOwnTypingFirst) {
    Show({"Run"});
    Find<QCheckBox>("cb_Active").setFocus();
    QTest::keyClick(&Find<QCheckBox>("cb_Active"), Qt::Key_Space);
    ASSERT_FALSE(Current().Active());
    auto& edit = Find<QLineEdit>("e_SeriesName");
    edit.setFocus();
    edit.end(false);
    QTest::keyClicks(&edit, "ning");
    QTest::keyClick(&edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Current().SeriesName(), "Run");
    EXPECT_FALSE(Current().Active());
    EXPECT_EQ(Tip("btnUndoStep"),
              "Undo change Show on Plot of Run"); // what was typed and taken back is no step
    QTest::keyClick(&edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(Current().Active());
}

TEST_F(DataWizardUndo, ChoosingAndLookingAreNoSteps) {
    Show({"Run", "beta"});
    Current().SetAutoZero(true);
    Wizard.hide();
    Show({});
    Choose("cbx_DataSets", 1);
    Find<QTabWidget>("tabs").setCurrentIndex(TxyDataWizard::kRegressionsPage);
    Click("btnPreview");
    Wizard.grab();
    Click("btnPreview");
    EXPECT_FALSE(CanUndo());
    Find<QTabWidget>("tabs").setCurrentIndex(TxyDataWizard::kGeneralPage);
    Click("cb_Active");
    Choose("cbx_DataSets", 0);
    Undo();
    EXPECT_EQ(Selected(), "beta");
    EXPECT_TRUE(Current().Active());
    EXPECT_FALSE(CanUndo());
}

TEST_F(DataWizardUndo, TheGridUndoesItsOwnEditsAndWhatItCommitsIsAStep) {
    Show({"Run"});
    Find<QTabWidget>("tabs").setCurrentIndex(TxyDataWizard::kDataSourcePage);
    auto& grid = Find<QTableView>("grid");
    const auto typeY = [&](const char* text) {
        grid.setFocus();
        grid.setCurrentIndex(grid.model()->index(0, 1));
        for (const char* key = text; *key; ++key) QTest::keyClick(QApplication::focusWidget(), *key);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCoreApplication::processEvents();
    };
    typeY("11");
    QTest::keyClick(&grid, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(grid.model()->index(0, 1).data().toString(), "10");
    typeY("12");
    Find<QTabWidget>("tabs").setCurrentIndex(TxyDataWizard::kGeneralPage);
    EXPECT_EQ(Current().GetPoint(1)->Y, 12);
    EXPECT_EQ(Tip("btnUndoStep"), "Undo edit points of Run");
    Click("btnUndoStep");
    EXPECT_EQ(Current().GetPoint(1)->Y, 10);
    EXPECT_EQ(grid.model()->index(0, 1).data().toString(), "10");
}

TEST_F(DataWizardUndo, WhatTheMouseEditsOnThePreviewIsAStep) {
    Show({"Run"});
    Click("btnPreview");
    Click("btnAddPoint");
    Graph.grab();
    const QPoint place = Graph.Mouse().Map()->Plot.center().toPoint();
    QTest::mouseClick(&Graph, Qt::LeftButton, {}, place);
    Graph.grab(); // the axes follow
    EXPECT_EQ(Current().Count(), 3);
    EXPECT_EQ(Tip("btnUndoStep"), "Undo add point to Run");
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
    Show({"Run"});
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

TEST_F(DataWizardUndo, PagesThatKnowNothingOfItAreUndone) {
    Show({"Run"});
    Find<QTabWidget>("tabs").setCurrentIndex(TxyDataWizard::kCurveFittingPage);
    const TBytes before = FileOf(Graph);
    Choose("cbx_Status", 1);
    const TBytes shown = FileOf(Graph);
    Click("btnAddParam");
    ASSERT_EQ(Current().CurveFit().NParams(), 1);
    const TBytes added = FileOf(Graph);
    Click("btnUndoStep");
    EXPECT_EQ(FileOf(Graph), shown);
    Click("btnUndoStep");
    EXPECT_EQ(FileOf(Graph), before);
    EXPECT_EQ(Find<QComboBox>("cbx_Status").currentIndex(), 0);
    Redo();
    Redo();
    EXPECT_EQ(FileOf(Graph), added);
}

TEST_F(DataWizardUndo, EachShowingStartsAnew) {
    Show({"Run"});
    Click("btnNew");
    EXPECT_TRUE(CanUndo());
    Click("btnCancel");
    Show({});
    EXPECT_FALSE(CanUndo());
}

// Whatever is clicked and typed, the file goes back and forth byte for byte.
TEST_F(DataWizardUndo, RandomInputIsUndoneAndRedone) {
    Show({"Run", "beta", "Alpha"});
    TRandom random(7);
    const auto pick = [&random](int count) { return std::uniform_int_distribution(0, count - 1)(random); };
    const std::vector<const char*> buttons = {"btnNew",       "btnDelete",  "btnDuplicate",
                                              "btnMoveFirst", "btnSort",    "cb_Active",
                                              "cb_AutoZero",  "btnReverse", "btnHideOthers"};
    std::vector<TBytes> files = {FileOf(Graph)};
    for (int tries = 0; tries < 1000 && files.size() < 80; ++tries) {
        if (Graph.SeriesCount() == 0) Click("btnNew");
        switch (pick(5)) {
        case 0: Type("e_SeriesName", QString::number(pick(1000))); break;
        case 1: Choose("cbx_LineStyle", pick(5)); break;
        case 2: Choose("cbx_DataSets", pick(Graph.SeriesCount())); break;
        default: Click(buttons[static_cast<std::size_t>(pick(static_cast<int>(buttons.size())))]);
        }
        Leave();
        QCoreApplication::processEvents();
        Graph.Appearance()->SetCurrSerIndex(Wizard.CurrSeries() ? Current().SeriesIndex() : 0);
        if (FileOf(Graph) != files.back()) files.push_back(FileOf(Graph));
    }
    // Which data set is current may differ where only the choice was changed.
    const auto content = [](TBytes file) {
        TxyGraph graph;
        LoadBytes(graph, file);
        graph.Appearance()->SetCurrSerIndex(1);
        return FileOf(graph);
    };
    std::vector<TBytes> states;
    for (const TBytes& file : files)
        if (const TBytes state = content(file); states.empty() || states.back() != state)
            states.push_back(state);
    for (int round = 0; round < 2; ++round) {
        int undone = 0;
        std::size_t at = states.size() - 1;
        for (; undone < 1000 && CanUndo(); ++undone) {
            Undo();
            const TBytes now = content(FileOf(Graph));
            while (at > 0 && states[at] != now) --at; // a choice in a list walks over others
        }
        EXPECT_GE(undone, 50);
        EXPECT_EQ(content(FileOf(Graph)), states.front());
        for (; undone > 0; --undone) Redo();
        EXPECT_EQ(content(FileOf(Graph)), states.back());
    }
}

} // namespace
} // namespace lumoplot
