#include "dialog/frame/data_wizard.h"

#include "controls/reading_order.h"
#include "controls/return_key.h"
#include "controls/tab_focus.h"
#include "controls/texts.h"
#include "dialog/filter/filtering_page.h"
#include "dialog/fit/curve_fitting_page.h"
#include "dialog/frame/data_set_list.h"
#include "dialog/frame/page_scroll.h"
#include "dialog/series/general_page.h"
#include "dialog/series/regressions_page.h"
#include "dialog/source/data_source_page.h"
#include "dialogs/editing/graph_edit_bar.h"
#include "dialogs/manual_window.h"
#include "dialogs/messages/window_place.h"
#include "support/message_text.h"
#include "ui_data_wizard.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QScreen>
#include <QTabBar>
#include <QTimer>
#include <utility>

namespace lumoplot {
namespace {

/// From this width on the window shows the plot beside the settings.
constexpr int kWidthForPlot = 1080;
constexpr int kLeastEditBar = 600;
constexpr QSize kLargestStart(1240, 760);

/// Wide enough for the plot where the screen is, and never larger than the screen.
QSize StartSize(const QWidget& window) {
    const QSize room = RoomOnScreen(window);
    const QSize wanted = room.width() >= kLargestStart.width() ? kLargestStart : window.sizeHint();
    return wanted.boundedTo(room);
}

} // namespace

TxyDataWizard::TxyDataWizard(QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::TxyDataWizard>()), m_workGraph(nullptr) {
    m_ui->setupUi(this);
    setAcceptDrops(true);
    SetUpPreview();
    m_dataSets = new TDataSetList(*this, *m_ui, *this);
    connect(m_workGraph, &TxyGraph::OnDeleteSeries, this, [this](const TSeries* series) {
        if (series == m_currSeries) m_currSeries = nullptr;
    });
    SetUpUndo();
    AddPages();
    OrderKeys();
    ConnectControls();
    ShowSeries(-1);
    resize(StartSize(*this));
}

// The pages reach the dialog through its context, which is gone when the dialog's base destroys its children:
// an edit that loses the focus then would call into nothing.
TxyDataWizard::~TxyDataWizard() {
    m_ui->sidePlot->SetSession(nullptr);
    m_session->Stop();
    m_filling = true;
    m_currSeries = nullptr;
    m_workGraph->disconnect(this);
    m_ui->tabs->disconnect(this);
    for (const TWizardPage* page : std::exchange(m_pages, {})) delete page;
    delete m_session; // before the graph, whose hook it is
}

void TxyDataWizard::SetUpPreview() {
    m_workGraph = new TxyChildGr(m_ui->pagePreview);
    m_workGraph->setAccessibleName(TTexts::tr("Graph"));
    m_editBar = new TGraphEditBar(*m_workGraph, m_ui->pagePreview);
    m_editBar->setMinimumWidth(kLeastEditBar); // its lists get narrower before the window is cut off
    m_ui->previewLayout->addWidget(m_editBar);
    m_ui->previewLayout->addWidget(m_workGraph, 1);
    connect(m_editBar, &TGraphEditBar::SeriesPicked, this, &TxyDataWizard::FillList);
}

void TxyDataWizard::AddPages() {
    m_dataSourcePage = new TDataSourcePage(*this);
    AddPage(new TGeneralPage(*this), TTexts::tr("&General"), QStringLiteral("general"));
    AddPage(m_dataSourcePage, TTexts::tr("&Data Source"), QStringLiteral("data_source"));
    AddPage(new TRegressionsPage(*this), TTexts::tr("&Regressions"), QStringLiteral("regressions"));
    AddPage(new TCurveFittingPage(*this), TTexts::tr("&Curve Fitting"), QStringLiteral("curve_fitting"));
    AddPage(new TFilteringPage(*this), TTexts::tr("&FFT Filtering"), QStringLiteral("fft_filtering"));
}

void TxyDataWizard::AddPage(TWizardPage* page, const QString& caption, const QString& picture) {
    const QString path = QStringLiteral(":/lumoplot/tabs/%1%2.svg");
    QIcon icon(path.arg(picture, QString()));
    icon.addFile(path.arg(picture, QStringLiteral("_inactive")), QSize(), QIcon::Disabled);
    m_ui->tabs->addTab(new TPageScroll(*page), icon, caption);
    m_pages.push_back(page);
}

// Where captions share a letter the tabs have it. Cancel has Esc, and its letter where there are no tabs.
void TxyDataWizard::OrderKeys() {
    KeepOpenOnReturn(*this);
    FocusByItsKeys(*m_ui->tabs->tabBar());
    m_ui->btnSetDefault->SetKeyedCaption(TTexts::tr("Set as Default and Cl&ose"));
    GiveWayToFrame();
    OrderKeysAsRead(*this);
}

// Where a button of a page has the letter of a tab, or of a button that is there with every page, these have
// the key.
void TxyDataWizard::GiveWayToFrame() {
    QStringList taken;
    for (int i = 0; i < m_ui->tabs->count(); ++i)
        taken += QKeySequence::mnemonic(m_ui->tabs->tabText(i)).toString();
    for (const QWidget* part : {m_ui->pageEdit, static_cast<QWidget*>(this)})
        for (const QPushButton* button :
             part->findChildren<QPushButton*>(QString(), Qt::FindDirectChildrenOnly))
            taken += button->shortcut().toString();
    for (const TWizardPage* page : m_pages)
        for (QAbstractButton* button : page->findChildren<QAbstractButton*>())
            if (taken.contains(button->shortcut().toString())) button->setShortcut({});
}

QString TxyDataWizard::ManualPage() const {
    static const QStringList pages = {QStringLiteral("general.md"), QStringLiteral("text-import.md"),
                                      QStringLiteral("regressions.md"), QStringLiteral("curve-fitting.md"),
                                      QStringLiteral("filtering.md")};
    return m_previewMode ? QStringLiteral("editing.md") : pages.value(m_ui->tabs->currentIndex());
}

void TxyDataWizard::ConnectControls() {
    OfferManual(*this, [this] { return ManualPage(); });
    connect(m_ui->btnHelp, &QToolButton::clicked, this, [this] { ShowManual(ManualPage(), this); });
    connect(m_dataSets, &TDataSetList::Picked, this, &TxyDataWizard::DataSetPicked);
    connect(m_ui->tabs, &QTabWidget::currentChanged, this,
            [this](int page) { Guarded([&] { TabChanged(page); }); });
    connect(m_ui->btnPreview, &QPushButton::clicked, this,
            [this] { Guarded([&] { SetPreviewMode(!m_previewMode); }); });
    connect(m_ui->btnOk, &QPushButton::clicked, this, [this] { CloseWith(kOk); });
    connect(m_ui->btnSetDefault, &QPushButton::clicked, this, [this] { CloseWith(kSetDefault); });
    connect(m_ui->btnCancel, &QPushButton::clicked, this, &TxyDataWizard::Drop);
    connect(m_session, &TGraphSession::PutBack, this, &TxyDataWizard::ShowPutBack); // after the pages
}

void TxyDataWizard::SetTemplateName(const std::string& name) {
    m_templateName = name;
    ShowCaption();
    const QString path = QDir::toNativeSeparators(QString::fromStdString(name));
    m_ui->btnSetDefault->setToolTip(name.empty() ? QString() : tr("The template is %1").arg(path));
}

void TxyDataWizard::SetDocumentName(const QString& name) {
    m_documentName = name;
    ShowCaption();
}

void TxyDataWizard::ShowCaption() {
    const QString templateName = QString::fromStdString(m_templateName);
    const QFileInfo file(templateName);
    QString shown = file.isAbsolute() ? file.fileName() : templateName;
    if (!m_documentName.isEmpty()) shown = m_documentName;
    setWindowTitle(QString::fromStdString(ShownLine("Data Template Editor : " + shown.toStdString())));
}

void TxyDataWizard::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (event->spontaneous()) return; // only restored from its icon
    SetPreviewMode(false);
    FillList(std::max(1, m_workGraph->Appearance()->CurrSerIndex())); // a host may have none current
    if (m_startPage >= 0 && m_startPage < m_ui->tabs->count()) m_ui->tabs->setCurrentIndex(m_startPage);
    ListChanged();
    m_session->Start();
    // Only now the controls know how little room they need.
    QTimer::singleShot(0, this, [this] { resize(size().boundedTo(RoomOnScreen(*this))); });
}

void TxyDataWizard::hideEvent(QHideEvent* event) {
    if (!event->spontaneous()) m_session->Stop();
    QDialog::hideEvent(event);
}

void TxyDataWizard::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    ShowSidePlot();
}

// The pages for fits and filters have plots of their own, and that for sources the rows of the file.
void TxyDataWizard::ShowSidePlot() {
    const int page = m_ui->tabs->currentIndex();
    m_ui->sidePlot->setVisible(width() >= kWidthForPlot &&
                               (page == kGeneralPage || page == kRegressionsPage));
}

void TxyDataWizard::CommitManualData() {
    if (!m_currSeries) return;
    for (TWizardPage* page : m_pages) page->Commit(*m_currSeries);
}

// What cannot be committed keeps the dialog open, so that nothing typed is lost.
void TxyDataWizard::CloseWith(int result) {
    if (Guarded([&] { CommitManualData(); })) done(result);
}

void TxyDataWizard::SetPreviewMode(bool preview) {
    if (preview) CommitManualData();
    const bool leaving = m_previewMode && !preview;
    m_previewMode = preview;
    m_ui->notebook->setCurrentWidget(preview ? m_ui->pagePreview : m_ui->pageEdit);
    m_ui->btnPreview->setText(preview ? TTexts::tr("&Edit") : TTexts::tr("Pre&view"));
    // The tab with the same letter is not there then.
    m_ui->btnCancel->SetKeyedCaption(preview ? TTexts::tr("&Cancel") : TTexts::tr("Cancel"));
    m_workGraph->setVisible(preview);
    if (!leaving) return;
    m_editBar->ShowZoom();
    RefillPages(); // points and marks may have been edited
    if (m_currSeries)
        m_session->FollowUp([this] {
            for (TWizardPage* page : m_pages) page->RefreshAfterPreview(*m_currSeries);
        });
}

void TxyDataWizard::FillList(int number) {
    m_filling = true;
    m_dataSets->Fill(number);
    m_filling = false;
    ListChanged();
}

// While no data set is shown Filling stays set, yet choosing one in the list must show it.
void TxyDataWizard::ListChanged() {
    if (m_filling && m_currSeries) return;
    const int place = m_dataSets->ChosenPlace();
    if (place >= 0) m_workGraph->Appearance()->SetCurrSerIndex(place + 1);
    ShowSeries(m_dataSets->ChosenNumber());
}

// What cannot be committed keeps its data set selected.
void TxyDataWizard::DataSetPicked() {
    try {
        CommitManualData();
    } catch (...) {
        m_dataSets->Choose(*m_currSeries);
        throw;
    }
    ListChanged();
}

void TxyDataWizard::TabChanged(int page) {
    const int left = std::exchange(m_shownPage, page);
    if (m_currSeries) Guarded([&] { m_pages[static_cast<std::size_t>(left)]->Leave(*m_currSeries); });
    ListChanged();
    ShowSidePlot();
}

void TxyDataWizard::ShowSeries(int number) {
    m_session->FollowUp([&] { FillPages(number); });
}

void TxyDataWizard::FillPages(int number) {
    m_filling = true;
    m_currSeries = number == -1 ? nullptr : m_workGraph->FindSeries(number);
    m_dataSets->EnableFor(m_currSeries);
    for (TWizardPage* page : m_pages) page->setEnabled(m_currSeries != nullptr);
    m_ui->lblEmpty->setVisible(m_workGraph->Series().empty());
    if (!m_currSeries) {
        for (TWizardPage* page : m_pages) page->ShowNothing();
        return;
    }
    // A page that fails tells so; the guard must not stay set, or nothing could be edited or chosen any more.
    for (TWizardPage* page : m_pages) Guarded([&] { page->FillFrom(*m_currSeries); });
    m_filling = false;
}

void TxyDataWizard::RefillPages() {
    if (m_currSeries) ShowSeries(m_currSeries->SeriesIndex());
}

void TxyDataWizard::ShowSeriesName(const QString& name) {
    if (m_currSeries) m_dataSets->ShowName(*m_currSeries, name);
}

void TxyDataWizard::AttachSource(const std::string& fileName) {
    if (m_currSeries) m_dataSourcePage->AttachFile(fileName);
}

void TxyDataWizard::dragEnterEvent(QDragEnterEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.size() == 1 && urls.front().isLocalFile()) event->acceptProposedAction();
}

// A file dropped on the dialog becomes a new data set unless it is dropped on the page for sources.
void TxyDataWizard::dropEvent(QDropEvent* event) {
    const std::string file = event->mimeData()->urls().front().toLocalFile().toStdString();
    const bool onPage =
        m_currSeries && m_dataSourcePage->isVisible() &&
        m_dataSourcePage->rect().contains(m_dataSourcePage->mapFrom(this, event->position().toPoint()));
    event->acceptProposedAction();
    Guarded([&] {
        m_session->Change("load " + QFileInfo(QString::fromStdString(file)).fileName().toStdString(), [&] {
            if (!onPage) m_dataSets->New();
            AttachSource(file);
        });
    });
}

} // namespace lumoplot
