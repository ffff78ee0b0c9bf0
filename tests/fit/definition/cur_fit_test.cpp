#include "fit/definition/cur_fit.h"

#include "common/fit_parameters.h"
#include "common/recording_sink.h"
#include "common/thrown_text.h"
#include "fit/definition/fit_result.h"
#include "support/replace_file.h"

#include <QTemporaryDir>
#include <cmath>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

using TNamedValue = std::pair<const char*, double>;

void AddParameters(TCurFit& fit, std::initializer_list<TNamedValue> parameters) {
    for (const auto& [name, value] : parameters) AddParameter(fit, name, value);
}

void AddTemplate(TCurFit& fit, const char* name, const char* text) {
    fit.AddTemplate(std::make_unique<TDBLFunction>(TDBLFunction{name, text, ""}));
}

struct TModelCase {
    const char* equation;
    std::vector<std::pair<const char*, const char*>> templates;
    double expected; ///< at x = 3 with a = 5 and b = 7
};

TEST(CurFitModel, TemplatesExpandFromTheLastToTheFirst) {
    const TModelCase cases[] = {
        {"a*x+b", {}, 22},
        {"2*F", {{"f", "a*x"}}, 30},
        {"g", {{"f", "(a+x)"}, {"G", "f*F"}}, 64},
        {"f", {{"f", "g"}, {"g", "a"}}, NAN}, // g is not expanded again behind its turn
        {"a\r\n\t+b", {}, 12},                // an equation may be broken into lines
        {"a", {{"", "b"}}, 5},
        {"f", {{"f", "F*2"}}, NAN}, // one pass only
    };
    for (const TModelCase& c : cases) {
        TCurFit fit;
        fit.SetExpression(c.equation);
        AddParameters(fit, {{"a", 5}, {"B", 7}});
        for (const auto& [name, text] : c.templates) AddTemplate(fit, name, text);
        fit.Compile();
        const double value = fit.EvaluateAt(3);
        if (std::isnan(c.expected))
            EXPECT_TRUE(std::isnan(value)) << c.equation;
        else
            EXPECT_EQ(value, c.expected) << c.equation;
    }
}

TEST(CurFitModel, NothingCompiledIsNotANumber) {
    TCurFit fit;
    EXPECT_TRUE(std::isnan(fit.EvaluateAt(1)));
    fit.Compile();
    EXPECT_TRUE(std::isnan(fit.EvaluateAt(1)));
    fit.SetExpression("2*x");
    fit.Compile();
    EXPECT_EQ(fit.EvaluateAt(1), 2);
    fit.SetExpression("2*(x");
    EXPECT_THROW(fit.Compile(), EParserException);
    EXPECT_TRUE(std::isnan(fit.EvaluateAt(1)));
}

// The values of deleted parameters are gone, so nothing may go on reading them.
TEST(CurFitModel, DeletingParametersForgetsTheFormula) {
    TCurFit fit;
    fit.SetExpression("a+b");
    AddParameters(fit, {{"a", 1}, {"b", 2}});
    fit.Compile();
    for (const int outside : {0, 3}) fit.DeleteParameter(outside);
    EXPECT_EQ(fit.NParams(), 2);
    EXPECT_EQ(fit.EvaluateAt(0), 3);
    fit.DeleteParameter(1);
    EXPECT_TRUE(std::isnan(fit.EvaluateAt(0)));
    TExprCollection variables(4);
    fit.GetVariables(variables);
    for (const TExprWord* word : variables) EXPECT_NE(word->Name(), "a");
    fit.ClearParameters();
    EXPECT_TRUE(std::isnan(fit.EvaluateAt(0)));
}

TEST(CurFitModel, ANameThatHidAWordGivesItBack) {
    TCurFit fit;
    fit.SetExpression("pi*x");
    AddParameters(fit, {{"pi", 2}});
    fit.Compile();
    EXPECT_EQ(fit.EvaluateAt(3), 6);
    fit.Parameter(1)->SetName("other");
    fit.Compile();
    EXPECT_DOUBLE_EQ(fit.EvaluateAt(1), 3.141592653589793);
}

TEST(CurFitModel, TemplatesThatMultiplyAreRefused) {
    TCurFit fit;
    fit.SetExpression("t63");
    for (int i = 0; i < 63; ++i) {
        const std::string inner = "t" + std::to_string(i + 10);
        AddTemplate(fit, ("t" + std::to_string(i + 11)).c_str(), (inner + "+" + inner).c_str());
    }
    EXPECT_THROW(fit.Compile(), EParserException);
}

TEST(CurFitModel, ACopyIsWholeAndCompiledWhereItCanBe) {
    TCurFit fit;
    fit.SetExpression("a*(x");
    AddParameters(fit, {{"a", 1}});
    TCurFit copy;
    copy.SetExpression("3");
    copy.Compile();
    copy.Assign(&fit);
    EXPECT_EQ(copy.Expression(), "a*(x");
    EXPECT_EQ(copy.NParams(), 1);
    EXPECT_TRUE(std::isnan(copy.EvaluateAt(1)));
    copy.Assign(nullptr);
    EXPECT_EQ(copy.NParams(), 1);
    fit.SetExpression("4*a*x");
    copy.Assign(&fit);
    EXPECT_EQ(copy.EvaluateAt(2), 8);
}

TEST(CurFitModel, ANameIsDefinedOnce) {
    TRecordingSink sink;
    TCurFit fit;
    AddParameters(fit, {{"a", 1}, {"b", 2}, {"A", 3}});
    fit.Parameter(2)->SetName("A");
    fit.Parameter(2)->SetName("B");
    EXPECT_EQ(fit.NParams(), 2);
    EXPECT_EQ(fit.Parameter(2)->Name(), "b");
    EXPECT_EQ(sink.Texts, (std::vector<std::string>{"Parameter \"A\" Already Defined!",
                                                    "Parameter \"A\" Already Defined!",
                                                    "Parameter \"B\" Already Defined!"}));
}

TEST(CurFitModel, OnlyWhatCountsMakesItStale) {
    TCurFit fit, other;
    AddParameters(fit, {{"a", 1}, {"b", 2}});
    AddParameters(other, {{"a", 7}});
    fit.ClearStale();
    fit.SetLeftMargin(3);
    fit.SetRightMargin(4);
    fit.CopyParameterValues(other); // of another model
    EXPECT_FALSE(fit.IsStale());
    EXPECT_EQ(fit.Parameter(1)->Value(), 1);
    fit.ClearTemplates();
    EXPECT_FALSE(fit.IsStale());
    fit.SetUseLeftMargin(true);
    const std::function<void()> changes[] = {
        [&] { fit.SetLeftMargin(5); },
        [&] { AddTemplate(fit, "f", "x"); },
        [&] { fit.ClearTemplates(); },
    };
    for (const auto& change : changes) {
        fit.ClearStale();
        change();
        EXPECT_TRUE(fit.IsStale()) << &change - changes;
    }
}

TEST(CurFitModel, TheReportShowsTheFormulaAsItIsCompiled) {
    TCurFit fit;
    fit.SetExpression("2*F");
    AddParameters(fit, {{"a", 4}});
    AddTemplate(fit, "f", "a*x");
    const std::vector<std::string> lines = fit.SettingsReport();
    const auto variables = std::ranges::find(lines, "G E N E R A T E D   V A R I A B L E S");
    ASSERT_GE(lines.end() - variables, 7);
    EXPECT_EQ(variables[2], "Var # 1: Name = a; Value = 4");
    EXPECT_EQ(variables[3], "Var # 2: Name = x; Value = 0");
    EXPECT_EQ(lines.back(), "2*a*x");
}

TEST(CurFitFile, LoadingClearsModifiedUnlessItCompiles) {
    TCurFit fit;
    fit.SetExpression("x");
    TBytes bytes;
    TxyWriter writer(bytes);
    fit.SaveToStream(writer);
    for (const bool compile : {true, false}) {
        fit.Changed(true);
        TByteSource source(bytes);
        TxyReader reader(source);
        fit.LoadFromStream(reader, compile);
        EXPECT_EQ(fit.Modified(), compile);
    }
}

TEST(CurFitFile, HoldsTheBounds) {
    TCurFit fit;
    AddParameters(fit, {{"a", 5}, {"b", 7}, {"c", 1}});
    fit.Parameter(1)->SetBounds(-INFINITY, 10);
    fit.Parameter(3)->SetBounds(0.1, 1e300);
    fit.Parameter(3)->SetBounds(2, 2); // not a range
    TCurFit copy;
    copy.Assign(&fit);
    EXPECT_EQ(copy.Parameter(1)->Min(), -INFINITY);
    EXPECT_EQ(copy.Parameter(1)->Max(), 10);
    EXPECT_FALSE(copy.Parameter(2)->IsBounded());
    EXPECT_EQ(copy.Parameter(3)->Min(), 0.1);
    EXPECT_EQ(copy.Parameter(3)->Max(), 1e300);
    copy.SetBoundsText("9 0 1\n2 1 0\n2 x 1\n\n2 nan 3\n2 0 1 \nend");
    EXPECT_EQ(copy.Parameter(2)->Max(), 1);
}

TEST(CurFitFile, ABrokenFileLeavesTheFitAsItWas) {
    QTemporaryDir folder;
    const std::string name = folder.filePath("a.lfn").toStdString();
    TCurFit fit;
    fit.SetExpression("a*x");
    fit.SetIterMax(77);
    AddParameters(fit, {{"a", 4}});
    AddTemplate(fit, "f", "x");
    fit.SaveToFile(name);
    const std::vector<std::uint8_t> bytes = ReadWholeFile(name);
    TBytes dataSet; // begins as a data-set file does
    TxyWriter writer(dataSet);
    writer.WriteString(kSectionHeader, "", "Series");
    writer.WriteBoolean(1, "", true);
    writer.WriteEndOfSection();
    std::vector<TBytes> broken = {dataSet};
    for (std::size_t length = 0; length < bytes.size(); ++length)
        broken.emplace_back(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length));
    TCurFit other;
    other.SetExpression("b*x");
    AddParameters(other, {{"b", 9}});
    other.Compile();
    other.FitDone(TFitResult());
    const TFitRunState before = other.RunState();
    for (const TBytes& content : broken) {
        ReplaceFile(name, content);
        EXPECT_EQ(ThrownText<EStreamError>([&] { other.LoadFromFile(name, true); }),
                  name + " is not a function file. Choose one that was saved as .lfn");
        ASSERT_EQ(other.RunState(), before);
        ASSERT_EQ(other.EvaluateAt(2), 18);
        ASSERT_EQ(other.NTemplates(), 0);
    }
    ReplaceFile(name, bytes);
    other.LoadFromFile(name, true);
    EXPECT_EQ(other.EvaluateAt(2), 8);
    EXPECT_EQ(other.IterMax(), 77);
    EXPECT_THROW(other.LoadFromFile(folder.filePath("none.lfn").toStdString(), true), EFileError);
}

} // namespace
} // namespace lumoplot
