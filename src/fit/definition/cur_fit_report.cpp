// The settings report of a curve fit.
#include "fit/definition/cur_fit.h"

#include "support/number_text.h"

#include <array>

namespace lumoplot {
namespace {

constexpr int kReportDigits = 15;
constexpr std::size_t kShortRule = 31;
constexpr std::size_t kLongRule = 47;
constexpr char kIndent[] = "       ";
constexpr std::array kProcTexts = {"cfp_Powell", "cfp_Simplex", "cfp_ConjGrad", "cfp_Newton"};
constexpr std::array kStatusTexts = {"cf_None", "cf_Function", "cf_FinResult", "cf_EveryStep"};

using TLines = std::vector<std::string>;

std::string TextOf(double value) {
    return FormatGeneral(value, kReportDigits);
}

std::string ChoiceText(const std::array<const char*, 4>& texts, int value) {
    return value >= 0 && value < 4 ? texts[static_cast<std::size_t>(value)] : "Unknown";
}

std::string MarginText(double margin, bool used) {
    return TextOf(margin) + "; used = " + (used ? "Yes" : "No");
}

std::string HeadingOf(const char* kind, int number, const std::string& description) {
    return std::string("*** ") + kind + " # " + std::to_string(number) + " (" + description + ") ***";
}

void AddSettings(TLines& lines, const TCurFit& fit) {
    lines.push_back("Status = " + ChoiceText(kStatusTexts, static_cast<int>(fit.Status())));
    lines.push_back("XVarName = " + fit.XVarName());
    lines.push_back("Expression = " + fit.Expression());
    lines.push_back("NPoints = " + std::to_string(fit.NPoints()));
    lines.push_back("Tolerance = " + TextOf(fit.Tolerance()));
    lines.push_back("ProcType = " + ChoiceText(kProcTexts, static_cast<int>(fit.ProcType())));
    lines.push_back("LeftMargin = " + MarginText(fit.LeftMargin(), fit.UseLeftMargin()));
    lines.push_back("RightMargin = " + MarginText(fit.RightMargin(), fit.UseRightMargin()));
    lines.push_back("IterMax = " + std::to_string(fit.IterMax()));
}

void AddParameters(TLines& lines, const TCurFit& fit) {
    lines.push_back("Number of defined parameters: " + std::to_string(fit.NParams()));
    lines.emplace_back(kShortRule, '_');
    for (int i = 1; i <= fit.NParams(); ++i) {
        const TDBLParameter& parameter = *fit.Parameter(i);
        lines.push_back(HeadingOf("Prm", i, parameter.Description));
        lines.push_back(kIndent + parameter.Name() + " = " + TextOf(parameter.Value()) +
                        (parameter.Units.empty() ? "" : " " + parameter.Units) +
                        (parameter.Vary() ? " -> varied" : "") +
                        (parameter.ShowInLegend ? " -> printed" : ""));
    }
    lines.push_back("***");
}

void AddTemplates(TLines& lines, const TCurFit& fit) {
    if (fit.NTemplates() == 0) return;
    lines.push_back("Number of defined templates: " + std::to_string(fit.NTemplates()));
    lines.emplace_back(kShortRule, '_');
    for (int i = 1; i <= fit.NTemplates(); ++i) {
        const TDBLFunction& function = *fit.Template(i);
        lines.push_back(HeadingOf("Tmpl", i, function.Description));
        lines.push_back(kIndent + function.Name + " = " + function.Text);
    }
}

void AddVariables(TLines& lines, TCurFit& fit) {
    TExprCollection variables(fit.NParams() + 1);
    fit.GetVariables(variables);
    for (int i = 0; i < variables.Count(); ++i)
        lines.push_back("Var # " + std::to_string(i + 1) + ": Name = " + variables.At(i)->Name() +
                        "; Value = " + TextOf(*variables.At(i)->ValuePointer()));
}

} // namespace

std::vector<std::string> TCurFit::SettingsReport() {
    const std::string longRule(kLongRule, '_');
    TryCompile();
    TLines lines = {"   C F   S E T T I N G S", std::string(kShortRule, '_')};
    AddSettings(lines, *this);
    AddParameters(lines, *this);
    AddTemplates(lines, *this);
    lines.insert(lines.end(), {longRule, "G E N E R A T E D   V A R I A B L E S", longRule});
    AddVariables(lines, *this);
    lines.insert(lines.end(), {longRule, "E X P R E S S I O N"});
    if (ExpressionCount() > 0) lines.push_back(ExpressionText(ExpressionCount() - 1));
    return lines;
}

} // namespace lumoplot
