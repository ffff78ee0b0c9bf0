#include "dialog/source/data_source_page.h"

#include "controls/texts.h"
#include "dialog/manual/manual_panel.h"
#include "dialog/source/text_options_panel.h"
#include "dialogs/import/sheet_list.h"
#include "dialogs/import/source_reading.h"
#include "dialogs/import/text_preview_pane.h"
#include "graph/loading/source_loading.h"
#include "graph/loading/source_rows.h"
#include "graph/model/holder.h"
#include "sources/spreadsheet/sheet_place.h"
#include "sources/text/loading/text_loader.h"
#include "support/errors.h"
#include "support/message_text.h"
#include "ui_data_source_page.h"

#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>

namespace lumoplot {
namespace {

constexpr int kPreviewRows = 100;

} // namespace

TDataSourcePage::TDataSourcePage(TWizardContext& context, QWidget* parent)
    : TWizardPage(context, parent), m_ui(std::make_unique<Ui::TDataSourcePage>()) {
    m_ui->setupUi(this);
    AddPanels();
    ConnectControls();
    ConnectTextPanels();
    ShowNothing();
}

TDataSourcePage::~TDataSourcePage() = default;

void TDataSourcePage::AddPanels() {
    m_manual = new TManualPanel(Context(), m_ui->pageManual);
    m_ui->manualLayout->addWidget(m_manual);
    m_options = new TTextOptionsPanel(Context(), m_ui->pageText);
    m_preview = new TTextPreviewPane(m_ui->pageText);
    m_ui->textLayout->addWidget(m_options);
    m_ui->textLayout->addWidget(m_preview, 1);
    // A file dropped on an edit is a source, too, and no text.
    for (QLineEdit* edit : findChildren<QLineEdit*>()) edit->setAcceptDrops(false);
}

void TDataSourcePage::ConnectControls() {
    connect(&Context().WorkGraph(), &TxyGraph::OnDeleteSeries, this, [this](const TSeries* series) {
        if (series == m_shown) Forget();
    });
    connect(&Context().Session(), &TGraphSession::PutBack, this, &TDataSourcePage::Forget);
    connect(m_ui->cbx_SourceKind, &QComboBox::currentIndexChanged, this, [this](int item) {
        Edit("kind of source of ",
             [&](TSeries& series) { PickKind(series, static_cast<TSourceKind>(item)); });
    });
    connect(m_ui->e_SourceName, &QLineEdit::editingFinished, this, [this] {
        Edit("source of ", [&](TSeries& series) {
            TakeSourceName(series);
            if (IsLoadNeeded(series)) LoadAsStep(series);
        });
    });
    connect(m_ui->cbx_Sheet, &QComboBox::activated, this, [this] {
        Edit("source of ", [&](TSeries& series) {
            TakeSheet(series);
            LoadAsStep(series);
        });
    });
    connect(m_ui->e_Directory, &QLineEdit::editingFinished, this, [this] {
        Edit("data directory of ", [&](TSeries& series) {
            TakeDirectory(series);
            if (IsLoadNeeded(series)) LoadShowingErrors(series);
        });
    });
    connect(m_ui->btnBrowse, &QPushButton::clicked, this, [this] { Guarded([&] { Browse(); }); });
    connect(m_ui->btnChoose, &QPushButton::clicked, this,
            [this] { Edit("choose source of ", [this](TSeries&) { ChooseSource(); }); });
    connect(m_ui->btnReload, &QPushButton::clicked, this, [this] {
        Edit("reload ", [&](TSeries& series) {
            TakePendingTexts(series);
            LoadShowingErrors(series);
        });
    });
}

void TDataSourcePage::ConnectTextPanels() {
    connect(m_options, &TTextOptionsPanel::Changed, this, &TDataSourcePage::DescriptionChanged);
    connect(m_preview, &TTextPreviewPane::ReadingPicked, this, [this](const TTextFormat& format) {
        Edit("reading of ", [&](TSeries& series) {
            FixReading(series, format, PreviewSource(series, 1).readings.best.format);
            LoadShowingErrors(series);
        });
    });
    connect(m_preview, &TTextPreviewPane::FindAgainPicked, this, [this] {
        Edit("reading of ", [&](TSeries& series) {
            ForgetReading(series);
            LoadShowingErrors(series);
        });
    });
    connect(m_preview, &TTextPreviewPane::RowWanted, this, [this](qlonglong row) {
        Guarded([&] {
            const TSeries* series = Context().CurrSeries();
            if (!series) return;
            const qlonglong first = std::max<qlonglong>(1, row - kPreviewRows / 2);
            m_preview->ShowRowsAround(PreviewSourceFrom(*series, first, kPreviewRows), row);
        });
    });
    connect(m_preview, &TTextPreviewPane::KeepAllPicked, this, [this] {
        Edit("keep all points of ", [&](TSeries& series) {
            series.SetDuplicatesAllowed(true);
            LoadShowingErrors(series);
        });
    });
}

// Enter takes what was typed; it does not close the dialog from here.
void TDataSourcePage::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) TWizardPage::keyPressEvent(event);
}

void TDataSourcePage::FillFrom(TSeries& series) {
    const TFillingScope filling(Context());
    const TDSInfo& source = series.DataSourceInfo();
    if (m_shown != &series) Forget();
    m_shown = &series;
    m_ui->cbx_SourceKind->setCurrentIndex(static_cast<int>(source.Kind()));
    m_ui->e_SourceName->setText(QString::fromStdString(source.SourceName()));
    m_ui->e_SourceName->setToolTip(m_ui->e_SourceName->text());
    ShowKind(series);
}

void TDataSourcePage::ShowNothing() {
    m_ui->cbx_SourceKind->setCurrentIndex(-1);
    m_ui->e_SourceName->clear();
    m_ui->e_SourceName->setToolTip({});
    m_ui->lblNotes->clear();
    m_ui->lblNotesResult->clear();
    m_manual->Clear();
    m_preview->Clear();
    Forget();
    ShowNameControls(TSourceKind::Manual);
}

void TDataSourcePage::Forget() {
    m_shown = nullptr;
    m_report.reset();
    m_failureTold = false;
}

void TDataSourcePage::RefreshAfterPreview(TSeries& series) {
    m_options->ShowFrequency(series);
}

void TDataSourcePage::ShowNameControls(TSourceKind kind) {
    for (QWidget* control :
         {static_cast<QWidget*>(m_ui->lblSourceName), static_cast<QWidget*>(m_ui->e_SourceName),
          static_cast<QWidget*>(m_ui->btnBrowse)})
        control->setVisible(IsFile(kind));
    const bool isSheet = kind == TSourceKind::LumoSheet && IsSheetOffered();
    ShowSheetList(isSheet);
    m_ui->btnReload->setVisible(IsFile(kind) || isSheet || kind == TSourceKind::Database ||
                                kind == TSourceKind::Link);
    CheckDirectory();
}

void TDataSourcePage::ShowKind(TSeries& series) {
    const TFillingScope filling(Context());
    const TSourceKind kind = series.DataSourceInfo().Kind();
    ShowNameControls(kind);
    if (kind == TSourceKind::Manual)
        m_manual->FillFrom(series);
    else
        m_manual->Clear();
    if (kind != TSourceKind::TextFile) m_listedFile.clear();
    if (kind == TSourceKind::LumoSheet) FillSheets(series);
    if (kind == TSourceKind::TextFile) FillSheetsOfFile(series);
    const bool isText = IsText(series);
    ShowPart(*(kind == TSourceKind::Manual ? m_ui->pageManual : isText ? m_ui->pageText : m_ui->pageNotes));
    if (IsDatabase(series)) return ShowDatabase(series);
    if (kind == TSourceKind::Link) return ShowLink(series);
    isText ? ShowText(series) : ShowNotes(series);
}

/// The parts that are not shown ask for no room.
void TDataSourcePage::ShowPart(QWidget& shown) {
    for (int i = 0; i < m_ui->stack->count(); ++i) {
        QWidget* part = m_ui->stack->widget(i);
        const auto policy = part == &shown ? QSizePolicy::Preferred : QSizePolicy::Ignored;
        part->setSizePolicy(policy, policy);
    }
    m_ui->stack->setCurrentWidget(&shown);
}

bool TDataSourcePage::IsFile(TSourceKind kind) {
    return kind == TSourceKind::TextFile || kind == TSourceKind::DataFile;
}

bool TDataSourcePage::IsDatabase(const TSeries& series) {
    return series.DataSourceInfo().Kind() == TSourceKind::Database;
}

bool TDataSourcePage::IsSheetOffered() const {
    return static_cast<bool>(Context().WorkGraph().Holder()->Sheets());
}

/// The source is read as text: a file or a sheet.
bool TDataSourcePage::IsText(const TSeries& series) const {
    const TSourceKind kind = series.DataSourceInfo().Kind();
    return kind == TSourceKind::TextFile || (kind == TSourceKind::LumoSheet && IsSheetOffered());
}

/// The sheets that the host offers now, and the chosen one even when it has gone.
void TDataSourcePage::FillSheets(const TSeries& series) {
    m_ui->cbx_Sheet->clear();
    Guarded([this] {
        if (!IsSheetOffered()) return;
        for (const std::string& name : Context().WorkGraph().Holder()->Sheets().Names())
            m_ui->cbx_Sheet->addItem(QString::fromStdString(name));
    });
    const QString chosen = QString::fromStdString(series.DataSourceInfo().SourceName());
    if (!chosen.isEmpty() && m_ui->cbx_Sheet->findText(chosen) < 0) m_ui->cbx_Sheet->addItem(chosen);
    m_ui->cbx_Sheet->setCurrentIndex(m_ui->cbx_Sheet->findText(chosen));
}

/// Of a spreadsheet with several.
void TDataSourcePage::FillSheetsOfFile(const TSeries& series) {
    const TSheetPlace place = SheetPlaceOf(SourceFileOf(series));
    m_ui->cbx_Sheet->clear();
    ShowSheetList(false);
    m_chosenSheet = place.sheet;
    if (m_listedFile == place.file) return; // which takes long
    m_listedFile = place.file;
    ListSheets(*this, place.file, [this, file = place.file](const std::vector<TBookSheet>& sheets) {
        if (m_listedFile != file) return;
        m_listedFile.clear();
        m_ui->cbx_Sheet->clear();
        for (const TBookSheet& sheet : sheets) m_ui->cbx_Sheet->addItem(QString::fromStdString(sheet.name));
        ChooseSheet(m_chosenSheet);
        ShowSheetList(m_ui->cbx_Sheet->count() > 1);
    });
}

void TDataSourcePage::ChooseSheet(const std::string& name) {
    m_chosenSheet = name;
    m_ui->cbx_Sheet->setCurrentIndex(m_ui->cbx_Sheet->findText(QString::fromStdString(name)));
}

void TDataSourcePage::ShowSheetList(bool isShown) {
    m_ui->lblSheet->setVisible(isShown);
    m_ui->cbx_Sheet->setVisible(isShown);
}

/// One that the host offers, or one of the spreadsheet file.
void TDataSourcePage::TakeSheet(TSeries& series) {
    TDSInfo& info = series.DataSourceInfo();
    const std::string sheet = m_ui->cbx_Sheet->currentText().toStdString();
    info.SetSourceName(info.Kind() == TSourceKind::LumoSheet ? sheet : WithSheet(info.SourceName(), sheet));
    m_ui->e_SourceName->setText(QString::fromStdString(info.SourceName()));
}

void TDataSourcePage::ShowNotes(const TSeries& series) {
    const bool isDataFile = series.DataSourceInfo().Kind() == TSourceKind::DataFile;
    m_ui->lblNotes->setText(
        isDataFile
            ? TTexts::tr("A data-set file (.lds) brings all its points and all settings of its data set: "
                         "name, style, baseline, regression and fit.")
            : TTexts::tr("No sheet is offered by the application that has opened this editor."));
    const bool isLoaded = isDataFile && !series.DataSourceInfo().NeedsReload() && series.Count() > 0;
    m_ui->lblNotesResult->setText(
        isLoaded ? TTexts::tr("%1 points loaded.").arg(QLocale().toString(series.Count())) : QString());
}

/// What is asked of the database, and what came of it.
void TDataSourcePage::ShowDatabase(const TSeries& series) {
    const TDSInfo& info = series.DataSourceInfo();
    const auto text = [](const std::string& part) { return QString::fromStdString(ShownLine(part)); };
    const TDatabaseWish& wish = info.Database();
    QStringList lines{text(wish.connection)};
    lines += wish.query.empty() ? TTexts::tr("Table: %1").arg(text(info.SourceName())) : text(wish.query);
    if (!wish.where.empty()) lines += QStringLiteral("WHERE ") + text(wish.where);
    if (!wish.orderBy.empty()) lines += QStringLiteral("ORDER BY ") + text(wish.orderBy);
    const bool isRow = info.XDataColumn() == "0";
    lines += QStringLiteral("X: %1   Y: %2")
                 .arg(isRow ? TTexts::tr("row number") : text(info.XDataColumn()), text(info.YDataColumn()));
    m_ui->lblNotes->setText(wish.connection.empty() ? TTexts::tr("Choose a table of a database.")
                                                    : lines.join(QLatin1Char('\n')));
    QStringList results;
    if (!info.NeedsReload() && series.Count() > 0)
        results += TTexts::tr("%1 points loaded.").arg(QLocale().toString(series.Count()));
    if (m_report)
        for (const auto& part : {m_report->notes, m_report->messages})
            for (const std::string& line : part) results += text(line);
    m_ui->lblNotesResult->setText(results.join(QLatin1Char('\n')));
}

/// The options, the first rows and, while they still hold, the results of the last loading.
void TDataSourcePage::ShowText(const TSeries& series) {
    if (series.DataSourceInfo().SourceName().empty()) {
        m_options->FillFrom(series, nullptr);
        const bool isSheet = series.DataSourceInfo().Kind() == TSourceKind::LumoSheet;
        return m_preview->ShowProblem(isSheet ? TTexts::tr("Choose a sheet.")
                                              : TTexts::tr("Choose a text file, or drop one here."));
    }
    try {
        TTextPreview preview = PreviewSource(series, kPreviewRows);
        m_options->FillFrom(series, &preview.readings.best.format);
        // Which sheet is read while none is chosen.
        if (const auto& sheet = preview.readings.best.format.sheet) ChooseSheet(*sheet);
        m_preview->ShowPreview(std::move(preview), HasFixedReading(series));
    } catch (const ELumoError& error) {
        m_options->FillFrom(series, nullptr);
        return m_preview->ShowProblem(QString::fromUtf8(error.what()));
    }
    if (series.DataSourceInfo().NeedsReload())
        m_preview->ShowNotLoaded();
    else if (m_report)
        m_preview->ShowReport(*m_report);
}

void TDataSourcePage::DescriptionChanged() {
    m_failureTold = false;
    if (const TSeries* series = Context().CurrSeries()) ShowText(*series);
}

/// A relative name of a file that is not there is looked up in the graph's data directory.
void TDataSourcePage::CheckDirectory() {
    const QString name = m_ui->e_SourceName->text();
    const QString file = QString::fromStdString(SheetPlaceOf(name.toStdString()).file);
    const bool found = name.isEmpty() || QFileInfo::exists(QDir(QDir::rootPath()).filePath(file));
    const bool isRelative = !name.contains(QStringLiteral(":\\")) && QFileInfo(name).isRelative();
    const bool isShown = !found && isRelative && m_ui->e_SourceName->isVisibleTo(this);
    m_ui->lblDirectory->setVisible(isShown);
    m_ui->e_Directory->setVisible(isShown);
    if (!isShown) return;
    m_ui->e_Directory->setText(QString::fromStdString(Context().WorkGraph().Appearance()->DataDirectory()));
    m_ui->e_Directory->setToolTip(m_ui->e_Directory->text());
}

} // namespace lumoplot
