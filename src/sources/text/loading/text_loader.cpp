#include "sources/text/loading/text_loader.h"

#include "sources/text/loading/text_pass.h"
#include "sources/text/text_values.h"
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

// Ends the reading, too, when there are more rows than wanted.
class TLimitedProgress final : public TProgress {
public:
    TLimitedProgress(TProgress& progress, std::int64_t limit, TTextReport& report)
        : m_progress(progress), m_limit(limit), m_report(report) {}
    void Begin(const std::string&, std::int64_t, std::int64_t) override {}
    [[nodiscard]] bool StepTo(std::int64_t position) override {
        m_report.isOverLimit = m_limit > 0 && m_report.rowsChosen / m_report.samplingFrequency > m_limit;
        return !m_report.isOverLimit && m_progress.StepTo(position);
    }

private:
    TProgress& m_progress;
    std::int64_t m_limit;
    TTextReport& m_report;
};

[[noreturn]] void ThrowNoPoints(const std::string& fileName, const TTextReport& report) {
    if (report.messages.empty()) throw EFileError("File " + fileName + ": the row choice leaves no rows");
    throw EFileError("File " + fileName + " holds no row that can be used: " + report.messages.front());
}

// How many rows the row choice lets through. Only a choice by X needs their values for that.
std::optional<std::int64_t> CountRows(TTextPass& pass, TProgress& progress) {
    TTextReport report;
    pass.Run(
        pass.ReadsEachRow() ? 1 : TTextPass::kCountOnly, [](auto, auto, auto) {}, progress, report);
    return report.cancelled ? std::nullopt : std::optional(report.rowsChosen);
}

std::string WiderText(const TTextReport& report) {
    const std::string text =
        "row " + std::to_string(report.firstWider) + ": more cells than there are columns";
    if (report.rowsWider == 1) return text;
    const std::string others = std::to_string(report.rowsWider - 1);
    return text + ", as in " + others + (report.rowsWider == 2 ? " other row" : " other rows");
}

class TTextLoad {
public:
    TTextLoad(TTextFile& file, const TDSInfo& info, const TTextLoadOptions& options, const TPointSink& sink,
              TProgress& progress)
        : m_file(file), m_info(info), m_options(options), m_sink(sink), m_progress(progress) {}

    TTextReport Run() {
        TTextSample sample = TakeSample(m_file, m_info, m_options.wishes);
        TTextReport report = Read(FindTextFormat(sample, m_info, m_options.wishes));
        if (report.cancelled || report.oddRows.empty() || !m_options.restart) return Checked(report);
        sample.odd = report.oddRows;
        TTextReadings again = FindTextFormat(sample, m_info, m_options.wishes);
        if (!IsBetter(again.best.format, report)) return Checked(report);
        m_options.restart();
        const std::string reason = report.messages.empty() ? "" : ": " + report.messages.front();
        const TTextFormat first = report.readings.best.format;
        report = Read(std::move(again));
        if (!report.readings.runnerUp) report.readings.runnerUp = TTextReading{first, 0.5, {}};
        report.notes.push_back("first read as " + Describe(first) + ", then as a whole" + reason);
        return Checked(report);
    }

private:
    // One reading of the whole file.
    TTextReport Read(TTextReadings readings) {
        TTextReport report;
        report.readings = std::move(readings);
        const TTextReading& reading = report.readings.best;
        if (!reading.problem.empty()) throw EFileError("File " + m_file.Name() + " " + reading.problem);
        TRowFormulas formulas(m_options.formulas, reading.format);
        TTextPass pass(m_file, reading.format, m_info, formulas);
        const bool toBudget = m_info.AutoRowHitFreq() && m_options.budget > 0;
        m_progress.Begin("Reading " + m_file.Name(), 0, m_file.Size() * (toBudget ? 2 : 1));
        report.samplingFrequency = m_info.AutoRowHitFreq() ? 1 : std::max(1, m_info.RowSamplingFrequency());
        if (toBudget) {
            TPassProgress firstHalf(m_progress, 0);
            const auto rows = CountRows(pass, firstHalf);
            report.cancelled = !rows;
            if (!rows) return report;
            report.samplingFrequency = static_cast<int>(
                std::max<std::int64_t>(1, (*rows + m_options.budget - 1) / m_options.budget));
        }
        TPassProgress rest(m_progress, toBudget ? m_file.Size() : 0);
        TLimitedProgress limited(rest, m_options.rowLimit, report);
        pass.Run(report.samplingFrequency, m_sink, limited, report);
        if (report.rowsWithoutYError > 0)
            report.notes.push_back(
                std::to_string(report.rowsWithoutYError) + " rows have no number above 0 in column " +
                ColumnText(reading.format, reading.format.yErrorColumn) + " and no error of Y");
        if (report.rowsWider > 0) report.notes.push_back(WiderText(report));
        if (formulas.KeepsY())
            report.yName = reading.format.columns[static_cast<std::size_t>(reading.format.yColumn)].name;
        return report;
    }

    // The other reading understands most of the rows that this one did not.
    bool IsBetter(const TTextFormat& other, const TTextReport& report) const {
        const TTextFormat& first = report.readings.best.format;
        if (other.decimalSign == first.decimalSign && other.dateOrder == first.dateOrder &&
            other.shortTimes == first.shortTimes && other.fields == first.fields &&
            other.separators == first.separators && other.quotes == first.quotes)
            return false;
        // Other columns of the same table are not another understanding of the row.
        const bool isSameTable = other.separators == first.separators && other.quotes == first.quotes &&
                                 other.fields == first.fields;
        if (isSameTable && (other.xColumn != first.xColumn || other.yColumn != first.yColumn)) return false;
        return CountRead(other, report.oddRows) > CountRead(first, report.oddRows);
    }

    static std::size_t CountRead(const TTextFormat& format, const std::string& rows) {
        const TRowSplitter splitter(format);
        const TRowValues values(format);
        std::vector<TTextCell> cells;
        std::size_t count = 0;
        const char* end = rows.data() + rows.size();
        for (const char* text = rows.data(); text < end;) {
            const TTextRow row = splitter.Split(text, end, TTextEnd::File, cells);
            double x = 0;
            double y = 0;
            TRowProblem problem;
            if (row.kind == TRowKind::Data && values.ReadX(cells, 1, x, problem) &&
                values.ReadY(cells, y, problem))
                ++count;
            text = row.next;
        }
        return count;
    }

    TTextReport& Checked(TTextReport& report) const {
        if (!report.cancelled && report.rowsUsed == 0) ThrowNoPoints(m_file.Name(), report);
        return report;
    }

    TTextFile& m_file;
    const TDSInfo& m_info;
    const TTextLoadOptions& m_options;
    const TPointSink& m_sink;
    TProgress& m_progress;
};

} // namespace

TTextReport LoadText(const TTextSource& source, const TDSInfo& info, const TTextLoadOptions& options,
                     const TPointSink& sink, TProgress& progress) {
    TTextFile file(source);
    return TTextLoad(file, info, options, sink, progress).Run();
}

} // namespace lumoplot
