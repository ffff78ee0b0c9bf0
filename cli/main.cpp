// xydata: what the dialogs do, for scripts. Exit status: 0 done, 1 the work failed, 2 wrong usage.
#include "cli/arguments.h"
#include "cli/commands.h"
#include "cli/database_input.h"
#include "support/message_sink.h"

#include <QString>
#include <algorithm>

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#include <windows.h>
// Wants windows.h before it.
#include <shellapi.h>
#endif

namespace {

using namespace lumoplot;

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

/// In the order in which --help lists them.
constexpr void (*kCommands[])(CLI::App&) = {
    &AddInfoCommand,      &AddConvertCommand, &AddRenderCommand, &AddEvalCommand,   &AddStatsCommand,
    &AddRegressCommand,   &AddFitCommand,     &AddFitAllCommand, &AddVerifyCommand, &AddFilterCommand,
    &AddTransformCommand, &AddPeaksCommand,   &AddAxisCommand};

/// Messages of the model go to standard error; there is nobody to answer a question.
class TStandardErrorSink final : public TMessageSink {
public:
    void Show(TMessageKind, const std::string& text) override { PrintMessage(text); }
    bool Ask(TMessageKind, const std::string& text) override {
        PrintMessage(text);
        return false;
    }
};

bool TakesSignedValues(const std::string& command) {
    return command == "axis" || command == "eval" || command == "fit";
}

#if defined(_WIN32)
// Scripts get the same bytes as everywhere, and a console shows them as what they are.
void SetUpOutput() {
    for (std::FILE* stream : {stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
}

// What main is given has lost what the code page of the system lacks.
std::vector<std::string> Arguments(int, char**) {
    int count = 0;
    wchar_t** values = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) arguments.push_back(QString::fromWCharArray(values[i]).toStdString());
    LocalFree(values);
    return arguments;
}
#else
void SetUpOutput() {
}

std::vector<std::string> Arguments(int count, char** values) {
    return {values + std::min(count, 1), values + count};
}
#endif

// The arguments behind the program's name, as UTF-8 and last first, as the parser takes them.
std::vector<std::string> ReversedArguments(int count, char** values) {
    std::vector<std::string> arguments = Arguments(count, values);
    const bool takesSigned = !arguments.empty() && TakesSignedValues(arguments[0]);
    for (std::size_t i = 1; takesSigned && i < arguments.size(); ++i)
        arguments[i] = WithHiddenSign(arguments[i]);
    PutConnectionFirst(arguments);
    std::reverse(arguments.begin(), arguments.end());
    return arguments;
}

void Describe(CLI::App& program) {
    program.description(
        "Works on graph files (.ltp), data sets (.lds), function files (.lfn) and text files\n"
        "without opening a window.");
    program.require_subcommand(1);
    program.set_version_flag("--version", std::string("xydata ") + LUMOPLOT_VERSION);
    program.get_formatter()->column_width(34);
    for (const char* label : {"TEXT", "REQUIRED"}) program.get_formatter()->label(label, "");
    program.get_formatter()->label("SUBCOMMAND", "COMMAND …");
    program.get_formatter()->label("Positionals", "Arguments");
    program.footer("xydata COMMAND --help shows a command's arguments.\n"
                   "Exit status: 0 done, 1 the work failed, 2 wrong usage.");
}

std::string UsageMessage(const CLI::App& program, const CLI::ParseError& error) {
    const auto commands = program.get_subcommands();
    const std::string command = commands.empty() ? "" : ' ' + commands.front()->get_name();
    return std::string(error.what()) + " (see xydata" + command + " --help)";
}

void CheckCommand(const CLI::App& program, const std::string& name) {
    const auto commands = program.get_subcommands([&](const CLI::App* c) { return c->get_name() == name; });
    if (commands.empty()) throw EUsage("there is no command '" + name + "'");
}

void Run(CLI::App& program, std::vector<std::string> arguments) {
    if (arguments.empty()) throw EUsage("a command is needed");
    if (!arguments.back().starts_with('-')) CheckCommand(program, arguments.back());
    try {
        program.parse(std::move(arguments));
    } catch (const CLI::Success& wish) {
        program.exit(wish);
    }
    FlushOutput();
}

} // namespace

int main(int count, char** values) {
    SetUpOutput();
    TStandardErrorSink sink;
    InstallMessageSink(&sink);
    CLI::App program("", "xydata");
    Describe(program);
    for (const auto add : kCommands) add(program);
    for (CLI::App* command : program.get_subcommands({})) command->group("Commands");
    try {
        Run(program, ReversedArguments(count, values));
        return 0;
    } catch (const CLI::ParseError& error) {
        PrintMessage(UsageMessage(program, error));
        return kWrongUsage;
    } catch (const std::bad_alloc&) {
        PrintMessage("Out of memory");
    } catch (const std::exception& error) {
        PrintMessage(error.what());
    }
    return kFailed;
}
