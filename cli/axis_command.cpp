#include "cli/arguments.h"
#include "cli/commands.h"
#include "graph/model/axis_scale.h"

#include <memory>

namespace lumoplot {
namespace {

struct TAxisCommand {
    std::optional<double> from;
    std::optional<double> to;
    std::optional<double> step;
    std::optional<int> minSteps;
    std::optional<int> maxSteps;
    TOutputForm form = TOutputForm::Outline;

    void Run() const {
        TAxisScaleOptions options;
        options.minSteps = minSteps.value_or(options.minSteps);
        options.maxSteps = maxSteps.value_or(options.maxSteps);
        options.autoStepping = !step;
        options.userStep = step.value_or(0);
        const TAxisRange range = AutoRange(*from, *to, options);
        Print({{"min", range.min}, {"max", range.max}, {"step", range.step}}, form);
    }
};

} // namespace

void AddAxisCommand(CLI::App& program) {
    const auto axis = std::make_shared<TAxisCommand>();
    CLI::App& command = *program.add_subcommand("axis", "Show the automatic range and tick step for data");
    AddNumber(command, "FROM", axis->from, "Smallest value of the data")->required();
    AddNumber(command, "TO", axis->to, "Largest value of the data")->required();
    AddCount(command, "--min-steps", axis->minSteps, 1, "The range holds at least so many steps (5)");
    AddCount(command, "--max-steps", axis->maxSteps, 1, "A step of --step that gives more is replaced (50)");
    AddNumber(command, "--step", axis->step, "The tick step to keep where it is usable");
    AddJson(command, axis->form);
    command.footer("Example:\n  xydata axis 0.3 9.7        min: 0, max: 10, step: 1");
    command.callback([axis] { axis->Run(); });
}

} // namespace lumoplot
