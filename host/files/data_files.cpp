#include "host/files/data_files.h"

#include "data/series/ds_info.h"
#include "dialogs/import/source_files.h"
#include "graph/loading/date_axis.h"
#include "graph/loading/default_look.h"
#include "graph/loading/rows_text.h"
#include "graph/loading/source_loading.h"
#include "sources/report/text_explanation.h"
#include "sources/text/error_columns.h"
#include "support/errors.h"
#include "support/message_sink.h"
#include "support/message_text.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLocale>
#include <algorithm>

namespace lumoplot {
namespace {

QString Translated(const char* text) {
    return QCoreApplication::translate("DataFiles", text);
}

/// Removes a data set again unless it is kept.
class TNewSeries {
public:
    explicit TNewSeries(TxyGraph& graph) : m_graph(graph), m_number(graph.AddSeries()) {}
    ~TNewSeries() {
        if (!m_kept) m_graph.DeleteSeries(m_number);
    }
    TNewSeries(const TNewSeries&) = delete;
    TNewSeries& operator=(const TNewSeries&) = delete;

    TSeries& Series() const { return *m_graph.FindSeries(m_number); }
    void Keep() { m_kept = true; }

private:
    TxyGraph& m_graph;
    int m_number;
    bool m_kept = false;
};

bool IsDataSetFile(const QFileInfo& file) {
    return file.suffix().compare(QLatin1String("lds"), Qt::CaseInsensitive) == 0;
}

bool RepeatsX(const TSeries& series) {
    for (TPointCursor point = series.First(); point; point = point.Next())
        if (const TPointCursor next = point.Next(); next && next.X() == point.X()) return true;
    return false;
}

// A file that was read in part may repeat an X in the rows that were left out.
bool NeedsDuplicates(const TSeries& series) {
    return series.DataSourceInfo().RowSamplingFrequency() > 1 || RepeatsX(series);
}

// As the chooser does by itself. What can not be read has none: loading says why.
TYErrorRule FoundErrorsOf(const TSeries& series) {
    try {
        return FoundYErrorRule(PreviewSource(series, 1).readings.best.format);
    } catch (const ELumoError&) {
        return {};
    }
}

QString SkippedRows(const std::string& fileName, const TTextReport& report) {
    constexpr std::size_t kMostShown = 5;
    const QString name = QFileInfo(QString::fromStdString(fileName)).fileName();
    QString text = QString::fromStdString(ShownLine(Translated("%1: %2 rows could not be read.")
                                                        .arg(name, QLocale().toString(report.rowsSkipped))
                                                        .toStdString()));
    for (std::size_t i = 0; i < std::min(kMostShown, report.messages.size()); ++i)
        text += QLatin1Char('\n') + QString::fromStdString(ShownLine(report.messages[i]));
    if (report.rowsSkipped > static_cast<std::int64_t>(kMostShown)) text += QStringLiteral("\n…");
    return text;
}

} // namespace

TDSInfo TDataFiles::SourceOf(const QString& fileName) {
    const QFileInfo file(fileName);
    TDSInfo source;
    source.SetKind(IsDataSetFile(file) ? TSourceKind::DataFile : TSourceKind::TextFile);
    source.SetSourceName(file.absoluteFilePath().toStdString());
    return source;
}

bool TDataFiles::Add(const QString& fileName, TProgress& progress) {
    return Add({SourceOf(fileName), {}, {}}, progress);
}

bool TDataFiles::Add(const TDataChoice& choice, TProgress& progress) {
    const std::size_t count = std::max<std::size_t>(choice.YColumns.size(), 1);
    for (std::size_t column = 0; column < count; ++column)
        if (!AddColumn(choice, column, progress)) return false;
    return true;
}

bool TDataFiles::AddColumn(const TDataChoice& choice, std::size_t column, TProgress& progress) {
    const QFileInfo file(QString::fromStdString(SheetPlaceOf(choice.Source.SourceName()).file));
    const bool isDataSet = choice.Source.Kind() == TSourceKind::DataFile;
    TNewSeries added(m_graph);
    TSeries& series = added.Series();
    series.SetDuplicatesAllowed(true);
    series.DataSourceInfo() = choice.Source;
    series.SetTextWishes(choice.Wishes);
    std::string name = BaseNameOf(choice.Source.SourceName());
    if (!choice.YColumns.empty()) series.DataSourceInfo().SetYDataColumn(choice.YColumns[column]);
    if (!choice.YErrors.empty()) series.DataSourceInfo().SetYErrorRule(choice.YErrors[column]);
    if (column > 0) name += " " + choice.YColumns[column];
    series.SetSeriesName(name);
    if (choice.YColumns.empty() && choice.Source.Kind() == TSourceKind::TextFile)
        series.DataSourceInfo().SetYErrorRule(FoundErrorsOf(series));
    series.DataSourceInfo().SetNeedsReload(true);
    if (!Load(series, progress)) return false;
    if (!isDataSet) {
        if (!NeedsDuplicates(series)) series.SetDuplicatesAllowed(false);
        ApplyDefaultStyle(series);
    }
    TAppearance& appearance = *m_graph.Appearance();
    if (appearance.GraphTitle().empty()) appearance.SetGraphTitle(file.completeBaseName().toStdString());
    appearance.SetCurrSerIndex(series.SeriesIndex());
    if (m_graph.Series().size() == 2) m_graph.Legend()->Setvisible(true);
    added.Keep();
    return true;
}

bool TDataFiles::Load(TSeries& series, TProgress& progress) {
    TTextReport report;
    m_explanation.clear();
    const bool isNew = series.Count() == 0;
    if (!LoadFromSource(series, progress, {.XTitle = TLoadedXTitle::FromColumn, .Report = &report}))
        return false;
    m_isReadingOpen = report.readings.runnerUp.has_value();
    if (series.DataSourceInfo().Kind() != TSourceKind::DataFile)
        for (const std::string& line : Explain(report).Lines())
            m_explanation += (m_explanation.isEmpty() ? QString() : QStringLiteral("; ")) +
                             QString::fromStdString(ShownLine(line));
    if (isNew && series.DataSourceInfo().Kind() != TSourceKind::DataFile) TakeMixedX(series, report);
    if (series.DataSourceInfo().Kind() == TSourceKind::Database)
        TakeDatabaseReport(series, report);
    else if (report.isOverLimit)
        m_notes.append(QString::fromStdString(SourceFileOf(series) + ": " + report.notes.back()));
    if (!report.messages.empty()) m_notes.append(SkippedRows(SourceFileOf(series), report));
    return true;
}

// The status bar is short, and what is drawn looks as if nothing were wrong.
void TDataFiles::TakeMixedX(const TSeries& series, const TTextReport& report) {
    const std::string mixed = MixedXText(series, report.readings.best.format);
    const QString name = QFileInfo(QString::fromStdString(SourceFileOf(series))).fileName();
    if (!mixed.empty())
        m_notes.append(QString::fromStdString(ShownLine(name.toStdString() + ": " + mixed)) +
                       QLatin1Char('.'));
}

bool TDataFiles::ReloadAll(TProgress& progress) {
    for (const auto& series : m_graph.Series()) {
        // What is followed is read as it comes.
        if (ArePointsMade(*series) || series->DataSourceInfo().FeedId() != 0) continue;
        try {
            if (!Load(*series, progress)) return false;
        } catch (const ELumoError& error) {
            m_notes.append(QString::fromUtf8(error.what()));
        }
    }
    return true;
}

void TDataFiles::TellNotes() {
    for (const QString& note : std::exchange(m_notes, {}))
        ShowMessage(note.toStdString(), TMessageKind::Warning);
}

QString TDataFiles::Summary() const {
    const auto all = m_graph.Series();
    if (all.empty()) return Translated("No data");
    TShownRows rows;
    for (const TSeries* series : all) rows += RowsOf(*series);
    const bool areMade =
        std::ranges::all_of(all, [](const TSeries* series) { return ArePointsMade(*series); });
    const QString sets =
        all.size() == 1 ? Translated("1 data set") : Translated("%1 data sets").arg(all.size());
    if (areMade) return Translated("%1, %2 points").arg(sets, QString::fromStdString(Grouped(rows.Shown)));
    return sets + QStringLiteral(", ") + QString::fromStdString(RowsText(rows));
}

} // namespace lumoplot
