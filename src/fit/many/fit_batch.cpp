#include "fit/many/fit_batch.h"

#include "support/number_text.h"

#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

constexpr int kTableDigits = 8;
constexpr double kNoBatchFigure = std::numeric_limits<double>::quiet_NaN();

TBatchFit FitOne(const TCurFit& definition, const TBatchData& data, TFitStarts starts, TProgress& progress) {
    TBatchFit batch{data.Name, std::make_unique<TCurFit>(), {}};
    batch.Fit->Assign(&definition);
    TFitRun run;
    run.Progress = &progress;
    run.Starts = starts;
    try {
        TakeWeighting(run, *batch.Fit, data.YErrors);
        RunFit(*batch.Fit, data.X, data.Y, run);
    } catch (const ELumoError& error) {
        batch.Error = error.what();
    }
    return batch;
}

/// Passes on whether the user has cancelled; the bar is that of the data sets.
class TDataSetProgress final : public TProgress {
public:
    TDataSetProgress(TProgress& progress, std::int64_t place) : m_progress(progress), m_place(place) {}
    void Begin(const std::string&, std::int64_t, std::int64_t) override {}
    [[nodiscard]] bool StepTo(std::int64_t) override { return m_progress.StepTo(m_place); }

private:
    TProgress& m_progress;
    std::int64_t m_place;
};

std::string TableNumber(double value) {
    return std::isfinite(value) ? FormatGeneral(value, kTableDigits) : std::string();
}

} // namespace

std::vector<TBatchFit> FitEach(const TCurFit& definition, std::span<const TBatchData> data,
                               const TFitRun& run) {
    TSilentProgress silent;
    TProgress& progress = run.Progress ? *run.Progress : silent;
    progress.Begin("Fitting data sets....", 0, static_cast<std::int64_t>(data.size()));
    std::vector<TBatchFit> fits;
    for (std::size_t i = 0; i < data.size(); ++i) {
        TDataSetProgress own(progress, static_cast<std::int64_t>(i));
        TBatchFit fit = FitOne(definition, data[i], run.Starts, own);
        if (fit.Error.empty() && fit.Fit->Result()->End == TFitEnd::Cancelled) break;
        fits.push_back(std::move(fit));
    }
    return fits;
}

std::vector<TParameterColumn> ParameterColumns(std::span<const TBatchFit> fits) {
    std::vector<TParameterColumn> columns;
    if (fits.empty()) return columns;
    for (int i = 1; i <= fits.front().Fit->NParams(); ++i) {
        if (!fits.front().Fit->Parameter(i)->Vary() && !fits.front().Fit->Parameter(i)->IsTied()) continue;
        TParameterColumn column{fits.front().Fit->Parameter(i)->Name(), {}, {}};
        for (const TBatchFit& fit : fits) {
            column.Values.push_back(fit.Error.empty() ? fit.Fit->Parameter(i)->Value() : kNoBatchFigure);
            column.Errors.push_back(fit.Error.empty() ? fit.Fit->Parameter(i)->FinalDeviation : 0);
        }
        columns.push_back(std::move(column));
    }
    return columns;
}

std::vector<std::vector<std::string>> BatchTable(std::span<const TBatchFit> fits) {
    const std::vector<TParameterColumn> columns = ParameterColumns(fits);
    std::vector<std::vector<std::string>> table = {{"Data set"}};
    for (const TParameterColumn& column : columns) {
        table.front().push_back(column.Name);
        table.front().push_back("error of " + column.Name);
    }
    table.front().insert(table.front().end(), {"R²", "Residual deviation", "End"});
    for (std::size_t i = 0; i < fits.size(); ++i) {
        std::vector<std::string> row = {fits[i].Name};
        for (const TParameterColumn& column : columns) {
            row.push_back(TableNumber(column.Values[i]));
            row.push_back(column.Errors[i] > 0 ? TableNumber(column.Errors[i]) : std::string());
        }
        const TFitResult* result = fits[i].Error.empty() ? fits[i].Fit->Result() : nullptr;
        row.push_back(result ? TableNumber(result->RSquared) : "");
        row.push_back(result ? TableNumber(result->ResidualSD) : "");
        row.push_back(result ? TextOf(result->End) : fits[i].Error);
        table.push_back(std::move(row));
    }
    return table;
}

} // namespace lumoplot
