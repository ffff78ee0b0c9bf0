#include "fit/equation_editor/editor_fixture.h"

#include "common/places.h"
#include "fit/equation_editor/formula_check.h"
#include "fit/equation_editor/function_files.h"
#include "fit/functions/ready_functions.h"
#include "support/replace_file.h"

#include <QDir>
#include <QStandardPaths>

namespace lumoplot {
namespace {

class FunctionFiles : public TEditorTest {
protected:
    TBytes Bytes(const char* name) { return ReadWholeFile(PathOf(name).toStdString()); }
    void Write(const char* name, const std::string& content) {
        ReplaceFile(PathOf(name).toStdString(),
                    {reinterpret_cast<const std::uint8_t*>(content.data()), content.size()});
    }
};

TEST_F(FunctionFiles, ReadyOnesAreWholeAndKeepTheirBytes) {
    OfferReadyFunctions(Folder.path());
    const QStringList names = QDir(Folder.path()).entryList(QDir::Files);
    EXPECT_EQ(static_cast<std::size_t>(names.size()), ReadyFunctions().size());
    for (const QString& name : names) {
        SCOPED_TRACE(name.toStdString());
        const std::string file = Folder.filePath(name).toStdString();
        TCurFit fit;
        fit.LoadFromFile(file, true);
        const TFormulaCheck check = CheckFormula(fit, fit.Expression());
        EXPECT_EQ(check.Fault, "");
        EXPECT_TRUE(check.UnknownNames.empty());
        ASSERT_GT(fit.NParams(), 0);
        std::string shouted = fit.XVarName();
        shouted[0] = static_cast<char>(std::toupper(shouted[0]));
        EXPECT_TRUE(ParameterNameFault(fit, shouted).ends_with("is the name of the X variable"));
        for (int i = 1; i <= fit.NParams(); ++i) {
            TDBLParameter& parameter = *fit.Parameter(i);
            EXPECT_TRUE(parameter.Vary());
            EXPECT_FALSE(parameter.Description.starts_with("Parameter")) << parameter.Name();
            EXPECT_EQ(ParameterNameFault(TCurFit(), parameter.Name()), "");
        }
        const TBytes before = ReadWholeFile(file);
        fit.SaveToFile(file);
        EXPECT_EQ(ReadWholeFile(file), before);
        EXPECT_EQ(ReadWholeFile(SourceFile("src/fit/equation_editor/functions/" + name.toStdString())),
                  before)
            << "what is installed";
    }
}

TEST_F(FunctionFiles, ReadyOnesDoNotComeBetweenTheUsers) {
    Write("mine.lfn", "");
    OfferReadyFunctions(Folder.path());
    EXPECT_EQ(QDir(Folder.path()).entryList(QDir::Files).size(), 1);
}

TEST_F(FunctionFiles, LieBesideTheProgramOrWithTheUser) {
    QStandardPaths::setTestModeEnabled(true);
    EXPECT_EQ(FunctionFolder(Folder.path()), PathOf("LFN"));
    EXPECT_EQ(QDir(PathOf("LFN")).entryList(QDir::Files), QStringList());
    ASSERT_TRUE(QDir().rmdir(PathOf("LFN")));
    Write("LFN", "no folder can be made where a file is");
    const QString own = FunctionFolder(Folder.path());
    EXPECT_TRUE(own.endsWith(QStringLiteral("/lumoplot-tests/LFN"))) << own.toStdString();
    EXPECT_TRUE(QDir(own).exists());
    EXPECT_TRUE(QDir(own).removeRecursively());
    QStandardPaths::setTestModeEnabled(false);
}

TEST_F(FunctionFiles, NamesGetTheExtension) {
    struct TCase {
        const char* chosen;
        const char* saved;
    };
    const TCase cases[] = {{"/a/decay", "/a/decay.lfn"},     {"/a/decay.txt", "/a/decay.lfn"},
                           {"/a/decay.LFN", "/a/decay.lfn"}, {"/a/run 1.5", "/a/run 1.5.lfn"},
                           {"/a.b/decay", "/a.b/decay.lfn"}, {"/a/.lfn", "/a/.lfn.lfn"}};
    for (const TCase& c : cases)
        EXPECT_EQ(WithFunctionExtension(QLatin1String(c.chosen)).toStdString(), c.saved) << c.chosen;
}

TEST_F(FunctionFiles, SavedAndOpenedAgain) {
    Fit.SetExpression("a*x");
    AddParameter(Fit, "a", 2);
    Show();
    AnswerFileDialog(PathOf("line.txt"));
    Click("btnSaveAs");
    ASSERT_TRUE(QFileInfo::exists(PathOf("line.lfn")));
    EXPECT_FALSE(QFileInfo::exists(PathOf("line.txt")));
    EXPECT_EQ(Find<QLabel>("lblFileName").text(), QStringLiteral("line.lfn"));
    const TBytes saved = Bytes("line.lfn");
    Type("m_Equation", QStringLiteral("x"));
    Click("btnDeleteParam");
    Type("e_X", QStringLiteral("3"));
    AnswerFileDialog(PathOf("LINE.LFN")); // found by its name in lower case
    Click("btnOpen");
    EXPECT_TRUE(Sink.Texts.empty()) << Sink.Only();
    EXPECT_EQ(Find<TFormulaEdit>("m_Equation").toPlainText(), QStringLiteral("a*x"));
    EXPECT_EQ(TextOf("e_ParamName"), "a");
    EXPECT_EQ(TextOf("e_X"), "0");
    AnswerFileDialog(PathOf("line.lfn"));
    Sink.Answer = false;
    Click("btnSaveAs");
    EXPECT_EQ(Sink.Only(), "File " + PathOf("line.lfn").toStdString() + " exists. Overwrite?");
    Sink.Answer = true;
    AnswerFileDialog(PathOf("line.lfn"));
    Click("btnSaveAs");
    EXPECT_EQ(Bytes("line.lfn"), saved);
}

TEST_F(FunctionFiles, TheOneOfTheChosenNameIsOpenedBesideOneInOtherCase) {
    for (const char* name : {"line.lfn", "Line.lfn"}) Write(name, "");
    for (const char* name : {"line.lfn", "Line.lfn"})
        EXPECT_EQ(FunctionFileToOpen(PathOf(name)), PathOf(name));
    EXPECT_EQ(FunctionFileToOpen(PathOf("LINE")), PathOf("line.lfn"));
}

TEST_F(FunctionFiles, WhatIsNoFunctionFileLeavesTheFitAsItWas) {
    Fit.SetExpression("a*x");
    AddParameter(Fit, "a", 2);
    Fit.SaveToFile(PathOf("whole.lfn").toStdString());
    const TBytes whole = Bytes("whole.lfn");
    Write("text.lfn", "This is no function file.\n");
    Write("empty.lfn", "");
    Write("torn.lfn", std::string(whole.begin(), whole.end() - 20));
    Show();
    for (const char* name : {"text.lfn", "empty.lfn", "torn.lfn"}) {
        SCOPED_TRACE(name);
        Sink.Texts.clear();
        AnswerFileDialog(PathOf(name));
        Click("btnOpen");
        EXPECT_EQ(Sink.Only(), "Wrong File Format!");
        EXPECT_TRUE(Editor->isVisible());
        EXPECT_EQ(Fit.Expression(), "a*x");
        EXPECT_EQ(Fit.NParams(), 1);
    }
}

} // namespace
} // namespace lumoplot
