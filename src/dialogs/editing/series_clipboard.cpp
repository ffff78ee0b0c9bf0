#include "dialogs/editing/series_clipboard.h"

#include "graph/file/graph_file.h"
#include "graph/loading/default_look.h"
#include "graph/loading/second_axis.h"
#include "graph/model/axis.h"
#include "graph/model/series_palette.h"
#include "graph/plotted/series_text.h"
#include "sources/text/error_columns.h"
#include "sources/text/loading/series_supplier.h"
#include "support/errors.h"
#include "support/number_text.h"

#include <QMimeData>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>
#include <algorithm>

namespace lumoplot {
namespace {

const QString kWholeForm = QStringLiteral("application/x-lumoplot-dataset");
const QString kTextForm = QStringLiteral("text/plain");
const QString kTableForm = QStringLiteral("text/html");
constexpr const char* kName = "The clipboard";

QString HtmlRow(const QString& line) {
    QString cells;
    for (const QString& cell : line.split(QLatin1Char('\t')))
        cells += QStringLiteral("<td>%1</td>").arg(cell.toHtmlEscaped());
    return QStringLiteral("<tr>%1</tr>\n").arg(cells);
}

QString HtmlTable(const std::string& text) {
    QString rows;
    const QStringList lines = QString::fromStdString(text).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& line : lines) rows += HtmlRow(line);
    return QStringLiteral("<table>\n") + rows + QStringLiteral("</table>");
}

/// Holds the points once and makes the other forms of them on demand.
class TSeriesMime final : public QMimeData {
public:
    explicit TSeriesMime(const TSeries& series) {
        const auto text = SeriesAsText(series, "clipboard.txt");
        m_text.assign(text.begin(), text.end());
        const TBytes bytes = SeriesBytes(series);
        m_whole =
            QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
    }

    QStringList formats() const override { return {kWholeForm, kTableForm, kTextForm}; }
    bool hasFormat(const QString& form) const override { return formats().contains(form); }

protected:
    QVariant retrieveData(const QString& form, QMetaType) const override {
        if (form == kWholeForm) return m_whole;
        if (form == kTableForm) return HtmlTable(m_text);
        return form == kTextForm ? QVariant(QString::fromStdString(m_text)) : QVariant();
    }

private:
    QByteArray m_whole;
    std::string m_text;
};

// The cells of the first table, divided by tabs; empty without one.
std::string FirstTableOf(const QString& html) {
    QTextDocument document;
    document.setHtml(html);
    for (QTextFrame* frame : document.rootFrame()->childFrames()) {
        const auto* table = qobject_cast<QTextTable*>(frame);
        if (!table) continue;
        QString text;
        for (int row = 0; row < table->rows(); ++row)
            for (int column = 0; column < table->columns(); ++column) {
                const QTextTableCell cell = table->cellAt(row, column);
                QTextCursor cursor = cell.firstCursorPosition();
                cursor.setPosition(cell.lastCursorPosition().position(), QTextCursor::KeepAnchor);
                text += cursor.selectedText().simplified() +
                        QLatin1Char(column + 1 < table->columns() ? '\t' : '\n');
            }
        return text.toStdString();
    }
    return {};
}

void ReadText(TSeries& series, const std::string& text) {
    TSilentProgress progress;
    series.SetDuplicatesAllowed(true);
    series.SetSeriesFlag(true);
    series.SetSeriesName("Pasted data");
    const TTextSource source(kName, text);
    const TTextReport report = LoadTextSeries(series, source, {}, progress);
    const TYErrorRule errors = FoundYErrorRule(report.readings.best.format);
    if (errors.Kind == TYErrorKind::Column) {
        series.DataSourceInfo().SetYErrorRule(errors);
        LoadTextSeries(series, source, {}, progress);
    }
    series.DataSourceInfo() = TDSInfo(); // it stands alone
    ApplyDefaultStyle(series);
}

void Read(TSeries& series, const QMimeData& data) {
    if (data.hasFormat(kWholeForm)) {
        const QByteArray whole = data.data(kWholeForm);
        return LoadSeriesFromBytes(series, TBytes(whole.begin(), whole.end()), kName);
    }
    const std::string table = data.hasHtml() ? FirstTableOf(data.html()) : std::string();
    if (table.empty() && !data.hasText()) throw EFileError("There is no data set on the clipboard");
    ReadText(series, table.empty() ? data.text().toStdString() : table);
}

bool IsNameTaken(const TSeries& newOne, const std::string& name) {
    return std::ranges::any_of(newOne.Graph().Series(), [&](const TSeries* series) {
        return series != &newOne && series->SeriesName() == name;
    });
}

/// "Run" beside another "Run" is "Run 2".
void TakeOwnName(TSeries& series) {
    const std::string name = series.SeriesName();
    for (int number = 2; IsNameTaken(series, series.SeriesName()); ++number)
        series.SetSeriesName(name + " " + std::to_string(number));
}

} // namespace

QMimeData* SeriesToMime(const TSeries& series) {
    return new TSeriesMime(series);
}

bool MimeHoldsSeries(const QMimeData& data) {
    return data.hasFormat(kWholeForm) || data.hasHtml() || data.hasText();
}

int AddSeriesFromMime(TxyGraph& graph, const QMimeData& data) {
    const int number = graph.AddSeries();
    try {
        TSeries& pasted = *graph.FindSeries(number);
        Read(pasted, data);
        TakeOwnName(pasted);
        TakeOwnStyle(pasted);
        // As the first one on that axis it switches it on.
        if (pasted.IsOnSecondY() && !graph.YAxis_Second()->ShowAxis()) {
            PutOnYAxis(pasted, TYAxisChoice::Main);
            PutOnYAxis(pasted, TYAxisChoice::Second);
        }
    } catch (...) {
        graph.DeleteSeries(number);
        throw;
    }
    return number;
}

} // namespace lumoplot
