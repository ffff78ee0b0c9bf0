#include "cli/arguments.h"
#include "cli/commands.h"
#include "cli/data_input.h"
#include "data/filter/band_filter.h"
#include "support/errors.h"

#include <memory>

namespace lumoplot {
namespace {

struct TFilterCommand {
    TDataOptions data;
    std::optional<double> low;
    std::optional<double> high;
    std::optional<int> every;
    std::optional<int> width;
    std::optional<double> zero;
    bool pass = false;
    bool normalize = true;
    TOutputForm form = TOutputForm::Outline;

    void Run() const {
        const TDataInput input(data);
        TSilentProgress progress;
        if (!input.YErrors().empty()) PrintMessage("the filtered points have no errors of Y");
        const TFilteredPoints result = FilterBand(input.Series(), Settings(), progress);
        if (result.Outcome != TFilterOutcome::Filtered)
            throw ELumoError("Fail to Apply Filter: there is no complete block of points, no spread in X, or "
                             "no sum to normalize by");
        if (result.Points.IsEmpty()) PrintMessage("the response is wider than the data: no points are left");
        PrintPoints(result.Points);
    }

private:
    TBandFilterSettings Settings() const {
        TBandFilterSettings settings;
        settings.LowFreq = *low;
        settings.HighFreq = *high;
        settings.FilterType = pass ? TFilterType::BandPass : TFilterType::BandStop;
        settings.Normalize = normalize;
        settings.NormZero = zero.value_or(settings.NormZero);
        settings.CountEvery = every.value_or(settings.CountEvery);
        settings.ResponseWidth = width.value_or(settings.ResponseWidth);
        return settings;
    }

    void PrintPoints(const TPointChain& points) const {
        std::vector<double> x;
        std::vector<double> y;
        for (std::size_t i = 0; i < points.BlockCount(); ++i) {
            const TPointSpans block = points.Block(i);
            x.insert(x.end(), block.X.begin(), block.X.end());
            y.insert(y.end(), block.Y.begin(), block.Y.end());
        }
        if (form == TOutputForm::Json) return Print({{"x", x}, {"y", y}}, form);
        Print(ColumnsText({x, y}));
    }
};

} // namespace

void AddFilterCommand(CLI::App& program) {
    const auto filter = std::make_shared<TFilterCommand>();
    CLI::App& command = *program.add_subcommand("filter", "Remove or keep a band of frequencies");
    AddDataOptions(command, filter->data);
    // Here a count of points in place of the one of text rows.
    command.remove_option(command.get_option("--every"));
    AddNumber(command, "--low", filter->low, "Where the band begins, in periods per unit of X")->required();
    AddNumber(command, "--high", filter->high, "Where it ends")->required();
    command.add_flag("--pass", filter->pass, "Keep the band instead of removing it");
    AddCount(command, "--every", filter->every, 1, "Points that are averaged into one sample (5)");
    AddCount(command, "--width", filter->width, 1, "Samples on each side of the response's centre (5)");
    AddNumber(command, "--zero", filter->zero, "The zero that sums are taken about (0)");
    command.add_flag_function(
        "--no-normalize", [filter](std::int64_t) { filter->normalize = false; },
        "Leave the sum of the output as it is");
    AddJson(command, filter->form);
    command.footer(
        "Prints a line with x and y for each filtered point. The baseline of the data set is\n"
        "subtracted, and --width samples at each end are lost. docs/filtering.md has the formulas.");
    command.callback([filter] { RunOn(filter->data, [&] { filter->Run(); }); });
}

} // namespace lumoplot
