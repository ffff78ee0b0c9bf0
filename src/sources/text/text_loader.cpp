#include "sources/text/text_loader.h"

#include "sources/text/text_pass.h"
#include "support/errors.h"

#include <algorithm>

namespace lumoplot {
namespace {

// The part of the whole progress that one of the passes over the file is.
class TPassProgress final : public TProgress {
public:
    TPassProgress(TProgress& progress, std::int64_t offset) : m_progress(progress), m_offset(offset) {}
    void Begin(const std::string&, std::int64_t, std::int64_t) override {}
    [[nodiscard]] bool StepTo(std::int64_t position) override {
        return m_progress.StepTo(m_offset + position);
    }

private:
    TProgress& m_progress;
    std::int64_t m_offset;
};

[[noreturn]] void ThrowNoPoints(const std::string& fileName, const TTextReport& report) {
    if (report.messages.empty()) throw EFileError("File " + fileName + ": the row choice leaves no rows");
    throw EFileError("File " + fileName + " holds no row that can be used: " + report.messages.front());
}

// How many rows the row choice lets through. Only a choice by X needs their values for that.
std::optional<std::int64_t> CountRows(TTextPass& pass, const TDSInfo& info, TProgress& progress) {
    const bool byX = info.RowChoiceMode() == TRowChoice::ByX;
    TTextReport report;
    pass.Run(
        byX ? 1 : TTextPass::kCountOnly, [](auto, auto) {}, progress, report);
    return report.cancelled ? std::nullopt : std::optional(report.rowsChosen);
}

} // namespace

TTextReport LoadText(const TTextSource& source, const TDSInfo& info, const TTextLoadOptions& options,
                     const TPointSink& sink, TProgress& progress) {
    TTextFile file(source);
    TTextReport report;
    report.readings = FindTextFormat(TakeSample(file, info, options.wishes), info, options.wishes);
    const TTextReading& reading = report.readings.best;
    if (!reading.problem.empty()) throw EFileError("File " + source.Name + " " + reading.problem);

    TRowFormulas formulas(options.formulas, reading.format);
    TTextPass pass(file, reading.format, info, formulas);
    const bool toBudget = info.AutoRowHitFreq() && options.budget > 0;
    progress.Begin("Reading " + source.Name, 0, file.Size() * (toBudget ? 2 : 1));
    report.samplingFrequency = info.AutoRowHitFreq() ? 1 : std::max(1, info.RowSamplingFrequency());
    if (toBudget) {
        TPassProgress firstHalf(progress, 0);
        const auto rows = CountRows(pass, info, firstHalf);
        report.cancelled = !rows;
        if (!rows) return report;
        report.samplingFrequency =
            static_cast<int>(std::max<std::int64_t>(1, (*rows + options.budget - 1) / options.budget));
    }
    TPassProgress rest(progress, toBudget ? file.Size() : 0);
    pass.Run(report.samplingFrequency, sink, rest, report);
    if (!report.cancelled && report.rowsUsed == 0) ThrowNoPoints(source.Name, report);
    if (formulas.KeepsY())
        report.yName = reading.format.columns[static_cast<std::size_t>(reading.format.yColumn)].name;
    return report;
}

} // namespace lumoplot
