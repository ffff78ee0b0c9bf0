#include "dialogs/import/text_preview_pane.h"

#include "controls/texts.h"
#include "dialogs/import/text_preview_model.h"
#include "graph/loading/rows_text.h"
#include "sources/report/text_explanation.h"
#include "support/message_text.h"
#include "ui_text_preview_pane.h"

#include <QLocale>
#include <QRegularExpression>

namespace lumoplot {
namespace {

// In characters, and in rows with the caption.
constexpr int kWidestColumn = 24;
constexpr int kLeastRows = 7;

QString NumberOf(std::int64_t count) {
    return QLocale().toString(static_cast<qlonglong>(count));
}

QString Rows(std::int64_t count) {
    return count == 1 ? TTexts::tr("1 row") : TTexts::tr("%1 rows").arg(NumberOf(count));
}

QString ResultText(const TTextReport& report) {
    const bool hasAll = report.rowsUsed == report.rowsChosen;
    const std::int64_t count = report.rowsUsed - report.rowsMerged;
    const QString points = count == 1 ? TTexts::tr("1 point") : TTexts::tr("%1 points").arg(NumberOf(count));
    const QString rows = QString::fromStdString(RowsText({report.rowsUsed, report.rowsChosen}));
    QStringList parts = {hasAll ? TTexts::tr("%1 from %2").arg(points, rows)
                                : points + QLatin1Char(' ') + rows};
    if (report.samplingFrequency > 1)
        parts << TTexts::tr("one of every %1").arg(Rows(report.samplingFrequency));
    if (report.rowsSkipped > 0) parts << TTexts::tr("%1 skipped").arg(Rows(report.rowsSkipped));
    if (report.rowsMerged > 0)
        parts << TTexts::tr("%1 merged into others with the same X").arg(Rows(report.rowsMerged));
    return parts.join(QStringLiteral(", "));
}

} // namespace

TTextPreviewPane::TTextPreviewPane(QWidget* parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::TTextPreviewPane>()), m_model(new TTextPreviewModel(this)) {
    m_ui->setupUi(this);
    m_ui->t_Preview->setModel(m_model);
    QHeaderView* rows = m_ui->t_Preview->verticalHeader();
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->setDefaultSectionSize(fontMetrics().height() + fontMetrics().height() / 3);
    rows->setMinimumWidth(fontMetrics().averageCharWidth() * 5);
    rows->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_ui->t_Preview->setMinimumHeight(rows->defaultSectionSize() * kLeastRows);
    m_ui->t_Preview->horizontalHeader()->setHighlightSections(false);
    connect(m_ui->l_Messages, &QListWidget::currentTextChanged, this, &TTextPreviewPane::GoToRow);
    connect(m_ui->btnRunnerUp, &QPushButton::clicked, this, [this] { Q_EMIT ReadingPicked(m_runnerUp); });
    connect(m_ui->btnFindAgain, &QPushButton::clicked, this, &TTextPreviewPane::FindAgainPicked);
    connect(m_ui->btnKeepAll, &QPushButton::clicked, this, &TTextPreviewPane::KeepAllPicked);
    Clear();
}

TTextPreviewPane::~TTextPreviewPane() = default;

void TTextPreviewPane::Clear() {
    ShowProblem({});
}

void TTextPreviewPane::ShowProblem(const QString& reason) {
    m_model->Show({});
    m_previewMessages.clear();
    m_ui->lblFound->clear();
    m_ui->btnRunnerUp->hide();
    m_ui->btnFindAgain->hide();
    m_ui->btnKeepAll->hide();
    ShowMessages(reason.isEmpty() ? std::vector<std::string>{} : std::vector{reason.toStdString()}, 0);
    ShowResult({});
}

void TTextPreviewPane::ShowPreview(TTextPreview preview, bool isChosen) {
    ShowReadings(preview.readings, isChosen);
    m_ui->btnKeepAll->hide();
    ShowResult({}); // what is shown may be that of another data set
    m_previewMessages = preview.messages;
    m_model->Show(std::move(preview));
    FitColumns();
    ShowMessages(m_previewMessages, 0);
}

void TTextPreviewPane::ShowMoreY(std::vector<int> columns) const {
    m_model->ShowMoreY(std::move(columns));
}

/// A comment in front of the data must not push the other columns out of sight.
void TTextPreviewPane::FitColumns() {
    QTableView& table = *m_ui->t_Preview;
    const int widest = fontMetrics().averageCharWidth() * kWidestColumn;
    table.resizeColumnsToContents();
    for (int column = 0; column < m_model->columnCount(); ++column)
        if (table.columnWidth(column) > widest) table.setColumnWidth(column, widest);
}

void TTextPreviewPane::ShowReadings(const TTextReadings& readings, bool isChosen) {
    const std::string& problem = readings.best.problem;
    const TTextExplanation explanation = Explain(readings);
    const QString found = problem.empty() ? QString::fromStdString(explanation.Found())
                                          : TTexts::tr("Read as %1. The file %2.")
                                                .arg(QString::fromStdString(explanation.reading),
                                                     QString::fromStdString(problem));
    m_ui->lblFound->setText(found);
    m_ui->lblFound->setToolTip(m_ui->lblFound->text());
    m_ui->btnFindAgain->setVisible(isChosen);
    m_ui->btnRunnerUp->setVisible(readings.runnerUp.has_value());
    if (!readings.runnerUp) return;
    m_runnerUp = readings.runnerUp->format;
    m_ui->btnRunnerUp->setText(TTexts::tr("Also fits: %1").arg(QString::fromStdString(explanation.other)));
    m_ui->btnRunnerUp->setToolTip(
        TTexts::tr("Read the file as %1").arg(QString::fromStdString(Describe(m_runnerUp))));
}

void TTextPreviewPane::ShowMessages(const std::vector<std::string>& messages, std::int64_t skipped) {
    m_ui->l_Messages->clear();
    for (const std::string& message : messages)
        m_ui->l_Messages->addItem(QString::fromStdString(ShownLine(message)));
    const auto shown = static_cast<std::int64_t>(messages.size());
    if (skipped > shown) m_ui->l_Messages->addItem(TTexts::tr("and %1 more").arg(NumberOf(skipped - shown)));
    m_ui->l_Messages->setVisible(shown > 0);
}

void TTextPreviewPane::ShowResult(const QString& text) {
    m_ui->lblResult->setText(text);
    m_ui->lblResult->setVisible(!text.isEmpty());
}

/// Shows the row that a message is about.
void TTextPreviewPane::GoToRow(const QString& message) {
    static const QRegularExpression kRow(QStringLiteral("^row (\\d+): "));
    const qlonglong row = kRow.match(message).captured(1).toLongLong();
    if (row < 1) return;
    const int index = m_model->IndexOf(row);
    if (index >= 0)
        SelectRow(index);
    else
        Q_EMIT RowWanted(row);
}

void TTextPreviewPane::SelectRow(int index) {
    m_ui->t_Preview->selectRow(index);
    m_ui->t_Preview->scrollTo(m_model->index(index, 0), QAbstractItemView::PositionAtCenter);
}

void TTextPreviewPane::ShowRowsAround(TTextPreview preview, std::int64_t row) {
    m_model->Show(std::move(preview));
    FitColumns();
    if (const int index = m_model->IndexOf(row); index >= 0) SelectRow(index);
}

void TTextPreviewPane::ShowReport(const TTextReport& report) {
    ShowResult(ResultText(report) + QLatin1Char('.'));
    m_ui->btnKeepAll->setVisible(report.rowsMerged > 0);
    std::vector<std::string> messages = report.notes;
    messages.insert(messages.end(), report.messages.begin(), report.messages.end());
    ShowMessages(messages, report.rowsSkipped + static_cast<std::int64_t>(report.notes.size()));
}

void TTextPreviewPane::ShowNotLoaded() {
    m_ui->btnKeepAll->hide();
    ShowResult(TTexts::tr("Changed since the points were loaded: they are loaded again by Reload, "
                          "Preview and OK."));
}

} // namespace lumoplot
