#include "fit/equation_editor/editor_fixture.h"

namespace lumoplot {
namespace {

class EquationFormula : public TEditorTest {
protected:
    TFormulaEdit& Formula() { return Find<TFormulaEdit>("m_Equation"); }
    std::string Text() { return Formula().toPlainText().toStdString(); }
    void Select(int from, int to) {
        QTextCursor cursor = Formula().textCursor();
        cursor.setPosition(from);
        cursor.setPosition(to, QTextCursor::KeepAnchor);
        Formula().setTextCursor(cursor);
    }
    void ChooseFunction(int row) {
        auto& list = Find<QListWidget>("lb_Functions");
        list.setFocus();
        QTest::keyClick(&list, Qt::Key_Home);
        for (int i = 0; i < row; ++i) QTest::keyClick(&list, Qt::Key_Down);
    }
};

TEST_F(EquationFormula, AFunctionGoesAroundTheSelection) {
    Fit.SetExpression("1 + x*2");
    Show();
    Select(4, 7);
    ChooseFunction(19);
    Click("btnFunction");
    EXPECT_EQ(Text(), "1 + sin(x*2)");
    EXPECT_EQ(Fit.Expression(), "1 + sin(x*2)");
    QTest::keyClicks(&Formula(), QStringLiteral("+1")); // the caret is in front of the bracket
    EXPECT_EQ(Text(), "1 + sin(x*2+1)");
    Select(0, 3);
    Click("btnKeyPlus");
    EXPECT_EQ(Text(), " +  sin(x*2+1)"); // without brackets a piece replaces what is selected
    ChooseFunction(15);
    QTest::keyClick(&Find<QListWidget>("lb_Functions"), Qt::Key_Return);
    EXPECT_EQ(Text(), " + pi sin(x*2+1)");
}

TEST_F(EquationFormula, NamesAreInsertedAsTheyAre) {
    AddParameter(Fit, "Rate", 2);
    Show();
    Click("btnParameter");
    Click("btnKeyTimes");
    Type("e_XVarName", QStringLiteral("t"));
    Click("btnVariable");
    EXPECT_EQ(Fit.Expression(), "Rate * t");
    EXPECT_EQ(Fit.XVarName(), "t");
    EXPECT_EQ(Find<QLabel>("lblX").text(), QStringLiteral("t ="));
    Type("e_XVarName", QString());
    Click("btnVariable"); // an empty name inserts a blank
    EXPECT_EQ(Text(), "Rate * t ");
    Click("btnDeleteParam");
    Click("btnParameter");
    EXPECT_EQ(Text(), "Rate * t ");
}

TEST_F(EquationFormula, NamesAreCompletedByKeys) {
    AddParameter(Fit, "amplitude", 2);
    Show();
    const auto press = [](std::initializer_list<Qt::Key> keys) {
        for (const Qt::Key key : keys) {
            QWidget* list = QApplication::activePopupWidget();
            ASSERT_TRUE(list);
            QTest::keyClick(list, key);
        }
    };
    Formula().setFocus();
    QTest::keyClicks(&Formula(), QStringLiteral("am"));
    press({Qt::Key_Tab});
    QTest::keyClicks(&Formula(), QStringLiteral("*cos"));
    press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Return});
    QTest::keyClicks(&Formula(), QStringLiteral("x"));
    EXPECT_EQ(Text(), "amplitude*cosh(x)");
    EXPECT_EQ(Fit.Expression(), "amplitude*cosh(x)");
    EXPECT_TRUE(Formula().hasFocus());
    QTest::keyClicks(&Formula(), QStringLiteral("+si"));
    press({Qt::Key_Escape});
    EXPECT_FALSE(QApplication::activePopupWidget());
    QTest::keyClick(&Formula(), Qt::Key_Tab);
    EXPECT_FALSE(Formula().hasFocus()) << "without a list Tab goes on";
}

TEST_F(EquationFormula, FaultsAreToldBesideTheFormula) {
    struct TCase {
        const char* formula;
        const char* told;
    };
    const TCase cases[] = {
        {"a*x", ""},
        {"(a*x", "Unequal brackets"},
        {"2 3", "Syntax error in expression 2 3"},
        {"1e", "'1e' is not a valid floating point value"},
        {"a*x + b*y", "Not known as variable or parameter: b, y"},
        {"b := 2*a", ""},
        {"1e3*A + ('b' = 'b')", ""},
        {"", "An empty expression is not stored; the last one stays"},
    };
    AddParameter(Fit, "a", 2);
    Show();
    for (const TCase& c : cases) {
        SCOPED_TRACE(c.formula);
        Type("m_Equation", QLatin1String(c.formula));
        EXPECT_EQ(Fault(), c.told);
    }
    EXPECT_EQ(Fit.Expression(), "1e3*A + ('b' = 'b')");
    EXPECT_TRUE(Sink.Texts.empty()) << "nothing pops up while a formula is typed";
}

TEST_F(EquationFormula, UnknownNamesBecomeParameters) {
    Show();
    EXPECT_FALSE(Find<QPushButton>("btnAddUnknown").isVisible());
    Type("m_Equation", QStringLiteral("Vmax*x/(Km + x) + vmax*1e3"));
    EXPECT_EQ(Fault(), "Not known as variable or parameter: Vmax, Km");
    Click("btnAddUnknown");
    ASSERT_EQ(Fit.NParams(), 2);
    EXPECT_EQ(Fit.Parameter(1)->Name(), "Vmax");
    EXPECT_EQ(Fit.Parameter(2)->Description, "Parameter Km");
    EXPECT_TRUE(Fit.Parameter(2)->Vary());
    EXPECT_EQ(Fault(), "");
    EXPECT_FALSE(Find<QPushButton>("btnAddUnknown").isVisible());
}

TEST_F(EquationFormula, ResultIsThatOfTheFormulaAtX) {
    AddParameter(Fit, "a", 2);
    Show();
    EXPECT_EQ(TextOf("e_X"), "0");
    EXPECT_EQ(TextOf("e_Result"), "");
    Type("m_Equation", QStringLiteral("a*x + 0.1"));
    Click("btnResult");
    EXPECT_EQ(TextOf("e_Result"), "0.1");
    Type("e_X", QStringLiteral("1.5"));
    EXPECT_EQ(TextOf("e_Result"), "") << "it belonged to another x";
    QTest::keyClick(&Find<QLineEdit>("e_X"), Qt::Key_Return);
    EXPECT_EQ(TextOf("e_Result"), "3.1");
    EXPECT_TRUE(Editor->isVisible());
    Type("e_X", QString()); // x stays
    Click("btnResult");
    EXPECT_EQ(TextOf("e_Result"), "3.1");
    Type("m_Equation", QStringLiteral("a*(x"));
    Click("btnResult");
    EXPECT_EQ(Sink.Only(), "Unequal brackets");
}

} // namespace
} // namespace lumoplot
