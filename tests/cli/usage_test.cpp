#include "cli/program.h"
#include "common/places.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <filesystem>
#include <regex>
#if defined(Q_OS_WIN)
#include <windows.h>
#undef ReplaceFile // it is ours
#endif

namespace lumoplot {
namespace {

const char* const kCommands[] = {"info",    "convert", "render", "eval",      "stats", "regress", "fit",
                                 "fit-all", "verify",  "filter", "transform", "peaks", "axis"};

TEST(Usage, HelpNamesEveryCommandAndEachCommandHelps) {
    const TRunResult help = RunProgram({"--help"});
    EXPECT_EQ(help.status, 0);
    for (const char* command : kCommands) {
        EXPECT_NE(help.out.find(std::string("\n  ") + command + ' '), std::string::npos) << command;
        const TRunResult own = RunProgram({command, "--help"});
        EXPECT_EQ(own.status, 0) << command;
        EXPECT_EQ(own.error, "") << command;
        EXPECT_NE(own.out.find(std::string("xydata ") + command), std::string::npos) << own.out;
    }
}

TEST(Usage, TheManualHasEveryOptionOfTheHelp) {
    const std::string manual = ContentOf(SourceFile("packaging/xydata.1"));
    const std::regex option("\n  (?:-\\w,)?(--[a-z0-9-]+)");
    for (const char* command : kCommands) {
        const std::string help = RunProgram({command, "--help"}).out;
        for (std::sregex_iterator found(help.begin(), help.end(), option), end; found != end; ++found) {
            const std::string escaped = std::regex_replace((*found)[1].str(), std::regex("-"), "\\-");
            EXPECT_NE(manual.find(escaped), std::string::npos) << command << ' ' << (*found)[1];
        }
    }
}

// A line of the table is a command line, its arguments divided by bars.
TEST(Usage, WrongUsageIsOneMessageAndStatusTwo) {
    QFile file(QString::fromStdString(SourceFile("tests/data_files/wrong_usage.txt")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text));
    while (!file.atEnd()) {
        const std::string line = file.readLine().trimmed().toStdString();
        TArguments arguments;
        for (const QString& part : QString::fromStdString(line).split(u'|', Qt::SkipEmptyParts))
            arguments.push_back(part.toStdString());
        const TRunResult result = RunProgram(arguments);
        EXPECT_EQ(result.status, 2) << line << result.error;
        EXPECT_EQ(result.out, "") << line;
        EXPECT_TRUE(IsOneMessage(result.error)) << line << result.error;
    }
}

class Failures : public TFolderTest {};

TEST_F(Failures, ATextIsNotConvertedOntoItself) {
    const std::string text = "t,a,b\n1,2,3\n2,3,4\n";
    const std::string name = WithText("data.csv", text);
    EXPECT_EQ(RunProgram({"convert", name, name}).status, 2);
    EXPECT_EQ(ContentOf(name), text) << "b would have been lost";
}

TEST_F(Failures, WorkThatFailsIsOneMessageAndStatusOne) {
    const std::string data = WithText("data.csv", "x,y\n1,2\n2,3\n");
    const std::string garbage(1000, '\xA5');
    const TArguments cases[] = {
        {"axis", "2", "1"},
        {"eval", "(1"},
        {"eval", ""},
        {"info", NameOf("missing.ltp")},
        {"info", NameOf("missing.csv")},
        {"info", NameOf((std::string(180, 'n') + "\n\x1b[2J.ltp").c_str())},
        {"info", NameOf(".")},
        {"info", WithText("empty.csv", "")},
        {"info", WithText("empty.ltp", "")},
        {"info", WithText("empty.lds", "")},
        {"info", WithText("empty.lfn", "")},
        {"info", WithText("garbage.ltp", garbage)},
        {"info", WithText("garbage.lds", garbage)},
        {"info", WithText("garbage.lfn", garbage)},
        {"info", WithText("words.txt", "no number\nin this file\n")},
        {"stats", WithText("zeros.dat", std::string(5000, '\0'))},
        {"stats", data, "--columns", "1,9"},
        {"stats", data, "--columns", "x,volts"},
        {"stats", data, "--set", "2"},
        {"regress", data, "--type", "7", "--value2", "0.6"},
        {"regress", data, "--type", "5"},
        {"fit", data, "--equation", "", "--param", "a=1"},
        {"fit", data, "--equation", "a", "--param", "a=1"},
        {"fit", data, "--equation", "a*(x", "--param", "a=1"},
        {"fit", data, "--equation", "a*x+c", "--param", "a=1"},
        {"fit", data, "--equation", "a*x"},
        {"fit", data, "--equation", "a*x", "--param", "a=1", "--fix", "A"},
        {"fit", data, "--equation", "a*x", "--param", "a=1", "--left", "-8", "--right", "-7"},
        {"fit", data, "--equation", "a*x", "--param", "a=1", "--save", NameOf("missing/f.lfn")},
        {"convert", data, NameOf("missing/data.lds")},
        {"convert", data, NameOf("data.lfn")},
        {"convert", WithText("garbage.txt", garbage), NameOf("data.lds")},
        {"render", data, NameOf("huge.png"), "--size", "100000x100000"},
        {"render", WithText("no.ltp", "no graph"), NameOf("data.png")},
    };
    for (const auto& arguments : cases) {
        const TRunResult result = RunProgram(arguments);
        const std::string name = testing::PrintToString(arguments);
        EXPECT_EQ(result.status, 1) << name << result.error;
        EXPECT_EQ(result.out, "") << name;
        EXPECT_TRUE(IsOneMessage(result.error)) << name << result.error;
    }
}

#if defined(Q_OS_WIN)
// Which that system has no device for: the output can only be read.
void TakeNothing(QProcess& program, const QString& scratch) {
    program.setCreateProcessArgumentsModifier([scratch](QProcess::CreateProcessArguments* arguments) {
        SECURITY_ATTRIBUTES inherited = {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
        const std::wstring name = QDir::toNativeSeparators(scratch).toStdWString();
        arguments->startupInfo->hStdOutput = CreateFileW(name.c_str(), GENERIC_READ, 0, &inherited,
                                                         CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    });
}
#else
void TakeNothing(QProcess& program, const QString&) {
    program.setStandardOutputFile("/dev/full");
}

TEST_F(Failures, AFullDiskFails) {
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
    const std::string data = WithText("data.csv", "x,y\n1,2\n2,3\n");
    for (const char* out : {"full.lds", "full.csv", "full.ltp"}) {
        std::filesystem::create_symlink("/dev/full", NameOf(out));
        const TRunResult result = RunProgram({"convert", data, NameOf(out)});
        EXPECT_EQ(result.status, 1) << out;
        EXPECT_EQ(result.error, "xydata: Can not save to file " + NameOf(out) +
                                    ": the disk may be full. Free some space or choose another folder\n");
    }
}
#endif

TEST_F(Failures, AnOutputThatTakesNothingFails) {
    QProcess program;
    TakeNothing(program, QString::fromStdString(NameOf("output")));
    program.start(QString::fromStdString(ProgramPath()), {"eval", "x", "--x", "0:1:100000"});
    ASSERT_TRUE(program.waitForFinished());
    EXPECT_EQ(program.exitCode(), 1);
    EXPECT_EQ(program.readAllStandardError().toStdString(), "xydata: Can not write to standard output\n");
}

TEST_F(Failures, TextFilesAndFormulasNeedNoPlatform) {
    const char* const kNoPlatform = "no-such-platform";
    const std::string data = WithText("data.csv", "x,y\n1,2\n2,3\n");
    const std::string dataSet = NameOf("data.lds");
    ASSERT_EQ(RunProgram({"convert", data, dataSet}).status, 0);
    EXPECT_EQ(RunProgram({"axis", "0", "1"}, "", kNoPlatform).status, 0);
    EXPECT_EQ(RunProgram({"eval", "1"}, "", kNoPlatform).status, 0);
    EXPECT_EQ(RunProgram({"stats", data}, "", kNoPlatform).status, 0);
    EXPECT_EQ(RunProgram({"info", data}, "", kNoPlatform).status, 0);
#if !defined(Q_OS_WIN) // there the toolkit says it in a window
    const TRunResult failed = RunProgram({"info", dataSet}, "", kNoPlatform);
    EXPECT_EQ(failed.status, 1);
    EXPECT_TRUE(IsOneMessage(failed.error)) << failed.error;
#endif
}

} // namespace
} // namespace lumoplot
