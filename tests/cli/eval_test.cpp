#include "cli/program.h"

#include "common/case_file.h"

#include <QJsonArray>
#include <QProcess>

namespace lumoplot {
namespace {

TEST(Eval, PrintsTheShortestTextOfTheValue) {
    for (const auto& row : ReadCases("evaluated.tsv", 2)) {
        TArguments arguments = {"eval"};
        for (const QString& part : QString::fromStdString(row[0]).split(u'|'))
            arguments.push_back(part.toStdString());
        const TRunResult result = RunProgram(arguments);
        EXPECT_EQ(result.out, row[1] + "\n") << row[0] << result.error;
        EXPECT_EQ(result.status, 0);
    }
}

TEST(Eval, ErrorsShowTheFormulaAsItWasGiven) {
    const std::pair<const char*, const char*> cases[] = {
        {"2 3", "xydata: Syntax error in expression 2 3\n"},
        {"-2 3", "xydata: Syntax error in expression -2 3\n"},
        {" -2 3", "xydata: Syntax error in expression  -2 3\n"},
        {"--2 3", "xydata: Syntax error in expression --2 3\n"},
    };
    for (const auto& [formula, expected] : cases) EXPECT_EQ(RunProgram({"eval", formula}).error, expected);
}

TEST(Eval, GridsAreEvenAndEndAtTheirBounds) {
    EXPECT_EQ(RunProgram({"eval", "10*x", "--x", "0:1:11"}).out,
              "0\t0\n0.1\t1\n0.2\t2\n0.3\t3\n0.4\t4\n0.5\t5\n0.6\t6\n0.7\t7\n0.8\t8\n0.9\t9\n1\t10\n");
    EXPECT_EQ(RunProgram({"eval", "t", "--x", "-3:5:1", "--xvar", "t"}).out, "-3\t-3\n");
    EXPECT_EQ(RunProgram({"eval", "x", "--x", "2:-2:3"}).out, "2\t2\n0\t0\n-2\t-2\n");
    EXPECT_EQ(RunProgram({"eval", "x", "--x", "-1.5e308:1.5e308:3"}).out,
              "-1.5e+308\t-1.5e+308\n0\t0\n1.5e+308\t1.5e+308\n");
    EXPECT_EQ(RunProgram({"eval", "x", "--x", "-1e16:1:2"}).out, "-1e+16\t-1e+16\n1\t1\n");
}

TEST(Eval, AGridPrintsTheXOfTheGridAlsoWhenTheFormulaAssignsToIt) {
    EXPECT_EQ(RunProgram({"eval", "x:=x*2", "--x", "1:2:2"}).out, "1\t2\n2\t4\n");
}

TEST(Eval, JsonHoldsNullForWhatIsNotFinite) {
    EXPECT_TRUE(RunForJson({"eval", "ln(0)"})["value"].isNull());
    EXPECT_EQ(RunForJson({"eval", "1e308"})["value"].toDouble(), 1e308);
    const QJsonObject grid = RunForJson({"eval", "1/x", "--x", "-1:1:3"});
    EXPECT_EQ(grid["x"].toArray(), QJsonArray({-1, 0, 1}));
    EXPECT_EQ(grid["y"].toArray(), QJsonArray({-1, QJsonValue::Null, 1}));
}

TEST(Eval, FormulasFromStandardInputShareTheirVariables) {
    const TRunResult result =
        RunProgram({"eval", "-", "--let", "k=3"}, "a := 4\r\n(1\na*2\n\n1 2\r\n1.2.3\n'a'<>'b'\nb := k\na+b");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.out, "4\n"
                          "error: Unequal brackets\n"
                          "8\n"
                          "error: Syntax error in expression \n"
                          "error: Syntax error in expression 1 2\n"
                          "error: Syntax error in expression 1.2.3\n"
                          "error: <> is not a valid string operand\n"
                          "3\n"
                          "7\n");
}

TEST(Eval, AProgramThatAsksThroughPipesGetsEachAnswerAtOnce) {
    QProcess program;
    program.start(QString::fromStdString(ProgramPath()), {"eval", "-"});
    for (const char* number : {"1\n", "2\n"}) {
        program.write(number);
        while (!program.canReadLine() && program.waitForReadyRead()) {
        }
        EXPECT_EQ(program.readLine().toStdString(), number);
    }
    program.closeWriteChannel();
    EXPECT_TRUE(program.waitForFinished());
}

struct TAxisCase {
    TArguments arguments;
    double min;
    double max;
    double step;
};

TEST(Axis, FindsRoundRanges) {
    const TAxisCase cases[] = {
        {{"0.3", "9.7"}, 0, 10, 1},
        {{"-5", "-5"}, -6, 0, 1},
        {{"0.3", "9.7", "--step", "2"}, 0, 10, 2},
        {{"0.3", "9.7", "--step", "0.5", "--max-steps", "10"}, 0, 10, 1},
        {{"0.3", "9.7", "--min-steps", "10"}, 0, 10, 0.5},
    };
    for (TAxisCase c : cases) {
        c.arguments.insert(c.arguments.begin(), "axis");
        const QJsonObject axis = RunForJson(c.arguments);
        const std::string name = testing::PrintToString(c.arguments);
        EXPECT_DOUBLE_EQ(axis["min"].toDouble(), c.min) << name;
        EXPECT_DOUBLE_EQ(axis["max"].toDouble(), c.max) << name;
        EXPECT_DOUBLE_EQ(axis["step"].toDouble(), c.step) << name;
    }
    EXPECT_EQ(RunProgram({"axis", "0.3", "9.7"}).out, "min: 0\nmax: 10\nstep: 1\n");
}

} // namespace
} // namespace lumoplot
