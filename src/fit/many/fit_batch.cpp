#include "fit/many/fit_batch.h"

#include "fit/run/fit_statistics.h"
#include "support/number_text.h"

#include <algorithm>
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

bool HasError(const TBatchFit& fit, std::size_t place) {
    if (!fit.Error.empty() || fit.Fit->Result()->End != TFitEnd::Converged) return false;
    return std::isfinite(fit.Fit->Result()->Errors[place]) && fit.Fit->Result()->Errors[place] > 0;
}

/// Of the parameter at that place among the varied ones.
TParameterAgreement AgreementOf(std::span<const TBatchFit* const> fits, std::size_t place) {
    TParameterAgreement agreement;
    double weights = 0;
    double scatter = 0;
    int count = 0;
    for (const TBatchFit* fit : fits) {
        if (!HasError(*fit, place)) continue;
        const TDBLParameter& parameter = *fit->Fit->Parameter(fit->Fit->Result()->Varied[place]);
        const double error = fit->Fit->Result()->Errors[place];
        const double weight = 1 / (error * error);
        const double offset = parameter.Value() - agreement.Mean;
        scatter += weights / (weights + weight) * (offset / error) * (offset / error);
        weights += weight;
        agreement.Mean += offset * weight / weights;
        agreement.Name = parameter.Name();
        ++count;
    }
    agreement.Error = 1 / std::sqrt(weights);
    agreement.Probability = count > 1 ? ChiSquareProbability(scatter, count - 1) : 0;
    if (count < 2) agreement.Name.clear();
    return agreement;
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

std::vector<TParameterAgreement> AgreementsOf(std::span<const TBatchFit* const> fits) {
    std::vector<TParameterAgreement> agreements;
    const auto fitted =
        std::ranges::find_if(fits, [](const TBatchFit* fit) { return fit->Fit && fit->Fit->Result(); });
    if (fitted == fits.end()) return agreements;
    for (std::size_t place = 0; place < (*fitted)->Fit->Result()->Varied.size(); ++place)
        if (TParameterAgreement agreement = AgreementOf(fits, place); !agreement.Name.empty())
            agreements.push_back(std::move(agreement));
    return agreements;
}

std::string AgreementText(std::span<const TParameterAgreement> agreements) {
    std::vector<std::string> names;
    for (const TParameterAgreement& agreement : agreements)
        if (agreement.Agrees()) names.push_back(agreement.Name);
    if (names.empty()) return {};
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i)
        text += (i == 0 ? "" : i + 1 == names.size() ? " and " : ", ") + names[i];
    return text + (names.size() == 1 ? " is" : " are") + " the same in all data sets within " +
           (names.size() == 1 ? "its" : "their") + " errors: " + (names.size() == 1 ? "it" : "they") +
           " may have one value in common.";
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
