// The whole way of a person with measurements in a text file to a fitted curve, through the dialogs.
#include "common/places.h"
#include "dialog/wizard_fixture.h"

#include "data/series/ds_info.h"
#include "fit/definition/cur_fit.h"
#include "fit/equation_editor/frm_calc.h"

#include <QClipboard>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTableView>
#include <cmath>

namespace lumoplot {
namespace {

/// A parameter of the reference data set Gauss1 of the National Institute of Standards and Technology: the
/// second set of starting values, the certified estimate and its standard deviation.
struct TCertified {
    const char* start;
    double value;
    double deviation;
};

constexpr TCertified kGauss1[] = {
    {"94.0", 9.8778210871E+01, 5.7527312730E-01},  {"0.0105", 1.0497276517E-02, 1.1406289017E-04},
    {"99.0", 1.0048990633E+02, 5.8831775752E-01},  {"63.0", 6.7481111276E+01, 1.0460593412E-01},
    {"25.0", 2.3129773360E+01, 1.7439951146E-01},  {"71.0", 7.1994503004E+01, 6.2622793913E-01},
    {"180.0", 1.7899805021E+02, 1.2436988217E-01}, {"20.0", 1.8389389025E+01, 2.0134312832E-01},
};
constexpr double kRelativeError = 1e-7; // more than anybody reads off, less than a fit that stopped early

class FitThroughDialogs : public TWizardTest {
protected:
    void TakeDataFrom(const QString& file) {
        Wizard.SetStartPage(TxyDataWizard::kDataSourcePage);
        Show({});
        Click("btnNew");
        AnswerFileDialog(file);
        Click("btnBrowse");
    }
    /// In the equation editor: the formula, its names as parameters, and their starting values.
    static void WriteEquation(TfrmCalc& editor) {
        lumoplot::Type(
            editor, "m_Equation",
            QStringLiteral("b1*exp(-b2*x) + b3*exp(-sqr((x - b4)/b5)) + b6*exp(-sqr((x - b7)/b8))"));
        lumoplot::Click(editor, "btnAddUnknown");
        auto& list = Control<QTableView>(editor, "t_Parameters");
        list.setFocus();
        QTest::keyClick(&list, Qt::Key_Home, Qt::ControlModifier);
        for (const TCertified& parameter : kGauss1) {
            lumoplot::Type(editor, "e_ParamValue", QLatin1String(parameter.start));
            QTest::keyClick(&list, Qt::Key_Down);
        }
        lumoplot::Click(editor, "btnOk");
    }
    std::string Result() { return Find<QPlainTextEdit>("m_FitResult").toPlainText().toStdString(); }
};

TEST_F(FitThroughDialogs, ATextFileBecomesAFittedCurve) {
    TakeDataFrom(QString::fromStdString(SourceFile("examples/gauss1.dat")));
    Find<QTabWidget>("tabs").setCurrentIndex(TxyDataWizard::kCurveFittingPage);
    ASSERT_EQ(Current().Count(), 250);
    Choose("cbx_Procedure", static_cast<int>(TFitProcedure::Newton));
    Choose("cbx_Status", static_cast<int>(TFitStatus::FinalResult));
    WhenModal<TfrmCalc>([](TfrmCalc& editor) { WriteEquation(editor); });
    Click("btnMore");
    const TCurFit& fit = Current().CurveFit();
    ASSERT_EQ(fit.NParams(), 8);
    EXPECT_FALSE(Find<QPushButton>("btnCopyResult").isEnabled());
    Click("btnPreview");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !fit.IsStale(); }, 20000));
    Click("btnPreview");
    for (int i = 0; i < 8; ++i) {
        const TDBLParameter& parameter = *fit.Parameter(i + 1);
        EXPECT_NEAR(parameter.Value() / kGauss1[i].value, 1, kRelativeError) << parameter.Name();
        EXPECT_NEAR(parameter.FinalDeviation / kGauss1[i].deviation, 1, 1e-5) << parameter.Name();
    }
    EXPECT_EQ(Find<QLineEdit>("e_ParamValue").text(), QStringLiteral("98.7782"));
    const std::string result = Result();
    EXPECT_TRUE(result.starts_with("The fit has converged (")) << result;
    for (const char* line :
         {"\nb1 = 98.7782 ± 0.5753\n", "\nb8 = 18.3894 ± 0.2013", "\nResidual SD = 2.3318, R² = 0.99"})
        EXPECT_NE(result.find(line), std::string::npos) << line << result;
    Click("btnCopyResult");
    const std::string copied = QGuiApplication::clipboard()->text().toStdString();
    EXPECT_NE(copied.find("Residual SD = 2.33179801"), std::string::npos) << copied;
    EXPECT_TRUE(Sink.Texts.empty()) << Sink.Only();
}

// What stands there belongs to the values beside it, or says that it does not.
TEST_F(FitThroughDialogs, AResultIsToldFromWhatHasChangedSince) {
    Wizard.SetStartPage(TxyDataWizard::kCurveFittingPage);
    Show({"a"});
    for (int x = 3; x < 9; ++x) Current().AddPoint(x, 10 * x + (x % 2 == 0 ? 0.1 : -0.1));
    Choose("cbx_Status", static_cast<int>(TFitStatus::FinalResult));
    Type("m_Equation", QStringLiteral("a*x"));
    Sink.Answer = false;
    Click("btnFit");
    EXPECT_EQ(Sink.Only(), "a is no parameter yet. Make it one that the fit varies?");
    EXPECT_EQ(Current().CurveFit().NParams(), 0);
    Sink.Answer = true;
    Click("btnFit");
    EXPECT_TRUE(Result().starts_with("The fit has converged (")) << Result();
    EXPECT_NE(Result().find("\na = "), std::string::npos);
    EXPECT_NEAR(Current().CurveFit().Parameter(1)->Value(), 10, 0.02);
    Type("e_ParamValue", QStringLiteral("3"));
    EXPECT_TRUE(Result().starts_with("Changed since this fit:\nThe fit has converged (")) << Result();
    EXPECT_EQ(Result().find("\na = "), std::string::npos);
    Click("btnFit");
    EXPECT_NEAR(Current().CurveFit().Parameter(1)->Value(), 10, 0.02);
    Type("m_Equation", QStringLiteral("a*sqrt(x-3.5)"));
    Click("btnFit");
    EXPECT_NE(Result().find("(5 points, 3 left out)"), std::string::npos) << Result();
}

} // namespace
} // namespace lumoplot
