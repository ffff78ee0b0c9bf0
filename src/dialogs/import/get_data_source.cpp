#include "dialogs/import/get_data_source.h"

#include "controls/model_texts.h"
#include "controls/return_key.h"
#include "controls/texts.h"
#include "dialogs/import/column_items.h"
#include "dialogs/import/reading_options.h"
#include "dialogs/import/source_files.h"
#include "dialogs/import/source_reading.h"
#include "dialogs/import/text_preview_pane.h"
#include "dialogs/manual_window.h"
#include "graph/file/graph_file.h"
#include "graph/loading/source_loading.h"
#include "graph/loading/source_rows.h"
#include "graph/model/holder.h"
#include "sources/spreadsheet/sheet_place.h"
#include "sources/text/error_columns.h"
#include "support/errors.h"
#include "support/guard.h"
#include "support/message_text.h"
#include "ui_get_data_source.h"

#include <QDragEnterEvent>
#include <QLocale>
#include <QMimeData>
#include <algorithm>

namespace lumoplot {
namespace {

constexpr int kChooserPreviewRows = 100;
constexpr int kYRowsShown = 4;
constexpr int kKeyRole = Qt::UserRole;
constexpr int kOtherRole = Qt::UserRole + 1;  ///< the column only counts the rows, or holds errors
constexpr int kColumnRole = Qt::UserRole + 2; ///< its number, from 0

/// Of the list of columns with errors; the others keep their column as descriptions do.
const QString kAutoErrors = QStringLiteral("\n");
const QString kNoErrors = QStringLiteral("");

bool HasValues(const TTextColumn& column) {
    return column.kind == TCellKind::Number || column.kind == TCellKind::Date ||
           column.kind == TCellKind::TimeOfDay;
}

} // namespace

TxyGetDataSource::TxyGetDataSource(const TSeries& current, QWidget* parent)
    : TxyGetDataSource(current.Graph(), current.DataSourceInfo(), current.TextWishes(), parent) {
}

TxyGetDataSource::TxyGetDataSource(const TxyGraph& graph, const TDSInfo& source, QWidget* parent)
    : TxyGetDataSource(graph, source, TTextWishes(), parent) {
}

TxyGetDataSource::TxyGetDataSource(const TxyGraph& graph, const TDSInfo& given, const TTextWishes& wishes,
                                   QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::TxyGetDataSource>()), m_graph(std::make_unique<TxyGraph>()),
      m_given(given), m_givenWishes(wishes) {
    m_ui->setupUi(this);
    CloseOnCtrlReturn(*this);
    OfferManual(*this, [] { return QStringLiteral("text-import.md"); });
    m_reading = new TReadingOptions(m_ui->pageText);
    m_preview = new TTextPreviewPane(m_ui->pageText);
    m_ui->textLayout->insertWidget(0, m_reading);
    m_ui->textLayout->addWidget(m_preview, 1);
    OrderTabs();
    m_ui->l_YColumns->setFixedHeight(fontMetrics().lineSpacing() * kYRowsShown + fontMetrics().height());
    m_graph->Holder()->OfferSheets(graph.Holder()->Sheets());
    m_graph->Appearance()->SetDataDirectory(graph.Appearance()->DataDirectory());
    m_series = m_graph->FindSeries(m_graph->AddSeries());
    m_series->DataSourceInfo() = given;
    ConnectControls();
    ConnectReading();
    Guarded([&] { ListSources(graph); });
    SelectSource(m_given.Kind(), QString::fromStdString(m_given.SourceName()));
    const QSize character(fontMetrics().averageCharWidth(), fontMetrics().height());
    m_ui->l_Sources->setMinimumWidth(character.width() * 20);
    setMinimumSize(character.width() * 88, character.height() * 24);
    resize(character.width() * 120, character.height() * 36);
}

TxyGetDataSource::~TxyGetDataSource() = default;

/// As they are read: from the left to the right side, there from top to bottom.
void TxyGetDataSource::OrderTabs() {
    const char* const kNames[] = {
        "btnBrowse",     "cbx_Sheet",   "cbx_Separator", "cbx_DecimalSign", "cbx_DateOrder", "cbx_Encoding",
        "se_HeaderRows", "cbx_XColumn", "l_YColumns",    "btnAllY",         "cbx_YErrors",   "btnRunnerUp",
        "btnFindAgain",  "t_Preview",   "l_Messages",    "btnOk",           "btnCancel"};
    QWidget* last = m_ui->l_Sources;
    for (const char* name : kNames)
        if (auto* next = findChild<QWidget*>(QLatin1String(name))) {
            setTabOrder(last, next);
            last = next;
        }
}

void TxyGetDataSource::ConnectControls() {
    connect(m_ui->l_Sources, &QListWidget::currentItemChanged, this,
            [this](const QListWidgetItem* item) { Guarded([&] { SourcePicked(item); }); });
    connect(m_ui->l_Sources, &QListWidget::itemActivated, this, [this] {
        if (m_ui->btnOk->isEnabled()) accept();
    });
    connect(m_ui->btnBrowse, &QPushButton::clicked, this, [this] { Guarded([&] { Browse(); }); });
    connect(m_ui->cbx_XColumn, &QComboBox::currentIndexChanged, this,
            [this] { Guarded([&] { XColumnPicked(); }); });
    connect(m_ui->l_YColumns, &QListWidget::itemChanged, this,
            [this] { Guarded([&] { YColumnsPicked(); }); });
    connect(m_ui->btnAllY, &QPushButton::clicked, this, [this] { Guarded([&] { CheckAllYColumns(); }); });
    connect(m_ui->cbx_YErrors, &QComboBox::activated, this, [this] {
        Guarded([&] {
            m_yErrors = m_ui->cbx_YErrors->currentData().toString();
            TakeYErrors();
            ShowPreview();
            m_preview->ShowMoreY(CheckedColumns());
        });
    });
    connect(m_ui->btnOk, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_ui->btnCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void TxyGetDataSource::ConnectReading() {
    connect(m_reading, &TReadingOptions::Picked, this, [this] {
        Guarded([&] {
            m_reading->Store(*m_series);
            ShowSource();
        });
    });
    connect(m_reading, &TReadingOptions::SheetPicked, this, [this] { Guarded([&] { PickSheet(); }); });
    connect(m_preview, &TTextPreviewPane::RowWanted, this, [this](qlonglong row) {
        Guarded([&] {
            const qlonglong first = std::max<qlonglong>(1, row - kChooserPreviewRows / 2);
            m_preview->ShowRowsAround(PreviewSourceFrom(*m_series, first, kChooserPreviewRows), row);
        });
    });
    connect(m_preview, &TTextPreviewPane::ReadingPicked, this, [this](const TTextFormat& format) {
        Guarded([&] {
            FixReading(*m_series, format, PreviewSource(*m_series, 1).readings.best.format);
            ShowSource();
        });
    });
    connect(m_preview, &TTextPreviewPane::FindAgainPicked, this, [this] {
        Guarded([&] {
            ForgetReading(*m_series);
            ShowSource();
        });
    });
}

const TDSInfo& TxyGetDataSource::Source() const {
    return m_series->DataSourceInfo();
}

const TTextWishes& TxyGetDataSource::Wishes() const {
    return m_series->TextWishes();
}

std::vector<std::string> TxyGetDataSource::YColumns() const {
    std::vector<std::string> columns;
    for (int i = 0; i < m_ui->l_YColumns->count(); ++i) {
        const QListWidgetItem& item = *m_ui->l_YColumns->item(i);
        if (item.checkState() == Qt::Checked) columns.push_back(item.data(kKeyRole).toString().toStdString());
    }
    return columns;
}

void TxyGetDataSource::SourcePicked(const QListWidgetItem* item) {
    if (!item) return;
    TDSInfo info;
    info.SetKind(static_cast<TSourceKind>(item->data(kKeyRole).toInt()));
    info.SetSourceName(item->data(kKeyRole + 1).toString().toStdString());
    const bool isGiven = info.Kind() == m_given.Kind() && info.SourceName() == m_given.SourceName();
    m_series->DataSourceInfo() = isGiven ? m_given : info;
    m_series->SetTextWishes(isGiven ? m_givenWishes : TTextWishes());
    const TYErrorRule& rule = m_series->DataSourceInfo().YErrorRule();
    m_yErrors = rule.Kind == TYErrorKind::Column            ? QString::fromStdString(rule.Column)
                : isGiven && !m_given.XDataColumn().empty() ? kNoErrors
                                                            : kAutoErrors;
    m_ui->l_YColumns->clear();
    ShowSource();
}

/// Another sheet is another source: nothing of the reading is known of it.
void TxyGetDataSource::PickSheet() {
    TDSInfo info;
    info.SetKind(Source().Kind());
    info.SetSourceName(WithSheet(Source().SourceName(), m_reading->Sheet()));
    m_series->DataSourceInfo() = info;
    m_series->SetTextWishes({});
    m_yErrors = kAutoErrors;
    m_ui->l_YColumns->clear();
    ShowSource();
}

void TxyGetDataSource::ShowSource() {
    m_canBeRead = false;
    const bool isDataFile = Source().Kind() == TSourceKind::DataFile;
    m_ui->stack->setCurrentWidget(isDataFile ? m_ui->pageNotes : m_ui->pageText);
    isDataFile ? ShowDataFile() : ShowText();
    EnableOk();
}

void TxyGetDataSource::ShowText() {
    const auto found = ShowPreview();
    ShowColumns(found ? &*found : nullptr);
    const TYErrorRule before = Source().YErrorRule();
    TakeYErrors();
    if (Source().YErrorRule() != before) ShowPreview();
    m_preview->ShowMoreY(CheckedColumns());
}

/// The format that was found, or nothing when the source can not be read.
std::optional<TTextFormat> TxyGetDataSource::ShowPreview() {
    m_canBeRead = false;
    try {
        TTextPreview preview = PreviewSource(*m_series, kChooserPreviewRows);
        const TTextReading reading = preview.readings.best;
        m_canBeRead = reading.problem.empty();
        m_preview->ShowPreview(std::move(preview), HasFixedReading(*m_series));
        m_reading->Show(*m_series, &reading.format);
        m_found = reading.format;
        return reading.format;
    } catch (const ELumoError& error) {
        m_found.reset();
        m_reading->Show(*m_series, nullptr);
        m_preview->ShowProblem(InLanguage(QString::fromUtf8(error.what())));
        return std::nullopt;
    }
}

/// It is read into a data set of its own, to say what is in it.
void TxyGetDataSource::ShowDataFile() {
    m_ui->l_YColumns->clear();
    const int number = m_graph->AddSeries();
    try {
        TSeries& series = *m_graph->FindSeries(number);
        LoadSeriesFromFile(series, SourceFileOf(*m_series));
        m_canBeRead = true;
        m_ui->lblNotes->setText(
            TTexts::tr("Data set \"%1\" with %2 points.\n\nIt brings all settings of its data "
                       "set: name, style, baseline, regression and fit.")
                .arg(QString::fromStdString(series.SeriesName()), QLocale().toString(series.Count())));
    } catch (const ELumoError& error) {
        m_ui->lblNotes->setText(QString::fromStdString(ShownLine(error.what())));
    }
    m_graph->DeleteSeries(number);
}

void TxyGetDataSource::ShowColumns(const TTextFormat* found) {
    const QSignalBlocker quiet(m_ui->cbx_XColumn);
    QComboBox& box = *m_ui->cbx_XColumn;
    box.clear();
    box.setEnabled(found != nullptr);
    m_ui->l_YColumns->setEnabled(found != nullptr);
    if (found) {
        const QString chosen = QString::fromStdString(Source().XDataColumn());
        const bool isFound = chosen.isEmpty();
        box.addItem(isFound ? TTexts::tr("Auto (%1)").arg(ColumnItemText(*found, found->xColumn))
                            : TTexts::tr("Auto"),
                    QString());
        box.addItem(ColumnItemText(*found, TTextFormat::kRowNumber), QStringLiteral("0"));
        for (int i = 0; i < static_cast<int>(found->columns.size()); ++i)
            box.addItem(ColumnItemText(*found, i), ColumnItemKey(*found, i));
        const bool isRowNumber = found->xColumn == TTextFormat::kRowNumber;
        box.setCurrentIndex(isFound ? 0 : isRowNumber ? 1 : found->xColumn + 2);
    }
    FillYColumns(found);
}

/// The checks stay where the columns do; a list without any gets the column that is read.
void TxyGetDataSource::FillYColumns(const TTextFormat* found) {
    const QSignalBlocker quiet(m_ui->l_YColumns);
    const std::vector<std::string> checked = YColumns();
    m_ui->l_YColumns->clear();
    if (!found) return;
    QListWidgetItem* read = nullptr;
    const std::vector<int> owners = ErrorOwners(*found);
    for (int i = 0; i < static_cast<int>(found->columns.size()); ++i) {
        if (!HasValues(found->columns[static_cast<std::size_t>(i)]) || i == found->xColumn) continue;
        const QString key = ColumnItemKey(*found, i);
        auto* item = new QListWidgetItem(ColumnItemText(*found, i), m_ui->l_YColumns);
        item->setData(kKeyRole, key);
        const TColumnRole role = found->columns[static_cast<std::size_t>(i)].role;
        const bool holdsErrors = owners[static_cast<std::size_t>(i)] >= 0;
        item->setData(kOtherRole, role == TColumnRole::Counter || holdsErrors);
        item->setData(kColumnRole, i);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(std::ranges::count(checked, key.toStdString()) > 0 ? Qt::Checked : Qt::Unchecked);
        if (i == found->yColumn) read = item;
    }
    if (read && YColumns().empty()) read->setCheckState(Qt::Checked);
}

std::vector<int> TxyGetDataSource::CheckedColumns() const {
    std::vector<int> columns;
    for (int i = 0; i < m_ui->l_YColumns->count(); ++i) {
        const QListWidgetItem& item = *m_ui->l_YColumns->item(i);
        if (item.checkState() == Qt::Checked) columns.push_back(item.data(kColumnRole).toInt());
    }
    return columns;
}

/// "Auto" shows what it comes to for the first of the Y columns.
void TxyGetDataSource::FillYErrors() {
    QComboBox& box = *m_ui->cbx_YErrors;
    box.clear();
    box.setEnabled(m_found.has_value());
    if (!m_found) return;
    const std::vector<int> columns = CheckedColumns();
    const int first = columns.empty() ? TTextFormat::kNoColumn : ErrorColumnOf(*m_found, columns.front());
    box.addItem(TTexts::tr("Auto (%1)").arg(first < 0 ? TTexts::tr("none") : ColumnItemText(*m_found, first)),
                kAutoErrors);
    box.addItem(TTexts::tr("None"), kNoErrors);
    for (int i = 0; i < static_cast<int>(m_found->columns.size()); ++i)
        if (m_found->columns[static_cast<std::size_t>(i)].kind == TCellKind::Number && i != m_found->xColumn)
            box.addItem(ColumnItemText(*m_found, i), ColumnItemKey(*m_found, i));
    const int chosen = box.findData(m_yErrors, Qt::UserRole, Qt::MatchFixedString);
    if (chosen < 0) m_yErrors = kNoErrors;
    box.setCurrentIndex(chosen < 0 ? 1 : chosen);
}

TYErrorRule TxyGetDataSource::YErrorRuleOf(int yColumn) const {
    const TYErrorRule& given = m_given.YErrorRule();
    if (m_yErrors == kNoErrors) return given.Kind == TYErrorKind::Column ? TYErrorRule() : given;
    if (m_yErrors != kAutoErrors) return {TYErrorKind::Column, 0, m_yErrors.toStdString()};
    const int column = m_found ? ErrorColumnOf(*m_found, yColumn) : TTextFormat::kNoColumn;
    if (column < 0) return {};
    return {TYErrorKind::Column, 0, ColumnItemKey(*m_found, column).toStdString()};
}

std::vector<TYErrorRule> TxyGetDataSource::YErrorRules() const {
    std::vector<TYErrorRule> rules;
    for (const int column : CheckedColumns()) rules.push_back(YErrorRuleOf(column));
    return rules;
}

/// Into the description, for the first of the Y columns.
void TxyGetDataSource::TakeYErrors() {
    FillYErrors();
    const std::vector<TYErrorRule> rules = YErrorRules();
    if (!rules.empty()) m_series->DataSourceInfo().SetYErrorRule(rules.front());
}

void TxyGetDataSource::XColumnPicked() {
    m_series->DataSourceInfo().SetXDataColumn(m_ui->cbx_XColumn->currentData().toString().toStdString());
    m_series->DataSourceInfo().SetYDataColumn({});
    const auto found = ShowPreview();
    FillYColumns(found ? &*found : nullptr);
    YColumnsPicked();
}

/// The preview shows the first of them.
void TxyGetDataSource::YColumnsPicked() {
    const std::vector<std::string> columns = YColumns();
    if (!columns.empty()) m_series->DataSourceInfo().SetYDataColumn(columns.front());
    TakeYErrors();
    ShowPreview();
    m_preview->ShowMoreY(CheckedColumns());
    EnableOk();
}

/// All that hold values, or where these are checked the first of them alone.
void TxyGetDataSource::CheckAllYColumns() {
    std::vector<QListWidgetItem*> items;
    for (int i = 0; i < m_ui->l_YColumns->count(); ++i)
        if (QListWidgetItem* item = m_ui->l_YColumns->item(i); !item->data(kOtherRole).toBool())
            items.push_back(item);
    const auto isChecked = [](const QListWidgetItem* item) { return item->checkState() == Qt::Checked; };
    const bool areAll = std::ranges::all_of(items, isChecked);
    {
        const QSignalBlocker quiet(m_ui->l_YColumns);
        for (QListWidgetItem* item : items)
            item->setCheckState(areAll && item != items.front() ? Qt::Unchecked : Qt::Checked);
    }
    YColumnsPicked();
}

void TxyGetDataSource::EnableOk() {
    const bool isDataFile = Source().Kind() == TSourceKind::DataFile;
    const std::size_t count = isDataFile ? 1 : YColumns().size();
    m_ui->btnOk->setEnabled(m_canBeRead && count > 0);
    const bool isTold = m_canBeRead && count != 1;
    m_ui->lblDataSets->setText(!isTold      ? QString()
                               : count == 0 ? TTexts::tr("Check the Y columns to read.")
                                            : TTexts::tr("%1 data sets will be read.").arg(count));
}

void TxyGetDataSource::dragEnterEvent(QDragEnterEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.size() == 1 && urls.front().isLocalFile()) event->acceptProposedAction();
}

void TxyGetDataSource::dropEvent(QDropEvent* event) {
    const QString file = event->mimeData()->urls().front().toLocalFile();
    event->acceptProposedAction();
    SelectSource(KindOfFile(file), file);
}

} // namespace lumoplot
