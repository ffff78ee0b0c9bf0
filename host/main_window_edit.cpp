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
#include <QMessageBox>

namespace lumoplot {

void TMainWindow::OpenData(const QString& fileName) {
    const bool added = [&] {
        TProgressWindow progress;
        return m_dataFiles->Add(fileName, progress);
    }();
    m_dataFiles->TellNotes();
    if (!added) return;
    m_document->SetModified(true);
    m_recentFiles->Add(fileName);
}

void TMainWindow::EditData() {
    Guarded([this] { RunEditor({}); });
    ShowState();
}

void TMainWindow::RunEditor(const QString& sourceFile) {
    QDir().mkpath(m_document->TemplateFolder());
    QString templateName = m_document->TemplateName();
    m_document->Edit(TPoints::Include, [&](TxyGraph& graph) {
        if (m_editor.EditGraph(graph, templateName, sourceFile)) m_document->SetTemplateName(templateName);
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
    m_document->Edit(TPoints::Include, [&](TxyGraph& graph) {
        if (!ReloadData()) graph.SetPointBudget(before);
    });
}

void TMainWindow::OnShowLegend() {
    const bool visible = m_ui->a_ShowLegend->isChecked();
    m_document->Edit(TPoints::LeaveOut, [&](TxyGraph& graph) {
        graph.Legend()->Setvisible(visible);
        const auto isShown = [](const auto& series) { return series->ShowInLegend(); };
        if (!visible || std::ranges::any_of(graph.Series(), isShown)) return;
        for (const auto& series : graph.Series()) series->SetShowInLegend(true); // not an empty legend
    });
}

void TMainWindow::OnResetScale() {
    m_document->Edit(TPoints::LeaveOut, [](TxyGraph& graph) { graph.Mouse().Zoom().ShowAll(); });
}

void TMainWindow::OnAbout() {
    QMessageBox::about(this, tr("About %1").arg(QApplication::applicationDisplayName()),
                       tr("<h3>%1 %2</h3><p>Plots measurements from text files and opens them in the data "
                          "editor: baselines, regressions, filters and curve fits.</p>")
                           .arg(QApplication::applicationDisplayName(), QApplication::applicationVersion()));
}

} // namespace lumoplot
