#include "fit/equation_editor/editor_fixture.h"

#include <set>

namespace lumoplot {
namespace {

class EquationFormula : public TEditorTest {
protected:
    TFormulaEdit& Formula() { return Find<TFormulaEdit>("e_Expression"); }
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

// Digits, operators and brackets, each as it is written into a formula.
TEST_F(EquationFormula, EveryKeyInsertsItsCaption) {
    const std::set<std::string> expected = {
        "0",     "1",     "2",     "3",    "4",   "5",    "6",    "7",   "8",   "9",     ".",    " + ",
        " - ",   " * ",   " / ",   " <> ", " < ", " <= ", " >= ", " = ", " > ", " not ", " or ", " and ",
        " xor ", " mod ", " div ", "%",    "!",   "^",    "E",    "'",   "(",   ")",     " := "};
    Show();
    std::set<std::string> inserted;
    for (auto* key : Find<QWidget>("keypad").findChildren<QPushButton*>()) {
        SCOPED_TRACE(key->objectName().toStdString());
        Select(0, static_cast<int>(Text().size()));
        QTest::mouseClick(key, Qt::LeftButton);
        EXPECT_EQ(Text(), key->text().toStdString());
        EXPECT_EQ(Fit.Expression(), Text());
        EXPECT_FALSE(key->toolTip().isEmpty());
        EXPECT_TRUE(Formula().hasFocus());
        inserted.insert(Text());
    }
    EXPECT_EQ(inserted, expected);
}

TEST_F(EquationFormula, EveryListedFunctionIsExplainedAndInserted) {
    struct TCase {
        const char* piece;
        const char* help;
    };
    const TCase cases[] = {
        {"()", "() = brackets"},
        {"abs()", "abs(x) = absolute value"},
        {"arccos()", "arccos(x) = inverse cosine of x in rad"},
        {"arccosh()", "arccosh(x) = inverse hyperbolic cosine in rad"},
        {"arcsin()", "arcsin(x) = inverse sine of x in rad"},
        {"arcsinh()", "arcsinh(x) = inverse hyperbolic sine in rad"},
        {"cos()", "cos(x) = cosine of an angle in rad"},
        {"cosh()", "cosh(x) = hyperbolic cosine of an angle in rad"},
        {"degtorad()", "degtorad(x) = conversion from degrees to radians"},
        {"exp()", "exp(x) = the value of e raised to the power of x"},
        {"ln()", "ln(x) = natural logarithm of x"},
        {"log10()", "log10(x) = logarithm base 10 of x"},
        {"logn()", "logn(n,x) = logarithm base n of x"},
        {"max()", "max(x1,x2) = the maximum of both arguments"},
        {"min()", "min(x1,x2) = the minimum of both arguments"},
        {"pi", "pi = 3.1415926535897932385"},
        {"radtodeg()", "radtodeg(x) = conversion from degrees to radians"},
        {"random", "random = random number between 0 and 1"},
        {"round()", "round(x) = round to the nearest integer"},
        {"sin()", "sin(x) = sine of an angle in rad"},
        {"sinh()", "sinh(x) = hyperbolic sine of an angle in rad"},
        {"sqr()", "sqr(x) = the square of a number (x*x)"},
        {"sqrt()", "sqrt(x) = the square root of a number"},
        {"tanh()", "tanh(x) = the hyperbolic tangent of an angle in rad"},
        {"trunc()", "trunc(x) = truncates a real number to an integer"},
    };
    Show();
    ASSERT_EQ(Find<QListWidget>("lb_Functions").count(), static_cast<int>(std::size(cases)));
    for (int row = 0; row < static_cast<int>(std::size(cases)); ++row) {
        SCOPED_TRACE(cases[row].piece);
        Type("e_Expression", QString());
        ChooseFunction(row);
        EXPECT_EQ(Find<QLabel>("lblHelp").text(), QLatin1String(cases[row].help));
        Click("btnFunction");
        EXPECT_EQ(Text(), cases[row].piece);
        const int end = static_cast<int>(Text().size()); // the caret waits between the brackets
        EXPECT_EQ(Formula().textCursor().position(), Text().ends_with("()") ? end - 1 : end);
    }
}

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
    Click("btnDeleteParameter");
    Click("btnParameter");
    EXPECT_EQ(Text(), "Rate * t ");
}

TEST_F(EquationFormula, KeysTypedOnTheKeypadGoToTheFormula) {
    Show();
    auto& seven = Find<QPushButton>("btnKey7");
    seven.setFocus();
    QTest::keyClick(&seven, Qt::Key_Space); // a person without a mouse presses the button
    EXPECT_EQ(Text(), "7");
    QTest::keyClick(&seven, Qt::Key_Right);
    EXPECT_TRUE(Find<QPushButton>("btnKey8").hasFocus());
    QTest::keyClick(Editor->focusWidget(), Qt::Key_Down);
    QTest::keyClick(Editor->focusWidget(), Qt::Key_Space);
    EXPECT_EQ(Text(), "75");
    QTest::keyClick(Editor->focusWidget(), Qt::Key_Backspace);
    EXPECT_TRUE(Formula().hasFocus());
    Find<QPushButton>("btnKey5").setFocus();
    for (const char key : std::string("*x - 1")) QTest::keyClick(Editor->focusWidget(), key);
    EXPECT_EQ(Fit.Expression(), "7*x - 1");
}

// Wherever the keypad was left, it is one stop on the way through the window.
TEST_F(EquationFormula, TabWalksTheControlsAsTheyLie) {
    AddParameter(Fit, "a", 1);
    Show();
    for (const char* key : {"btnKey7", "btnKeyAssign"}) {
        const char* order[] = {"e_Expression",
                               key,
                               "lb_Functions",
                               "btnFunction",
                               "e_XVarName",
                               "btnVariable",
                               "e_X",
                               "btnResult",
                               "e_Result",
                               "qt_tabwidget_tabbar",
                               "lb_Parameters",
                               "btnNewParameter",
                               "btnDeleteParameter",
                               "btnParameter",
                               "e_ParameterName",
                               "e_ParameterValue",
                               "e_StartDeviation",
                               "e_FinalDeviation",
                               "e_ParameterUnits",
                               "e_ParameterDescription",
                               "cb_Vary",
                               "cb_ShowInLegend",
                               "btnSaveAs",
                               "btnOpen",
                               "btnOk",
                               "btnCancel",
                               "e_Expression"};
        for (const char* name : order) {
            EXPECT_EQ(Editor->focusWidget()->objectName().toStdString(), name);
            QTest::keyClick(Editor->focusWidget(), Qt::Key_Tab);
        }
        for (int i = 0; i < 5; ++i) QTest::keyClick(Editor->focusWidget(), Qt::Key_Down);
        for (int i = 0; i < 5; ++i) QTest::keyClick(Editor->focusWidget(), Qt::Key_Right);
        Formula().setFocus();
    }
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
        Type("e_Expression", QLatin1String(c.formula));
        EXPECT_EQ(Fault(), c.told);
    }
    EXPECT_EQ(Fit.Expression(), "1e3*A + ('b' = 'b')");
    EXPECT_TRUE(Sink.Texts.empty()) << "nothing pops up while a formula is typed";
}

TEST_F(EquationFormula, UnknownNamesBecomeParameters) {
    Show();
    EXPECT_FALSE(Find<QPushButton>("btnAddUnknown").isVisible());
    Type("e_Expression", QStringLiteral("Vmax*x/(Km + x) + vmax*1e3"));
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
    Type("e_Expression", QStringLiteral("a*x + 0.1"));
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
    Type("e_Expression", QStringLiteral("a*(x"));
    Click("btnResult");
    EXPECT_EQ(Sink.Only(), "Unequal brackets");
}

} // namespace
} // namespace lumoplot
