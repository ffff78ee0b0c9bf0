// What the main window does with the graph: data, axes, view.
#include "dialogs/import/get_data_source.h"
#include "dialogs/messages/progress_window.h"
#include "dialogs/settings/graph_settings.h"
#include "graph/file/graph_style.h"
#include "graph/mouse/graph_mouse.h"
#include "host/files/file_choice.h"
#include "host/files/recent_files.h"
#include "host/files/shown_text.h"
#include "host/main_window.h"
#include "sources/spreadsheet/sheet_place.h"
#include "support/guard.h"
#include "ui_main_window.h"

#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QStatusBar>
#include <QToolButton>

namespace lumoplot {
namespace {

struct TCancelled {};

} // namespace

bool TMainWindow::Change(const QString& name, const std::function<void()>& action) {
    return m_document->Session().Change(name.toStdString(), action);
}

void TMainWindow::OnUndo() {
    const QString name = QString::fromStdString(m_document->Session().UndoName());
    m_document->Session().Undo();
    m_ui->statusBar->showMessage(Shown(tr("Undone: %1").arg(name)), 5000);
}

void TMainWindow::OnRedo() {
    const QString name = QString::fromStdString(m_document->Session().RedoName());
    m_document->Session().Redo();
    m_ui->statusBar->showMessage(Shown(tr("Redone: %1").arg(name)), 5000);
}

void TMainWindow::OpenData(const QString& fileName) {
    AddData({TDataFiles::SourceOf(fileName), {}, {}});
}

void TMainWindow::AddData(const TDataChoice& choice) {
    const QString fileName = QString::fromStdString(choice.Source.SourceName());
    const bool added = Change(tr("load %1").arg(QFileInfo(fileName).fileName()), [&] {
        TProgressWindow progress;
        m_dataFiles->Add(choice, progress);
    });
    m_dataFiles->TellNotes();
    if (!added) return;
    m_recentFiles->Add(QString::fromStdString(SheetPlaceOf(fileName.toStdString()).file));
    TellReading(fileName);
}

void TMainWindow::ImportData(const QString& fileName, const std::function<void()>& before) {
    TxyGetDataSource chooser(Graph(), TDataFiles::SourceOf(fileName), this);
    chooser.setWindowTitle(tr("Open Data"));
    if (chooser.exec() != QDialog::Accepted) return;
    if (before) before();
    AddData({chooser.Source(), chooser.Wishes(), chooser.YColumns(), chooser.YErrorRules()});
}

void TMainWindow::TellReading(const QString& fileName) {
    const QString& explanation = m_dataFiles->Explanation();
    if (explanation.isEmpty()) return;
    constexpr int kLongEnoughMs = 15000;
    m_openFile = fileName;
    m_readOtherwise->setToolTip(Qt::convertFromPlainText(explanation));
    m_readOtherwise->setVisible(m_dataFiles->IsReadingOpen());
    QStatusBar& bar = *m_ui->statusBar;
    const int edges = 3 * fontMetrics().height();
    const int taken = m_rows->sizeHint().width() +
                      (m_readOtherwise->isHidden() ? 0 : m_readOtherwise->sizeHint().width()) + edges;
    bar.showMessage(bar.fontMetrics().elidedText(explanation, Qt::ElideRight, bar.width() - taken),
                    kLongEnoughMs);
    bar.setToolTip(Qt::convertFromPlainText(explanation));
}

/// In the place of what the last step has read.
void TMainWindow::OnReadOtherwise() {
    ImportData(m_openFile, [this] { m_document->Session().Undo(); });
}

void TMainWindow::EditData() {
    Guarded([this] { RunEditor({}); });
    ShowState();
}

void TMainWindow::RunEditor(const QString& sourceFile) {
    QDir().mkpath(m_document->TemplateFolder());
    QString templateName = m_document->TemplateName();
    const std::vector<std::string> before = LinksOf(Graph());
    // A template that can not be saved is told when the graph has been written back, and takes nothing back.
    Change(tr("edit data"), [&] {
        Guarded([&] {
            const bool isEdited = m_editor.EditGraph(Graph(), templateName, sourceFile);
            if (isEdited) m_document->SetTemplateName(templateName);
        });
    });
    FollowNew(before);
}

void TMainWindow::OnOpenWithEditor() {
    const QString fileName = AskFileToOpen(this, {tr("Open with Editor"), DataFilters(), {}, {}});
    if (!fileName.isEmpty()) RunEditor(fileName);
}

void TMainWindow::OnGraphSettings() {
    EditSettingsOf(Graph());
}

void TMainWindow::EditSettingsOf(TxyGraph& graph) {
    EditGraphSettings(this, graph, m_document->TemplateFolder());
}

void TMainWindow::ListStyles() {
    m_ui->m_Styles->clear();
    const QDir folder(m_document->TemplateFolder());
    for (const QFileInfo& file : folder.entryInfoList({QStringLiteral("*.ltp")}, QDir::Files, QDir::Name)) {
        QString name = file.completeBaseName();
        m_ui->m_Styles->addAction(name.replace(u'&', QStringLiteral("&&")), this,
                                  [this, path = file.filePath()] { ApplyStyleFrom(path); });
    }
    m_ui->m_Styles->addSeparator();
    m_ui->m_Styles->addAction(tr("&Other…"), this, [this] {
        const QString proposal = m_document->TemplateFolder() + QLatin1Char('/');
        const QString fileName = AskFileToOpen(this, {tr("Apply Style"), GraphFilters(), {}, proposal});
        if (!fileName.isEmpty()) ApplyStyleFrom(fileName);
    });
}

void TMainWindow::ApplyStyleFrom(const QString& fileName) {
    Guarded([&] {
        Change(tr("apply style %1").arg(QFileInfo(fileName).completeBaseName()),
               [&] { ApplyStyle(Graph(), fileName.toStdString()); });
    });
    ShowState();
}

bool TMainWindow::ReloadData() {
    const bool done = [&] {
        TProgressWindow progress;
        return m_dataFiles->ReloadAll(progress);
    }();
    m_dataFiles->TellNotes();
    return done;
}

void TMainWindow::AskForTemplateData() {
    QStringList names;
    for (const auto& series : Graph().Series())
        if (series->DataSourceInfo().Kind() == TSourceKind::TextFile)
            names += QString::fromStdString(series->DataSourceInfo().SourceName());
    names.removeDuplicates();
    if (names.isEmpty()) return void(ReloadData());
    QMessageBox box(QMessageBox::Question, QApplication::applicationDisplayName(),
                    tr("The template reads data from %1.").arg(QFileInfo(names.first()).fileName()),
                    QMessageBox::NoButton, this);
    if (names.size() > 1) box.setText(tr("The template reads data from %1 files.").arg(names.size()));
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(tr("Which data do you want to see?"));
    box.setDetailedText(names.join(QLatin1Char('\n')));
    QPushButton* other = box.addButton(tr("&Other Files…"), QMessageBox::AcceptRole);
    QPushButton* same = box.addButton(tr("The &Same"), QMessageBox::AcceptRole);
    other->setObjectName(QStringLiteral("b_OtherFiles"));
    same->setObjectName(QStringLiteral("b_SameFiles"));
    box.addButton(tr("&None"), QMessageBox::RejectRole);
    box.setDefaultButton(other);
    box.exec();
    if (box.clickedButton() == other) {
        // One file after the other takes the place of those that the template names.
        for (const QString& name : names) {
            const QString title = tr("Data in Place of %1").arg(QFileInfo(name).fileName());
            const QString chosen = AskFileToOpen(this, {title, DataFilters(), {}, name});
            if (chosen.isEmpty()) continue;
            for (const auto& series : Graph().Series())
                if (QString::fromStdString(series->DataSourceInfo().SourceName()) == name)
                    series->DataSourceInfo().SetSourceName(chosen.toStdString());
        }
    }
    if (box.clickedButton() == other || box.clickedButton() == same) ReloadData();
}

void TMainWindow::OnLoadEveryRow() {
    const int before = Graph().PointBudget();
    const bool everyRow = m_ui->a_LoadEveryRow->isChecked();
    Graph().SetPointBudget(everyRow ? std::numeric_limits<int>::max() : TxyGraph::kHostPointBudget);
    try {
        Change(everyRow ? tr("load every row") : tr("load some rows"), [this] {
            if (!ReloadData()) throw TCancelled();
        });
    } catch (const TCancelled&) { // what was read by then has been put back
        Graph().SetPointBudget(before);
    }
}

void TMainWindow::OnShowLegend() {
    const bool visible = m_ui->a_ShowLegend->isChecked();
    Change(visible ? tr("show legend") : tr("hide legend"), [&] {
        TxyGraph& graph = Graph();
        graph.Legend()->Setvisible(visible);
        const auto isShown = [](const auto& series) { return series->ShowInLegend(); };
        if (!visible || std::ranges::any_of(graph.Series(), isShown)) return;
        for (const auto& series : graph.Series()) series->SetShowInLegend(true); // not an empty legend
    });
}

void TMainWindow::OnResetScale() {
    Graph().Mouse().Zoom().ShowAll();
}

void TMainWindow::OnAbout() {
    QMessageBox::about(this, tr("About %1").arg(QApplication::applicationDisplayName()),
                       tr("<h3>%1 %2</h3><p>Plots measurements from text files and opens them in the data "
                          "editor: baselines, regressions, filters and curve fits.</p>")
                           .arg(QApplication::applicationDisplayName(), QApplication::applicationVersion()));
}

} // namespace lumoplot
