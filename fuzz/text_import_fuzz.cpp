// Any text is read or refused with a message, and of what is read every chosen row is a point or told.
#include "sources/report/text_explanation.h"
#include "sources/text/loading/text_preview.h"
#include "support/errors.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace {

using namespace lumoplot;

void Require(bool condition) {
    if (!condition) std::abort();
}

// The last byte chooses what a user has said beforehand.
TDSInfo InfoOf(std::uint8_t choice) {
    TDSInfo info;
    if (choice % 16 == 1) info.SetDivideTextByWidth(true);
    if (choice % 16 == 2) info.SetTextSeparators(";");
    if (choice % 16 == 3) info.SetFileHasHeaders(choice / 16);
    if (choice % 16 == 4) info.SetXDataColumn("2");
    if (choice % 16 == 5) info.SetRowChoiceMode(TRowChoice::ByX);
    return info;
}

TTextReport Load(const TTextSource& source, const TDSInfo& info, const TTextWishes& wishes, int budget) {
    std::int64_t points = 0;
    TTextLoadOptions options;
    options.wishes = wishes;
    options.budget = budget;
    options.restart = [&points] { points = 0; };
    const auto sink = [&points](std::span<const double> x, std::span<const double>, std::span<const double>) {
        for (std::size_t i = 0; i < x.size(); ++i) Require(std::isfinite(x[i]));
        points += static_cast<std::int64_t>(x.size());
    };
    TSilentProgress progress;
    TTextReport report = LoadText(source, info, options, sink, progress);
    Require(report.rowsUsed == points && report.rowsUsed > 0);
    if (info.RowChoiceMode() == TRowChoice::All && report.samplingFrequency == 1)
        Require(report.rowsChosen == report.rowsUsed + report.rowsSkipped ||
                report.readings.best.format.midnight == TMidnight::RunsOn);
    Require(!Explain(report).Lines().empty());
    return report;
}

void Preview(const TTextSource& source, const TDSInfo& info) {
    constexpr int kMostRows = 20;
    Require(PreviewText(source, info, kMostRows).rows.size() <= kMostRows);
}

} // namespace

// Detection takes most of the time: what repeats it is done for some of the inputs only.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const std::uint8_t choice = data[size - 1];
    const std::uint8_t extra = data[size - 2];
    const TTextSource source("text", std::string(reinterpret_cast<const char*>(data), size - 1));
    TDSInfo info = InfoOf(choice);
    TTextWishes wishes;
    try {
        if (extra % 8 == 1) Preview(source, info);
        const TTextReport report = Load(source, info, wishes, choice & 0x40 ? 5 : 0);
        if (extra % 4 != 1 || !report.readings.runnerUp) return 0;
        KeepReading(report.readings.runnerUp->format, info, wishes);
        Load(source, info, wishes, 0);
    } catch (const ELumoError&) {
        // What can not be read is told.
    }
    return 0;
}
