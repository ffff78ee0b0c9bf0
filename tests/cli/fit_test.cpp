#include "cli/program.h"

#include <QJsonArray>
#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

class Fit : public TFolderTest {
protected:
    // y = 3 exp(-x/2), with a spoilt point at 9.
    std::string Decay() const {
        std::string text = "x,y\n";
        for (int x = 0; x < 9; ++x)
            text += std::to_string(x) + ',' + std::to_string(3 * std::exp(-0.5 * x)) + '\n';
        return WithText("decay.csv", text + "9,77\n");
    }
};

TEST_F(Fit, EveryProcedureFindsTheParameters) {
    for (const char* procedure : {"powell", "simplex", "conjugate-gradient", "variable-metric"}) {
        const QJsonObject fit = RunForJson({"fit", Decay(), "--equation", "a*exp(-b*x)", "--param", "a=1",
                                            "--param", "b=0.1", "--right", "8", "--procedure", procedure});
        EXPECT_TRUE(fit["converged"].toBool()) << procedure;
        const QJsonObject values = fit["parameters"].toObject();
        EXPECT_NEAR(values["a"].toDouble(), 3, 1e-5) << procedure;
        EXPECT_NEAR(values["b"].toDouble(), 0.5, 1e-5) << procedure;
        EXPECT_EQ(fit["points"].toInt(), 9) << procedure;
        EXPECT_GT(fit["errors"].toObject()["a"].toDouble(), 0) << procedure;
    }
}

TEST_F(Fit, FixedParametersAndTemplatesMakeTheModel) {
    const QJsonObject fit =
        RunForJson({"fit", Decay(), "--equation", "A*decay", "--template", "DECAY=exp(-t/tau)", "--xvar", "t",
                    "--param", "a=-1", "--param", "tau=2", "--fix", "TAU", "--left", "-1", "--right", "8.5"});
    const QJsonObject values = fit["parameters"].toObject();
    EXPECT_NEAR(values["a"].toDouble(), 3, 1e-5);
    EXPECT_EQ(values["tau"].toDouble(), 2);
    EXPECT_FALSE(fit["errors"].toObject().contains("tau"));
}

TEST_F(Fit, BoundsKeepParameters) {
    const TArguments arguments = {"fit", Decay(),   "--equation", "a*exp(-b*x)", "--right",
                                  "8",   "--param", "a=1",        "--param",     "b=1"};
    TArguments bounded = arguments;
    bounded.insert(bounded.end(), {"--bound", "B=:0.3", "--bound", "a=-1e9:"});
    const QJsonObject fit = RunForJson(bounded);
    EXPECT_EQ(fit["parameters"].toObject()["b"].toDouble(), 0.3);
    EXPECT_EQ(fit["on_bound"].toArray(), QJsonArray({"b"}));
    EXPECT_TRUE(fit["errors"].toObject()["b"].isNull());
    EXPECT_EQ(RunForJson(arguments)["on_bound"].toArray(), QJsonArray());
}

// A function file, bounds included, and the fit of a data set run as they were defined.
TEST_F(Fit, StoredFitsRun) {
    const std::string function = NameOf("f.lfn");
    RunForJson({"fit", Decay(), "--equation", "a*exp(-b*x)", "--right", "8", "--param", "a=1", "--param",
                "b=1", "--bound", "b=0:0.3", "--procedure", "simplex", "--save", function});
    const QJsonObject fit =
        RunForJson({"fit", Decay(), "--function", function, "--param", "b=0.1", "--right", "7"});
    EXPECT_EQ(fit["parameters"].toObject()["b"].toDouble(), 0.3);
    EXPECT_EQ(fit["points"].toInt(), 8);
}

TEST_F(Fit, TablesAreForOtherPrograms) {
    const std::string line = WithText("line.csv", "x,y\n1,9\n2,5\n3,7\n4,9\n");
    TArguments arguments = {"fit",     line,  "--equation", "a+b*x", "--param", "a=1",
                            "--param", "b=1", "--left",     "2",     "--curve", "3"};
    const std::string text = RunProgram(arguments).out;
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 3);
    for (const char* start : {"2\t", "\n3\t", "\n4\t"})
        EXPECT_NE(text.find(start), std::string::npos) << text;
    arguments.push_back("--residuals");
    const QJsonObject fit = RunForJson(arguments);
    EXPECT_NEAR(fit["curve"].toObject()["y"].toArray()[1].toDouble(), 7, 1e-12);
    const QJsonObject residuals = fit["residuals"].toObject();
    EXPECT_EQ(residuals["y"].toArray(), QJsonArray({5, 7, 9}));
    EXPECT_NEAR(residuals["fitted"].toArray()[2].toDouble(), 9, 1e-12);
    EXPECT_NEAR(residuals["residual"].toArray()[0].toDouble(), 0, 1e-12);
}

TEST_F(Fit, UncertaintiesComeInThreeWays) {
    std::string text = "x,y\n";
    for (int x = 0; x < 30; ++x) text += std::to_string(x) + ',' + std::to_string(2 * x + x * 7 % 5) + '\n';
    const QJsonObject fit = RunForJson({"fit", WithText("line.csv", text), "--equation", "a+b*x", "--param",
                                        "a=1", "--param", "b=1", "--bootstrap", "2000", "--profile"});
    const QJsonArray interval = fit["intervals"].toObject()["b"].toArray();
    const QJsonObject profile = fit["profile"].toObject()["b"].toObject();
    const QJsonObject bootstrap = fit["bootstrap"].toObject()["b"].toObject();
    const double error = fit["errors"].toObject()["b"].toDouble();
    EXPECT_NEAR(profile["low"].toDouble(), interval[0].toDouble(), 1e-4 * error);
    EXPECT_NEAR(profile["high"].toDouble(), interval[1].toDouble(), 1e-4 * error);
    EXPECT_NEAR(bootstrap["error"].toDouble(), error, 0.1 * error);
    EXPECT_GT(profile["values"].toArray().size(), 8);
    EXPECT_EQ(fit["bootstrap"].toObject()["resamples"].toInt(), 2000);
}

TEST_F(Fit, ReportsAreForPeople) {
    for (const char* file : {"report.html", "report.txt"}) {
        RunForJson({"fit", Decay(), "--equation", "a*exp(-b*x)", "--param", "a=1", "--param", "b=1",
                    "--right", "8", "--report", NameOf(file)});
        const std::string report = ContentOf(NameOf(file));
        for (const char* part :
             {"decay.csv", "y = a*exp(-b*x)", "converged", "Standard error", "Durbin-Watson"})
            EXPECT_NE(report.find(part), std::string::npos) << file << part;
        const bool hasPicture = report.find("src=\"data:image/png;base64,iVBOR") != std::string::npos;
        EXPECT_EQ(hasPicture, std::string(file) == "report.html");
    }
}

TEST_F(Fit, ManyStartsAreCounted) {
    const QJsonObject fit = RunForJson({"fit", Decay(), "--equation", "a*exp(-b*x)", "--param", "a=1",
                                        "--param", "b=1", "--right", "8", "--starts", "7"});
    QString remarks;
    for (const auto& remark : fit["remarks"].toArray()) remarks += remark.toString();
    EXPECT_TRUE(remarks.contains(" scattered starts end in the best minimum")) << remarks.toStdString();
}

TEST_F(Fit, WhatIsMeantByAFormulaIsAsked) {
    const TRunResult power = RunProgram({"fit", Decay(), "--equation", "a*exp(-x^2)+b", "--param", "a=1",
                                         "--param", "b=0", "--allow-unconverged"});
    EXPECT_EQ(power.error, "xydata: a*exp(-x^2)+b: a sign binds tighter than ^: write -(x^2)\n");
    const TRunResult name = RunProgram({"fit", Decay(), "--equation", "a*log(x)", "--param", "a=1"});
    EXPECT_EQ(name.error, "xydata: Syntax error in expression a*log(x): log at 3: not known; ln, log10?\n");
    const TRunResult product = RunProgram({"fit", Decay(), "--equation", "a x", "--param", "a=1"});
    EXPECT_EQ(product.error, "xydata: Syntax error in expression a x: a product needs its sign: write a*x\n");
    EXPECT_EQ(RunProgram({"eval", "-2^2"}).error,
              "xydata: -2^2: a sign binds tighter than ^: write -(2^2)\n");
}

TEST_F(Fit, AnEndedRunSaysWhy) {
    const TArguments arguments = {"fit", Decay(), "--equation", "a*b*x", "--param", "a=1", "--param", "b=1"};
    const TRunResult run = RunProgram(arguments);
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.error.find("do not determine a and b"), std::string::npos) << run.error;
    TArguments allowed = arguments;
    allowed.push_back("--allow-unconverged");
    const QJsonObject fit = RunForJson(allowed);
    EXPECT_FALSE(fit["converged"].toBool(true));
    EXPECT_EQ(fit["end"].toString(), "the points do not determine all varied parameters");
    EXPECT_TRUE(fit["errors"].toObject()["a"].isNull());
}

// The weighted straight line by the closed formulas: w = 1/σ² = 1, 4, 1, with Σw = 6, Σwx = 12, Σwxx = 26,
// Σwy = 26, Σwxy = 56.
TEST_F(Fit, ErrorsOfPointsWeighThem) {
    const std::string data = WithText("line.csv", "x,y,e\n1,2,1\n2,4.5,0.5\n3,6,1\n");
    const QJsonObject fit = RunForJson({"fit", data, "--columns", "x,y", "--equation", "a+b*x", "--param",
                                        "a=1", "--param", "b=1", "--weights", "e"});
    EXPECT_NEAR(fit["parameters"].toObject()["b"].toDouble(), (6 * 56 - 12 * 26) / (6 * 26.0 - 144), 1e-12);
    EXPECT_NEAR(fit["chi_square"].toDouble(), 1.0 / 3, 1e-12);
    EXPECT_NEAR(fit["chi_square_probability"].toDouble(), std::erfc(std::sqrt(1.0 / 6)), 1e-12);
}

// Σw/σ-weighted as above; a row without an error is no point of the fit, and absolute errors are √(S⁻¹).
TEST_F(Fit, AbsoluteErrorsAndRowsWithoutOne) {
    const std::string data = WithText("line.csv", "x,y,e\n1,2,1\n2,4.5,0.5\n2.5,99,\n3,6,1\n");
    const QJsonObject fit = RunForJson({"fit", data, "--columns", "x,y", "--equation", "a+b*x", "--param",
                                        "a=1", "--param", "b=1", "--weights", "e", "--errors", "absolute"});
    EXPECT_NEAR(fit["errors"].toObject()["b"].toDouble(), std::sqrt(6 / (6 * 26.0 - 144)), 1e-12);
    EXPECT_EQ(fit["points"].toInt(), 3);
    EXPECT_EQ(fit["points_left_out"].toInt(), 1);
    EXPECT_EQ(fit["remarks"].toArray().first().toString(),
              "1 of 4 points has no standard error above 0, the first at 2.5; it was left out.");
    for (const auto& [weights, sigma2] : {std::pair("constant=2", 4.0), {"constant=0.5", 0.25}}) {
        const QJsonObject plain =
            RunForJson({"fit", data, "--columns", "x,y", "--right", "2.2", "--equation", "b*x", "--param",
                        "b=1", "--weights", weights, "--errors", "absolute"});
        EXPECT_NEAR(plain["errors"].toObject()["b"].toDouble(), std::sqrt(sigma2 / 5), 1e-12);
    }
}

TEST_F(Fit, ErrorsInAFileAreUsedWhenTheFitSaysSo) {
    const std::string text = WithText("line.csv", "x,y,e\n1,2,1\n2,4.5,0.5\n3,6,1\n");
    const std::string data = NameOf("line.lds");
    RunProgram({"convert", text, data, "--columns", "x,y", "--y-error", "e"});
    const TArguments fit = {"fit", data, "--equation", "a+b*x", "--param", "a=1", "--param", "b=1"};
    EXPECT_NEAR(RunForJson(fit)["parameters"].toObject()["b"].toDouble(), 2, 1e-12) << "off by default";
    TArguments weighted = fit;
    weighted.insert(weighted.end(), {"--weights", "errors", "--save", NameOf("line.lfn")});
    const double slope = (6 * 56 - 12 * 26) / (6 * 26.0 - 144);
    EXPECT_NEAR(RunForJson(weighted)["parameters"].toObject()["b"].toDouble(), slope, 1e-12);
    const QJsonObject again = RunForJson({"fit", data, "--function", NameOf("line.lfn")});
    EXPECT_NEAR(again["parameters"].toObject()["b"].toDouble(), slope, 1e-12) << "the function file says so";
}

TEST_F(Fit, TiedParametersFollow) {
    const QJsonObject fit = RunForJson({"fit", Decay(), "--equation", "a*exp(-b*x)", "--param", "b=0.1",
                                        "--param", "c=0.2", "--tie", "a=6*c", "--right", "8"});
    EXPECT_NEAR(fit["parameters"].toObject()["a"].toDouble(),
                6 * fit["parameters"].toObject()["c"].toDouble(), 1e-12);
    EXPECT_NEAR(fit["errors"].toObject()["a"].toDouble(), 6 * fit["errors"].toObject()["c"].toDouble(), 1e-9);
}

// Slopes of lines through the points (1, 2), (2, 4), (3, 9) and (1, 1), (2, 5), (3, 6): apart Sxy/Sxx,
// together Σ Sxy / Σ Sxx.
TEST_F(Fit, ManyDataSetsApartAndTogether) {
    const std::string data = WithText("runs.csv", "x,p,q\n1,2,1\n2,4,5\n3,9,6\n");
    TArguments arguments = {"fit-all", data,      "--columns", "x,p,q",   "--equation",
                            "a+b*x",   "--param", "a=1",       "--param", "b=1"};
    const QJsonArray apart = RunForJson(arguments)["fits"].toArray();
    ASSERT_EQ(apart.size(), 2);
    EXPECT_EQ(apart[1].toObject()["name"].toString(), "q");
    EXPECT_NEAR(apart[0].toObject()["parameters"].toObject()["b"].toDouble(), 3.5, 1e-10);
    EXPECT_NEAR(apart[1].toObject()["parameters"].toObject()["b"].toDouble(), 2.5, 1e-10);
    arguments.insert(arguments.end(), {"--share", "b"});
    const QJsonObject together = RunForJson(arguments);
    EXPECT_NEAR(together["together"].toObject()["shared"].toObject()["b"].toObject()["value"].toDouble(), 3,
                1e-10);
    const QJsonArray fits = together["fits"].toArray();
    EXPECT_NEAR(fits[0].toObject()["parameters"].toObject()["a"].toDouble(), 5 - 6, 1e-9);
    EXPECT_NEAR(fits[1].toObject()["parameters"].toObject()["a"].toDouble(), 4 - 6, 1e-9);
}

TEST_F(Fit, RobustWeightsHoldOutliersOff) {
    std::string text = "x,y\n";
    for (int x = 0; x < 12; ++x)
        text += std::to_string(x) + ',' +
                std::to_string(3 * std::exp(-0.5 * x) + (x == 4 ? 1 : 0.001 * (x % 2))) + '\n';
    const QJsonObject fit = RunForJson({"fit", WithText("spoilt.csv", text), "--equation", "a*exp(-b*x)",
                                        "--param", "a=1", "--param", "b=0.1", "--robust", "tukey"});
    EXPECT_NEAR(fit["parameters"].toObject()["a"].toDouble(), 3, 0.01);
    EXPECT_EQ(fit["outliers"].toInt(), 1);
    EXPECT_EQ(fit["outlier_points"].toArray()[0].toArray()[0].toDouble(), 4);
}

TEST_F(Fit, TheFunctionFileHoldsTheResult) {
    const std::string name = NameOf("decay.lfn");
    RunForJson({"fit", Decay(), "--equation", "a*exp(-b*x)", "--param", "a=1", "--param", "b=0.1", "--right",
                "8", "--save", name});
    const std::string info = RunProgram({"info", name}).out;
    EXPECT_NE(info.find("a*exp(-b*x)"), std::string::npos) << info;
    EXPECT_NE(info.find("3.00000"), std::string::npos) << info;
}

} // namespace
} // namespace lumoplot
