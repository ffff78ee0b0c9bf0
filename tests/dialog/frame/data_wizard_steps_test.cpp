#include "dialog/frame/undo_fixture.h"

#include <QCheckBox>
#include <QClipboard>
#include <QSpinBox>

namespace lumoplot {
namespace {

using TNames = std::vector<std::string>;

class DataWizardSteps : public DataWizardUndo {
protected:
    void CheckStep(int page, const char* name, const std::function<void()>& act);
};

/// One step of that name; undo and redo give what was there, with looking at everything in between.
void DataWizardSteps::CheckStep(int page, const char* name, const std::function<void()>& act) {
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
    EXPECT_TRUE(State().WithoutPendingFits() == before.WithoutPendingFits());
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
    // What the preview has found of a fit that the step left alone holds here, too.
    const bool hasFound = State().PendingFits() < after.PendingFits();
    EXPECT_TRUE(hasFound || State() == after);
    EXPECT_EQ(Sink.Texts, TNames{});
}

struct TStepCase {
    int page;
    const char* name;
    std::function<void()> act;
};

TEST_F(DataWizardSteps, EachKindOfStepHasItsNameAndGoesBackAndForth) {
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
        {kFilteringPage, "apply filter to Run 1",
         [&] {
             Type("e_LowFreq", QStringLiteral("0.0001"));
             Click("btnApply");
         }},
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

} // namespace
} // namespace lumoplot
