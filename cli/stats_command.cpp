#include "cli/arguments.h"
#include "cli/commands.h"
#include "cli/data_input.h"
#include "cli/database_input.h"
#include "data/analysis/statistics.h"
#include "support/errors.h"

#include <memory>

namespace lumoplot {
namespace {

constexpr std::pair<const char*, double TStatistics::*> kFields[] = {
    {"mean", &TStatistics::Mean},
    {"median", &TStatistics::Median},
    {"mode", &TStatistics::Mode},
    {"sum", &TStatistics::Sum},
    {"variance", &TStatistics::Variance},
    {"skew", &TStatistics::Skew},
    {"kurtosis", &TStatistics::Kurtosis},
    {"quantile20", &TStatistics::Quantile20},
    {"quantile25", &TStatistics::Quantile25},
    {"quantile75", &TStatistics::Quantile75},
    {"quantile80", &TStatistics::Quantile80},
};

TDocument StatisticsDocument(const TStatistics& statistics) {
    TDocument document = {{"count", statistics.Count}};
    for (const auto& [name, field] : kFields) document[name] = statistics.*field;
    document["message"] = statistics.Message;
    return document;
}

struct TStatsCommand {
    TDataOptions data;
    std::optional<double> tolerance;
    TOutputForm form = TOutputForm::Outline;

    void Run() const {
        if (tolerance.value_or(0) < 0) throw EUsage("--tolerance: a number from 0 is needed");
        const TDataInput input(data);
        const double within = tolerance.value_or(input.Series().NumericalTolerance());
        const TStatistics x = ComputeStatistics(
            input.X(), within, input.Series().XSource() ? TValueOrder::Any : TValueOrder::AsWalked);
        const TStatistics y = ComputeStatistics(input.Y(), within);
        for (const TStatistics* statistics : {&x, &y})
            if (statistics->Failed) throw EFileError(ShownSource(data.file) + ": " + statistics->Message);
        Print({{"x", StatisticsDocument(x)}, {"y", StatisticsDocument(y)}}, form);
    }
};

} // namespace

void AddStatsCommand(CLI::App& program) {
    const auto stats = std::make_shared<TStatsCommand>();
    CLI::App& command = *program.add_subcommand("stats", "Show statistics of X and of Y");
    AddDataOptions(command, stats->data);
    AddNumber(command, "--tolerance", stats->tolerance,
              "For the mode: what is so near is equal (the data set's own)");
    AddJson(command, stats->form);
    command.footer("Example:\n  xydata stats run1.csv --columns time,voltage");
    command.callback([stats] { RunOn(stats->data, [&] { stats->Run(); }); });
}

} // namespace lumoplot
