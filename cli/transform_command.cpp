#include "cli/arguments.h"
#include "cli/commands.h"
#include "cli/data_input.h"
#include "data/transform/peaks.h"
#include "data/transform/transform.h"
#include "support/number_text.h"

#include <map>
#include <memory>

namespace lumoplot {
namespace {

struct TTransformCommand {
    TDataOptions data;
    std::string kind;
    std::optional<double> first;
    std::optional<double> second;
    TOutputForm form = TOutputForm::Outline;

    void Run() const {
        const TDataInput input(data);
        const TTransformKind wantedKind = kKinds.at(kind);
        const bool isScale = wantedKind == TTransformKind::Scale;
        const bool isNormalise = wantedKind == TTransformKind::Normalise;
        const TTransform wanted{wantedKind, first.value_or(isScale ? 1 : 0),
                                second.value_or(isScale || isNormalise ? 1 : 0)};
        const TCurveValues result = Transformed({input.X(), input.CorrectedY(), input.YErrors()}, wanted);
        const bool hasErrors = !result.YErrors.empty();
        if (!input.YErrors().empty() && !hasErrors)
            PrintMessage("the new points have no errors of Y: their Y depend on each other");
        if (form == TOutputForm::Json) {
            TDocument document = {{"x", result.X}, {"y", result.Y}};
            if (hasErrors) document["y_error"] = result.YErrors;
            return Print(document, form);
        }
        Print(hasErrors ? ColumnsText({result.X, result.Y, result.YErrors})
                        : ColumnsText({result.X, result.Y}));
    }

    static const std::map<std::string, TTransformKind> kKinds;
};

const std::map<std::string, TTransformKind> TTransformCommand::kKinds = {
    {"shift", TTransformKind::Shift},           {"scale", TTransformKind::Scale},
    {"normalise", TTransformKind::Normalise},   {"cut", TTransformKind::CutRange},
    {"resample", TTransformKind::Resample},     {"average", TTransformKind::Average},
    {"smooth", TTransformKind::SavitzkyGolay},  {"median", TTransformKind::RunningMedian},
    {"derivative", TTransformKind::Derivative}, {"integral", TTransformKind::Integral}};

constexpr double kUsualPart = 0.05;

struct TPeaksCommand {
    TDataOptions data;
    std::optional<double> part;
    TOutputForm form = TOutputForm::Outline;

    void Run() const {
        const TDataInput input(data);
        std::vector<double> x, height, width, area;
        const double least = part.value_or(kUsualPart);
        const std::vector<TPeak> peaks = FindPeaks({input.X(), input.CorrectedY()}, least);
        if (peaks.empty())
            PrintMessage(data.file + ": no peak rises by " + FormatGeneral(100 * least, 6) +
                         " % of the range of Y; a smaller --part finds smaller ones");
        for (const TPeak& peak : peaks) {
            x.push_back(peak.Position);
            height.push_back(peak.Height);
            width.push_back(peak.Width);
            area.push_back(peak.Area);
        }
        if (form == TOutputForm::Json)
            return Print({{"x", x}, {"height", height}, {"width", width}, {"area", area}}, form);
        Print(ColumnsText({x, height, width, area}));
    }
};

} // namespace

void AddTransformCommand(CLI::App& program) {
    const auto transform = std::make_shared<TTransformCommand>();
    CLI::App& command =
        *program.add_subcommand("transform", "Shift, scale, smooth, differentiate, integrate …");
    AddDataOptions(command, transform->data);
    command.add_option("--by", transform->kind, "What to work out")
        ->required()
        ->check(CLI::IsMember(TTransformCommand::kKinds));
    AddNumber(command, "--first", transform->first, "The first number that --by needs");
    AddNumber(command, "--second", transform->second, "The second one");
    AddJson(command, transform->form);
    command.footer(
        "The numbers are, for shift and scale: for X, for Y; normalise: the smallest and the largest Y;\n"
        "cut and integral: from X, to X; resample: points; average and median: neighbours;\n"
        "smooth: neighbours (odd), degree. Prints a line with x and y for each point, and with the\n"
        "error of y where there are errors that go along. The baseline of the data set is subtracted first. "
        "docs/transform.md has the formulas.");
    command.callback([transform] { RunOn(transform->data, [&] { transform->Run(); }); });
}

void AddPeaksCommand(CLI::App& program) {
    const auto peaks = std::make_shared<TPeaksCommand>();
    CLI::App& command = *program.add_subcommand("peaks", "Find peaks");
    AddDataOptions(command, peaks->data);
    AddNumber(command, "--part", peaks->part, "The least rise of a peak, as a part of the range of Y (0.05)");
    AddJson(command, peaks->form);
    command.footer("Prints a line with x, height, width at half of its rise and area for each peak.\n"
                   "docs/transform.md says how they are found.");
    command.callback([peaks] { RunOn(peaks->data, [&] { peaks->Run(); }); });
}

} // namespace lumoplot
