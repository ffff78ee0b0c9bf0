#include "fit/equation_editor/editor_fixture.h"

#include "fit/equation_editor/equation_editor.h"

#include <QCheckBox>
#include <QClipboard>

namespace lumoplot {
namespace {

class EquationParameters : public TEditorTest {
protected:
    void Select(int row) {
        auto& table = Find<QTableView>("t_Parameters");
        table.setCurrentIndex(table.model()->index(row, 0));
    }
};

TEST_F(EquationParameters, NewOnesAreNumberedAndSelected) {
    AddParameter(Fit, "a", 1);
    AddParameter(Fit, "b", 2);
    Show();
    Click("btnAddParam");
    ASSERT_EQ(Fit.NParams(), 3);
    EXPECT_EQ(Fit.Parameter(3)->Name(), "P3");
    EXPECT_EQ(Fit.Parameter(3)->Value(), 1.2);
    EXPECT_EQ(Fit.Parameter(3)->Description, "Parameter P3");
    EXPECT_EQ(Find<QTableView>("t_Parameters").currentIndex().row(), 2);
    EXPECT_EQ(TextOf("e_ParamName"), "P3");
    Select(0);
    Click("btnDeleteParam");
    EXPECT_EQ(TextOf("e_ParamName"), "b");
    Click("btnAddParam"); // P3 is taken
    EXPECT_EQ(Fit.Parameter(3)->Name(), "P4");
    EXPECT_TRUE(Sink.Texts.empty());
}

TEST_F(EquationParameters, FieldsWriteIntoTheSelectedOne) {
    AddParameter(Fit, "a", 1);
    AddParameter(Fit, "b", 2);
    Show();
    Select(1);
    Type("e_ParamName", QStringLiteral("rate"));
    Type("e_ParamValue", QStringLiteral("-3.25"));
    Type("e_StartDeviation", QStringLiteral("0.5"));
    Type("e_FinalDeviation", QStringLiteral("1e-9"));
    Type("e_ParamUnits", QStringLiteral("1/s"));
    Type("e_ParamDescription", QStringLiteral("Rate constant"));
    Click("cb_ParamVary");
    Click("cb_ParamInLegend");
    const TDBLParameter& b = *Fit.Parameter(2);
    EXPECT_EQ(b.Name(), "rate");
    EXPECT_EQ(b.Value(), -3.25);
    EXPECT_EQ(b.StartDeviation, 0.5);
    EXPECT_EQ(b.FinalDeviation, 1e-9);
    EXPECT_EQ(b.Units, "1/s");
    EXPECT_EQ(b.Description, "Rate constant");
    EXPECT_TRUE(b.Vary() && b.ShowInLegend);
    EXPECT_EQ(Fit.Parameter(1)->Name(), "a");
    EXPECT_FALSE(Fit.Parameter(1)->Vary());
    Select(0);
    Select(1);
    EXPECT_EQ(TextOf("e_ParamName"), "rate");
    EXPECT_EQ(TextOf("e_FinalDeviation"), "1E-9");
    EXPECT_TRUE(Find<QCheckBox>("cb_ParamVary").isChecked());
}

TEST_F(EquationParameters, NamesThatFormulasCanNotUseAreMarked) {
    AddParameter(Fit, "a", 1);
    AddParameter(Fit, "b", 2);
    Show();
    for (const char* refused : {"B", "sin", "x", "1", "a b"}) {
        SCOPED_TRACE(refused);
        auto& name = Find<QLineEdit>("e_ParamName");
        QApplication::clipboard()->setText(QLatin1String(refused));
        name.setFocus();
        name.selectAll();
        QTest::keyClick(&name, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(Fit.Parameter(1)->Name(), "a");
        EXPECT_FALSE(name.toolTip().isEmpty());
    }
    Find<QLineEdit>("e_ParamValue").setFocus();
    EXPECT_EQ(TextOf("e_ParamName"), "a");
    EXPECT_TRUE(Sink.Texts.empty());
}

class EquationSettings : public TEditorTest {};

TEST_F(EquationSettings, OnlyNumbersThatAreAllowedAreStored) {
    struct TCase {
        const char* edit;
        const char* text;
        double expected; ///< of a value that was 7 before
        bool marked;
    };
    const TCase cases[] = {
        {"e_NPoints", "12", 12, false},
        {"e_NPoints", "", 7, false},
        {"e_NPoints", ".", 7, false},
        {"e_NPoints", "2147483648", 214748364, true},
        {"e_NPoints", "99999999999", 999999999, true},
        {"e_NPoints", "x", 7, true},
        {"e_Tolerance", "0.5", 0.5, false},
        {"e_Tolerance", ".", 7, false},
        {"e_Tolerance", "-1", 7, true},
        {"e_Tolerance", "nan", 7, true},
        {"e_IterMax", "30", 30, false},
        {"e_IterMax", "0", 7, true},
        {"e_IterMax", "-3", 7, true},
        {"e_IterMax", ".", 7, false},
    };
    for (const TCase& c : cases) {
        SCOPED_TRACE(std::string(c.edit) + ": " + c.text);
        Fit.SetNPoints(7);
        Fit.SetTolerance(7);
        Fit.SetIterMax(7);
        Show();
        ShowPage(1);
        Type(c.edit, QLatin1String(c.text));
        const std::string edit = c.edit;
        EXPECT_EQ(edit == "e_NPoints"   ? Fit.NPoints()
                  : edit == "e_IterMax" ? Fit.IterMax()
                                        : Fit.Tolerance(),
                  c.expected);
        EXPECT_EQ(!Find<QLineEdit>(c.edit).toolTip().isEmpty(), c.marked);
    }
}

TEST_F(EquationSettings, MarginsAreTakenWhenTheirEditIsLeft) {
    Fit.SetRightMargin(9);
    Show();
    ShowPage(1);
    EXPECT_EQ(TextOf("e_LeftMargin"), "None");
    EXPECT_EQ(TextOf("e_RightMargin"), "None");
    auto& right = Find<QLineEdit>("e_RightMargin");
    Type("e_LeftMargin", QStringLiteral("1.23456"));
    EXPECT_FALSE(Fit.UseLeftMargin());
    right.setFocus();
    EXPECT_TRUE(Fit.UseLeftMargin());
    EXPECT_EQ(Fit.LeftMargin(), 1.23456);
    EXPECT_EQ(TextOf("e_LeftMargin"), "1.235");
    QTest::keyClick(&right, Qt::Key_Tab);
    EXPECT_FALSE(Fit.UseRightMargin()) << "only walked through";
    Type("e_RightMargin", QStringLiteral("x"));
    QTest::keyClick(&right, Qt::Key_Tab);
    EXPECT_FALSE(Fit.UseRightMargin());
    EXPECT_EQ(right.toolTip(), QStringLiteral("'x' is not a valid floating point value"));
    Type("e_LeftMargin", QStringLiteral("none"));
    Click("btnOk"); // takes what is still being typed
    EXPECT_FALSE(Fit.UseLeftMargin());
    EXPECT_TRUE(Sink.Texts.empty());
}

// With a margin still being typed.
TEST_F(EquationSettings, TheWindowGoesAwayWithTheFocusInAnEdit) {
    Show();
    ShowPage(1);
    Type("e_LeftMargin", QStringLiteral("5"));
    Editor.reset();
    EXPECT_FALSE(Fit.UseLeftMargin());
}

TEST(EditCurFit, OnlyOkChangesTheCallersFit) {
    TRecordingSink sink;
    for (const bool accept : {false, true}) {
        TCurFit fit;
        fit.SetExpression("a*x");
        AddParameter(fit, "a", 2);
        WhenModal<TfrmCalc>([&](TfrmCalc& editor) {
            EXPECT_EQ(editor.windowTitle(), QStringLiteral("Equation Editor"));
            Click(editor, "btnAddParam");
            Type(editor, "m_Equation", QStringLiteral("a*x + P2"));
            Type(editor, "e_ParamValue", QStringLiteral("5"));
            Click(editor, accept ? "btnOk" : "btnCancel");
        });
        EXPECT_EQ(EditCurFit(nullptr, fit), accept);
        EXPECT_EQ(fit.NParams(), accept ? 2 : 1);
        EXPECT_EQ(fit.Expression(), accept ? "a*x + P2" : "a*x");
        fit.Compile();
        EXPECT_EQ(fit.EvaluateAt(10), accept ? 25 : 20);
    }
}

} // namespace
} // namespace lumoplot
