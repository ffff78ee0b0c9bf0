// What the main window does with the graph: data, axes, view.
#include "dialogs/progress_window.h"
#include "graph/mouse/graph_mouse.h"
#include "host/axes_dialog.h"
#include "host/file_choice.h"
#include "host/main_window.h"
#include "host/recent_files.h"
#include "support/guard.h"
#include "ui_main_window.h"

#include <QDir>
#include <QFileInfo>
#include <QMessageBox>

namespace lumoplot {

bool TMainWindow::Change(const QString& name, const std::function<void()>& action) {
    return m_document->Session().Change(name.toStdString(), action);
}

void TMainWindow::OpenData(const QString& fileName) {
    const bool added = Change(tr("load %1").arg(QFileInfo(fileName).fileName()), [&] {
        TProgressWindow progress;
        m_dataFiles->Add(fileName, progress);
    });
    m_dataFiles->TellNotes();
    if (added) m_recentFiles->Add(fileName);
}

void TMainWindow::EditData() {
    Guarded([this] { RunEditor({}); });
    ShowState();
}

void TMainWindow::RunEditor(const QString& sourceFile) {
    QDir().mkpath(m_document->TemplateFolder());
    QString templateName = m_document->TemplateName();
    Change(tr("edit data"), [&] {
        if (m_editor.EditGraph(Graph(), templateName, sourceFile)) m_document->SetTemplateName(templateName);
    });
}

void TMainWindow::OnOpenWithEditor() {
    const QString fileName = AskFileToOpen(this, {tr("Open with Editor"), DataFilters(), {}, {}});
    if (!fileName.isEmpty()) RunEditor(fileName);
}

void TMainWindow::OnAxesAndTitle() {
    TAxesDialog(*m_document, this).exec();
}

bool TMainWindow::ReloadData() {
    const bool done = [&] {
        TProgressWindow progress;
        return m_dataFiles->ReloadAll(progress);
    }();
    m_dataFiles->TellNotes();
    return done;
}

void TMainWindow::OnLoadEveryRow() {
    const int before = Graph().PointBudget();
    const bool everyRow = m_ui->a_LoadEveryRow->isChecked();
    Graph().SetPointBudget(everyRow ? std::numeric_limits<int>::max() : TxyGraph::kHostPointBudget);
    Change(everyRow ? tr("load every row") : tr("load some rows"), [&] {
        if (!ReloadData()) Graph().SetPointBudget(before);
    });
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
