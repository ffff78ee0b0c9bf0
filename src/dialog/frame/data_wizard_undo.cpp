// Undo and redo in the data editor.
#include "data/series/ds_info.h"
#include "dialog/frame/data_wizard.h"
#include "dialog/frame/undo_recorder.h"
#include "ui_data_wizard.h"

#include <QPointer>

namespace lumoplot {
namespace {

QString StepTip(const char* verb, const std::string& name) {
    return QString::fromStdString(verb + (name.empty() ? name : " " + name));
}

} // namespace

void TxyDataWizard::SetUpUndo() {
    m_undo = new TUndoRecorder(*this, *m_workGraph);
    m_ui->btnUndoStep->setDefaultAction(m_ui->a_Undo);
    m_ui->btnRedoStep->setDefaultAction(m_ui->a_Redo);
    m_ui->a_Undo->setShortcut(Qt::CTRL | Qt::Key_Z);
    m_ui->a_Redo->setShortcuts({Qt::CTRL | Qt::SHIFT | Qt::Key_Z, Qt::CTRL | Qt::Key_Y});
    addActions({m_ui->a_Undo, m_ui->a_Redo});
    connect(m_ui->a_Undo, &QAction::triggered, this, [this] { Guarded([this] { UndoStep(); }); });
    connect(m_ui->a_Redo, &QAction::triggered, this, [this] { Guarded([this] { RedoStep(); }); });
    connect(m_undo, &TUndoRecorder::Changed, this, &TxyDataWizard::ShowSteps);
    ShowSteps();
}

void TxyDataWizard::ShowSteps() {
    const TUndoHistory& history = m_undo->History();
    m_ui->a_Undo->setEnabled(history.CanUndo());
    m_ui->a_Redo->setEnabled(history.CanRedo());
    m_ui->a_Undo->setToolTip(StepTip("Undo", history.UndoName()));
    m_ui->a_Redo->setToolTip(StepTip("Redo", history.RedoName()));
}

void TxyDataWizard::NameStep(const std::string& name) {
    m_undo->NameStep(name);
}

/// What is still being typed becomes a step of its own. False when it cannot be taken, which the user is
/// told.
bool TxyDataWizard::TakePendingEdits() {
    const QPointer<QWidget> focus = focusWidget();
    if (focus) focus->clearFocus(); // edits take their text when they lose the focus
    const bool isManual = m_currSeries && m_currSeries->DataSourceInfo().Kind() == TSourceKind::Manual;
    const bool taken = !isManual || Guarded([this] { CommitManualData(); });
    m_undo->Note();
    if (focus && taken) focus->setFocus();
    return taken;
}

void TxyDataWizard::UndoStep() {
    if (!TakePendingEdits()) return;
    m_filling = true;
    m_undo->Undo();
    FillList(m_workGraph->Appearance()->CurrSerIndex());
    ShowSteps();
}

void TxyDataWizard::RedoStep() {
    if (!TakePendingEdits()) return;
    m_filling = true;
    m_undo->Redo();
    FillList(m_workGraph->Appearance()->CurrSerIndex());
    ShowSteps();
}

} // namespace lumoplot
