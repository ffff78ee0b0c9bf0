#include "host/main_window.h"

#include "controls/model_texts.h"
#include "dialogs/editing/graph_edit_bar.h"
#include "dialogs/messages/window_place.h"
#include "host/files/recent_files.h"
#include "host/files/shown_text.h"
#include "host/panels_menu.h"
#include "host/sheet/sheet_book.h"
#include "host/start_page.h"
#include "session/live_links.h"
#include "support/guard.h"
#include "support/message_text.h"
#include "ui_main_window.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QSettings>
#include <QStatusBar>
#include <QTextDocument>
#include <QTimer>
#include <QToolButton>
#include <utility>

namespace lumoplot {
namespace {

const QString kGeometryKey = QStringLiteral("window/geometry");
constexpr std::size_t kLongestShownName = 60;

const QString kStateKey = QStringLiteral("window/state");

QStringList LocalFiles(const QMimeData& data) {
    QStringList files;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile()) files.append(url.toLocalFile());
    return files;
}

/// "Undo load enso.csv"; an ampersand of a name is no key.
QString WithStep(const QString& verb, const std::string& name) {
    if (name.empty()) return verb;
    return verb + QLatin1Char(' ') + InLanguage(name).replace(u'&', QStringLiteral("&&"));
}

} // namespace

TMainWindow::TMainWindow(const QString& templateFolder, QWidget* parent)
    : QMainWindow(parent), m_ui(std::make_unique<Ui::MainWindow>()) {
    m_ui->setupUi(this);
    m_rows = new QLabel(this);
    m_rows->setObjectName(QStringLiteral("l_Rows"));
    m_readOtherwise = new QToolButton(this);
    m_readOtherwise->setObjectName(QStringLiteral("btnReadOtherwise"));
    m_readOtherwise->setText(tr("Read &Otherwise…"));
    m_readOtherwise->setFocusPolicy(Qt::TabFocus);
    m_ui->statusBar->addPermanentWidget(m_readOtherwise);
    m_readOtherwise->hide();
    m_ui->statusBar->addPermanentWidget(m_rows);
    m_notice = new QLabel(this);
    m_notice->setObjectName(QStringLiteral("l_Notice"));
    m_notice->setTextFormat(Qt::PlainText);
    m_notice->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_ui->statusBar->addWidget(m_notice, 1);
    m_ui->m_View->addSeparator();
    m_ui->m_View->addAction(m_ui->toolBar->toggleViewAction());
    m_document = std::make_unique<TGraphDocument>(Graph(), templateFolder);
    m_dataFiles = std::make_unique<TDataFiles>(Graph());
    m_recentFiles = std::make_unique<TRecentFiles>(*m_ui->m_Recent);
    AddEditBar();
    m_startPage = new TStartPage(Graph(), *m_ui->a_OpenData, *m_ui->a_OpenGraph);
    connect(m_startPage, &TStartPage::ExampleWanted, this, &TMainWindow::ShowExample);
    AddTransformMenu();
    AddPanelsMenu();
    AddLanguageMenu();
    ConnectActions();
    ConnectGraph();
    AddLinks();
    AddSheets();
    m_document->New();
    ShowState();
}

TMainWindow::~TMainWindow() = default;

TxyGraph& TMainWindow::Graph() const {
    return *m_ui->graph;
}

void TMainWindow::AddEditBar() {
    m_editBar = new TGraphEditBar(Graph(), this);
    m_ui->editToolBar->addWidget(m_editBar);
    m_ui->m_View->addAction(m_ui->editToolBar->toggleViewAction());
    connect(m_ui->a_Marks, &QAction::triggered, m_editBar, &TGraphEditBar::EditMarksOfGraph);
    connect(m_ui->a_SetValues, &QAction::triggered, m_editBar, &TGraphEditBar::SetValuesOfSeries);
}

void TMainWindow::ConnectActions() {
    using TSlot = void (TMainWindow::*)();
    const std::pair<QAction*, TSlot> actions[] = {
        {m_ui->a_New, &TMainWindow::OnNew},
        {m_ui->a_NewFromTemplate, &TMainWindow::OnNewFromTemplate},
        {m_ui->a_OpenGraph, &TMainWindow::OnOpenGraph},
        {m_ui->a_OpenData, &TMainWindow::OnOpenData},
        {m_ui->a_OpenDatabase, &TMainWindow::OnOpenDatabase},
        {m_ui->a_Sheets, &TMainWindow::OnSheets},
        {m_ui->a_Follow, &TMainWindow::OnFollow},
        {m_ui->a_PauseLinks, &TMainWindow::OnPauseLinks},
        {m_ui->a_StopLinks, &TMainWindow::OnStopLinks},
        {m_ui->a_Save, &TMainWindow::OnSave},
        {m_ui->a_SaveAs, &TMainWindow::OnSaveAs},
        {m_ui->a_SaveAsTemplate, &TMainWindow::OnSaveAsTemplate},
        {m_ui->a_ExportPicture, &TMainWindow::OnExportPicture},
        {m_ui->a_PrintPreview, &TMainWindow::OnPrintPreview},
        {m_ui->a_Print, &TMainWindow::OnPrint},
        {m_ui->a_Quit, &TMainWindow::OnQuit},
        {m_ui->a_Undo, &TMainWindow::OnUndo},
        {m_ui->a_Redo, &TMainWindow::OnRedo},
        {m_ui->a_EditData, &TMainWindow::OnEditData},
        {m_ui->a_OpenWithEditor, &TMainWindow::OnOpenWithEditor},
        {m_ui->a_GraphSettings, &TMainWindow::OnGraphSettings},
        {m_ui->a_CopyDataSet, &TMainWindow::OnCopyDataSet},
        {m_ui->a_PasteDataSet, &TMainWindow::OnPasteDataSet},
        {m_ui->a_CopyPicture, &TMainWindow::OnCopyPicture},
        {m_ui->a_LoadEveryRow, &TMainWindow::OnLoadEveryRow},
        {m_ui->a_ShowLegend, &TMainWindow::OnShowLegend},
        {m_ui->a_ResetScale, &TMainWindow::OnResetScale},
        {m_ui->a_Manual, &TMainWindow::OnManual},
        {m_ui->a_About, &TMainWindow::OnAbout},
    };
    for (const auto& [action, slot] : actions)
        connect(action, &QAction::triggered, this, [this, slot = slot] {
            Guarded([this, slot] { (this->*slot)(); });
            ShowState();
        });
    connect(m_ui->m_Styles, &QMenu::aboutToShow, this, &TMainWindow::ListStyles);
    connect(m_recentFiles.get(), &TRecentFiles::Chosen, this,
            [this](const QString& file) { OpenFiles({file}); });
}

void TMainWindow::ConnectGraph() {
    connect(m_document.get(), &TGraphDocument::StateChanged, this, &TMainWindow::ShowState);
    // What was said of the state before is not true any more.
    connect(m_document.get(), &TGraphDocument::StateChanged, m_ui->statusBar, &QStatusBar::clearMessage);
    connect(m_ui->statusBar, &QStatusBar::messageChanged, this, [this](const QString& text) {
        if (text.isEmpty()) m_ui->statusBar->setToolTip({});
    });
    connect(m_document.get(), &TGraphDocument::StateChanged, m_readOtherwise, &QToolButton::hide);
    connect(m_readOtherwise, &QToolButton::clicked, this, [this] {
        Guarded([this] { OnReadOtherwise(); });
        ShowState();
    });
    connect(&Graph(), &TxyGraph::OnWantDesigner, m_ui->a_GraphSettings, &QAction::trigger);
    Graph().installEventFilter(this);
}

// What a picture shows is known when it has been painted.
bool TMainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &Graph() && event->type() == QEvent::Paint) ShowNoticeSoon();
    if (watched == &Graph() && event->type() == QEvent::MouseButtonDblClick) {
        const auto& click = static_cast<const QMouseEvent&>(*event);
        if (click.button() == Qt::LeftButton && EditCurveAt(click.position())) return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

void TMainWindow::ShowNoticeSoon() {
    if (std::exchange(m_noticeIsDue, true)) return;
    QTimer::singleShot(0, this, &TMainWindow::ShowNotice);
}

void TMainWindow::ShowNotice() {
    m_noticeIsDue = false;
    QStringList notices;
    if (m_links->IsFollowing()) notices += InLanguage(m_links->Status());
    if (!m_document->KeepingProblem().isEmpty())
        notices += Shown(tr("Unsaved changes are not kept: %1").arg(m_document->KeepingProblem()));
    for (const auto& series : Graph().Series()) {
        const QString name = QString::fromStdString(ShownLine(series->SeriesName(), kLongestShownName));
        if (series->LogErrors() > 0)
            notices += tr("%1 has values that a logarithmic axis can not show").arg(name);
        if (series->Active() && series->Count() > TxyGraph::kPlottedPointLimit)
            notices += tr("%1 has %L2 points: drawing may take a while").arg(name).arg(series->Count());
    }
    m_notice->setText(notices.join(QStringLiteral(" · ")));
    m_notice->setToolTip(Qt::convertFromPlainText(notices.join(QLatin1Char('\n'))));
}

void TMainWindow::ShowState() {
    setWindowFilePath(m_document->FileName());
    setWindowTitle(WindowTitle());
    Graph().setWindowTitle(Shown(m_document->DisplayName())); // the editor's caption
    m_startPage->setVisible(Graph().Series().empty() && !Graph().HasContent() &&
                            Graph().ChildGraphCount() == 0);
    setWindowModified(m_document->IsModified());
    m_ui->a_ShowLegend->setChecked(Graph().Legend()->visible());
    m_ui->a_LoadEveryRow->setChecked(Graph().PointBudget() > TxyGraph::kHostPointBudget);
    m_rows->setText(m_dataFiles->Summary());
    m_panels->Refresh();
    ShowSteps();
    ShowNoticeSoon();
}

/// The program's name follows by itself.
QString TMainWindow::WindowTitle() const {
    const QString name = Shown(m_document->DisplayName()) + QStringLiteral("[*]");
    if (!m_document->IsModified() || !m_keepsChanges) return name;
    return m_document->KeepingProblem().isEmpty() ? tr("%1 (changes are kept)").arg(name)
                                                  : tr("%1 (changes are not kept)").arg(name);
}

void TMainWindow::ShowSteps() {
    const TGraphSession& session = m_document->Session();
    m_ui->a_Undo->setEnabled(session.CanUndo());
    m_ui->a_Redo->setEnabled(session.CanRedo());
    m_ui->a_Undo->setText(WithStep(tr("&Undo"), session.UndoName()));
    m_ui->a_Redo->setText(WithStep(tr("&Redo"), session.RedoName()));
}

void TMainWindow::RestorePlace() {
    const QSettings settings;
    if (!restoreGeometry(settings.value(kGeometryKey).toByteArray()))
        resize(size().boundedTo(RoomOnScreen(*this)));
    restoreState(settings.value(kStateKey).toByteArray());
}

void TMainWindow::closeEvent(QCloseEvent* event) {
    bool leave = false;
    Guarded([&] { leave = MayLeaveGraph(); });
    event->setAccepted(leave);
    if (!leave) return;
    QSettings settings;
    settings.setValue(kGeometryKey, saveGeometry());
    settings.setValue(kStateKey, saveState());
}

void TMainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!LocalFiles(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void TMainWindow::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    OpenFiles(LocalFiles(*event->mimeData()));
}

} // namespace lumoplot
