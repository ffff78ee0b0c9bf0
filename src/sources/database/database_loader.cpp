#include "sources/database/database_loader.h"

#include "data/series/y_error_rule.h"
#include "sources/database/connection/password_asker.h"
#include "sources/database/row_reader.h"
#include "sources/database/row_stream.h"
#include "sources/database/sql_text.h"
#include "support/errors.h"
#include "support/update_hold.h"

#include <QFileInfo>
#include <memory>

namespace lumoplot {
namespace {

using namespace std::chrono_literals;

constexpr auto kStep = 40ms; // between two looks at whether the user has cancelled

// The thread that reads is given time to end; one that a server holds up goes on alone.
constexpr auto kPatience = 50ms;

// The thread that reads, and what it shares with this one.
class TReadingThread {
public:
    explicit TReadingThread(const TRowRequest& request)
        : m_stream(std::make_shared<TRowStream>()), m_result(std::make_shared<TTextReport>()) {
        m_thread = std::thread([stream = m_stream, result = m_result, request] {
            stream->Run([&] { *result = ReadRows(request, *stream); });
        });
    }

    ~TReadingThread() {
        if (!m_thread.joinable()) return;
        m_stream->Stop();
        for (auto waited = 0ms; waited < kPatience && !m_stream->IsDone(); waited += kPatience / 5)
            m_stream->Take(kPatience / 5);
        m_stream->IsDone() ? m_thread.join() : m_thread.detach();
    }
    TReadingThread(const TReadingThread&) = delete;
    TReadingThread& operator=(const TReadingThread&) = delete;

    TRowStream& Stream() { return *m_stream; }
    TTextReport Result() {
        m_thread.join();
        m_stream->Rethrow();
        return std::move(*m_result);
    }

private:
    std::shared_ptr<TRowStream> m_stream;
    std::shared_ptr<TTextReport> m_result;
    std::thread m_thread;
};

// False when the user cancelled.
bool TakePoints(TReadingThread& reading, TPointChain& points, const TMergeRule& rule, const std::string& what,
                TProgress& progress) {
    std::int64_t rows = 0;
    std::int64_t expected = 0;
    progress.Begin("Reading " + what, 0, 1);
    while (!reading.Stream().IsDone()) {
        if (const std::int64_t found = reading.Stream().Expected(); found != expected) {
            expected = found;
            progress.Begin("Reading " + what, 0, std::max<std::int64_t>(1, expected));
        }
        if (!progress.StepTo(expected > 0 ? std::min(rows, expected) : 0)) return false;
        const auto block = reading.Stream().Take(kStep);
        if (!block) continue;
        rows = block->rowsSeen;
        if (!points.AddAll(block->x, block->y, rule, block->yErrors))
            throw EFileError(what + ": there are more rows than a data set can have points");
    }
    return true;
}

TTextReport LoadOnce(TDataSeries& series, const std::string& connection, const TTextLoadOptions& options,
                     TProgress& progress) {
    TRowRequest request;
    request.connection = connection;
    request.info = series.DataSourceInfo();
    request.budget = options.budget;
    request.rowLimit = options.rowLimit;
    request.formulas = {series.XColExpr(), series.YColExpr()};
    const std::string what = DatabaseSourceText(connection, request.info);
    TPointChain points;
    TTextReport report;
    {
        TReadingThread reading(request);
        if (!TakePoints(reading, points, series.MergeRule(), what, progress)) {
            report.cancelled = true;
            return report;
        }
        report = reading.Result();
    }
    if (report.isOverLimit) {
        report.cancelled = true;
        return report;
    }
    report.rowsMerged = report.rowsUsed - points.Count();
    if (series.SeriesFlag() && !report.yName.empty()) series.SetSeriesName(report.yName);
    if (series.DataSourceInfo().AutoRowHitFreq())
        series.DataSourceInfo().NoteRowSamplingFrequency(report.samplingFrequency);
    series.DataSourceInfo().SetNeedsReload(false);
    const TUpdateHold hold(series);
    const bool hadErrors = series.SwapPoints(std::move(points)).HasYErrors();
    RenewYErrors(series);
    if (hadErrors && !series.HasYErrors())
        report.notes.push_back("the errors of Y that were there are gone: the source has none");
    return report;
}

} // namespace

std::string DatabaseSourceText(const std::string& connection, const TDSInfo& info) {
    const std::string place = WithoutPassword(connection);
    const std::string name =
        IsServer(connection) ? place : QFileInfo(QString::fromStdString(place)).fileName().toStdString();
    if (!info.Database().query.empty()) return name + ", own SELECT";
    return info.SourceName().empty() ? name : name + ", table " + info.SourceName();
}

TTextReport LoadDatabaseSeries(TDataSeries& series, const std::string& connection,
                               const TTextLoadOptions& options, TProgress& progress) {
    for (;;) {
        try {
            return LoadOnce(series, connection, options, progress);
        } catch (const EPasswordNeeded& error) {
            if (!AskForPassword(connection, error.what())) throw;
        }
    }
}

std::vector<TSqlTable> DatabaseTables(const std::string& connection) {
    return OpenSession(ParseConnection(connection))->Tables();
}

TDatabasePreview PreviewDatabase(const std::string& connection, const TDSInfo& info, int maxRows) {
    const auto session = OpenSession(ParseConnection(connection));
    TDatabasePreview preview;
    preview.table =
        ReadPreview(*session, SourceSql(*session, info), CleanedSql(info.Database().where), maxRows);
    try {
        preview.chosen = ChooseColumns(preview.table.columns, info);
    } catch (const EFileError&) {
        preview.chosen = {}; // the table is shown nevertheless
    }
    return preview;
}

} // namespace lumoplot
