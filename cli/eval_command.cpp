#include "cli/arguments.h"
#include "cli/commands.h"
#include "expr/expression_parser.h"
#include "expr/formula_hints.h"
#include "expr/names.h"
#include "support/errors.h"
#include "support/number_text.h"

#include <cmath>
#include <deque>
#include <iostream>
#include <memory>

namespace lumoplot {
namespace {

struct TGrid {
    double from = 0;
    double to = 0;
    int count = 0;

    double At(int index) const {
        if (index == 0) return from;
        if (index == count - 1) return to;
        const double x = from + (to - from) * index / (count - 1);
        return std::isfinite(x) ? x : std::lerp(from, to, static_cast<double>(index) / (count - 1));
    }
};

TGrid GridArgument(const std::string& text) {
    const std::size_t first = text.find(':');
    const std::size_t second = first == std::string::npos ? first : text.find(':', first + 1);
    if (second == std::string::npos) throw EUsage("--x: '" + text + "' is not of the form FROM:TO:COUNT");
    TGrid grid;
    grid.from = NumberArgument("--x", text.substr(0, first));
    grid.to = NumberArgument("--x", text.substr(first + 1, second - first - 1));
    if (!std::isfinite(grid.from) || !std::isfinite(grid.to)) throw EUsage("--x: finite bounds are needed");
    grid.count = TryParseInteger(text.substr(second + 1)).value_or(0);
    if (grid.count < 1) throw EUsage("--x: '" + text.substr(second + 1) + "' is not a count from 1");
    return grid;
}

class TEvalCommand {
public:
    std::string expression;
    std::vector<std::string> lets;
    std::string gridText;
    std::string xName;
    TOutputForm form = TOutputForm::Outline;

    void Run() {
        expression = WithShownSign(expression);
        gridText = WithShownSign(gridText);
        for (const std::string& let : lets) DefineVariable(let);
        if (!xName.empty() && !IsName(xName)) throw EUsage("--xvar: '" + xName + "' is not a name");
        if (!xName.empty() && gridText.empty()) throw EUsage("--xvar is for --x");
        if (expression != "-") return gridText.empty() ? PrintValue() : PrintGrid(GridArgument(gridText));
        if (!gridText.empty() || form == TOutputForm::Json) throw EUsage("--x and --json need one formula");
        EvaluateLines();
    }

private:
    void DefineVariable(const std::string& let) {
        const std::size_t equals = let.find('=');
        const std::string name = let.substr(0, equals);
        if (equals == std::string::npos || !IsName(name))
            throw EUsage("--let: '" + let + "' is not of the form NAME=VALUE");
        m_values.push_back(NumberArgument("--let", let.substr(equals + 1)));
        m_parser.DefineVariable(name, &m_values.back());
    }

    // Throws the error of the parser, with the function that may be meant.
    void Compile(const std::string& formula) {
        try {
            m_parser.AddExpression(formula);
        } catch (const EParserException& error) {
            throw EParserException(WithNameHint(error.what(), formula, m_parser));
        }
    }

    void WarnOfSign() const {
        if (const auto hint = FindSignHint(expression)) PrintMessage(expression + ": " + hint->Text);
    }

    void PrintValue() {
        Compile(expression);
        WarnOfSign();
        const double value = m_parser.Evaluate();
        if (form == TOutputForm::Json)
            Print({{"value", value}}, form);
        else
            Print(FormatShortest(value) + '\n');
    }

    void PrintGrid(const TGrid& grid) {
        double x = 0;
        m_parser.DefineVariable(xName.empty() ? "x" : xName, &x);
        Compile(expression);
        WarnOfSign();
        TDocument xs = TDocument::array();
        TDocument ys = TDocument::array();
        for (int i = 0; i < grid.count; ++i) {
            x = grid.At(i);
            const double at = x; // the formula may assign to its variable
            const double y = m_parser.Evaluate();
            if (form == TOutputForm::Json) {
                xs.push_back(at);
                ys.push_back(y);
            } else {
                Print(FormatShortest(at) + '\t' + FormatShortest(y) + '\n');
            }
        }
        if (form == TOutputForm::Json) Print({{"x", std::move(xs)}, {"y", std::move(ys)}}, form);
    }

    // A program that talks through pipes gets each answer before it asks again.
    void EvaluateLines() {
        std::ios::sync_with_stdio(false);
        for (std::string line; std::getline(std::cin, line);) {
            if (line.ends_with('\r')) line.pop_back();
            Print(Answer(line) + '\n');
            if (std::cin.rdbuf()->in_avail() <= 0) FlushOutput();
        }
    }

    // Formulas are forgotten one by one; the variables that they made stay.
    std::string Answer(const std::string& line) {
        std::string answer;
        try {
            Compile(line);
            answer = FormatShortest(m_parser.Evaluate());
        } catch (const ELumoError& error) {
            answer = std::string("error: ") + error.what();
        }
        m_parser.ClearExpressions();
        return answer;
    }

    TExpressionParser m_parser;
    std::deque<double> m_values; ///< bound to the parser, so they stay where they are
};

} // namespace

void AddEvalCommand(CLI::App& program) {
    const auto eval = std::make_shared<TEvalCommand>();
    CLI::App& command = *program.add_subcommand("eval", "Evaluate a formula");
    command.add_option("EXPR", eval->expression, "The formula, or - for formulas from standard input")
        ->required();
    command.add_option("--let", eval->lets, "Give a variable a value (repeatable)")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    command.add_option("--x", eval->gridText, "Evaluate at COUNT even x from FROM to TO")
        ->type_name("FROM:TO:COUNT");
    command.add_option("--xvar", eval->xName, "Name of the variable of --x (x)")->type_name("NAME");
    AddJson(command, eval->form);
    command.footer(
        "Prints the value, or a line with x and the value for each x. Formulas from standard input\n"
        "stand one a line and share their variables; each gives a line with its value or\n"
        "\"error: MESSAGE\".\n"
        "Example:\n  xydata eval \"a*exp(-t/2)\" --let a=3 --xvar t --x 0:10:101");
    command.callback([eval] { eval->Run(); });
}

} // namespace lumoplot
