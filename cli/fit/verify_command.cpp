#include "cli/arguments.h"
#include "cli/commands.h"
#include "cli/fit/procedure_names.h"
#include "fit/many/certified.h"
#include "support/errors.h"
#include "support/number_text.h"

#include <QFile>
#include <algorithm>
#include <cmath>
#include <memory>

namespace lumoplot {
namespace {

constexpr int kIterations = 2000;
constexpr std::size_t kNameWidth = 10;
constexpr double kShownParts = 10; // of a digit

// The problems are a part of the program.
std::string Resource(const QString& name) {
    QFile file(QStringLiteral(":/certified/") + name);
    if (!file.open(QIODevice::ReadOnly)) throw EFileError("Can not open file " + name.toStdString());
    return file.readAll().toStdString();
}

TCertifiedData DataOf(const TCertifiedProblem& problem) {
    const QString name = QString::fromStdString(problem.Name).toLower();
    return ReadCertifiedData(Resource(name + QStringLiteral(".csv")));
}

// Of the worse of the two starts.
double DigitsOf(const TCertifiedProblem& problem, const TCertifiedData& data, TFitProcedure procedure) {
    double digits = RunCertified(problem, data, 0, procedure, kIterations).ParameterDigits;
    digits = std::min(digits, RunCertified(problem, data, 1, procedure, kIterations).ParameterDigits);
    return std::floor(digits * kShownParts) / kShownParts;
}

TDocument Verified() {
    TDocument problems = TDocument::object();
    for (const TCertifiedProblem& problem : ReadCertifiedProblems(Resource(QStringLiteral("problems.tsv")))) {
        const TCertifiedData data = DataOf(problem);
        TDocument digits = TDocument::object();
        for (const std::string name : kProcedures)
            digits[name] = DigitsOf(problem, data, ProcedureArgument(name));
        problems[problem.Name] = digits;
    }
    return problems;
}

std::string Column(const std::string& text, std::size_t width) {
    return std::string(width > text.size() ? width - text.size() : 0, ' ') + text;
}

// One line a problem, one column a procedure.
void PrintTable(const TDocument& problems) {
    std::string text = Column("problem", kNameWidth);
    for (const std::string name : kProcedures) text += "  " + name;
    text += '\n';
    for (const auto& [problem, digits] : problems.items()) {
        text += Column(problem, kNameWidth);
        for (const auto& [procedure, value] : digits.items())
            text += "  " + Column(FormatFixed(value.get<double>(), 1), procedure.size());
        text += '\n';
    }
    Print(text);
}

void Verify(TOutputForm form) {
    const TDocument problems = Verified();
    if (form == TOutputForm::Json) return Print({{"problems", problems}}, form);
    PrintTable(problems);
}

} // namespace

void AddVerifyCommand(CLI::App& program) {
    const auto form = std::make_shared<TOutputForm>(TOutputForm::Outline);
    CLI::App& command = *program.add_subcommand("verify", "Check the fitting procedures on this machine");
    AddJson(command, *form);
    command.footer(
        "Runs fitting problems whose results are certified to eleven digits, each from two starts,\n"
        "and prints how many digits of the worst parameter each procedure reaches.");
    command.callback([form] { Verify(*form); });
}

} // namespace lumoplot
